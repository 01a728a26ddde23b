// How a command ends: its exit status, and the error that ends one early.
#pragma once

#include <stdexcept>
#include <string>

#include "device/AccessError.h"

namespace host::cli {

enum Status : int {
    kDone = 0,
    kFailed = 1,       // an item failed, the operation was refused or found bad input, a KEY has no row
    kWrongUsage = 2,   // nothing was changed
    kNotOpened = 3,    // the device or a file cannot be opened; nothing was changed
    kCancelled = 130,
};

// Ends a command; the text is for the user. An empty text: all was said already.
class CommandError : public std::runtime_error {
public:
    CommandError(Status status, const std::string &text) : std::runtime_error(text), status_(status) {}
    ~CommandError() override;
    [[nodiscard]] Status status() const { return status_; }

private:
    Status status_;
};

// A device that somebody else writes, that has gone or is damaged counts as not opened; all else is a failure.
[[nodiscard]] Status statusOf(device::AccessError::Kind kind);

}  // namespace host::cli
