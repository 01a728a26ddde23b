#include "tests/support/TestBackup.h"

#include "device/BackupFolder.h"
#include "device/plist/PropertyList.h"
#include "device/sqlite/Database.h"

using device::PropertyList;
using device::sqlite::Access, device::sqlite::Database;

TestBackup::TestBackup(std::filesystem::path folder) : path_(folder.empty() ? temporary_.path() / "00008030-ABC" : std::move(folder)) {
    std::filesystem::create_directories(path_);
    describe();
    Database(path_ / "Manifest.db", Access::create)
        .exec("CREATE TABLE Files (fileID TEXT PRIMARY KEY, domain TEXT, relativePath TEXT, flags INTEGER, file BLOB)");
}

void TestBackup::add(const std::string &domain, const std::string &relativePath, std::string_view bytes, int flags) const {
    const std::string id = device::BackupFolder::fileID({domain, relativePath});
    Database manifest(path_ / "Manifest.db", Access::readWrite);
    manifest.prepare("INSERT INTO Files (fileID, domain, relativePath, flags) VALUES (?, ?, ?, ?)")
        .bind(1, id)
        .bind(2, domain)
        .bind(3, relativePath)
        .bind(4, std::int64_t{flags})
        .run();
    if (flags == 1)
        writeFile(path_ / id.substr(0, 2) / id, bytes);
}

void TestBackup::addAll(const std::filesystem::path &image) const {
    for (const auto &entry : std::filesystem::recursive_directory_iterator(image)) {
        const auto place = entry.path().lexically_relative(image);
        if (entry.is_regular_file() && place.has_parent_path())
            add(*place.begin(), place.lexically_relative(*place.begin()), readFile(entry.path()));
    }
}

void TestBackup::describe(bool isEncrypted) const {
    PropertyList manifest, info;
    manifest.setFlag("IsEncrypted", isEncrypted);
    info.setText("Device Name", "Ada's Phone");
    info.setText("Product Version", "14.3");
    info.setText("Target Identifier", "00008030-abc");
    writeFile(path_ / "Manifest.plist", manifest.bytes(PropertyList::Format::binary));
    writeFile(path_ / "Info.plist", info.bytes(PropertyList::Format::binary));
}
