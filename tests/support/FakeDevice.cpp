#include "tests/support/FakeDevice.h"

#include <fstream>

#include "toolkit/services/NSWorkspace.h"

using namespace std::chrono_literals;

struct FakeDevice::Layer : DeviceLayer {
    Shared<bool> connected{true};
    std::shared_ptr<MobileDevice> device;
    std::shared_ptr<DeviceContext> ownContext;
    bool isDeviceConnected() override { return connected; }
    std::shared_ptr<MobileDevice> currentDevice() override { return connected ? device : nullptr; }
    NSString deviceName() override { return "Fake"; }
    std::shared_ptr<DeviceContext> context() override { return ownContext; }
};

FakeDevice::FakeDevice(std::shared_ptr<DeviceContext> context) : layer_(std::make_shared<Layer>()) {
    layer_->device = device_;
    if (context) {
        layer_->ownContext = std::move(context);
    } else {
        const auto plain = make<FakeContext>();
        files_ = plain->files;
        files_->isConnected = [link = std::weak_ptr(layer_)] {
            const auto layer = link.lock();
            return layer && layer->connected;
        };
        layer_->ownContext = plain;
    }
    installDeviceLayer(layer_);
}

FakeDevice::~FakeDevice() {
    installDeviceLayer(nullptr);
    NSWorkspace::sharedWorkspace().install(nullptr);
}

void FakeDevice::leave() { layer_->connected = false; }

void FakeFileInterface::exportDevcieFile_toDirectory_getExportFile_progress(const std::vector<std::shared_ptr<DeviceFileInfo>> &list,
                                                                            const NSString &directory, std::vector<NSString> *written,
                                                                            const ProgressBlock &progress) {
    TransferProgress report;
    report.totalCount = static_cast<std::int64_t>(list.size());
    for (const auto &file : list)
        if (const auto found = files.find(file->path.str()); found != files.end())
            report.totalSize += static_cast<std::int64_t>(found->second.size());
    for (const auto &file : list) {
        dispatch::sleepFor(1s);
        if (!isConnected())
            break;
        ++report.currentIndex;
        report.fileName = file->path;
        const auto found = files.find(file->path.str());
        const NSString path = NSString::stringWithFormat("%@/%@", directory, file->fileName);
        if (found != files.end() && std::ofstream(path.str(), std::ios::binary) << found->second) {
            ++report.successCount;
            report.currentSize += static_cast<std::int64_t>(found->second.size());
            if (written)
                written->push_back(path);
        }
        if (progress(report, false) == -1)
            break;
    }
    dispatch::sleepFor(1s);
    progress(report, true);
}

void logWorkspaceTo(EventLog &log) {
    struct Workspace : WorkspaceService {
        explicit Workspace(EventLog &log) : log(log) {}
        bool openFile(const NSString &path) override {
            log.add("opens " + path.str());
            return true;
        }
        bool openURL(const NSString &address) override {
            log.add("browses " + address.str());
            return true;
        }
        EventLog &log;
    };
    NSWorkspace::sharedWorkspace().install(std::make_shared<Workspace>(log));
}
