// synchronized(object): a recursive lock that belongs to an object for as long as somebody holds or awaits it.
#pragma once

#include <memory>
#include <mutex>

namespace dispatch {

class Synchronized {
public:
    explicit Synchronized(const void *object);
    ~Synchronized();
    Synchronized(const Synchronized &) = delete;
    Synchronized &operator=(const Synchronized &) = delete;

private:
    const void *object_;
    std::shared_ptr<std::recursive_mutex> mutex_;
};

}  // namespace dispatch
