#include "toolkit/lists/NSArray.h"

#include <algorithm>
#include <utility>

namespace lists {

namespace {
// The lists that wait while an outer drop() of this thread ends objects.
thread_local std::vector<NSArray::Items> *waiting = nullptr;

// One by one: while an object ends, a later one is already being fetched.
void end(NSArray::Items &items) {
    constexpr std::size_t kAhead = 4;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i + kAhead < items.size())
            __builtin_prefetch(items[i + kAhead].get());
        items[i].reset();
    }
    items.clear();
}

}  // namespace

void drop(NSArray::Items items) {
    if (items.empty())
        return;
    if (waiting) {
        waiting->push_back(std::move(items));
        return;
    }
    std::vector<NSArray::Items> pending;
    waiting = &pending;
    end(items);
    while (!pending.empty()) {
        NSArray::Items next = std::move(pending.back());
        pending.pop_back();
        end(next);
    }
    waiting = nullptr;
}

}  // namespace lists

NSArray::NSArray(Items items) {
    if (items.empty())
        return;
    block_ = new Block;
    block_->items = std::move(items);
}

NSArray NSArray::fromList(const Value::List &values) {
    Items items;
    for (const Value &value : values)
        if (id object = value.object())
            items.push_back(std::move(object));
    return items;
}

NSArray::NSArray(const NSArray &other) noexcept : block_(other.block_) {
    if (block_)
        block_->owners.fetch_add(1, std::memory_order_relaxed);
}

NSArray &NSArray::operator=(NSArray other) noexcept {
    std::swap(block_, other.block_);
    return *this;
}

NSArray::~NSArray() {
    if (block_)
        release(block_);
}

void NSArray::release(Block *block) {
    if (block->owners.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    Items items = std::move(block->items);
    delete block;
    lists::drop(std::move(items));
}

const NSArray::Items &NSArray::items() const {
    static const Items none;
    return block_ ? block_->items : none;
}

NSArray::Items &NSArray::writable() {
    if (!block_) {
        block_ = new Block;
    } else if (block_->owners.load(std::memory_order_acquire) != 1) {
        Block *own = new Block;
        own->items = block_->items;
        release(std::exchange(block_, own));
    }
    return block_->items;
}

const id &NSArray::objectAtIndex(std::size_t index) const {
    static const id none;
    return index < count() ? items()[index] : none;
}

NSArray NSArray::objectsAtIndexes(const NSIndexSet &indexes) const {
    const NSIndexSet valid = indexes.clippedTo(count());
    Items picked;
    picked.reserve(valid.count());
    for (const NSRange &range : valid.ranges())
        picked.insert(picked.end(), begin() + static_cast<std::ptrdiff_t>(range.location),
                      begin() + static_cast<std::ptrdiff_t>(range.location + range.length));
    return picked;
}

std::size_t NSArray::indexOfObject(const id &object) const {
    const auto found = std::find_if(begin(), end(), [&object](const id &one) { return one == object || (object && object->isEqual(one.get())); });
    return found == end() ? NSNotFound : static_cast<std::size_t>(found - begin());
}

std::size_t NSArray::indexOfObjectIdenticalTo(const id &object) const {
    const auto found = std::find(begin(), end(), object);
    return found == end() ? NSNotFound : static_cast<std::size_t>(found - begin());
}
