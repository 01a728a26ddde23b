#include "device/backup/ManifestFile.h"

#include <plist/plist.h>

#include <algorithm>
#include <cctype>

#include "device/plist/PropertyList.h"
#include "device/sqlite/Functions.h"

namespace device::backup {

namespace {

constexpr const char *kTables = R"sql(
CREATE TABLE Files (fileID TEXT PRIMARY KEY, domain TEXT, relativePath TEXT, flags INTEGER, file BLOB);
CREATE INDEX FilesDomainIdx ON Files(domain);
CREATE INDEX FilesRelativePathIdx ON Files(relativePath);
CREATE INDEX FilesFlagsIdx ON Files(flags);
CREATE TABLE Properties (key TEXT PRIMARY KEY, value BLOB);
)sql";
constexpr std::int64_t kFileFlag = 1, kFolderFlag = 2;
constexpr std::int64_t kFileMode = 0100644, kFolderMode = 040755, kOwner = 501, kProtection = 3;

plist_t number(std::int64_t value) { return plist_new_uint(static_cast<std::uint64_t>(value)); }

plist_t fileObject(const FileRecord &record) {
    plist_t file = plist_new_dict();
    const auto set = [file](const char *key, std::int64_t value) { plist_dict_set_item(file, key, number(value)); };
    set("LastModified", record.modified), set("LastStatusChange", record.changed), set("Birth", record.modified);
    set("Size", record.sizeBytes), set("Mode", record.isFolder ? kFolderMode : kFileMode), set("InodeNumber", record.inode);
    set("UserID", kOwner), set("GroupID", kOwner), set("Flags", 0), set("ProtectionClass", kProtection);
    plist_dict_set_item(file, "RelativePath", plist_new_uid(2));
    plist_dict_set_item(file, "$class", plist_new_uid(3));
    return file;
}

plist_t fileClass() {
    plist_t names = plist_new_array(), about = plist_new_dict();
    for (const char *name : {"MBFile", "NSObject"})
        plist_array_append_item(names, plist_new_string(name));
    plist_dict_set_item(about, "$classname", plist_new_string("MBFile"));
    plist_dict_set_item(about, "$classes", names);
    return about;
}

// A keyed archive of one object, as a device writes it.
std::string archived(const FileRecord &record) {
    plist_t objects = plist_new_array(), top = plist_new_dict(), archive = plist_new_dict();
    plist_array_append_item(objects, plist_new_string("$null"));
    plist_array_append_item(objects, fileObject(record));
    plist_array_append_item(objects, plist_new_string(unicode::sanitized(record.path.path).c_str()));
    plist_array_append_item(objects, fileClass());
    plist_dict_set_item(top, "root", plist_new_uid(1));
    plist_dict_set_item(archive, "$version", number(100000));
    plist_dict_set_item(archive, "$archiver", plist_new_string("NSKeyedArchiver"));
    plist_dict_set_item(archive, "$top", top);
    plist_dict_set_item(archive, "$objects", objects);
    char *raw = nullptr;
    std::uint32_t size = 0;
    plist_to_bin(archive, &raw, &size);
    std::string bytes(raw ? raw : "", raw ? size : 0);
    plist_to_bin_free(raw);
    plist_free(archive);
    return bytes;
}

template <int change(int)> std::string cased(const NSString &text) {
    std::string out = text.str();
    std::ranges::transform(out, out.begin(), [](unsigned char c) { return static_cast<char>(change(c)); });
    return out;
}

void write(const std::filesystem::path &file, const PropertyList &list) {
    File target = File::create(file);
    target.write(list.bytes(PropertyList::Format::binary));
}

}  // namespace

// ---------------------------------------------------------------- Manifest.db

ManifestFile::ManifestFile(const std::filesystem::path &folder)
    : database_([&folder] {
          sqlite::Database made(folder / "Manifest.db", sqlite::Access::create);
          made.exec("PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF");   // the folder stands whole or not at all
          made.exec(kTables);
          return made;
      }()),
      all_(database_), insert_(database_.prepare("INSERT OR REPLACE INTO Files VALUES (?, ?, ?, ?, ?)")) {}

void ManifestFile::add(const std::string &fileID, const FileRecord &record) {
    insert_.bind(1, fileID).bind(2, record.path.domain).bind(3, record.path.path).bind(4, record.isFolder ? kFolderFlag : kFileFlag);
    insert_.bindBytes(5, archived(record)).run();
}

void ManifestFile::close() {
    insert_ = {};
    all_.commit();
}

// ---------------------------------------------------------------- property lists

void describeBackup(const std::filesystem::path &folder, const DeviceInfo &device, std::int64_t now) {
    PropertyList info, manifest, lockdown, status;
    info.setText("Device Name", device.name.str()), info.setText("Display Name", device.name.str());
    info.setText("Product Type", device.productType.str()), info.setText("Product Version", device.iOSVersion.str());
    info.setText("Target Identifier", cased<std::tolower>(device.UUID)), info.setText("Unique Identifier", cased<std::toupper>(device.UUID));
    info.setText("Target Type", "Device"), info.setText("GUID", sqlite::newGuid());
    info.setDate("Last Backup Date", now);
    info.setTexts("Installed Applications", {});
    write(folder / "Info.plist", info);

    lockdown.setText("DeviceName", device.name.str()), lockdown.setText("UniqueDeviceID", device.UUID.str());
    lockdown.setText("ProductType", device.productType.str()), lockdown.setText("ProductVersion", device.iOSVersion.str());
    manifest.setText("Version", "10.0"), manifest.setText("SystemDomainsVersion", "24.0");
    manifest.setFlag("IsEncrypted", false), manifest.setFlag("WasPasscodeSet", false);
    manifest.setDate("Date", now);
    manifest.setDictionary("Lockdown", lockdown), manifest.setDictionary("Applications", {});
    write(folder / "Manifest.plist", manifest);

    status.setText("UUID", sqlite::newGuid()), status.setText("Version", "3.3");
    status.setText("BackupState", "new"), status.setText("SnapshotState", "finished");
    status.setFlag("IsFullBackup", true);
    status.setDate("Date", now);
    write(folder / "Status.plist", status);
}

}  // namespace device::backup
