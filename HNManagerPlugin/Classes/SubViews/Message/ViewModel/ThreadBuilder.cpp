#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/ThreadBuilder.h"

#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/MessageTexts.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/services/NSBundle.h"

using namespace messageTexts;

namespace {

std::shared_ptr<NSImage> picture(const char *name) { return NSBundle::bundleForClass()->imageForResource_ofType(name, "png"); }

bool isGroup(const MessageBackupChat &chat) { return chat.personJoin.size() >= 2; }

NSString textOf(const MessageBackupChat &chat, std::size_t index) { return filterNSNull(deleteEnterChar(chat.content[index])); }

bool beginsAnew(const MessageBackupChat &chat, std::size_t index) {
    return index == 0 || timeIntervalBetween_and(chat.date[index], chat.date[index - 1]) >= ThreadBuilder::kTimeRowGap;
}

std::shared_ptr<HNDetailMessage> timeRow(const HNDetailMessage &message) {
    auto row = make<HNDetailMessage>();
    row->isTimeOnly = true;
    row->isSend = message.isSend;
    row->date = message.date;
    return row;
}

}   // namespace

ThreadBuilder::ThreadBuilder(const ContactList &contacts)
    : contacts_(contacts), person_(picture("icon_list_user")), group_(picture("icon_list_user_more")),
      notDelivered_(localized("MessageView_NotDeliver")) {}

std::shared_ptr<HNMessageEntity> ThreadBuilder::threadOf(const MessageBackupChat &chat) {
    auto thread = make<HNMessageEntity>();
    thread->chatID = chat.chatID;
    thread->account = filterNSNull(chat.account);
    thread->contactName = "";
    thread->serviceName = chat.serviceName;
    thread->isGroupCommunication = isGroup(chat);
    thread->callerID = chat.messageCallerID;
    addRows(chat, *thread);
    searchMessageSendNameAndReceiveName_addTo(chat, *thread);
    if (thread->isGroupCommunication) {
        thread->contactPic = group_;
        if (!chat.chatTitle.isEmpty())
            thread->contactName = chat.chatTitle;
    }
    return thread;
}

void ThreadBuilder::addRows(const MessageBackupChat &chat, HNMessageEntity &thread) {
    const std::size_t count = chat.content.size();
    NSArray::Items rows;
    rows.reserve(count + count / 4 + 1);
    for (std::size_t i = 0; i < count; ++i) {
        const auto message = messageOf(chat, i, stringFromDate(chat.date[i]));
        if (beginsAnew(chat, i))
            rows.push_back(timeRow(*message));
        rows.push_back(message);
        if (message->isFailed)
            rows.push_back(notDelivered());
        if (i + 1 == count) {
            thread.contents = message->content;   // the caption of an attachment with a type word
            thread.messageTime = message->date;
        }
    }
    thread.messageArray->setArray(NSArray(std::move(rows)));
}

std::shared_ptr<HNDetailMessage> ThreadBuilder::messageOf(const MessageBackupChat &chat, std::size_t i, NSString date) {
    auto row = make<HNDetailMessage>();
    if (i < chat.messageCallerID.size())
        row->callerID = chat.messageCallerID[i];
    row->isSend = chat.isSend[i];
    row->isFailed = chat.isFailed[i];
    row->isAttachment = chat.isAttachment[i];
    row->isGroupCommunication = isGroup(chat);
    row->messageID = filterNSNull(chat.messageID[i]);
    row->content = textOf(chat, i);
    row->attachmentFileName = filterNSNull(chat.attachmentFileName[i]);
    if (row->isAttachment)
        row->attachmentBackupPath = row->content;
    // Whoever has a type word shows a caption, attachment or not.
    if (const NSString &type = chat.attachmentType[i]) {
        row->attachmentType = type;
        marks_.classify(type, *row);
    }
    row->attachmentTittle = filterNSNull(chat.attachmentTittle[i]);
    row->personSend = filterNSNull(chat.personSend[i]);
    const ZpContactDataInfo *const sender = contacts_.contactOf(row->personSend);
    row->personName = sender ? sender->completeName() : row->personSend;
    row->date = std::move(date);
    return row;
}

std::shared_ptr<HNDetailMessage> ThreadBuilder::notDelivered() const {
    auto row = make<HNDetailMessage>();
    row->isFailedOnly = true;
    row->content = notDelivered_;
    return row;
}

// The picture is that of the one participant; with several, an unknown one leaves the plain person there.
void ThreadBuilder::searchMessageSendNameAndReceiveName_addTo(const MessageBackupChat &chat, HNMessageEntity &thread) const {
    const std::size_t count = chat.personJoin.size();
    std::string title;
    for (std::size_t k = 0; k < count; ++k) {
        const ZpContactDataInfo *const contact = contacts_.contactOf(chat.personJoin[k]);
        const NSString part = contact ? contact->completeName() : chat.personJoin[k];
        title += NSString::stringWithFormat(k + 1 < count ? "%@, " : "%@", part).view();
        if (!contact)
            thread.contactPic = person_;
        else if (count == 1)
            thread.contactPic = contact->image_data() ? contact->image_data() : person_;
    }
    thread.contactName = NSString(title);
}
