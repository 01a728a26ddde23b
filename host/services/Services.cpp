#include "host/services/Services.h"

#include <cstdlib>

#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"
#include "device/Open.h"
#include "device/ScratchFolder.h"
#include "device/backup/BackupTask.h"
#include "host/services/EmbeddedDevice.h"
#include "host/services/ExportPlaces.h"
#include "host/services/LogFile.h"
#include "host/services/PictureFiles.h"
#include "host/services/SettingsFile.h"
#include "host/services/WorkspaceOpener.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/services/NSLog.h"

namespace host {

namespace fs = std::filesystem;

namespace {

UserFolders allUserFolders(const ProgramFolders &folders, const fs::path &scratch) {
    const fs::path temporary = folders.cache / "tmp";
    makePrivate(temporary);
    UserFolders user = userFoldersOf(folders);
    user.temporary = NSString(temporary.string());
    user.applicationSupport = NSString(scratch.string());
    return user;
}

void installSettings(const fs::path &folder, const Services::Warn &warn) {
    const auto file = std::make_shared<SettingsFile>(folder / "settings.json", warn);
    RVProductConfig::install(SettingsFile::group(file, "product"));
    NSUserDefaults::standardUserDefaults().install(SettingsFile::group(file, "defaults"));
}

// Tasks follow the current device; why one failed stands in the layer's record.
void installBackups(const std::shared_ptr<HostDeviceLayer> &layer) {
    const auto device = [layer] {
        const auto session = layer->session();
        return session ? session->tree() : nullptr;
    };
    RKBackupAndRestoreTask::install([device, record = layer->record()]() -> std::shared_ptr<RKBackupAndRestoreTask> {
        return alloc<device::backup::BackupTask>(
            device::backup::BackupTask::Environment{device, [record](const device::Failure &failure) { record->explain(failure); }});
    });
}

void removeBackups() {
    RKBackupAndRestoreTask::sharedInstance()->stopBackup();
    RKBackupAndRestoreTask::install(nullptr);
}

}  // namespace

Services::Services(Warn warn, HostGates::Refused refused)
    : folders_(programFolders()), scratch_(folders_.cache / "scratch"), layer_(std::make_shared<HostDeviceLayer>(nullptr)) {
    device::ScratchFolder::setParent(scratch_.path());
    setUserFolders(allUserFolders(folders_, scratch_.path()));
    LogFile::install(std::make_shared<LogFile>(folders_.state / "hnmanager.log"));
    installSettings(folders_.configuration, warn);
    // One folder of resources serves both; the plug-in's own pictures and lists are copied beside the texts.
    const auto resources = std::make_shared<NSBundle>(NSString(folders_.resources.string()));
    NSBundle::setMainBundle(resources);
    NSBundle::setPluginBundle(resources);
    ExportPlaces::install(warn);
    NSWorkspace::sharedWorkspace().install(ExportPlaces::opener(std::make_shared<WorkspaceOpener>()));
    installDeviceLayer(layer_);
    installBackups(layer_);
    installPictureConverter(warn);
    RStrategyActionEventRouter::shareInstance().install(std::make_shared<HostGates>(layer_, std::move(refused)));
}

Services::~Services() {
    watch_.reset();
    RStrategyActionEventRouter::shareInstance().install(nullptr);
    removeBackups();
    installPictureConverter({});
    ExportPlaces::remove();
    installDeviceLayer(nullptr);
    NSWorkspace::sharedWorkspace().install(nullptr);
    NSUserDefaults::standardUserDefaults().install(nullptr);
    RVProductConfig::install(nullptr);
    setLogSink({});
}

std::filesystem::path Services::deviceFolder(const std::optional<std::string> &named) const {
    if (named)
        return *named;
    if (const char *fromEnvironment = std::getenv("HNMANAGER_DEVICE"); fromEnvironment && *fromEnvironment)
        return fromEnvironment;
    return embeddedDevice(folders_.data);
}

std::shared_ptr<device::Session> Services::openDevice(const fs::path &folder) {
    auto session = std::make_shared<device::Session>(device::openDevice(folder));
    layer_->switchTo(session);
    if (!watch_)
        watch_ = std::make_unique<DeviceWatch>(layer_);
    return session;
}

std::shared_ptr<RVBasePluginObject> Services::loadPlugin() const { return host::loadPlugin(folders_.program / kPluginModuleName); }

}  // namespace host
