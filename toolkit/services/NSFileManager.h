// Files of the computer. Nothing here throws: an operation that fails gives false or nothing.
// Threads: any. Paths are UTF-8; an absent or empty path is no file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/NSString.h"

class NSFileManager {
public:
    [[nodiscard]] static bool fileExistsAtPath(const NSString &path);
    [[nodiscard]] static bool isDirectoryAtPath(const NSString &path);
    [[nodiscard]] static bool isWritableFileAtPath(const NSString &path);
    // With intermediates; true also where it stands already.
    static bool createDirectoryAtPath(const NSString &path);
    static bool moveItemAtPath_toPath(const NSString &from, const NSString &to);
    static bool removeItemAtPath(const NSString &path);
    // Bytes; 0 where there is no such file.
    [[nodiscard]] static std::int64_t sizeOfFileAtPath(const NSString &path);
    [[nodiscard]] static std::optional<std::string> contentsAtPath(const NSString &path);
    // Names in a folder, sorted; empty where it cannot be read.
    [[nodiscard]] static std::vector<NSString> contentsOfDirectoryAtPath(const NSString &path);
};
