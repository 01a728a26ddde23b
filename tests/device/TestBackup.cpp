#include "tests/device/TestBackup.h"

#include "device/BackupFolder.h"
#include "device/plist/PropertyList.h"

namespace testdevice {

TestBackup::TestBackup(std::filesystem::path folder) : path_(folder.empty() ? temporary_.path() / "00008030-ABC" : std::move(folder)) {
    std::filesystem::create_directories(path_);
    describe();
    execOn(path_ / "Manifest.db", "CREATE TABLE Files (fileID TEXT PRIMARY KEY, domain TEXT, relativePath TEXT, flags INTEGER, file BLOB)");
}

void TestBackup::add(const std::string &domain, const std::string &relativePath, std::string_view bytes, int flags) const {
    const std::string id = device::BackupFolder::fileID({domain, relativePath});
    device::sqlite::Database manifest(path_ / "Manifest.db", device::sqlite::Access::readWrite);
    manifest.prepare("INSERT INTO Files (fileID, domain, relativePath, flags) VALUES (?, ?, ?, ?)")
        .bind(1, id)
        .bind(2, domain)
        .bind(3, relativePath)
        .bind(4, std::int64_t{flags})
        .run();
    if (flags == 1)
        write(path_ / id.substr(0, 2) / id, bytes);
}

void TestBackup::describe(bool isEncrypted) const {
    device::PropertyList manifest, info;
    manifest.setFlag("IsEncrypted", isEncrypted);
    info.setText("Device Name", "Ada's Phone");
    info.setText("Product Version", "14.3");
    info.setText("Target Identifier", "00008030-abc");
    write(path_ / "Manifest.plist", manifest.bytes(device::PropertyList::Format::binary));
    write(path_ / "Info.plist", info.bytes(device::PropertyList::Format::binary));
}

}  // namespace testdevice
