#include "device/backup/BackupWriter.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "device/BackupFolder.h"
#include "device/Journal.h"
#include "toolkit/dispatch/Queue.h"

namespace device::backup {

namespace fs = std::filesystem;

namespace {

using std::chrono::milliseconds;

constexpr std::size_t kChunkBytes = 256 << 10;
constexpr std::size_t kMaxDepth = 64;
const DevicePath kRoots[] = {{"HomeDomain", "Library/SMS"}, {"HomeDomain", "Library/AddressBook"}, {"MediaDomain", "Library/SMS"}};

struct Ended {};

// What belongs to a running program and not to the data.
bool isLeftOver(const DevicePath &folder, const std::string &name) {
    return folder.domain == "HomeDomain" && (name.ends_with("-shm") || name.ends_with("-journal"));
}

// A database on which the caller holds a reader's lock, so that no writer of this image changes it meanwhile.
class Held {
public:
    Held(const FileTree &device, const DevicePath &path) : place_(device.find(path).value_or(fs::path())) {
        if (place_.empty())
            throw AccessError(AccessError::Kind::missing, path.name(), "no such file on the device");
        constexpr std::string_view kDatabase{"SQLite format 3\0", 16};
        if (path.domain != "HomeDomain" || File::openForReading(place_).read(kDatabase.size()) != kDatabase || hasBytes(beside(place_, "-wal")))
            return;   // a log is copied as the file that it is
        try {
            database_.emplace(device.openForReading(path));
            reading_ = database_->prepare("SELECT 1 FROM sqlite_master");
            reading_.step();
            place_ = database_->file();   // a private copy, where a killed writer's change had to be taken back
        } catch (const std::exception &) {   // a damaged one is copied as it is
        }
    }
    [[nodiscard]] const fs::path &place() const { return place_; }

private:
    fs::path place_;
    std::optional<sqlite::Database> database_;
    sqlite::Statement reading_;
};

void removeMade(const fs::path &folder) {
    std::error_code ignored;
    if (!folder.empty())
        fs::remove_all(folder, ignored);
}

std::int64_t secondsSince1970() {
    return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch()).count();
}

}  // namespace

std::string folderNameOf(const NSString &UUID) {
    constexpr std::size_t kMaxBytes = 100;
    std::string name = UUID.str().substr(0, kMaxBytes);
    for (char &c : name)
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '-' && c != '.')
            c = '_';
    return name.empty() || name.starts_with('.') ? "device" + name : name;
}

// ---------------------------------------------------------------- what is copied

void BackupWriter::noteFolder(const DevicePath &path) {
    if (folders_.insert(path.name()).second)
        items_.push_back({path, true, 0});
}

void BackupWriter::planFolder(const DevicePath &root) {
    std::vector<DevicePath> open{root};
    while (!open.empty()) {
        const DevicePath folder = std::move(open.back());
        open.pop_back();
        std::error_code error;
        const fs::path real = fs::canonical(device_.root() / folder.domain / folder.path, error);
        if (error || !visited_.insert(real.string()).second || static_cast<std::size_t>(std::ranges::count(folder.path, '/')) > kMaxDepth)
            continue;
        for (std::size_t end = folder.path.find('/'); end != std::string::npos; end = folder.path.find('/', end + 1))
            noteFolder({folder.domain, folder.path.substr(0, end)});
        noteFolder(folder);
        for (const FileEntry &entry : device_.list(folder)) {
            const DevicePath path{folder.domain, folder.path + "/" + entry.name};
            if (entry.isFolder)
                open.push_back(path);
            else if (!isLeftOver(folder, entry.name))
                items_.push_back({path, false, entry.sizeBytes});
            look();
        }
    }
}

void BackupWriter::plan() {
    for (const DevicePath &root : kRoots)
        planFolder(root);
    for (const Item &item : items_)
        totalBytes_ += item.sizeBytes;
}

std::int64_t BackupWriter::predictedBytes(const FileTree &device) {
    BackupWriter writer(device, {[] { return true; }, [](double) {}, [] { return false; }});
    writer.plan();
    return writer.totalBytes_;
}

