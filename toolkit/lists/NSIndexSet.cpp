#include "toolkit/lists/NSIndexSet.h"

#include <algorithm>

namespace {

std::size_t endOf(const NSRange &range) { return range.location + range.length; }

// Appends a range that begins at or behind the last one's begin, joining what touches.
void append(std::vector<NSRange> &ranges, NSRange range) {
    if (range.length == 0)
        return;
    if (ranges.empty() || endOf(ranges.back()) < range.location) {
        ranges.push_back(range);
        return;
    }
    ranges.back().length = std::max(endOf(ranges.back()), endOf(range)) - ranges.back().location;
}

std::size_t total(const std::vector<NSRange> &ranges) {
    std::size_t sum = 0;
    for (const NSRange &range : ranges)
        sum += range.length;
    return sum;
}

// The first range that ends behind `index`.
std::vector<NSRange>::const_iterator endingAfter(const std::vector<NSRange> &ranges, std::size_t index) {
    return std::upper_bound(ranges.begin(), ranges.end(), index,
                            [](std::size_t i, const NSRange &range) { return i < endOf(range); });
}

}  // namespace

NSIndexSet::NSIndexSet(std::initializer_list<std::size_t> indexes) {
    std::vector<std::size_t> sorted(indexes);
    std::sort(sorted.begin(), sorted.end());
    for (const std::size_t index : sorted)
        append(ranges_, {index, 1});
    count_ = total(ranges_);
}

NSIndexSet NSIndexSet::indexSetWithIndexesInRange(NSRange range) {
    NSIndexSet set;
    append(set.ranges_, range);
    set.count_ = range.length;
    return set;
}

NSIndexSet NSIndexSet::fromList(const Value::List &numbers) {
    std::vector<std::size_t> sorted;
    for (const Value &number : numbers)
        if (number.isNumber() && number.integerValue() >= 0)
            sorted.push_back(static_cast<std::size_t>(number.integerValue()));
    std::sort(sorted.begin(), sorted.end());
    NSIndexSet set;
    for (const std::size_t index : sorted)
        append(set.ranges_, {index, 1});
    set.count_ = total(set.ranges_);
    return set;
}

std::size_t NSIndexSet::firstIndex() const { return ranges_.empty() ? NSNotFound : ranges_.front().location; }
std::size_t NSIndexSet::lastIndex() const { return ranges_.empty() ? NSNotFound : endOf(ranges_.back()) - 1; }

std::size_t NSIndexSet::indexGreaterThanIndex(std::size_t index) const {
    const auto range = endingAfter(ranges_, index + 1);
    return range == ranges_.end() ? NSNotFound : std::max(range->location, index + 1);
}

std::size_t NSIndexSet::indexLessThanIndex(std::size_t index) const {
    auto range = std::lower_bound(ranges_.begin(), ranges_.end(), index,
                                  [](const NSRange &r, std::size_t i) { return r.location < i; });
    if (range == ranges_.begin())
        return NSNotFound;
    --range;
    return std::min(endOf(*range), index) - 1;
}

bool NSIndexSet::containsIndex(std::size_t index) const {
    const auto range = endingAfter(ranges_, index);
    return range != ranges_.end() && range->location <= index;
}

bool NSIndexSet::containsIndexesInRange(NSRange range) const { return countOfIndexesInRange(range) == range.length; }

bool NSIndexSet::containsIndexes(const NSIndexSet &others) const {
    return std::all_of(others.ranges_.begin(), others.ranges_.end(), [this](const NSRange &range) { return containsIndexesInRange(range); });
}

std::size_t NSIndexSet::countOfIndexesInRange(NSRange range) const {
    std::size_t sum = 0;
    for (auto r = endingAfter(ranges_, range.location); r != ranges_.end() && r->location < endOf(range); ++r)
        sum += std::min(endOf(*r), endOf(range)) - std::max(r->location, range.location);
    return sum;
}

void NSIndexSet::enumerateIndexesUsingBlock(const std::function<void(std::size_t)> &block) const {
    for (const NSRange &range : ranges_)
        for (std::size_t index = range.location; index < endOf(range); ++index)
            block(index);
}

std::vector<std::size_t> NSIndexSet::indexes() const {
    std::vector<std::size_t> all;
    all.reserve(count_);
    for (const NSRange &range : ranges_)
        for (std::size_t index = range.location; index < endOf(range); ++index)
            all.push_back(index);
    return all;
}

