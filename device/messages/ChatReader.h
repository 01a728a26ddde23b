// Reads the chats out of a message database of any version from iOS 6 on, one after the other.
//
// Order    chats by row; messages of a chat by date, then row; of one message its attachments by row, then its text.
// Memory   as many chats at a time as have kTogether messages, and one more; besides these the joins of messages and
//          attachments and the handles.
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
    static constexpr std::size_t kTogether = 250'000;

    ChatReader(sqlite::Database &database, Finder find, FailureLog &failures, std::size_t together = kTogether);
    // Chats in which nothing is left are passed over.
    void read(const Taker &take);

private:
    struct Message {
        std::int64_t row = 0, handle = 0;
        dispatch::Time date;
        NSString guid, text, caller;
        bool isSend = false, isFailed = false;
    };
    struct Chat {
        std::shared_ptr<MessageBackupChat> made;
        std::int64_t row = 0;
        std::vector<Message> messages;
    };
    using Pairs = std::vector<std::pair<std::int64_t, std::int64_t>>;

    void readHandles();
    [[nodiscard]] Pairs pairsOf(const char *table, const char *first, const char *second);
    void prepare();
    [[nodiscard]] std::vector<NSString> membersOf(std::int64_t chat) const;
    void readMessages();
    void appendMessage(std::vector<Message> &messages, sqlite::Statement &row);
    [[nodiscard]] NSString callerOf(sqlite::Statement &row);
    void fill(MessageBackupChat &chat, std::vector<Message> &messages);
    void appendAttachments(MessageBackupChat &chat, const Message &message);
    void appendAttachment(MessageBackupChat &chat, const Message &message, std::int64_t attachment);
    void appendElement(MessageBackupChat &chat, const Message &message);
    [[nodiscard]] bool addChat(sqlite::Statement &row, const Taker &take);
    [[nodiscard]] bool readChatsBehind(std::int64_t reached, const std::string &sql, const Taker &take);
    [[nodiscard]] bool giveChats(const Taker &take);
    void note(const std::exception &error, const std::string &record);

    sqlite::Database &database_;
    Finder find_;
    FailureLog &failures_;
    AttachmentNames names_;
    std::size_t together_;
    std::string columns_;
    sqlite::Statement message_, attachment_;
    std::unordered_map<std::int64_t, NSString> handles_;
    Pairs members_;                // chat, handle
    Pairs attachments_;            // message, attachment
    Pairs joins_;                  // chat, message
    std::vector<Chat> chats_;      // not yet given
    std::size_t waiting_ = 0;      // their messages
    float last_ = 1;               // the highest row of a chat
    NSString caller_;              // of the message before: most are alike
};

}  // namespace device::messages
