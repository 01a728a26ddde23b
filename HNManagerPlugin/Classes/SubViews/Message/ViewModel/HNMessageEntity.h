// One thread of the message list: a chat with its rows.
//
// Threads   made by the thread that builds the conversations, then the main thread's.
#pragma once

#include <cstdint>
#include <vector>

#include "HNManagerPlugin/Classes/ModelEntify/HNMbaseEntity.h"
#include "toolkit/NSImage.h"
#include "toolkit/lists/NSMutableArray.h"

class HNMessageEntity : public HNMbaseEntity {
public:
    HN_DECLARE_CLASS_TABLE

    std::uint64_t chatID = 0;
    bool isGroupCommunication = false;   // two or more other participants
    NSString account;
    std::vector<NSString> serviceName;
    NSString contactName;   // the title: the participants' names, or the group's own title
    std::shared_ptr<NSImage> contactPic;   // null for a chat without participants
    NSString messageTime;   // of the last message, "yyyy-MM-dd HH:mm:ss", UTC; absent for a chat without messages
    NSString contents;   // the last message in short; absent for a chat without messages
    std::shared_ptr<NSMutableArray> messageArray;   // of HNDetailMessage
    std::vector<NSString> callerID;   // the user's own numbers, message by message; absent elements stay

    void init() override;
    // What names the thread for the session.
    [[nodiscard]] NSString key() const { return NSString::stringWithFormat("%llu", chatID); }
};
