// A small device in memory, as far as flows ask: whether it is there, its room, its files. Categories add their interfaces by
// `context`. Each file takes a second of the test's clock to be copied, so that a scripted person can act in between.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/CFileManagerImpl.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "tests/support/EventLog.h"
#include "toolkit/Property.h"

class FakeMobileDevice : public MobileDevice {
public:
    Shared<std::int64_t> freeBytes{1'000'000};
    NSString uuid = "FAKE-UUID", version = "12.4.1";
    void syncRefreshAvailableSize(std::int64_t) override { ++refreshes; }
    [[nodiscard]] std::int64_t dataFreeSize() override { return refreshes > 0 ? freeBytes.get() : 0; }
    [[nodiscard]] NSString UUID() override { return uuid; }
    [[nodiscard]] NSString iOSVersion() override { return version; }
    std::atomic<int> refreshes = 0;
};

// Files under their device paths; an export writes them for real.
class FakeFileInterface : public CFileManagerImpl {
public:
    std::map<std::string, std::string> files;
    std::function<bool()> isConnected = [] { return true; };

    void exportDevcieFile_toDirectory_getExportFile_progress(const std::vector<std::shared_ptr<DeviceFileInfo>> &list,
                                                             const NSString &directory, std::vector<NSString> *written,
                                                             const ProgressBlock &progress) override;
    // No flow asks for it.
    void exportFile_toDirectory_getExportFile_progress(const std::vector<NSString> &, const NSString &, std::vector<NSString> *,
                                                       const ProgressBlock &) override {}
};

class FakeContext : public DeviceContext {
public:
    std::shared_ptr<FakeFileInterface> files = make<FakeFileInterface>();
    [[nodiscard]] std::shared_ptr<CFileManagerImpl> fileInterface() override { return files; }
};

// Installs itself as the device layer; at its end it takes itself and the noted workspace away.
class FakeDevice {
public:
    explicit FakeDevice(std::shared_ptr<DeviceContext> context = nullptr);
    ~FakeDevice();
    FakeDevice(const FakeDevice &) = delete;
    FakeDevice &operator=(const FakeDevice &) = delete;

    // It was pulled out: running transfers end early. Without the notice.
    void leave();
    [[nodiscard]] FakeMobileDevice &device() { return *device_; }
    // Of the plain context.
    [[nodiscard]] FakeFileInterface &files() { return *files_; }

private:
    struct Layer;
    std::shared_ptr<Layer> layer_;
    std::shared_ptr<FakeMobileDevice> device_ = make<FakeMobileDevice>();
    std::shared_ptr<FakeFileInterface> files_;
};

// Notes until the fake device ends what the user's programs were asked to open: "opens PATH", "browses ADDRESS".
void logWorkspaceTo(EventLog &log);
