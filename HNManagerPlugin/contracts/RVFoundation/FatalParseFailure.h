// A reader met a file that it cannot go on with: nothing of the file is imported.
// Thrown by the file readers alone; the innermost guard of the event catches it and tells the host.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>

#include "toolkit/NSString.h"

class FatalParseFailure : public std::runtime_error {
public:
    // `line` counts from 1, absent where none can be told; `reason` is English, for people.
    FatalParseFailure(NSString file, std::optional<std::int64_t> line, NSString reason);
    ~FatalParseFailure() override;

    [[nodiscard]] const NSString &file() const { return file_; }
    [[nodiscard]] std::optional<std::int64_t> line() const { return line_; }
    [[nodiscard]] const NSString &reason() const { return reason_; }

private:
    NSString file_;
    std::optional<std::int64_t> line_;
    NSString reason_;
};
