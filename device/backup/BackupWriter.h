// Takes a backup of a device image: its messages with their attachments, and its address book.
//
// Result   a folder named by the device's UUID, made fit for one name, with Manifest.db, Manifest.plist, Info.plist,
//          Status.plist and the files below folders of two letters. It stands whole or not at all: it is made under another
//          name beside and renamed; what stood there before goes.
// Care     a database is copied while it is held for reading, so that a writer cannot change it half-way. Links are followed
//          inside the image only, and nothing is written but below the given folder.
// Errors   AccessError (gone where the device went away), sqlite::Error. What was made so far is removed.
// Threads  one.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <unordered_set>
#include <vector>

#include "device/FileTree.h"
#include "device/backup/ManifestFile.h"

namespace device::backup {

class BackupWriter {
public:
    static constexpr std::chrono::milliseconds kProgressInterval{50};
    static constexpr int kSlowness = 10;   // what the speed limit divides the pace by

    // All are called on the writer's thread.
    struct Hooks {
        std::function<bool()> goesOn;             // false ends the backup
        std::function<void(double)> progress;     // percent of the bytes; the first is 0, the last 100
        std::function<bool()> isSlow;             // true while the speed limit holds
        std::function<std::chrono::steady_clock::time_point()> now = std::chrono::steady_clock::now;
    };

    BackupWriter(const FileTree &device, Hooks hooks) : device_(device), hooks_(std::move(hooks)) {}
    // Makes the folder below `parent`; nullopt where `goesOn` ended it.
    [[nodiscard]] std::optional<std::filesystem::path> write(const std::filesystem::path &parent);
    // Bytes that a backup would copy.
    [[nodiscard]] static std::int64_t predictedBytes(const FileTree &device);

private:
    struct Item {
        DevicePath path;
        bool isFolder = false;
        std::int64_t sizeBytes = 0;
    };

    void plan();
    void planFolder(const DevicePath &folder);
    void noteFolder(const DevicePath &path);
    void fill(const std::filesystem::path &folder);
    void copyItem(const Item &item, ManifestFile &manifest, const std::filesystem::path &folder);
    void copyFile(File &source, const std::filesystem::path &target);
    void pauseFor(std::chrono::nanoseconds pause);
    // Where the work may stop: looks after the hooks, throws where it has to end.
    void look();
    void checkDevice() const;
    void showProgress();

    const FileTree &device_;
    Hooks hooks_;
    std::vector<Item> items_;
    std::unordered_set<std::string> visited_;   // real folders on the computer: a link may lead back up
    std::unordered_set<std::string> folders_;   // names of folders on the device that are in `items_`
    std::int64_t totalBytes_ = 0, doneBytes_ = 0;
    std::optional<std::chrono::steady_clock::time_point> shown_;
};

// The device's identity as the name of one folder.
[[nodiscard]] std::string folderNameOf(const NSString &UUID);

}  // namespace device::backup
