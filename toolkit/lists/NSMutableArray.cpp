#include "toolkit/lists/NSMutableArray.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

HN_CLASS_TABLE(NSMutableArray, NSObjectTable, .key("count", &NSMutableArray::count))

// `change` gets the items and a list for what it takes out, which is let go only after the lock: an ending object may
// come back to this list.
template <class Change> void NSMutableArray::change(Change &&change) {
    NSArray::Items gone;
    {
        const std::scoped_lock lock(mutex_);
        change(items_.writable(), gone);
        ++version_;
    }
    lists::drop(std::move(gone));
}

template <class Test> void NSMutableArray::removeWhere(Test &&test) {
    change([&](NSArray::Items &items, NSArray::Items &gone) {
        const auto kept = std::stable_partition(items.begin(), items.end(), [&](const id &item) { return !test(item); });
        gone.assign(std::make_move_iterator(kept), std::make_move_iterator(items.end()));
        items.erase(kept, items.end());
    });
}

NSArray NSMutableArray::snapshot() const {
    const std::scoped_lock lock(mutex_);
    return items_;
}

std::uint64_t NSMutableArray::version() const {
    const std::scoped_lock lock(mutex_);
    return version_;
}

std::size_t NSMutableArray::count() const {
    const std::scoped_lock lock(mutex_);
    return items_.count();
}

id NSMutableArray::objectAtIndex(std::size_t index) const {
    const std::scoped_lock lock(mutex_);
    return items_.objectAtIndex(index);
}

void NSMutableArray::addObject(id object) {
    if (object)
        change([&](NSArray::Items &items, NSArray::Items &) { items.push_back(std::move(object)); });
}

void NSMutableArray::addObjectsFromArray(const NSArray &objects) {
    change([&](NSArray::Items &items, NSArray::Items &) {
        std::copy_if(objects.begin(), objects.end(), std::back_inserter(items), [](const id &object) { return object != nullptr; });
    });
}

void NSMutableArray::insertObject_atIndex(id object, std::size_t index) {
    if (object)
        change([&](NSArray::Items &items, NSArray::Items &) {
            items.insert(items.begin() + static_cast<std::ptrdiff_t>(std::min(index, items.size())), std::move(object));
        });
}

void NSMutableArray::insertObjects_atIndexes(const NSArray &objects, const NSIndexSet &indexes) {
    if (indexes.firstIndex() >= count())   // lists are filled from the end, one by one: no copy
        return addObjectsFromArray(objects);
    change([&](NSArray::Items &items, NSArray::Items &) {
        NSArray::Items joined;
        joined.reserve(items.size() + objects.count());
        auto old = items.begin();
        auto next = objects.begin();
        for (const NSRange &range : indexes.ranges()) {
            while (joined.size() < range.location && old != items.end())
                joined.push_back(std::move(*old++));
            for (std::size_t i = 0; i < range.length && next != objects.end(); ++i)
                joined.push_back(*next++);
        }
        joined.insert(joined.end(), std::make_move_iterator(old), std::make_move_iterator(items.end()));
        items = std::move(joined);
    });
}

void NSMutableArray::replaceObjectAtIndex_withObject(std::size_t index, id object) {
    if (!object)
        return;
    change([&](NSArray::Items &items, NSArray::Items &gone) {
        if (index < items.size())
            gone.push_back(std::exchange(items[index], std::move(object)));
    });
}

void NSMutableArray::removeObject(const id &object) {
    if (object)
        removeWhere([&](const id &item) { return item == object || object->isEqual(item.get()); });
}

void NSMutableArray::removeObjectAtIndex(std::size_t index) { removeObjectsAtIndexes(NSIndexSet::indexSetWithIndex(index)); }

