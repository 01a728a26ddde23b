#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/HNMessageEntity.h"

namespace {

Value listOf(const std::vector<NSString> &texts) { return Value(Value::List(texts.begin(), texts.end())); }

}   // namespace

#define HN_KEY(name) .key(#name, &HNMessageEntity::name)
#define HN_LIST_KEY(name) .key(#name, [](NSObject &o) { return listOf(static_cast<HNMessageEntity &>(o).name); })
HN_CLASS_TABLE(HNMessageEntity, HNMbaseEntity,
               HN_KEY(chatID) HN_KEY(isGroupCommunication) HN_KEY(account) HN_LIST_KEY(serviceName) HN_KEY(contactName)
                   HN_KEY(contactPic) HN_KEY(messageTime) HN_KEY(contents) HN_KEY(messageArray) HN_LIST_KEY(callerID))
#undef HN_LIST_KEY
#undef HN_KEY

void HNMessageEntity::init() {
    HNMbaseEntity::init();
    messageArray = make<NSMutableArray>();
}
