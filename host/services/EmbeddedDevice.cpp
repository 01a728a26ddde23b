#include "host/services/EmbeddedDevice.h"

#include "device/sample/Sample.h"
#include "host/services/Folders.h"
#include "toolkit/services/NSLog.h"

namespace host {

namespace fs = std::filesystem;

std::filesystem::path embeddedDevice(const fs::path &data) {
    const fs::path folder = data / "device", description = folder / device::ImageFolder::kPropertiesName;
    if (!fs::exists(description)) {
        makePrivate(data);
        try {
            device::sample::createSampleImage(folder);
        } catch (const device::AccessError &) {
            // A program that was started at the same moment may have been faster.
            if (!fs::exists(description))
                throw;
        }
        return folder;
    }
    try {
        device::ImageFolder image(folder);
        device::sample::addMissingKinds(image);
    } catch (const std::exception &failure) {
        NSLog("the embedded device got no new content: %s", failure.what());
    }
    return folder;
}

}  // namespace host
