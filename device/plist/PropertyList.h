// A property list, XML or binary, whose root is a dictionary.
//
// Input    may be hostile: at most kMaxBytes, nested at most kMaxDepth deep.
// Absent   a key that is missing or of another type gives nullopt (or no elements).
// Errors   AccessError (missing, damaged) that names the file.
// Threads  one at a time.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace device {

class PropertyList {
public:
    static constexpr std::size_t kMaxBytes = 64u << 20;
    static constexpr int kMaxDepth = 128;
    enum class Format { xml, binary };

    // An empty dictionary.
    PropertyList();
    [[nodiscard]] static PropertyList read(const std::filesystem::path &path);
    // `file` is for messages alone.
    [[nodiscard]] static PropertyList parse(std::string_view bytes, const std::string &file);

    [[nodiscard]] bool has(const char *key) const;
    [[nodiscard]] std::optional<std::string> text(const char *key) const;
    [[nodiscard]] std::optional<std::int64_t> integer(const char *key) const;
    [[nodiscard]] std::optional<bool> flag(const char *key) const;
    [[nodiscard]] std::optional<std::string> data(const char *key) const;
    [[nodiscard]] std::vector<std::string> texts(const char *key) const;
    [[nodiscard]] std::optional<PropertyList> dictionary(const char *key) const;

    void setText(const char *key, const std::string &value);
    void setInteger(const char *key, std::int64_t value);
    void setFlag(const char *key, bool value);
    void setData(const char *key, std::string_view value);
    // Seconds since 1970.
    void setDate(const char *key, std::int64_t seconds);
    void setTexts(const char *key, const std::vector<std::string> &values);
    void setDictionary(const char *key, const PropertyList &value);
    void remove(const char *key);

    [[nodiscard]] std::string bytes(Format format = Format::xml) const;

private:
    explicit PropertyList(void *node);
    std::shared_ptr<void> node_;
};

}  // namespace device
