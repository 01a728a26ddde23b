// Where the program and the user keep things.
//
// Rules    XDG base directories; a variable that is empty or no absolute path counts as not set.
// Errors   std::filesystem::filesystem_error where a folder cannot be made.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "toolkit/services/UserFolders.h"

namespace host {

// None of these need exist.
struct ProgramFolders {
    std::filesystem::path program;         // where the running program lies
    std::filesystem::path resources;       // beside it
    std::filesystem::path home;
    std::filesystem::path configuration;   // settings.json
    std::filesystem::path data;            // the embedded device
    std::filesystem::path state;           // the log
    std::filesystem::path cache;           // what may be lost
};

// From the environment of this process.
[[nodiscard]] ProgramFolders programFolders();

// The entries of a user-dirs.dirs file, "XDG_MUSIC_DIR" to its path. Lines that are no entry, and paths that are neither
// absolute nor below $HOME, are passed over.
[[nodiscard]] std::map<std::string, std::string> readUserDirectories(std::string_view text, const std::string &home);

// The user's own folders; Desktop, Downloads, Music, Pictures and Videos below home where the user named no others.
// `temporary` and `applicationSupport` are left absent.
[[nodiscard]] UserFolders userFoldersOf(const ProgramFolders &folders);

// Makes the folder with its parents where it is missing, and takes all rights on it from everybody but the user.
void makePrivate(const std::filesystem::path &folder);

// A new folder "<prefix><process>-xxxxxx", mode 0700; empty where it cannot be made.
[[nodiscard]] std::filesystem::path newProcessFolder(const std::filesystem::path &parent, const std::string &prefix);
// Removes the user's folders of that prefix whose process has ended.
void removeLeftOvers(const std::filesystem::path &parent, const std::string &prefix);

// A private folder of this process, with everything in it gone when this object ends. What a killed process left beside it
// is removed at the start.
class ProcessFolder {
public:
    explicit ProcessFolder(const std::filesystem::path &parent);
    ~ProcessFolder() { remove(); }
    ProcessFolder(const ProcessFolder &) = delete;
    ProcessFolder &operator=(const ProcessFolder &) = delete;

    [[nodiscard]] const std::filesystem::path &path() const { return path_; }
    // At once; for an end without destructors.
    void remove() noexcept;

private:
    std::filesystem::path path_;
};

}  // namespace host
