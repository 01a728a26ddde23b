#include "toolkit/lists/NSSortDescriptor.h"

#include <algorithm>
#include <numeric>
#include <utility>

NSSortDescriptor::NSSortDescriptor(NSString key, bool ascending, NSString selector)
    : key_(std::move(key)), ascending_(ascending), selector_(std::move(selector)) {}

NSSortDescriptor::NSSortDescriptor(NSString key, bool ascending, Comparator comparator)
    : key_(std::move(key)), ascending_(ascending), comparator_(std::move(comparator)) {}

NSSortDescriptor NSSortDescriptor::reversedSortDescriptor() const {
    NSSortDescriptor reversed = *this;
    reversed.ascending_ = !ascending_;
    return reversed;
}

Value NSSortDescriptor::valueOf(const id &object) const {
    if (!object)
        return {};
    if (key_.isEmpty())
        return Value(object);
    Value value = key_.containsString(".") ? object->valueForKeyPath(key_.view()) : object->valueForKey(key_.view());
    if (selector_ == NSString("caseInsensitiveCompare:") && value.isText())
        return Value(value.text().folded());
    return value;
}

std::weak_ordering NSSortDescriptor::compareValues(const Value &a, const Value &b) const {
    const std::weak_ordering order = comparator_ ? comparator_(a, b) : a.compare(b);
    return ascending_ ? order : 0 <=> order;
}

bool NSSortDescriptor::operator==(const NSSortDescriptor &other) const {
    return key_ == other.key_ && ascending_ == other.ascending_ && selector_ == other.selector_ &&
           static_cast<bool>(comparator_) == static_cast<bool>(other.comparator_);
}

namespace lists {

NSArray::Items sorted(NSArray::Items items, const NSSortDescriptors &descriptors) {
    if (descriptors.empty() || items.size() < 2)
        return items;
    const std::size_t width = descriptors.size();
    std::vector<Value> keys;
    keys.reserve(items.size() * width);
    for (const id &item : items)
        for (const NSSortDescriptor &descriptor : descriptors)
            keys.push_back(descriptor.valueOf(item));

    std::vector<std::size_t> order(items.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        for (std::size_t i = 0; i < width; ++i)
            if (const auto compared = descriptors[i].compareValues(keys[a * width + i], keys[b * width + i]); compared != 0)
                return compared < 0;
        return false;
    });
    NSArray::Items result;
    result.reserve(items.size());
    for (const std::size_t index : order)
        result.push_back(std::move(items[index]));
    return result;
}

}  // namespace lists
