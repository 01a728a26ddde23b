#include "device/WriterLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "device/AccessError.h"

namespace device {

WriterLock::WriterLock(const std::filesystem::path &imageFolder) {
    const std::filesystem::path path = imageFolder / ".lock";
    descriptor_ = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0644);
    if (descriptor_ < 0)
        throw AccessError::ofSystem(errno, imageFolder.string());
    if (flock(descriptor_, LOCK_EX | LOCK_NB) == 0)
        return;
    const int error = errno;
    close(descriptor_);
    if (error == EWOULDBLOCK)
        throw AccessError(AccessError::Kind::locked, imageFolder.string(), "is being written by another program or operation");
    throw AccessError::ofSystem(error, imageFolder.string());
}

WriterLock::~WriterLock() { close(descriptor_); }   // and with it the lock

}  // namespace device
