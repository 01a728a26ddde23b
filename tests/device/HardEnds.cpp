#include "tests/device/HardEnds.h"

#include <sqlite3.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

namespace testdevice {

namespace {

using Write = ssize_t (*)(int, const void *, std::size_t, off_t);
using Unlink = int (*)(const char *);

int callsLeft = 0;
Write realWrite = nullptr;
Unlink realUnlink = nullptr;

void count() {
    if (--callsLeft == 0)
        raise(SIGKILL);
}

}  // namespace

void dieAtCall(int call) {
    callsLeft = call;
    sqlite3_vfs *disk = sqlite3_vfs_find(nullptr);
    for (const char *name : {"pwrite", "pwrite64"})
        if (const auto real = disk->xGetSystemCall(disk, name)) {
            realWrite = reinterpret_cast<Write>(real);
            disk->xSetSystemCall(disk, name, reinterpret_cast<sqlite3_syscall_ptr>(+[](int file, const void *bytes, std::size_t size, off_t at) {
                count();
                return realWrite(file, bytes, size, at);
            }));
        }
    realUnlink = reinterpret_cast<Unlink>(disk->xGetSystemCall(disk, "unlink"));
    disk->xSetSystemCall(disk, "unlink", reinterpret_cast<sqlite3_syscall_ptr>(+[](const char *path) {
        count();
        return realUnlink(path);
    }));
}

void limitFileSize(std::uint64_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
}

void forbidWriting(const std::filesystem::path &folder) {
    namespace fs = std::filesystem;
    fs::permissions(folder.parent_path(), fs::perms::all);
    for (const auto &entry : fs::recursive_directory_iterator(folder))
        fs::permissions(entry.path(), entry.is_directory() ? fs::perms(0555) : fs::perms(0444));
    fs::permissions(folder, fs::perms(0555));
}

bool becomeNobody() {
    constexpr uid_t kNobody = 65534;
    return getuid() != 0 || setuid(kNobody) == 0;
}

}  // namespace testdevice
