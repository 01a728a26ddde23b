// Makes a thread with its rows out of a parsed chat.
//
// Rows      per message: a time caption where it is the first or an hour or more passed since the one before, the message, and a
//           caption where it was not delivered.
// Title     the participants as the address book names them, ", " between; the group's own title where it has one.
// Texts     are shared with the chat. Threads: one at a time.
#pragma once

#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/AttachmentKind.h"
#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/HNMessageEntity.h"
#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/NumberIndex.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MessageBackupChat.h"

class ThreadBuilder {
public:
    static constexpr double kTimeRowGap = 3600.0;   // seconds

    explicit ThreadBuilder(const ContactList &contacts);
    [[nodiscard]] std::shared_ptr<HNMessageEntity> threadOf(const MessageBackupChat &chat);

private:
    std::shared_ptr<HNDetailMessage> messageOf(const MessageBackupChat &chat, std::size_t index, NSString date);
    std::shared_ptr<HNDetailMessage> notDelivered() const;
    void addRows(const MessageBackupChat &chat, HNMessageEntity &thread);
    void searchMessageSendNameAndReceiveName_addTo(const MessageBackupChat &chat, HNMessageEntity &thread) const;

    NumberIndex contacts_;
    AttachmentMarks marks_;
    std::shared_ptr<NSImage> person_, group_;
    NSString notDelivered_;
};
