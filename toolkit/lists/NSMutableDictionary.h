// A dictionary that flows share, from texts to values.
//
// Threads  any; every operation locks. Walking goes over a copy of the keys or of the entries.
// Order    walks go by the code points of the keys.
// Absent   an unknown key gives the absent value; setting the absent value removes the key; an absent key is ignored.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "toolkit/NSObject.h"

class NSMutableDictionary : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    using Entries = std::map<NSString, Value>;

    using NSObject::init;
    void init(Entries entries);

    [[nodiscard]] std::size_t count() const;
    [[nodiscard]] bool containsKey(const NSString &key) const;
    [[nodiscard]] Value objectForKey(const NSString &key) const;
    template <class T> [[nodiscard]] std::shared_ptr<T> at(const NSString &key) const {
        return std::dynamic_pointer_cast<T>(objectForKey(key).object());
    }
    [[nodiscard]] std::vector<NSString> allKeys() const;
    [[nodiscard]] std::vector<Value> allValues() const;
    [[nodiscard]] Entries entries() const;
    [[nodiscard]] std::shared_ptr<NSMutableDictionary> mutableCopy() const { return make<NSMutableDictionary>(entries()); }

    void setObject_forKey(Value value, const NSString &key);
    void removeObjectForKey(const NSString &key);
    void removeObjectsForKeys(const std::vector<NSString> &keys);
    void removeAllObjects();

    // Keys of the dictionary itself: valueForKey("title") is the entry "title".
    [[nodiscard]] Value valueForKey(std::string_view key) override { return objectForKey(NSString(key)); }
    bool setValue_forKey(const Value &value, std::string_view key) override;

private:
    mutable std::mutex mutex_;
    std::unordered_map<NSString, Value> entries_;
};
