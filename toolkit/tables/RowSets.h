// Sets of row numbers as a table deals with them.
#pragma once

#include <algorithm>
#include <cstdint>

#include "toolkit/lists/NSIndexSet.h"

namespace rowSets {

// -1 for none.
inline NSIndexSet one(std::int64_t row) { return row < 0 ? NSIndexSet() : NSIndexSet::indexSetWithIndex(static_cast<std::size_t>(row)); }

// Both ends, in either order.
inline NSIndexSet range(std::int64_t from, std::int64_t to) {
    const auto [low, high] = std::minmax(from, to);
    return NSIndexSet::indexSetWithIndexesInRange({static_cast<std::size_t>(low), static_cast<std::size_t>(high - low + 1)});
}

// The row's new number, -1 where it is gone.
inline std::int64_t moved(std::int64_t row, const NSIndexSet &inserted, const NSIndexSet &removed) {
    const NSIndexSet now = one(row).afterRemoving(removed).afterInserting(inserted);
    return now.isEmpty() ? -1 : static_cast<std::int64_t>(now.firstIndex());
}

}  // namespace rowSets
