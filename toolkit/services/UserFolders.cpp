#include "toolkit/services/UserFolders.h"

#include <mutex>

namespace {

struct Folders {
    std::mutex mutex;
    UserFolders value;
};

Folders &shared() {
    static auto *folders = new Folders;
    return *folders;
}

}  // namespace

void setUserFolders(UserFolders folders) {
    const std::scoped_lock lock(shared().mutex);
    shared().value = std::move(folders);
}

UserFolders userFolders() {
    const std::scoped_lock lock(shared().mutex);
    return shared().value;
}
