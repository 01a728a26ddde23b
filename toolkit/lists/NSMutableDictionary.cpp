#include "toolkit/lists/NSMutableDictionary.h"

#include <algorithm>
#include <iterator>
#include <utility>

void NSMutableDictionary::init(Entries entries) {
    const std::scoped_lock lock(mutex_);
    entries_ = {std::move_iterator(entries.begin()), std::move_iterator(entries.end())};
}

std::size_t NSMutableDictionary::count() const {
    const std::scoped_lock lock(mutex_);
    return entries_.size();
}

bool NSMutableDictionary::containsKey(const NSString &key) const {
    const std::scoped_lock lock(mutex_);
    return entries_.contains(key);
}

Value NSMutableDictionary::objectForKey(const NSString &key) const {
    const std::scoped_lock lock(mutex_);
    const auto found = entries_.find(key);
    return found == entries_.end() ? Value() : found->second;
}

std::vector<NSString> NSMutableDictionary::allKeys() const {
    std::vector<NSString> keys;
    {
        const std::scoped_lock lock(mutex_);
        keys.reserve(entries_.size());
        for (const auto &[key, value] : entries_)
            keys.push_back(key);
    }
    std::ranges::sort(keys);
    return keys;
}

std::vector<Value> NSMutableDictionary::allValues() const {
    std::vector<Value> values;
    for (auto &[key, value] : entries())
        values.push_back(std::move(value));
    return values;
}

NSMutableDictionary::Entries NSMutableDictionary::entries() const {
    const std::scoped_lock lock(mutex_);
    return {entries_.begin(), entries_.end()};
}

void NSMutableDictionary::setObject_forKey(Value value, const NSString &key) {
    if (key.isNil())
        return;
    if (value.isAbsent())
        return removeObjectForKey(key);
    Value old;   // ends after the lock: an ending object may come back to this dictionary
    const std::scoped_lock lock(mutex_);
    old = std::exchange(entries_[key], std::move(value));
}

void NSMutableDictionary::removeObjectForKey(const NSString &key) {
    decltype(entries_)::node_type old;
    const std::scoped_lock lock(mutex_);
    old = entries_.extract(key);
}

void NSMutableDictionary::removeObjectsForKeys(const std::vector<NSString> &keys) {
    for (const NSString &key : keys)
        removeObjectForKey(key);
}

void NSMutableDictionary::removeAllObjects() {
    decltype(entries_) old;
    const std::scoped_lock lock(mutex_);
    std::swap(old, entries_);
}

bool NSMutableDictionary::setValue_forKey(const Value &value, std::string_view key) {
    setObject_forKey(value, NSString(key));
    return true;
}