// ---------------------------------------------------------------- pace

void BackupWriter::showProgress() {
    shown_ = hooks_.now();
    const double share = totalBytes_ > 0 ? static_cast<double>(doneBytes_) / static_cast<double>(totalBytes_) : 0;
    hooks_.progress(100 * std::min(1.0, share));
}

void BackupWriter::checkDevice() const {
    if (!device_.isThere())
        throw AccessError(AccessError::Kind::gone, device_.root().string(), "the device has gone");
}

void BackupWriter::look() {
    if (!hooks_.goesOn())
        throw Ended();
    if (shown_ && hooks_.now() - *shown_ < kProgressInterval)
        return;
    checkDevice();
    showProgress();
}

void BackupWriter::pauseFor(std::chrono::nanoseconds pause) {
    while (pause.count() > 0 && hooks_.isSlow()) {
        const auto piece = std::min<std::chrono::nanoseconds>(pause, kProgressInterval);
        dispatch::sleepFor(piece);
        pause -= piece;
        look();
    }
}

// ---------------------------------------------------------------- copying

void BackupWriter::copyFile(File &source, const fs::path &target) {
    File copy = File::create(target);
    for (;;) {
        const auto begin = hooks_.now();
        const std::string chunk = source.read(kChunkBytes);
        if (chunk.empty())
            return;
        copy.write(chunk);
        doneBytes_ += static_cast<std::int64_t>(chunk.size());
        look();
        if (hooks_.isSlow())
            pauseFor((hooks_.now() - begin) * (kSlowness - 1));
    }
}

void BackupWriter::copyItem(const Item &item, ManifestFile &manifest, const fs::path &folder) {
    const std::string id = BackupFolder::fileID(item.path);
    FileRecord record{item.path, item.isFolder};
    if (!item.isFolder) {
        std::optional<Held> held;
        try {
            held.emplace(device_, item.path);
        } catch (const AccessError &error) {
            if (error.kind() == AccessError::Kind::missing && device_.isThere())
                return;   // removed since the files were listed
            throw;
        }
        File source = File::openForReading(held->place());
        struct stat status {};
        fstat(source.descriptor(), &status);
        record.modified = status.st_mtim.tv_sec, record.changed = status.st_ctim.tv_sec;
        record.inode = static_cast<std::int64_t>(status.st_ino);
        const fs::path below = folder / id.substr(0, 2);
        if (mkdir(below.c_str(), 0755) != 0 && errno != EEXIST)
            throw AccessError::ofSystem(errno, below.string());
        copyFile(source, below / id);
        record.sizeBytes = static_cast<std::int64_t>(fs::file_size(below / id));
    }
    manifest.add(id, record);
}

void BackupWriter::fill(const fs::path &folder) {
    ManifestFile manifest(folder);
    for (const Item &item : items_) {
        copyItem(item, manifest, folder);
        look();
    }
    manifest.close();
    describeBackup(folder, device_.info(), secondsSince1970());
}

std::optional<fs::path> BackupWriter::write(const fs::path &parent) {
    fs::path making;
    std::error_code ignored;
    try {
        look();
        plan();
        fs::create_directories(parent, ignored);
        std::string pattern = (parent / (std::string(kTemporaryPrefix) + "XXXXXX")).string();
        if (!mkdtemp(pattern.data()))
            throw AccessError::ofSystem(errno, parent.string());
        making = pattern;
        fill(making);
        checkDevice();
        const fs::path target = parent / folderNameOf(device_.info().UUID);
        fs::remove_all(target, ignored);
        if (rename(making.c_str(), target.c_str()) != 0)
            throw AccessError::ofSystem(errno, target.string());
        doneBytes_ = totalBytes_ = 1;
        showProgress();
        return target;
    } catch (const Ended &) {
        removeMade(making);
        return std::nullopt;
    } catch (...) {
        removeMade(making);
        throw;
    }
}

}  // namespace device::backup
