// A backup folder as a device's host program lays it down.
#pragma once

#include "tests/support/TempFolder.h"

class TestBackup {
public:
    // In a folder of its own, or in `folder`.
    explicit TestBackup(std::filesystem::path folder = {});

    [[nodiscard]] const std::filesystem::path &path() const { return path_; }
    // Adds a row and the bytes of a file; `flags` 1 file, 2 folder.
    void add(const std::string &domain, const std::string &relativePath, std::string_view bytes, int flags = 1) const;
    // Adds all files of a device image.
    void addAll(const std::filesystem::path &image) const;
    void describe(bool isEncrypted = false) const;

private:
    TempFolder temporary_;
    std::filesystem::path path_;
};
