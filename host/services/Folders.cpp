#include "host/services/Folders.h"

#include <pwd.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <vector>

#include "toolkit/services/NSFileManager.h"

namespace host {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kName = "hnmanager";
constexpr const char *kProcessPrefix = "run-";

fs::path fromEnvironment(const char *variable) {
    const char *value = std::getenv(variable);
    return value && *value == '/' ? fs::path(value) : fs::path();
}

fs::path homeFolder() {
    if (fs::path home = fromEnvironment("HOME"); !home.empty())
        return home;
    const passwd *user = getpwuid(getuid());
    return user && user->pw_dir && *user->pw_dir == '/' ? fs::path(user->pw_dir) : fs::path("/");
}

fs::path baseFolder(const char *variable, const fs::path &home, const char *fallback) {
    const fs::path base = fromEnvironment(variable);
    return (base.empty() ? home / fallback : base) / kName;
}

std::string unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size())
            ++i;
        plain += text[i];
    }
    return plain;
}

// The process that made "<prefix><process>-xxxxxx"; 0 for any other name.
pid_t makerOf(const std::string &name, const std::string &prefix) {
    constexpr std::size_t kRandomLetters = 6;   // of mkdtemp
    if (!name.starts_with(prefix))
        return 0;
    pid_t maker = 0;
    const char *const end = name.data() + name.size();
    const char *const behind = std::from_chars(name.data() + prefix.size(), end, maker).ptr;
    return behind != end && *behind == '-' && static_cast<std::size_t>(end - behind) == 1 + kRandomLetters ? maker : 0;
}

bool isOwnFolder(const fs::path &path) {
    struct stat info {};
    return lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == geteuid();
}

}  // namespace

ProgramFolders programFolders() {
    ProgramFolders folders;
    std::error_code error;
    folders.program = fs::read_symlink("/proc/self/exe", error).parent_path();
    folders.resources = folders.program / "Resources";
    folders.home = homeFolder();
    folders.configuration = baseFolder("XDG_CONFIG_HOME", folders.home, ".config");
    folders.data = baseFolder("XDG_DATA_HOME", folders.home, ".local/share");
    folders.state = baseFolder("XDG_STATE_HOME", folders.home, ".local/state");
    folders.cache = baseFolder("XDG_CACHE_HOME", folders.home, ".cache");
    return folders;
}

std::map<std::string, std::string> readUserDirectories(std::string_view text, const std::string &home) {
    constexpr std::string_view kHome = "$HOME";
    std::map<std::string, std::string> entries;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));

        const std::size_t start = line.find_first_not_of(" \t"), quote = line.find("=\""), close = line.rfind('"');
        if (start == std::string_view::npos || line[start] == '#' || quote == std::string_view::npos || close < quote + 2)
            continue;
        std::string path = unescaped(line.substr(quote + 2, close - quote - 2));
        if (path == kHome || path.starts_with(std::string(kHome) + "/"))
            path.replace(0, kHome.size(), home);
        if (path.starts_with('/'))
            entries[std::string(line.substr(start, quote - start))] = path;
    }
    return entries;
}

UserFolders userFoldersOf(const ProgramFolders &folders) {
    const fs::path list = folders.configuration.parent_path() / "user-dirs.dirs";
    const auto chosen =
        readUserDirectories(NSFileManager::contentsAtPath(NSString(list.string())).value_or(std::string()), folders.home.string());
    const auto folder = [&](const char *name, const char *fallback) {
        const auto found = chosen.find(name);
        return NSString(found == chosen.end() ? (folders.home / fallback).string() : found->second);
    };
    UserFolders user;
    user.home = NSString(folders.home.string());
    user.desktop = folder("XDG_DESKTOP_DIR", "Desktop");
    user.downloads = folder("XDG_DOWNLOAD_DIR", "Downloads");
    user.music = folder("XDG_MUSIC_DIR", "Music");
    user.pictures = folder("XDG_PICTURES_DIR", "Pictures");
    user.movies = folder("XDG_VIDEOS_DIR", "Videos");
    return user;
}

void makePrivate(const fs::path &folder) {
    if (folder.has_parent_path())
        fs::create_directories(folder.parent_path());
    if (mkdir(folder.c_str(), S_IRWXU) == 0)
        return;
    if (errno != EEXIST)
        throw fs::filesystem_error("cannot be made", folder, std::error_code(errno, std::generic_category()));
    fs::permissions(folder, fs::perms::owner_all);
}

fs::path newProcessFolder(const fs::path &parent, const std::string &prefix) {
    std::string pattern = (parent / (prefix + std::to_string(getpid()) + "-XXXXXX")).string();
    return mkdtemp(pattern.data()) ? fs::path(pattern) : fs::path();
}

void removeLeftOvers(const fs::path &parent, const std::string &prefix) {
    std::error_code error;
    std::vector<fs::path> dead;
    for (fs::directory_iterator entry(parent, error); !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const pid_t maker = makerOf(entry->path().filename().string(), prefix);
        if (maker > 0 && kill(maker, 0) != 0 && errno == ESRCH && isOwnFolder(entry->path()))
            dead.push_back(entry->path());
    }
    for (const fs::path &folder : dead)
        fs::remove_all(folder, error);
}

ProcessFolder::ProcessFolder(const fs::path &parent) {
    makePrivate(parent);
    removeLeftOvers(parent, kProcessPrefix);
    path_ = newProcessFolder(parent, kProcessPrefix);
    if (path_.empty())
        throw fs::filesystem_error("cannot be made", parent, std::error_code(errno, std::generic_category()));
}

void ProcessFolder::remove() noexcept {
    std::error_code error;
    if (!path_.empty())
        fs::remove_all(path_, error);
}

}  // namespace host
