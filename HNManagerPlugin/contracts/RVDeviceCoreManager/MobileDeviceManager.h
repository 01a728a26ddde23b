// Who the current device is, and how to reach its interfaces. Thin: everything forwards to what the host installed.
//
// State    connection is asked for at each step and never stored by the plug-in; a nil device answers as zero.
// Notices  NMobileDeviceDidSwitchChangeNotification is posted on the main thread when the current device changed,
//          NMobileDeviceDisConnectionDidChangeNotification when it went away.
// Threads  every operation on any thread.
#pragma once

#include <cstdint>
#include <memory>

#include "toolkit/NSObject.h"

class CFileManagerImpl;
class CPhotoManagerImpl;
class CMediaManagerImpl;
class CITunesManagerImpl;
class CContactManagerImpl;
class CBookmarkManagerImpl;
class CBookManagerImpl;
class CAppManagerImpl;

inline constexpr const char *NMobileDeviceDidSwitchChangeNotification = "NMobileDeviceDidSwitchChangeNotification";
inline constexpr const char *NMobileDeviceDisConnectionDidChangeNotification = "NMobileDeviceDisConnectionDidChangeNotification";

// One device.
class MobileDevice : public NSObject {
public:
    // Reads the free space from the device anew, synchronously. The flag is 1 in import flows, 0 in the app flow.
    virtual void syncRefreshAvailableSize(std::int64_t flag) = 0;
    // Bytes free on the data partition after the last refresh.
    [[nodiscard]] virtual std::int64_t dataFreeSize() = 0;
    // The device's identity; used in cache paths.
    [[nodiscard]] virtual NSString UUID() = 0;
    // "12.4.1".
    [[nodiscard]] virtual NSString iOSVersion() = 0;
};

// The interface objects of the current device, one per kind of data; each is opened on first use. Null where the device
// layer has no such interface.
class DeviceContext : public NSObject {
public:
    [[nodiscard]] virtual std::shared_ptr<CFileManagerImpl> fileInterface() { return nullptr; }
    [[nodiscard]] virtual std::shared_ptr<CPhotoManagerImpl> photoInterface() { return nullptr; }
    [[nodiscard]] virtual std::shared_ptr<CMediaManagerImpl> mediaInterface() { return nullptr; }
    [[nodiscard]] virtual std::shared_ptr<CITunesManagerImpl> itunesInterface() { return nullptr; }
    [[nodiscard]] virtual std::shared_ptr<CContactManagerImpl> contactInterface() { return nullptr; }
    [[nodiscard]] virtual std::shared_ptr<CBookmarkManagerImpl> bookMarkInterface() { return nullptr; }
    [[nodiscard]] virtual std::shared_ptr<CBookManagerImpl> iBookInterface() { return nullptr; }
    [[nodiscard]] virtual std::shared_ptr<CAppManagerImpl> appInterface() { return nullptr; }
};

// What a host installs: the device layer as a whole.
class DeviceLayer {
public:
    virtual ~DeviceLayer() = default;
    [[nodiscard]] virtual bool isDeviceConnected() = 0;
    // Null where no device is chosen.
    [[nodiscard]] virtual std::shared_ptr<MobileDevice> currentDevice() = 0;
    [[nodiscard]] virtual NSString deviceName() = 0;
    [[nodiscard]] virtual std::shared_ptr<DeviceContext> context() = 0;
};

// Null takes the layer away: no device, nothing connected.
void installDeviceLayer(std::shared_ptr<DeviceLayer> layer);

class MobileDeviceManager {
public:
    [[nodiscard]] static const MobileDeviceManager &defaultManager();
    [[nodiscard]] bool isDeviceConnected() const;
    [[nodiscard]] std::shared_ptr<MobileDevice> currentDevice() const;
    // Absent without a device.
    [[nodiscard]] NSString deviceName() const;
};

// The exported global with the same role as the shared MobileDeviceManager; kept: code of both kinds exists.
class GlobleDeviceManagerObject {
public:
    [[nodiscard]] std::shared_ptr<MobileDevice> currentDevice() const;
};
extern const GlobleDeviceManagerObject GlobleDeviceManager;

class CContextFactory {
public:
    [[nodiscard]] static const CContextFactory &shareInstance();
    // Never null: without a device it has no interfaces.
    [[nodiscard]] std::shared_ptr<DeviceContext> defaultManager() const;
};

class GContextFactoryObject {
public:
    [[nodiscard]] std::shared_ptr<DeviceContext> defaultManager() const;
};
extern const GContextFactoryObject GContextFactory;
