// Looks again and again whether the current device is still there, and posts
// NMobileDeviceDisConnectionDidChangeNotification on the main thread once for each time that it went away.
//
// Threads  a thread of its own with real time, since a clock that leaps over pauses would make a timer of the toolkit
//          fire without end. Nothing is posted once the watch has ended.
#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

#include "device/Connection.h"
#include "host/services/HostDeviceLayer.h"

namespace host {

class DeviceWatch {
public:
    static constexpr std::chrono::milliseconds kInterval{500};

    explicit DeviceWatch(std::shared_ptr<HostDeviceLayer> layer, std::chrono::milliseconds interval = kInterval);
    ~DeviceWatch();
    DeviceWatch(const DeviceWatch &) = delete;

    // One look, for hosts and tests that keep their own time; true when the device went away since the last one.
    bool look();

private:
    void run(std::chrono::milliseconds interval);
    std::shared_ptr<HostDeviceLayer> layer_;
    std::mutex looking_;
    std::shared_ptr<device::Session> watched_;
    std::unique_ptr<device::Connection> connection_;

    std::mutex mutex_;
    std::condition_variable changed_;
    bool isOver_ = false;
    std::thread thread_;
};

}  // namespace host
