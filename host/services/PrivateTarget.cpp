#include "host/services/PrivateTarget.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"
#include "host/services/Folders.h"
#include "toolkit/services/SystemCommand.h"
#include "toolkit/services/UserFolders.h"

namespace host {

namespace fs = std::filesystem;

namespace {

constexpr const char *kFolderPrefix = ".hnmanager-", *kLinkPrefix = "hnmanager-export-";

fs::path newFolder(const fs::path &parent, const char *prefix) {
    removeLeftOvers(parent, prefix);
    return newProcessFolder(parent, prefix);
}

// A path to `folder` that stands for itself in every command; a folder of its own holds the link.
fs::path plainLinkTo(const fs::path &folder) {
    std::error_code error;
    for (const fs::path &parent : {fs::path(NSTemporaryDirectory().str()), fs::temp_directory_path(error), fs::path("/tmp")}) {
        if (!SystemCommand::isPlain(NSString(parent.string())))
            continue;
        const fs::path home = newFolder(parent, kLinkPrefix);
        if (home.empty())
            continue;
        fs::create_directory_symlink(folder, home / "to", error);
        if (!error)
            return home / "to";
        fs::remove(home, error);
    }
    return {};
}

// Renames over what stands there. A folder cannot be renamed over: the two change places, or, where the disk has no such
// step, the old one is set aside meanwhile.
std::error_code renameOver(const fs::path &from, const fs::path &to) {
    std::error_code error;
    const bool isInTheWay = fs::exists(fs::symlink_status(to, error)) &&
                            (fs::is_directory(fs::symlink_status(to, error)) || fs::is_directory(fs::symlink_status(from, error)));
    if (!isInTheWay) {
        fs::rename(from, to, error);
        return error;
    }
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_EXCHANGE) == 0) {
        std::error_code ignored;
        fs::remove_all(from, ignored);
        return {};
    }
    const fs::path aside = to.parent_path() / (".hnmanager-replaced-" + std::to_string(::getpid()));
    fs::rename(to, aside, error);
    if (error)
        return error;
    fs::rename(from, to, error);
    std::error_code ignored;
    error ? fs::rename(aside, to, ignored) : (void)fs::remove_all(aside, ignored);
    return error;
}

// Fills `to` up with what `from` holds.
std::error_code merge(const fs::path &from, const fs::path &to) {
    std::error_code error;
    const bool areFolders = fs::is_directory(fs::symlink_status(from, error)) && fs::is_directory(to, error);
    if (!areFolders)
        return renameOver(from, to);
    for (const auto &entry : fs::directory_iterator(from, error))
        if (const std::error_code failed = merge(entry.path(), to / entry.path().filename()))
            return failed;
    return error;
}

}  // namespace

PrivateTarget::PrivateTarget(fs::path target, std::string name) : target_(std::move(target)), name_(std::move(name)), path_(target_) {
    folder_ = newFolder(target_.parent_path(), kFolderPrefix);
    if (folder_.empty())
        return;
    link_ = plainLinkTo(folder_);
    if (link_.empty()) {
        std::error_code ignored;
        fs::remove(folder_, ignored);
        folder_.clear();
        return;
    }
    path_ = link_ / name_;
}

PrivateTarget::~PrivateTarget() {
    std::error_code ignored;
    if (folder_.empty())
        return;
    fs::remove_all(folder_, ignored);
    fs::remove(link_, ignored);
    fs::remove(link_.parent_path(), ignored);
}

void PrivateTarget::keepRememberedFolder(const NSString &key) const {
    if (isPrivate() && RVProductConfig::valueForKey(key) == NSString(link_.string()))
        RVProductConfig::setValue_forKey(NSString(target_.parent_path().string()), key);
}

std::string PrivateTarget::inPersonsPlaces(std::string text) const {
    if (isPrivate())
        for (const auto &[ours, persons] : {std::pair(path_, target_), std::pair(link_, target_.parent_path())})
            for (std::size_t at = text.find(ours.native()); at != std::string::npos; at = text.find(ours.native(), at + persons.native().size()))
                text.replace(at, ours.native().size(), persons.native());
    return text;
}

std::string PrivateTarget::moveIntoPlace(bool replaces) {
    if (!isPrivate())
        return "";
    std::error_code error;
    if (!fs::exists(fs::symlink_status(folder_ / name_, error)))
        return target_.string() + ": was not written";
    if (!replaces && fs::exists(fs::symlink_status(target_, error)))
        return target_.string() + ": exists already";
    // The target last: where it stands all stands.
    for (const auto &entry : fs::directory_iterator(folder_, error))
        if (entry.path().filename() != name_)
            if (const std::error_code failed = merge(entry.path(), target_.parent_path() / entry.path().filename()))
                return entry.path().filename().string() + ": " + failed.message();
    error = renameOver(folder_ / name_, target_);
    return error ? target_.string() + ": " + error.message() : "";
}

}  // namespace host
