// The device layer that the host installs for the plug-in: one current device, its interfaces wrapped so that a program
// knows what an operation really did.
//
// Kinds    a kind of data without a store has no interface yet.
// Notices  a switch is posted on the main thread, at once where it is called there. Threads: any.
#pragma once

#include <memory>
#include <mutex>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "device/Session.h"
#include "host/services/OperationRecord.h"

namespace host {

class HostDeviceLayer : public DeviceLayer {
public:
    // Null: no device is chosen.
    explicit HostDeviceLayer(std::shared_ptr<device::Session> session) { take(std::move(session)); }

    [[nodiscard]] bool isDeviceConnected() override;
    [[nodiscard]] std::shared_ptr<MobileDevice> currentDevice() override;
    [[nodiscard]] NSString deviceName() override;
    [[nodiscard]] std::shared_ptr<DeviceContext> context() override;

    [[nodiscard]] std::shared_ptr<device::Session> session() const;
    // Another device, or none, from now on. What still works on the old one keeps its interfaces.
    void switchTo(std::shared_ptr<device::Session> session);
    // Of all interfaces and devices.
    [[nodiscard]] const std::shared_ptr<OperationRecord> &record() const { return record_; }

private:
    void take(std::shared_ptr<device::Session> session);
    mutable std::mutex mutex_;
    std::shared_ptr<device::Session> session_;
    std::shared_ptr<MobileDevice> device_;
    std::shared_ptr<DeviceContext> context_;
    std::shared_ptr<OperationRecord> record_ = std::make_shared<OperationRecord>();
};

}  // namespace host