void NSMutableArray::removeObjectsAtIndexes(const NSIndexSet &indexes) {
    change([&](NSArray::Items &items, NSArray::Items &gone) {
        const NSIndexSet valid = indexes.clippedTo(items.size());
        if (valid.isEmpty())
            return;
        auto to = items.begin() + static_cast<std::ptrdiff_t>(valid.firstIndex());
        auto from = to;
        for (const NSRange &range : valid.ranges()) {
            const auto begin = items.begin() + static_cast<std::ptrdiff_t>(range.location);
            to = std::move(from, begin, to);
            from = begin + static_cast<std::ptrdiff_t>(range.length);
            gone.insert(gone.end(), std::make_move_iterator(begin), std::make_move_iterator(from));
        }
        items.erase(std::move(from, items.end(), to), items.end());
    });
}

void NSMutableArray::removeObjectsInArray(const NSArray &objects) {
    const std::unordered_set<id> same(objects.begin(), objects.end());
    removeWhere([&](const id &item) {
        return same.contains(item) ||
               std::any_of(objects.begin(), objects.end(), [&item](const id &object) { return object && object->isEqual(item.get()); });
    });
}

void NSMutableArray::removeObjectsIdenticalIn(const NSArray &objects) {
    const std::unordered_set<id> same(objects.begin(), objects.end());
    removeWhere([&](const id &item) { return same.contains(item); });
}

void NSMutableArray::removeLastObject() {
    change([](NSArray::Items &items, NSArray::Items &gone) {
        if (items.empty())
            return;
        gone.push_back(std::move(items.back()));
        items.pop_back();
    });
}

void NSMutableArray::removeAllObjects() { setArray({}); }

void NSMutableArray::setArray(NSArray objects) {
    const std::scoped_lock lock(mutex_);   // `objects`, destroyed after the lock, takes the old items along
    std::swap(items_, objects);
    ++version_;
}

void NSMutableArray::exchangeObjectAtIndex_withObjectAtIndex(std::size_t a, std::size_t b) {
    change([&](NSArray::Items &items, NSArray::Items &) {
        if (a < items.size() && b < items.size())
            std::swap(items[a], items[b]);
    });
}

void NSMutableArray::sortUsingDescriptors(const NSSortDescriptors &descriptors) {
    NSArray before;
    std::uint64_t since = 0;
    {
        const std::scoped_lock lock(mutex_);
        before = items_;
        since = version_;
    }
    takeOrder(lists::sorted(before.items(), descriptors), since);
}

void NSMutableArray::sortUsingComparator(const std::function<std::weak_ordering(const id &, const id &)> &comparator) {
    NSArray before;
    std::uint64_t since = 0;
    {
        const std::scoped_lock lock(mutex_);
        before = items_;
        since = version_;
    }
    NSArray::Items ordered = before.items();
    std::stable_sort(ordered.begin(), ordered.end(), [&](const id &a, const id &b) { return comparator(a, b) < 0; });
    takeOrder(std::move(ordered), since);
}

void NSMutableArray::takeOrder(NSArray::Items ordered, std::uint64_t since) {
    NSArray old;   // let go after the lock
    const std::scoped_lock lock(mutex_);
    if (version_ != since) {   // others changed the list meanwhile: their removals and additions stand
        std::unordered_map<NSObject *, std::size_t> left;
        for (const id &item : items_)
            ++left[item.get()];
        const auto mid = std::stable_partition(ordered.begin(), ordered.end(), [&](const id &item) {
            std::size_t &times = left[item.get()];
            return times > 0 && times-- > 0;
        });
        const NSArray gone(NSArray::Items(mid, ordered.end()));
        ordered.erase(mid, ordered.end());
        for (const id &item : items_)
            if (std::size_t &times = left[item.get()]; times > 0) {
                --times;
                ordered.push_back(item);
            }
        old = gone;
    }
    items_ = NSArray(std::move(ordered));
    ++version_;
}

NSString NSMutableArray::description() const {
    std::vector<NSString> texts;
    for (const id &item : snapshot())
        texts.push_back(item->description());
    return descriptionOfList(texts);
}
