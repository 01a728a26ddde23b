#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/WholeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

std::optional<WholeFile> WholeFile::readAll(int file) {
    struct stat about {};
    if (fstat(file, &about) != 0 || !S_ISREG(about.st_mode))
        return std::nullopt;
    const auto room = static_cast<std::size_t>(about.st_size);
    WholeFile whole;
    whole.bytes_ = std::make_unique_for_overwrite<char[]>(room);
    while (whole.size_ < room) {
        const ssize_t got = ::read(file, whole.bytes_.get() + whole.size_, room - whole.size_);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            break;
        whole.size_ += static_cast<std::size_t>(got);
    }
    return whole;
}

std::optional<WholeFile> WholeFile::read(const NSString &path) {
    if (path.isEmpty() || path.containsString(std::string_view("\0", 1)))
        return std::nullopt;
    const int file = ::open(path.UTF8String(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);   // a FIFO must not hold us up
    if (file < 0)
        return std::nullopt;
    std::optional<WholeFile> whole = readAll(file);
    ::close(file);
    return whole;
}
