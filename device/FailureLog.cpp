#include "device/FailureLog.h"

#include "device/sqlite/Error.h"
#include "toolkit/NSString.h"

namespace device {

namespace {

AccessError::Kind kindOf(const sqlite::Error &error) {
    using From = sqlite::Error::Kind;
    using To = AccessError::Kind;
    switch (error.kind()) {
    case From::damaged: return To::damaged;
    case From::locked: return To::locked;
    case From::full: return To::noSpace;
    case From::readOnly: return To::readOnly;
    case From::cannotOpen: return To::missing;
    default: return To::failed;
    }
}

}  // namespace

Failure Failure::of(const std::exception &error) {
    Failure failure;
    failure.text = unicode::sanitized(error.what());
    if (const auto *access = dynamic_cast<const AccessError *>(&error))
        failure.kind = access->kind();
    else if (const auto *database = dynamic_cast<const sqlite::Error *>(&error))
        failure.kind = kindOf(*database);
    return failure;
}

void FailureLog::setHandler(Handler handler) {
    const std::lock_guard hold(guard_);
    handler_ = std::move(handler);
}

void FailureLog::clear() {
    const std::lock_guard hold(guard_);
    first_.reset();
}

void FailureLog::note(Failure failure) {
    Handler handler;
    {
        const std::lock_guard hold(guard_);
        if (!first_)
            first_ = failure;
        handler = handler_;
    }
    if (handler)
        handler(failure);
}

std::optional<Failure> FailureLog::first() const {
    const std::lock_guard hold(guard_);
    return first_;
}

}  // namespace device
