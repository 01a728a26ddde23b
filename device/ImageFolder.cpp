#include "device/ImageFolder.h"

#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "device/Journal.h"
#include "device/OpenError.h"

namespace device {

namespace fs = std::filesystem;

namespace {

NSString textOr(const PropertyList &list, const char *key) { return unicode::sanitized(list.text(key).value_or("")); }

bool isBelow(const fs::path &root, const fs::path &path) {
    const std::string prefix = root.string() + "/";
    return path == root || path.string().starts_with(prefix);
}

constexpr const char *cloudKey(CloudKind kind) {
    switch (kind) {
    case CloudKind::contacts: return "CloudContacts";
    case CloudKind::bookmarks: return "CloudBookmarks";
    case CloudKind::messages: return "CloudMessages";
    }
    return "";
}

std::string numbered(const std::string &name, int number) {
    if (number == 0)
        return name;
    const std::size_t dot = name.rfind('.');
    const std::size_t stem = dot == std::string::npos || dot == 0 ? name.size() : dot;
    return name.substr(0, stem) + " (" + std::to_string(number) + ")" + name.substr(stem);
}

bool isEmptyOrMissing(const fs::path &folder) {
    std::error_code error;
    if (!fs::exists(fs::symlink_status(folder, error)))
        return true;
    return fs::is_directory(folder, error) && fs::is_empty(folder, error);
}

}  // namespace

ImageFolder::ImageFolder(const fs::path &folder) {
    std::error_code error;
    root_ = fs::canonical(folder, error);
    if (error)
        throw OpenError(OpenError::Kind::noSuchFolder, folder, error.message());
    try {
        (void)properties();
    } catch (const AccessError &refused) {
        throw OpenError(OpenError::Kind::damaged, folder, std::string("its description cannot be read: ") + refused.what());
    }
}

void ImageFolder::create(const fs::path &folder, const PropertyList &properties, const std::function<void(ImageFolder &)> &fill) {
    if (!isEmptyOrMissing(folder))
        throw AccessError(AccessError::Kind::failed, folder.string(), "stands already and is not empty");
    std::error_code error;
    const fs::path absolute = fs::absolute(folder).lexically_normal();
    const fs::path target = absolute.has_filename() ? absolute : absolute.parent_path();
    fs::create_directories(target.parent_path(), error);
    std::string pattern = (target.parent_path() / (std::string(kTemporaryPrefix) + "XXXXXX")).string();
    if (!mkdtemp(pattern.data()))
        throw AccessError::ofSystem(errno, folder.string());
    try {
        replaceWhole(fs::path(pattern) / kPropertiesName, properties.bytes());
        if (fill) {
            ImageFolder image{fs::path(pattern)};
            fill(image);
        }
        if (rename(pattern.c_str(), target.c_str()) != 0)
            throw AccessError::ofSystem(errno, folder.string());
        syncFolder(target.parent_path());
    } catch (...) {
        fs::remove_all(pattern, error);
        throw;
    }
}

PropertyList ImageFolder::properties() const { return PropertyList::read(root_ / kPropertiesName); }

void ImageFolder::setProperties(const WriterLock &, const PropertyList &properties) const {
    replaceWhole(root_ / kPropertiesName, properties.bytes());
}

DeviceInfo ImageFolder::info() const {
    const PropertyList list = properties();
    DeviceInfo info;
    info.kind = DeviceKind::image;
    info.name = textOr(list, "DeviceName");
    info.UUID = textOr(list, "UniqueDeviceID");
    info.iOSVersion = textOr(list, "ProductVersion");
    info.productType = textOr(list, "ProductType");
    info.totalBytes = std::max<std::int64_t>(0, list.integer("TotalDataCapacity").value_or(0));
    info.willEncrypt = list.flag("WillEncrypt").value_or(false);
    return info;
}

bool ImageFolder::isInCloud(CloudKind kind) const {
    try {
        return properties().flag(cloudKey(kind)).value_or(false);
    } catch (const AccessError &) {   // a device that has gone keeps nothing in the cloud
        return false;
    }
}

std::int64_t ImageFolder::freeBytes() const {
    struct statvfs disk;
    if (statvfs(root_.c_str(), &disk) != 0)
        return 0;
    const auto onDisk = static_cast<std::int64_t>(disk.f_bavail) * static_cast<std::int64_t>(disk.f_frsize);
    std::int64_t capacity = 0;
    try {
        capacity = info().totalBytes;
    } catch (const AccessError &) {
        return 0;
    }
    return capacity == 0 ? onDisk : std::clamp<std::int64_t>(capacity - usedBytes(), 0, onDisk);
}

std::optional<fs::path> ImageFolder::placeOf(const DevicePath &path) const {
    if (!staysInside(path))
        return std::nullopt;
    fs::path place = root_;
    for (const fs::path &name : fs::path(path.domain) / path.path) {
        if (name.empty())
            continue;
        place /= name;
        std::error_code error;
        if (!fs::is_symlink(fs::symlink_status(place, error)))
            continue;
        const fs::path target = fs::canonical(place, error);   // fails for a link to nowhere
        if (error || !isBelow(root_, target))
            return std::nullopt;
        place = target;
    }
    return place;
}

fs::path ImageFolder::placeForWriting(const DevicePath &path) const {
    const std::optional<fs::path> place = placeOf(path);
    if (!place || path.path.empty())
        throw AccessError(AccessError::Kind::outside, path.name(), "a path that leaves the device's folder");
    if (!isThere())
        throw AccessError(AccessError::Kind::gone, root_.string(), "the device has gone");
    std::error_code error;
    fs::create_directories(place->parent_path(), error);
    if (error)
        throw AccessError::ofSystem(error.value(), place->parent_path().string());
    return *place;
}

std::optional<fs::path> ImageFolder::find(const DevicePath &path) const {
    std::optional<fs::path> place = placeOf(path);
    std::error_code error;
    if (!place || !fs::is_regular_file(*place, error))
        return std::nullopt;
    return place;
}

std::vector<FileEntry> ImageFolder::list(const DevicePath &folder) const {
    std::vector<FileEntry> entries;
    const std::optional<fs::path> place = placeOf(folder);
    if (!place)
        return entries;
    std::error_code error;
    for (fs::directory_iterator entry(*place, error); !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with(kTemporaryPrefix))
            continue;
        const auto target = placeOf({folder.domain, folder.path.empty() ? name : folder.path + "/" + name});
        std::error_code unreadable;
        if (target && fs::is_directory(*target, unreadable))
            entries.push_back({name, true, 0});
        else if (target && fs::is_regular_file(*target, unreadable))
            entries.push_back({name, false, static_cast<std::int64_t>(fs::file_size(*target, unreadable))});
    }
    std::ranges::sort(entries, {}, &FileEntry::name);
    return entries;
}

