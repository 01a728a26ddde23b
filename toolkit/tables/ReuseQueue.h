// Views that were on show and wait for their next row, by identifier; and the makers that a nib registers.
// Threads: main.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>

#include "toolkit/views/NSView.h"

class ReuseQueue {
public:
    using Maker = std::function<std::shared_ptr<NSView>()>;

    // Null where nothing waits and no maker is known. A fresh view gets the identifier.
    [[nodiscard]] std::shared_ptr<NSView> take(const NSString &identifier);
    // A view without identifier cannot be found again and is dropped.
    void put(const std::shared_ptr<NSView> &view);
    void registerMaker(const NSString &identifier, Maker maker) { makers_[identifier] = std::move(maker); }
    [[nodiscard]] std::size_t waiting() const;

private:
    std::map<NSString, Maker> makers_;
    std::map<NSString, std::deque<std::shared_ptr<NSView>>> waiting_;
};
