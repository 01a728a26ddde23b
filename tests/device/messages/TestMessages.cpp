#include "tests/device/messages/TestMessages.h"

#include "device/messages/MessageSchema.h"

namespace testdevice {

namespace fs = std::filesystem;

const std::vector<MessageVersion> &messageVersions() {
    const auto sql = [](const char *name) { return readFile(std::string(HN_SAMPLES_DIR "/messages/") + name + ".sql"); };
    static const std::vector<MessageVersion> all = {
        {"iOS6", sql("iOS6"), false, false, false},
        {"iOS9", sql("iOS9"), true, false, true},
        {"newest", device::messages::kNewMessages, true, true, true},
    };
    return all;
}

TestMessages::TestMessages(const std::string &sql, const MessageVersion &version) {
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
