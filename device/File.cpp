#include "device/File.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <functional>
#include <utility>

#include "device/AccessError.h"

namespace device {

namespace {

constexpr std::size_t kChunkBytes = 1 << 20;

}  // namespace

File File::openForReading(const std::filesystem::path &path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        throw AccessError::ofSystem(errno, path.string());
    File file(descriptor, path);
    struct stat status;
    if (fstat(descriptor, &status) != 0)
        throw AccessError::ofSystem(errno, path.string());
    if (!S_ISREG(status.st_mode))
        throw AccessError(AccessError::Kind::missing, path.string(), "not a file");
    return file;
}

File File::create(const std::filesystem::path &path, const std::filesystem::path &known) {
    const std::filesystem::path &name = known.empty() ? path : known;
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0644);
    if (descriptor < 0)
        throw AccessError::ofSystem(errno, name.string());
    return {descriptor, name};
}

File::File(File &&other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)), path_(std::move(other.path_)) {}

File &File::operator=(File &&other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    std::swap(path_, other.path_);
    return *this;
}

File::~File() {
    if (descriptor_ >= 0)
        close(descriptor_);
}

std::int64_t File::sizeBytes() const {
    struct stat status;
    return fstat(descriptor_, &status) == 0 ? static_cast<std::int64_t>(status.st_size) : 0;
}

std::string File::read(std::size_t maxBytes) {
    std::string bytes(maxBytes, '\0');
    for (;;) {
        const ssize_t got = ::read(descriptor_, bytes.data(), bytes.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            throw AccessError::ofSystem(errno, path_.string());
        bytes.resize(static_cast<std::size_t>(got));
        return bytes;
    }
}

std::string File::readTail(std::size_t maxBytes) const {
    const auto size = static_cast<std::size_t>(sizeBytes());
    std::string bytes(std::min(maxBytes, size), '\0');
    const ssize_t got = pread(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(size - bytes.size()));
    if (got < 0)
        throw AccessError::ofSystem(errno, path_.string());
    bytes.resize(static_cast<std::size_t>(got));
    return bytes;
}

void File::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t put = ::write(descriptor_, bytes.data(), bytes.size());
        if (put < 0 && errno == EINTR)
            continue;
        if (put < 0)
            throw AccessError::ofSystem(errno, path_.string());
        bytes.remove_prefix(static_cast<std::size_t>(put));
    }
}

void File::sync() {
    if (fsync(descriptor_) != 0)
        throw AccessError::ofSystem(errno, path_.string());
}

std::string readWhole(const std::filesystem::path &path, std::size_t maxBytes) {
    File file = File::openForReading(path);
    std::string whole;
    for (;;) {
        const std::string chunk = file.read(kChunkBytes);
        if (chunk.empty())
            return whole;
        if (whole.size() + chunk.size() > maxBytes)
            throw AccessError(AccessError::Kind::damaged, path.string(), "larger than " + std::to_string(maxBytes) + " bytes");
        whole += chunk;
    }
}

void copyContents(File &from, File &to) {
    for (std::string chunk = from.read(kChunkBytes); !chunk.empty(); chunk = from.read(kChunkBytes))
        to.write(chunk);
}

void replaceWhole(const std::filesystem::path &path, const std::function<void(File &)> &fill) {
    const std::filesystem::path folder = path.parent_path();
    std::string name = (folder / (std::string(kTemporaryPrefix) + "XXXXXX")).string();
    const int descriptor = mkostemp(name.data(), O_CLOEXEC);
    if (descriptor < 0)
        throw AccessError::ofSystem(errno, path.string());
    close(descriptor);
    unlink(name.c_str());
    try {
        File file = File::create(name, path);
        fill(file);
        file.sync();
        if (rename(name.c_str(), path.c_str()) != 0)
            throw AccessError::ofSystem(errno, path.string());
    } catch (...) {
        unlink(name.c_str());
        throw;
    }
    syncFolder(folder);
}

void replaceWhole(const std::filesystem::path &path, std::string_view bytes) {
    replaceWhole(path, [bytes](File &file) { file.write(bytes); });
}

void replaceWhole(const std::filesystem::path &path, File &source) {
    replaceWhole(path, [&source](File &file) { copyContents(source, file); });
}

void syncFolder(const std::filesystem::path &folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;   // a file system that has no such thing
    fsync(descriptor);
    close(descriptor);
}

}  // namespace device
