// One step of a sort order: a key, a direction and a way to compare.
//
// Order    stable; absent values first, texts by code points (Value::compare), unless a comparator says otherwise.
//          Descending turns the order of different elements round, equal ones keep their places.
// Cost     each key of each element is read once per sort.
#pragma once

#include <compare>
#include <functional>
#include <string>
#include <vector>

#include "toolkit/NSString.h"
#include "toolkit/Value.h"
#include "toolkit/lists/NSArray.h"

class NSSortDescriptor {
public:
    using Comparator = std::function<std::weak_ordering(const Value &, const Value &)>;

    // `key` may be a path ("representedObject.name"). An absent key compares the elements themselves, for comparators.
    // `selector` is "compare:" or "caseInsensitiveCompare:"; any other compares as "compare:" does.
    explicit NSSortDescriptor(NSString key, bool ascending = true, NSString selector = "compare:");
    NSSortDescriptor(NSString key, bool ascending, Comparator comparator);

    [[nodiscard]] const NSString &key() const { return key_; }
    [[nodiscard]] bool ascending() const { return ascending_; }
    [[nodiscard]] const NSString &selector() const { return selector_; }
    [[nodiscard]] const Comparator &comparator() const { return comparator_; }
    [[nodiscard]] NSSortDescriptor reversedSortDescriptor() const;

    // The value that an element is compared by.
    [[nodiscard]] Value valueOf(const id &object) const;
    [[nodiscard]] std::weak_ordering compareValues(const Value &a, const Value &b) const;
    // Comparators are not compared, only whether there is one.
    bool operator==(const NSSortDescriptor &other) const;

private:
    NSString key_;
    bool ascending_;
    NSString selector_;
    Comparator comparator_;
};

using NSSortDescriptors = std::vector<NSSortDescriptor>;

namespace lists {

[[nodiscard]] NSArray::Items sorted(NSArray::Items items, const NSSortDescriptors &descriptors);

}  // namespace lists
