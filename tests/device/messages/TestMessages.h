// Small message databases for the tests of messages and backups.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "device/messages/MessageStore.h"
#include "tests/device/TestDevice.h"

namespace testdevice {

// The tables of sms.db as one version of the system made them.
struct MessageVersion {
    const char *name;
    std::string sql;
    bool hasTitles, hasCallers, hasNames;
};
[[nodiscard]] const std::vector<MessageVersion> &messageVersions();

// An image with an sms.db; `sql` fills it.
class TestMessages : public EmptyImage {
public:
    explicit TestMessages(const std::string &sql, const MessageVersion &version = messageVersions().back());
    // With a database that stands already.
    explicit TestMessages(const std::filesystem::path &database);

    [[nodiscard]] std::filesystem::path database() const { return path() / "HomeDomain/Library/SMS/sms.db"; }
    // Below the folder of attachments.
    void addAttachment(const std::string &name, std::string_view bytes) const;
    // The lines of all chats; a failure that was noted stands behind them.
    [[nodiscard]] std::string chats() const;
};

using Chats = std::vector<std::shared_ptr<MessageBackupChat>>;
[[nodiscard]] Chats chatsOf(device::messages::MessageStore &store);
// One line for the chat, one for each element; `root` is taken off paths.
[[nodiscard]] std::string described(const MessageBackupChat &chat, const std::string &root = "");
[[nodiscard]] std::string described(const Chats &chats, const std::string &root = "");

}  // namespace testdevice
