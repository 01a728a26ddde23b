// The user's settings of the program: flags, numbers, texts under a key.
//
// A host installs the store that keeps them; without one they last as long as the process.
// Absent keys read as false, 0 and absent. Threads: any.
#pragma once

#include <memory>
#include <mutex>

#include "toolkit/Value.h"

class UserDefaultsStore {
public:
    virtual ~UserDefaultsStore() = default;
    // Absent where the key has no value.
    [[nodiscard]] virtual Value read(const NSString &key) = 0;
    // An absent value removes the key.
    virtual void write(const NSString &key, const Value &value) = 0;
};

class NSUserDefaults {
public:
    [[nodiscard]] static NSUserDefaults &standardUserDefaults();
    // Null goes back to the store in memory, emptied.
    void install(std::shared_ptr<UserDefaultsStore> store);

    [[nodiscard]] Value objectForKey(const NSString &key);
    [[nodiscard]] NSString stringForKey(const NSString &key) { return objectForKey(key).text(); }
    [[nodiscard]] bool boolForKey(const NSString &key) { return objectForKey(key).boolValue(); }
    [[nodiscard]] std::int64_t integerForKey(const NSString &key) { return objectForKey(key).integerValue(); }
    void setObject_forKey(const Value &value, const NSString &key);
    void setValue_forKey(const Value &value, const NSString &key) { setObject_forKey(value, key); }
    void setBool_forKey(bool flag, const NSString &key) { setObject_forKey(Value(flag), key); }
    void setInteger_forKey(std::int64_t number, const NSString &key) { setObject_forKey(Value(number), key); }

private:
    NSUserDefaults();
    std::mutex mutex_;
    std::shared_ptr<UserDefaultsStore> store_;
};
