#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/HNDetailMessage.h"

#define HN_KEY(name) .key(#name, &HNDetailMessage::name)
HN_CLASS_TABLE(HNDetailMessage, NSObjectTable,
               HN_KEY(isSend) HN_KEY(isFailed) HN_KEY(isAttachment) HN_KEY(isTimeOnly) HN_KEY(isFailedOnly)
                   HN_KEY(isGroupCommunication) HN_KEY(isTimeOverOneHour) HN_KEY(messageID) HN_KEY(content)
                       HN_KEY(attachmentFileName) HN_KEY(attachmentType) HN_KEY(attachmentBackupPath)
                           HN_KEY(attachmentIcon) HN_KEY(attachmentTittle) HN_KEY(personSend) HN_KEY(personName)
                               HN_KEY(personNameSend) HN_KEY(personJoin) HN_KEY(personNameJoin) HN_KEY(date)
                                   HN_KEY(textHeight) HN_KEY(callerID))
#undef HN_KEY
