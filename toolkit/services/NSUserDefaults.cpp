#include "toolkit/services/NSUserDefaults.h"

#include <map>

namespace {

class MemoryStore final : public UserDefaultsStore {
public:
    Value read(const NSString &key) override {
        const std::scoped_lock lock(mutex_);
        const auto found = values_.find(key);
        return found == values_.end() ? Value() : found->second;
    }
    void write(const NSString &key, const Value &value) override {
        const std::scoped_lock lock(mutex_);
        if (value.isAbsent())
            values_.erase(key);
        else
            values_[key] = value;
    }

private:
    std::mutex mutex_;
    std::map<NSString, Value> values_;
};

}  // namespace

NSUserDefaults::NSUserDefaults() : store_(std::make_shared<MemoryStore>()) {}

NSUserDefaults &NSUserDefaults::standardUserDefaults() {
    static auto *defaults = new NSUserDefaults;
    return *defaults;
}

void NSUserDefaults::install(std::shared_ptr<UserDefaultsStore> store) {
    const std::scoped_lock lock(mutex_);
    store_ = store ? std::move(store) : std::make_shared<MemoryStore>();
}

Value NSUserDefaults::objectForKey(const NSString &key) {
    std::shared_ptr<UserDefaultsStore> store;
    {
        const std::scoped_lock lock(mutex_);
        store = store_;
    }
    return store->read(key);
}

void NSUserDefaults::setObject_forKey(const Value &value, const NSString &key) {
    std::shared_ptr<UserDefaultsStore> store;
    {
        const std::scoped_lock lock(mutex_);
        store = store_;
    }
    store->write(key, value);
}
