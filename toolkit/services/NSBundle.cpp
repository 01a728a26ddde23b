#include "toolkit/services/NSBundle.h"

#include "toolkit/services/NSFileManager.h"
#include "toolkit/services/NSLog.h"

namespace {

struct Bundles {
    std::mutex mutex;
    std::shared_ptr<NSBundle> main = std::make_shared<NSBundle>(NSString());
    std::shared_ptr<NSBundle> plugin = std::make_shared<NSBundle>(NSString());
};

Bundles &bundles() {
    static auto *shared = new Bundles;
    return *shared;
}

}  // namespace

std::shared_ptr<NSBundle> NSBundle::mainBundle() {
    const std::scoped_lock lock(bundles().mutex);
    return bundles().main;
}

std::shared_ptr<NSBundle> NSBundle::bundleForClass() {
    const std::scoped_lock lock(bundles().mutex);
    return bundles().plugin;
}

void NSBundle::setMainBundle(std::shared_ptr<NSBundle> bundle) {
    const std::scoped_lock lock(bundles().mutex);
    bundles().main = std::move(bundle);
}

void NSBundle::setPluginBundle(std::shared_ptr<NSBundle> bundle) {
    const std::scoped_lock lock(bundles().mutex);
    bundles().plugin = std::move(bundle);
}

const TextTable &NSBundle::table(const NSString &name) {
    const auto found = tables_.find(name);
    if (found != tables_.end())
        return found->second;
    TextTable texts;
    const NSString file = NSString(name.str() + ".strings");
    for (const NSString &folder : {NSString(language_.str() + ".lproj"), NSString("")}) {
        const NSString path = path_.stringByAppendingPathComponent(folder).stringByAppendingPathComponent(file);
        if (path_.isNil() || !NSFileManager::fileExistsAtPath(path))
            continue;
        StringsFileError error;
        texts = readStringsFile(NSFileManager::contentsAtPath(path).value_or(std::string()), &error);
        if (!error.reason.empty())
            NSLog("%@:%d: %@", path, error.line, error.reason);
        break;
    }
    return tables_.emplace(name, std::move(texts)).first->second;
}

NSString NSBundle::localizedStringForKey_value_table(const NSString &key, const NSString &value, const NSString &tableName) {
    const std::scoped_lock lock(mutex_);
    const TextTable &texts = table(tableName);
    if (const auto found = texts.find(key); found != texts.end())
        return found->second;
    return value.isEmpty() ? key : value;
}

void NSBundle::setTable(const NSString &name, TextTable texts) {
    const std::scoped_lock lock(mutex_);
    tables_[name] = std::move(texts);
}

NSString NSBundle::pathForResource_ofType(const NSString &name, const NSString &type) const {
    if (path_.isNil() || name.isEmpty())
        return {};
    const NSString file = type.isEmpty() ? name : name.stringByAppendingPathExtension(type);
    for (const char *folder : {"", "icons"}) {
        const NSString path = path_.stringByAppendingPathComponent(folder).stringByAppendingPathComponent(file);
        if (NSFileManager::fileExistsAtPath(path))
            return path;
    }
    return {};
}

std::shared_ptr<NSImage> NSBundle::imageForResource_ofType(const NSString &name, const NSString &type) const {
    auto image = NSImage::withContentsOfFile(pathForResource_ofType(name, type));
    if (image)
        image->setName(name);
    return image;
}
