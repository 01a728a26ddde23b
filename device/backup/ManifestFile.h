// The lists of a backup folder: Manifest.db with one row per file, and the property lists that describe the whole.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "device/FileTree.h"
#include "device/sqlite/Database.h"

namespace device::backup {

// What a row tells about its file; times in seconds since 1970.
struct FileRecord {
    DevicePath path;
    bool isFolder = false;
    std::int64_t sizeBytes = 0, modified = 0, changed = 0, inode = 0;
};

// Errors   sqlite::Error.  Threads  one.
class ManifestFile {
public:
    // A new Manifest.db in the folder. What it gets stays in one transaction until `close`.
    explicit ManifestFile(const std::filesystem::path &folder);
    void add(const std::string &fileID, const FileRecord &record);
    void close();

private:
    sqlite::Database database_;
    sqlite::Transaction all_;
    sqlite::Statement insert_;
};

// Info.plist, Manifest.plist and Status.plist. `now` in seconds since 1970.
void describeBackup(const std::filesystem::path &folder, const DeviceInfo &device, std::int64_t now);

}  // namespace device::backup
