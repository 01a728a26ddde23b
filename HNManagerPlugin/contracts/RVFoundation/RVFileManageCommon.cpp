#include "HNManagerPlugin/contracts/RVFoundation/RVFileManageCommon.h"

#include <filesystem>
#include <mutex>

#include "toolkit/services/NSFileManager.h"
#include "toolkit/services/UserFolders.h"

namespace {

struct Query {
    std::mutex mutex;
    std::function<std::int64_t()> ask;
};

Query &query() {
    static auto *shared = new Query;
    return *shared;
}

}  // namespace

std::int64_t RVFileManageCommon::getFileArraySize(const std::vector<NSString> &paths) {
    std::int64_t sum = 0;
    for (const NSString &path : paths)
        sum += NSFileManager::sizeOfFileAtPath(path);
    return sum;
}

std::int64_t RVSystemInfoManager::availableMemory() {
    std::function<std::int64_t()> ask;
    {
        const std::scoped_lock lock(query().mutex);
        ask = query().ask;
    }
    if (ask)
        return ask();
    std::error_code error;
    const NSString home = NSHomeDirectory();
    const auto space = std::filesystem::space(home.isEmpty() ? std::string("/") : home.str(), error);
    return error ? 0 : static_cast<std::int64_t>(space.available);
}

void RVSystemInfoManager::setAvailableMemoryQuery(std::function<std::int64_t()> ask) {
    const std::scoped_lock lock(query().mutex);
    query().ask = std::move(ask);
}
