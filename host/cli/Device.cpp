// device info, device sample, device create.
#include <unistd.h>

#include "HNManagerPlugin/contracts/RVFoundation/NSStringFormats.h"
#include "device/sample/Sample.h"
#include "host/cli/Commands.h"
#include "host/cli/Device.h"

namespace host::cli {

namespace fs = std::filesystem;

namespace {

Status showInfo(Context &context) {
    const Json info = deviceInfo(context.device());
    if (context.options().json)
        context.console().document(info);
    else
        printDeviceInfo(context.device(), context.console());
    return kDone;
}

bool stands(const fs::path &path) { return fs::exists(fs::symlink_status(path)); }

// Only what a new image may take the place of: an image, or an empty folder. Anything else might be somebody's home.
bool isReplaceable(const fs::path &folder) {
    return fs::is_directory(fs::symlink_status(folder)) && (fs::is_empty(folder) || stands(folder / device::ImageFolder::kPropertiesName));
}

// Makes an image where none stands, or in the place of an old one, which is kept until the new one is whole.
void makeImage(const fs::path &target, bool replaces, const std::function<void(const fs::path &)> &make) {
    const fs::path folder = target.filename().empty() ? target.parent_path() : target;   // "dir/"
    if (!stands(folder))
        return make(folder);
    if (!replaces)
        throw CommandError(kFailed, folder.string() + ": stands already; --replace replaces it");
    if (!isReplaceable(folder))
        throw CommandError(kFailed, folder.string() + ": is no device image, so it is not replaced");
    const fs::path aside = folder.string() + ".replaced-" + std::to_string(getpid());
    fs::rename(folder, aside);
    try {
        make(folder);
    } catch (...) {
        std::error_code error;
        fs::remove_all(folder, error);
        fs::rename(aside, folder, error);
        throw;
    }
    fs::remove_all(aside);
}

Command makeWith(std::string folder, std::function<void(const fs::path &)> make) {
    return [folder, make](Context &context) {
        (void)context.services();   // private copies of databases belong in its scratch folder
        makeImage(folder, context.options().replace, make);
        if (!context.options().json)
            context.console().line(forPeople(NSString(folder)));
        return kDone;
    };
}

const bool registered = registerCommands({10, [](CLI::App &root, const Chosen &chosen) {
    CLI::App *device = root.add_subcommand("device", "The device itself: what it is, and new images");
    device->require_subcommand(1);
    device->add_subcommand("info", "Name, identity, version and room")->callback([chosen] { chosen(showInfo); });

    const auto folder = std::make_shared<std::string>();
    CLI::App *sample = device->add_subcommand("sample", "Make a new image with sample content");
    sample->add_option("DIR", *folder, "Where the image is made")->required();
    sample->callback([chosen, folder] {
        chosen(makeWith(*folder, [](const fs::path &target) { device::sample::createSampleImage(target); }));
    });

    const auto name = std::make_shared<std::string>();
    CLI::App *create = device->add_subcommand("create", "Make a new empty image");
    create->add_option("DIR", *folder, "Where the image is made")->required();
    create->add_option("--name", *name, "The device's name")->required();
    create->callback([chosen, folder, name] {
        chosen(makeWith(*folder, [name](const fs::path &target) { device::sample::createImage(target, *name); }));
    });
}});

}  // namespace

Json deviceInfo(const device::Session &device) {
    return {{"name", toJson(device.name())},
            {"UUID", toJson(device.UUID())},
            {"iOSVersion", toJson(device.iOSVersion())},
            {"freeBytes", device.dataFreeSize()},
            {"totalBytes", device.totalBytes()},
            {"kind", device.kind() == device::DeviceKind::backup ? "backup" : "image"}};
}

void printDeviceInfo(const device::Session &device, Console &console) {
    console.table({{"name", forPeople(device.name())},
                   {"identity", forPeople(device.UUID())},
                   {"version", forPeople(device.iOSVersion())},
                   {"free", byteDecFormatFromInteger(device.dataFreeSize()).str()},
                   {"capacity", byteDecFormatFromInteger(device.totalBytes()).str()},
                   {"kind", device.kind() == device::DeviceKind::backup ? "backup, only read" : "image"}});
}

}  // namespace host::cli
