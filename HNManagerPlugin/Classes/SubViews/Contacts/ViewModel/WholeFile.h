// A regular file's bytes in memory. Threads: any.
#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "toolkit/NSString.h"

class WholeFile {
public:
    // Absent where it cannot be opened or read, or is no regular file.
    [[nodiscard]] static std::optional<WholeFile> read(const NSString &path);
    [[nodiscard]] std::string_view view() const { return {bytes_.get(), size_}; }

private:
    static std::optional<WholeFile> readAll(int file);
    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
};
