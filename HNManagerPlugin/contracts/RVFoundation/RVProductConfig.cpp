#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"

#include <map>
#include <mutex>

namespace {

struct Config {
    std::mutex mutex;
    std::map<NSString, NSString> memory;
    std::shared_ptr<UserDefaultsStore> store;
};

Config &config() {
    static auto *shared = new Config;
    return *shared;
}

}  // namespace

NSString RVProductConfig::valueForKey(const NSString &key) {
    const std::scoped_lock lock(config().mutex);
    if (config().store)
        return config().store->read(key).text();
    const auto found = config().memory.find(key);
    return found == config().memory.end() ? NSString() : found->second;
}

void RVProductConfig::setValue_forKey(const NSString &value, const NSString &key) {
    const std::scoped_lock lock(config().mutex);
    if (config().store)
        config().store->write(key, value);
    else
        config().memory[key] = value;
}

void RVProductConfig::install(std::shared_ptr<UserDefaultsStore> store) {
    const std::scoped_lock lock(config().mutex);
    config().store = std::move(store);
    config().memory.clear();
}
