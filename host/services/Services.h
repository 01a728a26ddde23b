// Everything that a program hands to the toolkit and the contracts before it loads the plug-in, in one object: settings,
// texts, folders, log, workspace, device layer, gates.
//
// Life     one per process, made at the start on the main thread, after the clock and the loop; its end takes all of it
//          back and removes the scratch folder.
// Errors   std::filesystem::filesystem_error where the program's own folders cannot be made.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "device/Session.h"
#include "host/services/DeviceWatch.h"
#include "host/services/Folders.h"
#include "host/services/HostDeviceLayer.h"
#include "host/services/HostGates.h"
#include "host/services/PluginModule.h"

namespace host {

class Services {
public:
    // Messages for the user. Any thread.
    using Warn = std::function<void(const std::string &)>;

    Services(Warn warn, HostGates::Refused refused);
    ~Services();
    Services(const Services &) = delete;

    [[nodiscard]] const ProgramFolders &folders() const { return folders_; }
    // Private to this process, gone with it.
    [[nodiscard]] const std::filesystem::path &scratch() const { return scratch_.path(); }
    [[nodiscard]] const std::shared_ptr<HostDeviceLayer> &deviceLayer() const { return layer_; }

    // The folder that a device is opened from: `named`, else $HNMANAGER_DEVICE, else the embedded image, which is made.
    [[nodiscard]] std::filesystem::path deviceFolder(const std::optional<std::string> &named) const;
    // Opens it and makes it the current device, watched from now on. Throws device::OpenError; the device before stays.
    std::shared_ptr<device::Session> openDevice(const std::filesystem::path &folder);
    // A new principal object of the plug-in beside the program. Throws PluginError.
    [[nodiscard]] std::shared_ptr<RVBasePluginObject> loadPlugin() const;

    // What the end does to the disk, at once; for an end without destructors. Any thread.
    void removeScratch() noexcept { scratch_.remove(); }

private:
    ProgramFolders folders_;
    ProcessFolder scratch_;
    std::shared_ptr<HostDeviceLayer> layer_;
    std::unique_ptr<DeviceWatch> watch_;
};

}  // namespace host
