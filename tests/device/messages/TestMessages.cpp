#include "tests/device/messages/TestMessages.h"

#include "device/messages/MessageSchema.h"
#include "device/plist/PropertyList.h"

namespace testdevice {

namespace {

namespace fs = std::filesystem;

constexpr const char *kJoins =
    "CREATE TABLE chat_handle_join (chat_id INTEGER, handle_id INTEGER, UNIQUE(chat_id, handle_id));"
    "CREATE TABLE chat_message_join (chat_id INTEGER, message_id INTEGER, PRIMARY KEY (chat_id, message_id));"
    "CREATE TABLE message_attachment_join (message_id INTEGER, attachment_id INTEGER, UNIQUE(message_id, attachment_id));"
    "CREATE TABLE handle (ROWID INTEGER PRIMARY KEY AUTOINCREMENT UNIQUE, id TEXT NOT NULL, country TEXT, service TEXT, UNIQUE (id, service));";
constexpr const char *kMessage6 =
    "CREATE TABLE message (ROWID INTEGER PRIMARY KEY AUTOINCREMENT, guid TEXT UNIQUE NOT NULL, text TEXT, handle_id INTEGER DEFAULT 0, "
    "attributedBody BLOB, error INTEGER DEFAULT 0, date INTEGER, is_from_me INTEGER DEFAULT 0";
constexpr const char *kChat6 =
    "CREATE TABLE chat (ROWID INTEGER PRIMARY KEY AUTOINCREMENT, guid TEXT UNIQUE NOT NULL, style INTEGER, service_name TEXT, account_login TEXT";
constexpr const char *kAttachment6 =
    "CREATE TABLE attachment (ROWID INTEGER PRIMARY KEY AUTOINCREMENT, guid TEXT UNIQUE NOT NULL, filename TEXT, uti TEXT, mime_type TEXT";

}  // namespace

const std::vector<MessageVersion> &messageVersions() {
    static const std::vector<MessageVersion> all = {
        {"iOS6", std::string(kJoins) + kMessage6 + ");" + kChat6 + ");" + kAttachment6 + ");", false, false, false},
        {"iOS9", std::string(kJoins) + kMessage6 + ", item_type INTEGER DEFAULT 0);" + kChat6 + ", display_name TEXT);" + kAttachment6 + ", transfer_name TEXT);",
         true, false, true},
        {"newest", device::messages::kNewMessages, true, true, true},
    };
    return all;
}

TestMessages::TestMessages(const std::string &sql, const MessageVersion &version) {
    device::ImageFolder::create(path(), [] {
        device::PropertyList properties;
        properties.setText("DeviceName", "Test Phone");
        properties.setText("UniqueDeviceID", "0001-ABCD");
        properties.setText("ProductVersion", "17.2");
        return properties;
    }());
    fs::create_directories(database().parent_path());
    execOn(database(), version.sql + sql);
}

TestMessages::TestMessages(const fs::path &standing) : TestMessages("", messageVersions().front()) {
    fs::copy_file(standing, database(), fs::copy_options::overwrite_existing);
}

void TestMessages::addAttachment(const std::string &name, std::string_view bytes) const {
    write(path() / "MediaDomain/Library/SMS/Attachments" / name, bytes);
}

std::string TestMessages::chats() const {
    device::messages::MessageStore store(open());
    std::string lines = described(chatsOf(store), open()->root());
    if (const auto failure = store.failures().first())
        lines += "! " + failure->text.substr(0, failure->text.find(": ")) + "\n";
    return lines;
}

Chats chatsOf(device::messages::MessageStore &store) {
    Chats chats;
    store.readChats([&](std::shared_ptr<MessageBackupChat> chat, float) {
        chats.push_back(std::move(chat));
        return true;
    });
    return chats;
}

std::string described(const MessageBackupChat &chat, const std::string &root) {
    const auto shown = [](const NSString &text) { return text.isNil() ? std::string("-") : text.str(); };
    std::string lines = "chat " + std::to_string(chat.chatID) + " " + shown(chat.account) + " [" + (chat.serviceName.empty() ? "" : chat.serviceName[0].str()) +
                        "] " + shown(chat.chatTitle) + " with";
    for (const NSString &person : chat.personJoin)
        lines += " " + person.str();
    lines += "\n";
    for (std::size_t i = 0; i < chat.content.size(); ++i) {
        std::string content = shown(chat.content[i]);
        if (!root.empty() && content.starts_with(root))
            content = content.substr(root.size());
        lines += std::to_string(std::chrono::floor<std::chrono::seconds>(chat.date[i]).time_since_epoch().count()) + " " + shown(chat.messageID[i]) +
                 (chat.isSend[i] ? " sent" : " from " + shown(chat.personSend[i])) + (chat.isFailed[i] ? " failed" : "") + " by " +
                 shown(chat.messageCallerID[i]);
        if (chat.isAttachment[i])
            lines += " file " + shown(chat.attachmentFileName[i]) + " " + shown(chat.attachmentType[i]);
        lines += ": " + content + "\n";
    }
    return lines;
}

std::string described(const Chats &chats, const std::string &root) {
    std::string lines;
    for (const auto &chat : chats)
        lines += described(*chat, root);
    return lines;
}

}  // namespace testdevice
