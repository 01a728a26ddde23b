#include "device/sample/Sample.h"

#include <algorithm>

#include "device/sqlite/Functions.h"

namespace device::sample {

namespace {

constexpr const char *kKindsKey = "SampleKinds";   // in Device.plist
constexpr std::int64_t kCapacityBytes = 64'000'000'000;

std::vector<Kind> &registry() {
    static std::vector<Kind> kinds;
    return kinds;
}

PropertyList newProperties(const std::string &name) {
    PropertyList properties;
    properties.setText("DeviceName", name);
    properties.setText("UniqueDeviceID", sqlite::newGuid());
    properties.setText("ProductVersion", "16.5");
    properties.setText("ProductType", "iPhone14,5");
    properties.setInteger("TotalDataCapacity", kCapacityBytes);
    for (const char *flag : {"WillEncrypt", "CloudContacts", "CloudBookmarks", "CloudMessages"})
        properties.setFlag(flag, false);
    return properties;
}

void makeEmpty(ImageFolder &image) {
    for (const Kind &kind : kinds())
        kind.makeEmpty(image);
}

}  // namespace

bool registerKind(Kind kind) {
    auto &all = registry();
    all.insert(std::ranges::upper_bound(all, kind.name, {}, &Kind::name), std::move(kind));
    return true;
}

const std::vector<Kind> &kinds() { return registry(); }

void createImage(const std::filesystem::path &folder, const std::string &name) {
    ImageFolder::create(folder, newProperties(name), makeEmpty);
}

void createSampleImage(const std::filesystem::path &folder, const std::string &name) {
    PropertyList properties = newProperties(name);
    properties.setTexts(kKindsKey, {});
    ImageFolder::create(folder, properties, addMissingKinds);
}

void addMissingKinds(ImageFolder &image) {
    PropertyList properties = image.properties();
    if (!properties.has(kKindsKey))
        return;
    for (const Kind &kind : kinds()) {
        std::vector<std::string> given = properties.texts(kKindsKey);
        if (std::ranges::find(given, kind.name) != given.end())
            continue;
        kind.makeEmpty(image);
        kind.addContent(image);
        given.push_back(kind.name);
        properties.setTexts(kKindsKey, given);
        const WriterLock lock = image.lockForWriting();
        image.setProperties(lock, properties);
    }
}

}  // namespace device::sample
