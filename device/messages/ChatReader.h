// Reads the chats out of a message database of any version from iOS 6 on, one after the other.
//
// Order    chats by row; messages of a chat by date, then row; of one message its attachments by row, then its text.
// Memory   one chat at a time, and besides it the joins of messages and attachments, the handles, and up to 64 MiB of the
//          database's pages.
// Damage   a row that cannot be read is left out and noted, the rest goes on.
// Absent   a missing column reads as NULL, a missing table of attachments, handles or joins as empty.
// Errors   AccessError where there are no tables of chats and messages, sqlite::Error.
// Threads  as the database.
#pragma once

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MessageBackupChat.h"
#include "device/FailureLog.h"
#include "device/messages/Attachments.h"
#include "device/sqlite/Database.h"

namespace device::messages {

class ChatReader {
public:
    // The path on the computer of an attachment's file, absent where it is not there.
    using Finder = std::function<NSString(const DevicePath &)>;
    // `progress` from 0 to 1. False ends the reading.
    using Taker = std::function<bool(std::shared_ptr<MessageBackupChat> chat, float progress)>;

    ChatReader(sqlite::Database &database, Finder find, FailureLog &failures);
    // Chats in which nothing is left are passed over.
    void read(const Taker &take);

private:
    struct Message {
        std::int64_t row = 0, handle = 0;
        dispatch::Time date;
        NSString guid, text, caller;
        bool isSend = false, isFailed = false;
    };
    using Pairs = std::vector<std::pair<std::int64_t, std::int64_t>>;

    void readHandles();
    [[nodiscard]] Pairs pairsOf(const char *table, const char *first, const char *second);
    [[nodiscard]] bool hasIndex();
    void prepare();
    [[nodiscard]] std::vector<NSString> membersOf(std::int64_t chat) const;
    [[nodiscard]] std::vector<Message> messagesOf(std::int64_t chat);
    [[nodiscard]] std::vector<Message> messagesAtOnce(std::int64_t chat);
    [[nodiscard]] std::vector<Message> messagesOneByOne(std::int64_t chat);
    void appendMessage(std::vector<Message> &messages, sqlite::Statement &row);
    [[nodiscard]] NSString callerOf(sqlite::Statement &row);
    void fill(MessageBackupChat &chat, std::vector<Message> &messages);
    void appendAttachments(MessageBackupChat &chat, const Message &message);
    void appendAttachment(MessageBackupChat &chat, const Message &message, std::int64_t attachment);
    void appendElement(MessageBackupChat &chat, const Message &message);
    [[nodiscard]] std::shared_ptr<MessageBackupChat> chatOf(sqlite::Statement &row);
    void readChatsBehind(std::int64_t reached, const std::string &sql, const std::function<bool(sqlite::Statement &)> &give);
    void note(const std::exception &error, const std::string &record);

    sqlite::Database &database_;
    Finder find_;
    FailureLog &failures_;
    AttachmentNames names_;
    std::string columns_;
    sqlite::Statement messages_, message_, attachment_;
    std::unordered_map<std::int64_t, NSString> handles_;
    Pairs members_;                // chat, handle
    Pairs attachments_;            // message, attachment
    std::optional<Pairs> joins_;   // chat, message: of a database where the rows of a chat cannot be asked for
    NSString caller_;     // of the message before: most are alike
};

}  // namespace device::messages
