#include "host/services/DeviceWatch.h"

#include "toolkit/dispatch/Queue.h"
#include "toolkit/services/NSNotificationCenter.h"

namespace host {

DeviceWatch::DeviceWatch(std::shared_ptr<HostDeviceLayer> layer, std::chrono::milliseconds interval) : layer_(std::move(layer)) {
    look();
    thread_ = std::thread([this, interval] { run(interval); });
}

DeviceWatch::~DeviceWatch() {
    {
        const std::scoped_lock lock(mutex_);
        isOver_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

bool DeviceWatch::look() {
    const std::scoped_lock lock(looking_);
    if (auto current = layer_->session(); current != watched_) {
        watched_ = std::move(current);
        connection_ = watched_ ? std::make_unique<device::Connection>(watched_->tree()) : nullptr;
    }
    if (!connection_ || !connection_->checkConnection())
        return false;
    dispatch::async(dispatch::main(), [] {
        NSNotificationCenter::defaultCenter().postNotificationName_object(NMobileDeviceDisConnectionDidChangeNotification);
    });
    return true;
}

void DeviceWatch::run(std::chrono::milliseconds interval) {
    std::unique_lock lock(mutex_);
    while (!changed_.wait_for(lock, interval, [this] { return isOver_; })) {
        lock.unlock();
        look();
        lock.lock();
    }
}

}  // namespace host
