#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"

#include <mutex>

namespace {

struct Installed {
    std::mutex mutex;
    std::shared_ptr<DeviceLayer> layer;
};

Installed &installed() {
    static auto *shared = new Installed;
    return *shared;
}

std::shared_ptr<DeviceLayer> layer() {
    const std::scoped_lock lock(installed().mutex);
    return installed().layer;
}

std::shared_ptr<DeviceContext> contextOfLayer() {
    const auto device = layer();
    auto context = device ? device->context() : nullptr;
    return context ? context : make<DeviceContext>();
}

}  // namespace

const GlobleDeviceManagerObject GlobleDeviceManager;
const GContextFactoryObject GContextFactory;

void installDeviceLayer(std::shared_ptr<DeviceLayer> newLayer) {
    std::shared_ptr<DeviceLayer> old;   // ends without the lock
    const std::scoped_lock lock(installed().mutex);
    old = std::exchange(installed().layer, std::move(newLayer));
}

const MobileDeviceManager &MobileDeviceManager::defaultManager() {
    static const MobileDeviceManager manager;
    return manager;
}

bool MobileDeviceManager::isDeviceConnected() const {
    const auto device = layer();
    return device && device->isDeviceConnected();
}

std::shared_ptr<MobileDevice> MobileDeviceManager::currentDevice() const {
    const auto device = layer();
    return device ? device->currentDevice() : nullptr;
}

NSString MobileDeviceManager::deviceName() const {
    const auto device = layer();
    return device ? device->deviceName() : NSString();
}

std::shared_ptr<MobileDevice> GlobleDeviceManagerObject::currentDevice() const {
    return MobileDeviceManager::defaultManager().currentDevice();
}

const CContextFactory &CContextFactory::shareInstance() {
    static const CContextFactory factory;
    return factory;
}

std::shared_ptr<DeviceContext> CContextFactory::defaultManager() const { return contextOfLayer(); }
std::shared_ptr<DeviceContext> GContextFactoryObject::defaultManager() const { return contextOfLayer(); }
