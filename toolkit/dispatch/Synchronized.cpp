#include "toolkit/dispatch/Synchronized.h"

#include <unordered_map>

namespace dispatch {

namespace {

struct Registry {
    std::mutex mutex;
    std::unordered_map<const void *, std::weak_ptr<std::recursive_mutex>> locks;
};

Registry &registry() {
    static auto *shared = new Registry;
    return *shared;
}

}  // namespace

Synchronized::Synchronized(const void *object) : object_(object) {
    {
        const std::scoped_lock lock(registry().mutex);
        auto &entry = registry().locks[object];
        mutex_ = entry.lock();
        if (!mutex_)
            entry = mutex_ = std::make_shared<std::recursive_mutex>();
    }
    mutex_->lock();
}

Synchronized::~Synchronized() {
    mutex_->unlock();
    const std::scoped_lock lock(registry().mutex);
    mutex_ = nullptr;
    if (const auto entry = registry().locks.find(object_); entry != registry().locks.end() && entry->second.expired())
        registry().locks.erase(entry);
}

}  // namespace dispatch
