// What failed although the flow's own window does not say so, or not why: one notice, once no modal window is left.
//
// Told      items that the device layer could not do and its reasons, files that were not written, commands that failed,
//           attachments that are not in the backup, what no program of the computer opens. Not told: a device that went
//           away and a wrong password, which have windows of their own.
// Life      from install to remove; held by its owner. Threads: main, hears on any.
#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "host/services/OperationRecord.h"
#include "toolkit/services/SystemCommand.h"

namespace host {

class FailureNotices : public std::enable_shared_from_this<FailureNotices> {
public:
    static std::shared_ptr<FailureNotices> install(std::shared_ptr<OperationRecord> record);
    void remove();

private:
    struct Heard {
        std::int64_t items = 0;
        std::vector<std::string> reasons, remarks, missing;
    };
    void hearItems(std::int64_t items, const std::optional<device::Failure> &reason);
    void hearCommand(const SystemCommand::Failure &failure);
    void hearReason(std::string reason);
    void showSoon();
    void show();

    std::shared_ptr<OperationRecord> record_;
    std::mutex mutex_;
    Heard heard_;
    bool isAsked_ = false;
};

}  // namespace host
