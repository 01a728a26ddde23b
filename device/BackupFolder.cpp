#include "device/BackupFolder.h"

#include <openssl/evp.h>

#include <algorithm>
#include <array>

#include "device/Journal.h"
#include "device/OpenError.h"
#include "device/plist/PropertyList.h"

namespace device {

namespace fs = std::filesystem;

namespace {

constexpr std::int64_t kFileFlag = 1, kFolderFlag = 2;

std::optional<PropertyList> readIfThere(const fs::path &file) {
    std::error_code error;
    if (!fs::exists(file, error))
        return std::nullopt;
    return PropertyList::read(file);
}

void refuseEncrypted(const fs::path &folder, const fs::path &manifest) {
    try {
        const auto list = readIfThere(manifest);
        if (list && list->flag("IsEncrypted").value_or(false))
            throw OpenError(OpenError::Kind::encrypted, folder, "this backup is encrypted and cannot be read; make one without a password");
    } catch (const AccessError &refused) {
        throw OpenError(OpenError::Kind::damaged, folder, std::string("the backup's description cannot be read: ") + refused.what());
    }
}

NSString firstOf(const std::optional<PropertyList> &list, std::initializer_list<const char *> keys) {
    if (list)
        for (const char *key : keys)
            if (const auto text = list->text(key); text && !text->empty())
                return unicode::sanitized(*text);
    return "";
}

}  // namespace

BackupFolder::BackupFolder(const fs::path &folder) {
    std::error_code error;
    root_ = fs::canonical(folder, error);
    if (error)
        throw OpenError(OpenError::Kind::noSuchFolder, folder, error.message());
    refuseEncrypted(folder, root_ / "Manifest.plist");
    const fs::path manifest = root_ / "Manifest.db";
    if (!fs::exists(manifest, error))
        throw OpenError(OpenError::Kind::damaged, folder,
                        fs::exists(root_ / "Manifest.mbdb", error) ? "a backup made before iOS 10 (Manifest.mbdb) cannot be read"
                                                                   : "the backup has no list of its files (Manifest.db)");
    try {
        const fs::path wal = beside(manifest, "-wal");
        manifest_.emplace(hasBytes(wal) ? openCopy(manifest, wal, {}) : sqlite::Database(manifest, sqlite::Access::immutable));
        const sqlite::Table files = manifest_->table("Files");
        if (!files.has("fileID") || !files.has("domain") || !files.has("relativePath"))
            throw OpenError(OpenError::Kind::damaged, folder, "Manifest.db is not the list of a backup's files");
    } catch (const sqlite::Error &refused) {
        throw OpenError(OpenError::Kind::damaged, folder, std::string("Manifest.db cannot be read (encrypted or damaged): ") + refused.what());
    } catch (const AccessError &refused) {
        throw OpenError(OpenError::Kind::unreadable, folder, refused.what());
    }
}

bool BackupFolder::looksLikeOne(const fs::path &folder) {
    std::error_code error;
    return fs::exists(folder / "Manifest.db", error) || fs::exists(folder / "Manifest.plist", error) ||
           fs::exists(folder / "Manifest.mbdb", error);
}

std::string BackupFolder::fileID(const DevicePath &path) {
    const std::string name = path.name();
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest;
    std::size_t size = 0;
    EVP_Q_digest(nullptr, "SHA1", nullptr, name.data(), name.size(), digest.data(), &size);
    static constexpr char kHex[] = "0123456789abcdef";
    std::string id;
    for (std::size_t i = 0; i < size; ++i) {
        id += kHex[digest[i] >> 4];
        id += kHex[digest[i] & 15];
    }
    return id;
}

fs::path BackupFolder::placeOf(const std::string &fileID) const { return root_ / fileID.substr(0, 2) / fileID; }

DeviceInfo BackupFolder::info() const {
    std::optional<PropertyList> info, manifest;
    try {   // a backup whose description is damaged is still worth reading
        info = readIfThere(root_ / "Info.plist");
    } catch (const AccessError &) {
    }
    try {
        if (const auto whole = readIfThere(root_ / "Manifest.plist"))
            manifest = whole->dictionary("Lockdown");
    } catch (const AccessError &) {
    }
    const auto either = [&](std::initializer_list<const char *> inInfo, const char *inManifest) {
        const NSString text = firstOf(info, inInfo);
        return text.isEmpty() ? firstOf(manifest, {inManifest}) : text;
    };
    DeviceInfo about;
    about.kind = DeviceKind::backup;
    about.name = either({"Device Name", "Display Name"}, "DeviceName");
    about.UUID = either({"Target Identifier", "Unique Identifier"}, "UniqueDeviceID");
    about.iOSVersion = either({"Product Version"}, "ProductVersion");
    about.productType = either({"Product Type"}, "ProductType");
    if (about.name.isEmpty())
        about.name = unicode::sanitized(root_.filename().string());
    if (about.UUID.isEmpty())
        about.UUID = unicode::sanitized(root_.filename().string());
    return about;
}

std::optional<fs::path> BackupFolder::find(const DevicePath &path) const {
    if (!staysInside(path))
        return std::nullopt;
    const std::string id = fileID(path);
    {
        const std::lock_guard hold(guard_);
        try {
            if (!find_)   // kept: messages ask for their attachments by the hundred thousand
                find_ = manifest_->prepare("SELECT 1 FROM Files WHERE fileID = ?");
            find_.reset();
            if (!find_.bind(1, id).step())
                return std::nullopt;
        } catch (const sqlite::Error &) {
            return std::nullopt;
        }
    }
    std::error_code error;
    const fs::path place = placeOf(id);
    const fs::path real = fs::canonical(place, error);
    if (error || real != place || !fs::is_regular_file(place, error))   // a link could lead out of the backup
        return std::nullopt;
    return place;
}

std::vector<FileEntry> BackupFolder::list(const DevicePath &folder) const {
    std::vector<FileEntry> entries;
    if (!staysInside(folder))
        return entries;
    const std::string prefix = folder.path.empty() ? "" : folder.path + "/";
    {
        const std::lock_guard hold(guard_);
        try {
            // '0' is the character behind '/': the range is everything below the folder.
            sqlite::Statement rows = manifest_->prepare(
                prefix.empty() ? "SELECT relativePath, flags FROM Files WHERE domain = ?1"
                               : "SELECT relativePath, flags FROM Files WHERE domain = ?1 AND relativePath > ?2 AND relativePath < ?3");
            rows.bind(1, folder.domain);
            if (!prefix.empty())
                rows.bind(2, prefix).bind(3, folder.path + "0");
            while (rows.step()) {
                const std::string path(rows.rawText(0));
                const std::int64_t flags = rows.integer(1);
                const bool isDirect = path.size() > prefix.size() && path.find('/', prefix.size()) == std::string::npos;
                if (isDirect && staysInside({folder.domain, path}) && (flags == kFileFlag || flags == kFolderFlag))
                    entries.push_back({path.substr(prefix.size()), flags == kFolderFlag, 0});
            }
        } catch (const sqlite::Error &) {   // what could be read up to the damage
        }
    }
    std::erase_if(entries, [&](FileEntry &entry) {
        if (entry.isFolder)
            return false;
        const auto place = find({folder.domain, prefix + entry.name});
        std::error_code error;
        if (place)
            entry.sizeBytes = static_cast<std::int64_t>(fs::file_size(*place, error));
        return !place;
    });
    std::ranges::sort(entries, {}, &FileEntry::name);
    return entries;
}

std::vector<std::string> BackupFolder::domains() const {
    std::vector<std::string> names;
    const std::lock_guard hold(guard_);
    try {
        sqlite::Statement rows = manifest_->prepare("SELECT DISTINCT domain FROM Files ORDER BY domain");
        while (rows.step())
            if (std::string name(rows.rawText(0)); staysInside({name, ""}))
                names.push_back(std::move(name));
    } catch (const sqlite::Error &) {
    }
    return names;
}

sqlite::Database BackupFolder::openForReading(const DevicePath &path) const {
    const std::optional<fs::path> file = find(path);
    if (!file)
        throw AccessError(AccessError::Kind::missing, path.name(), "no such file in the backup");
    const std::optional<fs::path> wal = find({path.domain, path.path + "-wal"});
    if (wal && hasBytes(*wal))
        return openCopy(*file, *wal, {});
    return {*file, sqlite::Access::immutable};
}

void BackupFolder::refuse() const {
    throw AccessError(AccessError::Kind::readOnly, root_.string(), "is a device backup, which is only ever read");
}

WriterLock BackupFolder::lockForWriting() const { refuse(); }
sqlite::Database BackupFolder::openForWriting(const WriterLock &, const DevicePath &) const { refuse(); }
void BackupFolder::attachForWriting(const WriterLock &, sqlite::Database &, const DevicePath &, const char *) const { refuse(); }
std::string BackupFolder::add(const WriterLock &, const DevicePath &, const std::string &, File &) const { refuse(); }
void BackupFolder::replace(const WriterLock &, const DevicePath &, File &) const { refuse(); }
void BackupFolder::replace(const WriterLock &, const DevicePath &, std::string_view) const { refuse(); }
void BackupFolder::remove(const WriterLock &, const DevicePath &) const { refuse(); }

}  // namespace device
