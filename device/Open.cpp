#include "device/Open.h"

#include <algorithm>

#include "device/BackupFolder.h"
#include "device/ImageFolder.h"

namespace device {

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> backupsIn(const fs::path &folder) {
    std::vector<fs::path> backups;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator(); entry.increment(error))
        if (std::error_code unreadable; entry->is_directory(unreadable) && BackupFolder::looksLikeOne(entry->path()))
            backups.push_back(entry->path());
    std::ranges::sort(backups);
    return backups;
}

std::string listed(const std::vector<fs::path> &paths) {
    std::string text;
    for (const fs::path &path : paths)
        text += "\n" + path.string();
    return text;
}

}  // namespace

std::shared_ptr<FileTree> openDevice(const fs::path &folder) {
    std::error_code error;
    if (folder.empty() || !fs::exists(folder, error))
        throw OpenError(OpenError::Kind::noSuchFolder, folder, "there is no such folder");
    if (!fs::is_directory(folder, error))
        throw OpenError(OpenError::Kind::noDevice, folder, "is a file; a device image or a backup is a folder");
    if (fs::directory_iterator(folder, error); error)
        throw OpenError(OpenError::Kind::unreadable, folder, error.message());
    if (fs::exists(folder / ImageFolder::kPropertiesName, error))
        return std::make_shared<ImageFolder>(folder);
    if (BackupFolder::looksLikeOne(folder))
        return std::make_shared<BackupFolder>(folder);
    if (std::vector<fs::path> backups = backupsIn(folder); !backups.empty()) {
        const std::string reason = "holds device backups, choose one of them:" + listed(backups);
        throw OpenError(OpenError::Kind::folderOfBackups, folder, reason, std::move(backups));
    }
    throw OpenError(OpenError::Kind::noDevice, folder, "is neither a device image (no Device.plist) nor a device backup (no Manifest.db)");
}

}  // namespace device
