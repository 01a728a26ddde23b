// One row of a conversation: a message, or a caption that tells the time or a failed delivery.
//
// Texts     absent where the row has none: a not-delivered caption has no date and no sender, a time caption only a date.
//           Texts of a message are "" where the backup has none. They are shared with the parsed chat, copies cost nothing.
// Threads   made by the thread that builds the conversations, then the main thread's.
#pragma once

#include "toolkit/NSImage.h"
#include "toolkit/NSObject.h"

class HNDetailMessage : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    HN_DECLARE_CLASS_TABLE

    bool isSend = false;   // by the user
    bool isFailed = false;   // not delivered
    bool isAttachment = false;
    bool isTimeOnly = false;   // a time caption
    bool isFailedOnly = false;   // a not-delivered caption
    bool isGroupCommunication = false;   // more than one other participant
    bool isTimeOverOneHour = false;   // read by the page; no flow sets it
    NSString messageID;
    NSString content;   // the text; a caption ("Photo") where the row has a type word
    NSString attachmentFileName;
    NSString attachmentType;   // MIME type or uniform type identifier
    NSString attachmentBackupPath;   // of an attachment: its file on the computer, "" where it is not there
    std::shared_ptr<NSImage> attachmentIcon;   // the picture itself, or the mark of its kind
    NSString attachmentTittle;
    NSString personSend;   // the sender's number
    NSString personName;   // the sender's name if the address book knows it, else the number
    NSString personNameSend, personJoin, personNameJoin;   // filled by no flow
    NSString date;   // "yyyy-MM-dd HH:mm:ss", UTC
    double textHeight = 0;   // points; the row's measured height, 0 until measured
    NSString callerID;   // the user's own number; absent where the backup names none
};
