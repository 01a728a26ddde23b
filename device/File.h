// An open file, or an error that names it. Reading never blocks on a pipe or a device that stands where a file should.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace device {

class File {
public:
    // Throws AccessError; anything but a regular file is refused.
    [[nodiscard]] static File openForReading(const std::filesystem::path &path);
    // A new file for writing; one that stands there is refused. Its errors name `known` where it is not empty.
    [[nodiscard]] static File create(const std::filesystem::path &path, const std::filesystem::path &known = {});
    File(File &&other) noexcept;
    File &operator=(File &&other) noexcept;
    ~File();

    [[nodiscard]] std::int64_t sizeBytes() const;
    // Up to `maxBytes` from the current place; an empty text at the end.
    [[nodiscard]] std::string read(std::size_t maxBytes);
    // The last `maxBytes`, or the whole of a shorter file; the current place stays.
    [[nodiscard]] std::string readTail(std::size_t maxBytes) const;
    void write(std::string_view bytes);
    // Returns once the bytes are on the disk.
    void sync();
    [[nodiscard]] int descriptor() const { return descriptor_; }

private:
    File(int descriptor, std::filesystem::path path) : descriptor_(descriptor), path_(std::move(path)) {}
    int descriptor_;
    std::filesystem::path path_;
};

// The whole file; one above `maxBytes` is refused.
[[nodiscard]] std::string readWhole(const std::filesystem::path &path, std::size_t maxBytes);
void copyContents(File &from, File &to);
// Replaces `path` whole: temporary file beside it, fsync, rename. What stood there stays where anything fails.
void replaceWhole(const std::filesystem::path &path, std::string_view bytes);
void replaceWhole(const std::filesystem::path &path, File &source);
// The same with what `fill` writes; where it throws, what stood there stays.
void replaceWhole(const std::filesystem::path &path, const std::function<void(File &)> &fill);
// Makes a rename or a removal in this folder last.
void syncFolder(const std::filesystem::path &folder);

// Names of temporary files begin so; lists of a device leave them out.
inline constexpr std::string_view kTemporaryPrefix = ".partial-";

}  // namespace device