NSIndexSet NSIndexSet::clippedTo(std::size_t limit) const {
    if (ranges_.empty() || endOf(ranges_.back()) <= limit)
        return *this;
    NSMutableIndexSet set(*this);
    set.removeIndexesInRange({limit, endOf(ranges_.back()) - limit});
    return set;
}

NSIndexSet NSIndexSet::afterInserting(const NSIndexSet &inserted) const {
    NSIndexSet shifted;
    auto next = inserted.ranges_.begin();
    std::size_t offset = 0;
    for (NSRange range : ranges_) {
        while (range.length > 0) {
            while (next != inserted.ranges_.end() && next->location <= range.location + offset)
                offset += (next++)->length;
            const std::size_t room = next == inserted.ranges_.end() ? range.length : next->location - (range.location + offset);
            const std::size_t length = std::min(room, range.length);
            append(shifted.ranges_, {range.location + offset, length});
            range.location += length;
            range.length -= length;
        }
    }
    shifted.count_ = count_;
    return shifted;
}

NSIndexSet NSIndexSet::afterRemoving(const NSIndexSet &removed) const {
    NSMutableIndexSet kept(*this);
    kept.removeIndexes(removed);
    NSIndexSet shifted;
    auto next = removed.ranges_.begin();
    std::size_t offset = 0;
    for (const NSRange &range : kept.ranges_) {   // no removed index lies inside a kept range
        while (next != removed.ranges_.end() && next->location < range.location)
            offset += (next++)->length;
        append(shifted.ranges_, {range.location - offset, range.length});
    }
    shifted.count_ = kept.count_;
    return shifted;
}

std::string NSIndexSet::toString() const {
    std::string text = "{";
    for (const NSRange &range : ranges_) {
        if (text.size() > 1)
            text += ", ";
        text += std::to_string(range.location);
        if (range.length > 1)
            text += "-" + std::to_string(endOf(range) - 1);
    }
    return text + "}";
}

NSIndexSet::operator Value::List() const {
    Value::List list;
    list.reserve(count_);
    enumerateIndexesUsingBlock([&list](std::size_t index) { list.emplace_back(index); });
    return list;
}

void NSMutableIndexSet::addIndexesInRange(NSRange range) {
    if (range.length == 0)
        return;
    // All ranges that overlap or touch the new one become one with it.
    auto first = std::lower_bound(ranges_.begin(), ranges_.end(), range.location,
                                  [](const NSRange &r, std::size_t begin) { return endOf(r) < begin; });
    auto last = first;
    std::size_t begin = range.location, end = endOf(range);
    for (; last != ranges_.end() && last->location <= end; ++last) {
        begin = std::min(begin, last->location);
        end = std::max(end, endOf(*last));
        count_ -= last->length;
    }
    count_ += end - begin;
    if (first == last) {
        ranges_.insert(first, {begin, end - begin});
        return;
    }
    *first = {begin, end - begin};
    ranges_.erase(first + 1, last);
}

void NSMutableIndexSet::addIndexes(const NSIndexSet &others) {
    std::vector<NSRange> all, joined;
    all.reserve(ranges_.size() + others.ranges().size());
    std::merge(ranges_.begin(), ranges_.end(), others.ranges().begin(), others.ranges().end(), std::back_inserter(all),
               [](const NSRange &a, const NSRange &b) { return a.location < b.location; });
    for (const NSRange &range : all)
        append(joined, range);
    ranges_ = std::move(joined);
    count_ = total(ranges_);
}

void NSMutableIndexSet::removeIndexesInRange(NSRange range) { removeIndexes(indexSetWithIndexesInRange(range)); }

void NSMutableIndexSet::removeIndexes(const NSIndexSet &others) {
    std::vector<NSRange> kept;
    auto gone = others.ranges().begin();
    const auto end = others.ranges().end();
    for (const NSRange &range : ranges_) {
        std::size_t begin = range.location;
        while (gone != end && endOf(*gone) <= begin)
            ++gone;
        for (auto g = gone; g != end && g->location < endOf(range); ++g) {
            if (g->location > begin)
                kept.push_back({begin, g->location - begin});
            begin = endOf(*g);
        }
        if (begin < endOf(range))
            kept.push_back({begin, endOf(range) - begin});
    }
    ranges_ = std::move(kept);
    count_ = total(ranges_);
}

void NSMutableIndexSet::removeAllIndexes() {
    ranges_.clear();
    count_ = 0;
}
