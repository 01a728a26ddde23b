// A set of row numbers, kept as ranges: 100,000 rows in one piece cost one range.
//
// Values   NSIndexSet answers, NSMutableIndexSet also changes; either may be copied into the other.
// Cost     adding in ascending order is constant; elsewhere an operation moves the ranges behind it.
// Absent   functions that give one index give NSNotFound for none. An operation for which "no set" differs from "an
//          empty set" takes std::optional<NSIndexSet>.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

#include "toolkit/NSString.h"
#include "toolkit/Value.h"

// The platform's mark for "no index" and "no row": the largest signed 64-bit number.
inline constexpr std::size_t NSNotFound = static_cast<std::size_t>(std::numeric_limits<std::int64_t>::max());

class NSIndexSet {
public:
    NSIndexSet() = default;
    NSIndexSet(std::initializer_list<std::size_t> indexes);
    [[nodiscard]] static NSIndexSet indexSetWithIndex(std::size_t index) { return indexSetWithIndexesInRange({index, 1}); }
    [[nodiscard]] static NSIndexSet indexSetWithIndexesInRange(NSRange range);
    // Numbers below 0 and values that are no numbers are left out.
    [[nodiscard]] static NSIndexSet fromList(const Value::List &numbers);

    [[nodiscard]] std::size_t count() const { return count_; }
    [[nodiscard]] bool isEmpty() const { return count_ == 0; }
    [[nodiscard]] std::size_t firstIndex() const;
    [[nodiscard]] std::size_t lastIndex() const;
    [[nodiscard]] std::size_t indexGreaterThanIndex(std::size_t index) const;
    [[nodiscard]] std::size_t indexLessThanIndex(std::size_t index) const;
    [[nodiscard]] bool containsIndex(std::size_t index) const;
    [[nodiscard]] bool containsIndexes(const NSIndexSet &others) const;
    [[nodiscard]] bool containsIndexesInRange(NSRange range) const;
    [[nodiscard]] std::size_t countOfIndexesInRange(NSRange range) const;
    bool operator==(const NSIndexSet &other) const = default;

    // Ascending. The set must not change meanwhile.
    void enumerateIndexesUsingBlock(const std::function<void(std::size_t)> &block) const;
    [[nodiscard]] std::vector<std::size_t> indexes() const;
    // Ascending, never touching one another.
    [[nodiscard]] const std::vector<NSRange> &ranges() const { return ranges_; }

    // Those below `limit`.
    [[nodiscard]] NSIndexSet clippedTo(std::size_t limit) const;
    // Where these rows stand once `inserted` (counted after the insertion) has come in.
    // {1, 2} after inserting {0, 2} is {3, 4}.
    [[nodiscard]] NSIndexSet afterInserting(const NSIndexSet &inserted) const;
    // Where these rows stand once `removed` (counted before the removal) has gone; removed rows drop out.
    // {1, 4, 5} after removing {0, 4} is {0, 3}.
    [[nodiscard]] NSIndexSet afterRemoving(const NSIndexSet &removed) const;

    // "{0-2, 5}"
    [[nodiscard]] std::string toString() const;
    operator Value::List() const;

protected:
    std::vector<NSRange> ranges_;
    std::size_t count_ = 0;
};

class NSMutableIndexSet : public NSIndexSet {
public:
    NSMutableIndexSet() = default;
    NSMutableIndexSet(const NSIndexSet &other) : NSIndexSet(other) {}
    NSMutableIndexSet(std::initializer_list<std::size_t> indexes) : NSIndexSet(indexes) {}

    void addIndex(std::size_t index) { addIndexesInRange({index, 1}); }
    void addIndexesInRange(NSRange range);
    void addIndexes(const NSIndexSet &others);
    void removeIndex(std::size_t index) { removeIndexesInRange({index, 1}); }
    void removeIndexesInRange(NSRange range);
    void removeIndexes(const NSIndexSet &others);
    void removeAllIndexes();
};
