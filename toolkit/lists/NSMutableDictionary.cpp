#include "toolkit/lists/NSMutableDictionary.h"

#include <utility>

void NSMutableDictionary::init(Entries entries) {
    const std::scoped_lock lock(mutex_);
    entries_ = std::move(entries);
}

std::size_t NSMutableDictionary::count() const {
    const std::scoped_lock lock(mutex_);
    return entries_.size();
}

Value NSMutableDictionary::objectForKey(const NSString &key) const {
    const std::scoped_lock lock(mutex_);
    const auto found = entries_.find(key);
    return found == entries_.end() ? Value() : found->second;
}

std::vector<NSString> NSMutableDictionary::allKeys() const {
    const std::scoped_lock lock(mutex_);
    std::vector<NSString> keys;
    keys.reserve(entries_.size());
    for (const auto &[key, value] : entries_)
        keys.push_back(key);
    return keys;
}

std::vector<Value> NSMutableDictionary::allValues() const {
    const std::scoped_lock lock(mutex_);
    std::vector<Value> values;
    values.reserve(entries_.size());
    for (const auto &[key, value] : entries_)
        values.push_back(value);
    return values;
}

NSMutableDictionary::Entries NSMutableDictionary::entries() const {
    const std::scoped_lock lock(mutex_);
    return entries_;
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
    Entries::node_type old;
    const std::scoped_lock lock(mutex_);
    old = entries_.extract(key);
}

void NSMutableDictionary::removeObjectsForKeys(const std::vector<NSString> &keys) {
    for (const NSString &key : keys)
        removeObjectForKey(key);
}

void NSMutableDictionary::removeAllObjects() {
    Entries old;
    const std::scoped_lock lock(mutex_);
    std::swap(old, entries_);
}

bool NSMutableDictionary::setValue_forKey(const Value &value, std::string_view key) {
    setObject_forKey(value, NSString(key));
    return true;
}
