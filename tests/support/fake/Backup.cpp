#include "tests/support/fake/Backup.h"

#include "toolkit/dispatch/Queue.h"

namespace {

// One queue for both tasks: the layer never calls back two at a time.
const dispatch::Queue &layer() {
    static const dispatch::Queue queue = dispatch::Queue::serial("fake backup layer");
    return queue;
}

class ContactContext : public DeviceContext {
public:
    std::shared_ptr<CContactManagerImpl> contacts;
    std::shared_ptr<CContactManagerImpl> contactInterface() override { return contacts; }
};

}   // namespace

void FakeBackupTask::call(std::function<void(RKBackupAndRestoreTaskDelegate &)> what) {
    dispatch::async(layer(), [self = selfOf(this), what = std::move(what)] {
        if (const auto delegate = self->delegate())
            what(*delegate);
    });
}

void FakeBackupTask::over(NSString path, std::uint32_t result) {
    running = false;
    call([path, result](RKBackupAndRestoreTaskDelegate &delegate) {
        delegate.backupOverWithcSeccussFlag_path_backupRes(1, path, result);
    });
}

void FakeBackupTask::setManagerDelegate(std::weak_ptr<RKBackupAndRestoreTaskDelegate> delegate) {
    say(delegate.expired() ? "detach" : "attach");
    RKBackupAndRestoreTask::setManagerDelegate(std::move(delegate));
}

void FakeBackupTask::startBackup_flag_isIncrement(const NSString &path, std::uint32_t flag, std::uint32_t isIncrement) {
    say("backup " + path.str() + " " + std::to_string(flag) + " " + std::to_string(isIncrement));
    running = true;
    if (whenStarted)
        whenStarted();
}

std::uint32_t FakeBackupTask::isDeviceBackupEncrypted() {
    const std::uint32_t answer = encrypted.empty() ? 0 : encrypted.front();
    if (encrypted.size() > 1)
        encrypted.pop_front();
    say("encrypted? " + std::to_string(answer));
    return answer;
}

std::int32_t FakeBackupTask::removeDeviceBackupPassword(const NSString &given) {
    if (secondsPerCheck > 0)
        dispatch::sleepFor(std::chrono::seconds(secondsPerCheck));
    say("remove " + given.str());
    return given == password ? 0 : 7;
}

std::int32_t FakeBackupTask::setDeviceBackupPassword(const NSString &given) {
    say("set " + given.str());
    return setResult;
}

void FakeBackupTask::startParseBackupFile(const std::shared_ptr<BackupFileInfo> &file) {
    say("parse " + file->path.str());
    for (const auto &object : parsed)
        call([object](RKBackupAndRestoreTaskDelegate &delegate) { delegate.parseOneOver_type_progress(object, 2, 0.5F); });
    call([](RKBackupAndRestoreTaskDelegate &delegate) { delegate.parseAllOver(); });
}

ContactList FakeAddressBook::contactArray() {
    if (secondsToList > 0)
        dispatch::sleepFor(std::chrono::seconds(secondsToList));
    return stored;
}

void FakeAddressBook::add(const NSString &completeName, std::vector<NSString> numbers) {
    auto contact = make<ZpContactDataInfo>();
    contact->setCompleteName(completeName);
    for (const NSString &number : numbers)
        contact->mutable_phone_numbers().push_back({"home", number});
    stored.push_back(contact);
}

std::shared_ptr<DeviceContext> contextWith(std::shared_ptr<CContactManagerImpl> contacts) {
    auto context = make<ContactContext>();
    context->contacts = std::move(contacts);
    return context;
}

std::shared_ptr<MessageBackupChat> chatOf(std::uint64_t id, std::vector<NSString> persons, const std::vector<FakeMessage> &messages) {
    constexpr std::chrono::seconds kNewYear(1'704'067'200);
    auto chat = make<MessageBackupChat>();
    chat->chatID = id;
    chat->personJoin = std::move(persons);
    for (const FakeMessage &message : messages) {
        chat->content.push_back(message.content);
        chat->date.emplace_back(kNewYear + std::chrono::seconds(message.second));
        chat->isSend.push_back(message.isSend);
        chat->isFailed.push_back(message.isFailed);
        chat->isAttachment.push_back(message.isAttachment);
        chat->messageID.emplace_back();
        chat->attachmentFileName.push_back(message.fileName);
        chat->attachmentType.push_back(message.type);
        chat->attachmentTittle.emplace_back();
        chat->personSend.push_back(message.personSend);
        if (message.callerID)
            chat->messageCallerID.push_back(message.callerID);
    }
    return chat;
}
