// Any bytes as a message database: chats may be missing, never a crash or a hang; what comes out keeps the record's shape.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "device/messages/ChatReader.h"

using namespace device;

namespace {

void check(bool holds) {
    if (!holds)
        std::abort();
}

bool isFit(const NSString &name) {
    const std::string_view text = name.view();
    return name.isNil() || (!text.empty() && text != "." && text != ".." && text.find_first_of("/'\"\\:*?<>|\n") == text.npos && unicode::isValid(text));
}

void checkChat(const MessageBackupChat &chat) {
    const std::size_t count = chat.content.size();
    check(count > 0 && chat.date.size() == count && chat.isSend.size() == count && chat.isFailed.size() == count && chat.isAttachment.size() == count);
    check(chat.messageID.size() == count && chat.attachmentFileName.size() == count && chat.attachmentType.size() == count);
    check(chat.attachmentTittle.size() == count && chat.personSend.size() == count && chat.messageCallerID.size() == count);
    for (std::size_t i = 0; i < count; ++i)
        check(isFit(chat.attachmentFileName[i]) && unicode::isValid(chat.content[i].view()) && (chat.isAttachment[i] || !chat.content[i].isEmpty()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    try {
        sqlite::Database database = sqlite::Database::fromBytes({reinterpret_cast<const char *>(data), size});
        FailureLog failures;
        const auto find = [](const DevicePath &path) { return FileTree::staysInside(path) ? NSString("/found") : NSString(); };
        messages::ChatReader(database, find, failures).read([](const auto &chat, float) {
            checkChat(*chat);
            return true;
        });
    } catch (const std::exception &) {
    }
    return 0;
}
