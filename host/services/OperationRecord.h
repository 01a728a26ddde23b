// What an operation on the device really did, whatever the flow shows of it.
// Threads  any; a program reads it once the operation is over.
#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>

#include "device/FailureLog.h"

namespace host {

struct OperationCounts {
    std::int64_t asked = 0;   // items handed over
    std::int64_t succeeded = 0;
    std::int64_t failed = 0;
    std::optional<device::Failure> reason;   // of the first failure, where the device told one
    [[nodiscard]] std::int64_t undone() const { return asked - succeeded - failed; }
};

class OperationRecord {
public:
    // Hears of failed items and of reasons as they come, on the thread that tells them.
    using Listener = std::function<void(std::int64_t failed, const std::optional<device::Failure> &reason)>;

    void setListener(Listener listener) {
        const std::scoped_lock lock(mutex_);
        listener_ = std::move(listener);
    }
    void clear() {
        const std::scoped_lock lock(mutex_);
        counts_ = {};
    }
    void ask(std::int64_t items) {
        const std::scoped_lock lock(mutex_);
        counts_.asked += items;
    }
    void count(bool success, std::int64_t items = 1) {
        const Listener hears = [&] {
            const std::scoped_lock lock(mutex_);
            (success ? counts_.succeeded : counts_.failed) += items;
            return success || items == 0 ? Listener() : listener_;
        }();
        if (hears)
            hears(items, std::nullopt);
    }
    // The first reason stays.
    void explain(const std::optional<device::Failure> &reason) {
        if (!reason)
            return;
        const Listener hears = [&] {
            const std::scoped_lock lock(mutex_);
            if (!counts_.reason)
                counts_.reason = reason;
            return listener_;
        }();
        if (hears)
            hears(0, reason);
    }
    [[nodiscard]] OperationCounts counts() const {
        const std::scoped_lock lock(mutex_);
        return counts_;
    }

private:
    mutable std::mutex mutex_;
    OperationCounts counts_;
    Listener listener_;
};

}  // namespace host
