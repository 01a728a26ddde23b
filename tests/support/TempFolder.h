// A folder of a test's own, and what tests do with files.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// In memory where that can be, since most tests wait for the disk and for nothing else. Removed with everything in it at the end.
class TempFolder {
public:
    TempFolder();
    explicit TempFolder(const std::filesystem::path &parent);
    TempFolder(const TempFolder &) = delete;
    ~TempFolder();
    [[nodiscard]] const std::filesystem::path &path() const { return path_; }

private:
    std::filesystem::path path_;
};

// "" where there is none.
[[nodiscard]] std::string readFile(const std::filesystem::path &file);
// With the folders above it.
void writeFile(const std::filesystem::path &file, std::string_view bytes);
// Relative names and contents of everything below a folder: equal means untouched.
[[nodiscard]] std::string pictureOf(const std::filesystem::path &folder);
