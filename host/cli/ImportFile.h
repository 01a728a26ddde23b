// A file that a reader of the plug-in is to read, looked at before the plug-in gets it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace host::cli {

enum class ImportKind { cards, table };   // .vcf and .vcard; .csv

class ImportFile {
public:
    static constexpr std::uintmax_t kMaxBytes = std::uintmax_t{1} << 30;

    // Throws CommandError: another extension (kFailed), missing, not to be opened, no file or too large (kNotOpened).
    explicit ImportFile(const std::filesystem::path &path);

    [[nodiscard]] ImportKind kind() const { return kind_; }
    // As named, made absolute.
    [[nodiscard]] const std::filesystem::path &path() const { return path_; }
    // What the plug-in gets: the same file; for a .vcard under a private name below `scratch` that ends in .vcf, since the
    // plug-in knows its readers by the extension.
    [[nodiscard]] std::filesystem::path handedOver(const std::filesystem::path &scratch) const;

private:
    ImportKind kind_ = ImportKind::cards;
    std::filesystem::path path_;
};

}  // namespace host::cli
