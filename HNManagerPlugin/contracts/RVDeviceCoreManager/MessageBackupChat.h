// One chat as the device layer parses it out of a backup, and the place of a backup on the computer.
//
// Shape    one array per field of a message, all of the same order: index i describes message i, and `content` decides
//          how many there are. `messageCallerID` alone may be shorter.
// Texts    absent where the backup has none (SQL NULL); texts are shared, a copy costs nothing.
// Threads  no lock: a record belongs to the parse, then to whoever took it out of `parseOneOver:type:progress:`.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "toolkit/NSObject.h"
#include "toolkit/dispatch/Clock.h"

class MessageBackupChat : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    using Texts = std::vector<NSString>;

    std::uint64_t chatID = 0;
    NSString account;
    Texts serviceName;   // "iMessage", "SMS"; empty where the chat names none
    NSString chatTitle;   // the group's own title
    Texts personJoin;   // numbers or addresses of the other participants

    Texts content;   // the text; of an attachment the path of its file on the computer, absent where it is not there
    std::vector<dispatch::Time> date;
    std::vector<bool> isSend, isFailed, isAttachment;
    Texts messageID;
    Texts attachmentFileName;   // unlike any other of the same parse, ignoring case; fit for one folder
    Texts attachmentType;   // MIME type or uniform type identifier; absent marks no type
    Texts attachmentTittle;
    Texts personSend;   // the sender's number, absent for what the user sent
    Texts messageCallerID;   // the user's own number
};

class BackupFileInfo : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    NSString path;   // the folder that the backup made
};