std::vector<std::string> ImageFolder::domains() const {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(root_, error); !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        std::error_code unreadable;
        if (!name.starts_with('.') && entry->is_directory(unreadable))
            names.push_back(name);
    }
    std::ranges::sort(names);
    return names;
}

sqlite::Database ImageFolder::openForReading(const DevicePath &path) const {
    const std::optional<fs::path> file = find(path);
    if (!file)
        throw AccessError(AccessError::Kind::missing, path.name(), "no such file on the device");
    checkCompanions(*file);
    const fs::path wal = beside(*file, "-wal"), journal = beside(*file, "-journal");
    if (hasBytes(wal))
        return openCopy(*file, wal, journal);   // reading a log in place makes side files
    if (usesLog(*file))
        return {*file, sqlite::Access::immutable};
    if (!hasBytes(journal))
        return {*file, sqlite::Access::readOnly};
    // A writer is at work, or was killed: the first reader takes its half change back.
    try {
        sqlite::Database database(*file, sqlite::Access::readWrite);
        (void)database.integer("SELECT count(*) FROM sqlite_master");
        return database;
    } catch (const sqlite::Error &error) {
        if (error.kind() != sqlite::Error::Kind::readOnly && error.kind() != sqlite::Error::Kind::cannotOpen)
            throw;
        return openCopy(*file, wal, journal);
    }
}

sqlite::Database ImageFolder::openForWriting(const WriterLock &, const DevicePath &path) const {
    const std::optional<fs::path> file = find(path);
    if (!file)
        throw AccessError(AccessError::Kind::missing, path.name(), "no such file on the device");
    checkCompanions(*file);
    sqlite::Database database(*file, sqlite::Access::readWrite);
    // A log commits each database for itself; one commit over two needs the rollback journal.
    database.exec("PRAGMA main.journal_mode = DELETE; PRAGMA main.synchronous = FULL");
    return database;
}

void ImageFolder::attachForWriting(const WriterLock &, sqlite::Database &database, const DevicePath &path, const char *schema) const {
    const fs::path file = placeForWriting(path);
    checkCompanions(file);
    database.attach(file, schema, sqlite::Access::create);
    const std::string name = schema;
    database.exec("PRAGMA " + name + ".journal_mode = DELETE; PRAGMA " + name + ".synchronous = FULL");
}

void ImageFolder::createDatabase(const WriterLock &, const DevicePath &path, const std::string &sql) const {
    const fs::path file = placeForWriting(path);
    std::error_code error;
    if (fs::exists(file, error))
        return;
    sqlite::Database database(file, sqlite::Access::create);
    sqlite::Transaction all(database);
    database.exec(sql);
    all.commit();
}

std::string ImageFolder::add(const WriterLock &, const DevicePath &folder, const std::string &name, File &source) const {
    std::string free;
    fs::path place;
    std::error_code error;
    for (int number = 0;; ++number) {
        free = numbered(name, number);
        if (free.find('/') != std::string::npos)
            throw AccessError(AccessError::Kind::outside, folder.name() + "/" + name, "a name that is a path");
        place = placeForWriting({folder.domain, folder.path.empty() ? free : folder.path + "/" + free});
        if (!fs::exists(fs::symlink_status(place, error)))
            break;
    }
    replaceWhole(place, source);
    return free;
}

void ImageFolder::replace(const WriterLock &, const DevicePath &path, File &source) const {
    replaceWhole(placeForWriting(path), source);
}

void ImageFolder::replace(const WriterLock &, const DevicePath &path, std::string_view bytes) const {
    replaceWhole(placeForWriting(path), bytes);
}

void ImageFolder::remove(const WriterLock &, const DevicePath &path) const {
    const std::optional<fs::path> place = placeOf(path);
    if (!place || path.path.empty())
        throw AccessError(AccessError::Kind::outside, path.name(), "a path that leaves the device's folder");
    if (unlink(place->c_str()) != 0 && errno != ENOENT && errno != ENOTDIR)
        throw AccessError::ofSystem(errno, place->string());
    syncFolder(place->parent_path());
}

}  // namespace device
