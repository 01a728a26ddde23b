#include "device/FileTree.h"

#include <sys/stat.h>

#include <algorithm>

#include "device/ScratchFolder.h"

namespace device {

namespace fs = std::filesystem;

bool FileTree::isThere() const {
    std::error_code ignored;
    return fs::is_directory(root(), ignored);
}

std::int64_t FileTree::usedBytes() const {
    std::int64_t bytes = 0;
    std::error_code error;
    auto entry = fs::recursive_directory_iterator(root(), fs::directory_options::skip_permission_denied, error);
    while (!error && entry != fs::recursive_directory_iterator()) {
        struct stat status;
        if (lstat(entry->path().c_str(), &status) == 0 && S_ISREG(status.st_mode))
            bytes += status.st_size;
        entry.increment(error);
    }
    return bytes;
}

File FileTree::open(const DevicePath &path) const {
    const std::optional<fs::path> found = find(path);
    if (!found)
        throw AccessError(AccessError::Kind::missing, path.name(), "no such file on the device");
    return File::openForReading(*found);
}

bool FileTree::staysInside(const DevicePath &path) {
    const auto isName = [](std::string_view name) {
        return !name.empty() && name != "." && name != ".." && name.find('\0') == std::string_view::npos;
    };
    if (!isName(path.domain) || path.domain.find('/') != std::string::npos || path.domain.starts_with('.'))
        return false;
    if (path.path.empty())
        return true;
    for (std::size_t at = 0; at <= path.path.size();) {
        const std::size_t end = std::min(path.path.find('/', at), path.path.size());
        if (!isName(std::string_view(path.path).substr(at, end - at)))
            return false;
        at = end + 1;
    }
    return true;
}

sqlite::Database FileTree::openCopy(const fs::path &database, const fs::path &wal, const fs::path &journal) {
    auto scratch = std::make_shared<ScratchFolder>();
    const fs::path copy = scratch->path() / "copy.db";
    const auto copyTo = [](const fs::path &from, const fs::path &to) {
        File source = File::openForReading(from);
        File target = File::create(to);
        copyContents(source, target);
    };
    copyTo(database, copy);
    std::error_code ignored;
    if (fs::exists(wal, ignored))
        copyTo(wal, copy.string() + "-wal");
    if (fs::exists(journal, ignored))
        copyTo(journal, copy.string() + "-journal");
    sqlite::Database opened(copy, sqlite::Access::readWrite);
    opened.keep(std::move(scratch));
    return opened;
}

}  // namespace device
