#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/HNMMessageViewModel.h"

#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/AttachmentKind.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/dispatch/Queue.h"

namespace {

Value listOf(const std::vector<NSString> &texts) { return Value(Value::List(texts.begin(), texts.end())); }

}   // namespace

#define HN_KEY(name) .key(#name, &HNMMessageViewModel::name)
HN_CLASS_TABLE(HNMMessageViewModel, HNMbaseViewModel,
               HN_KEY(messageBR) HN_KEY(phoneNumberModels) HN_KEY(messageOwner) HN_KEY(selectMessageIcon)
                   HN_KEY(messageTableController)
                       .key("phoneNumbers",
                            [](NSObject &o) { return listOf(static_cast<HNMMessageViewModel &>(o).phoneNumbers); })
                       .selector("setFilterPhoneNumber:", &HNMMessageViewModel::setFilterPhoneNumber)
                       .selector("loadMessageAtRow:", &HNMMessageViewModel::loadMessageAtRow))
#undef HN_KEY

void HNMMessageViewModel::init() {
    HNMbaseViewModel::init();
    messageBR = make<NSMutableArray>();
    phoneNumberModels = make<NSMutableDictionary>();
}

std::shared_ptr<CContactManagerImpl> HNMMessageViewModel::contacts() {
    return contactM.update([](std::shared_ptr<CContactManagerImpl> &service) {
        if (!service)
            service = GContextFactory.defaultManager()->contactInterface();
    });
}

std::int64_t HNMMessageViewModel::checkMessageFindeMyPhoneicloud() {
    constexpr std::int64_t kMessages = 4;
    const auto service = contacts();
    return service ? service->isDeviceiCloudOpen(kMessages) : 0;
}

// ---------------------------------------------------------------- the list

NSString HNMMessageViewModel::identifierOfRow(const id &row) const {
    const auto *thread = dynamic_cast<const HNMessageEntity *>(row.get());
    return thread ? thread->key() : NSString();
}

void HNMMessageViewModel::sortHNMessageEntityArray() { contents->sortUsingDescriptors({NSSortDescriptor("messageTime", false)}); }

void HNMMessageViewModel::loadMessageAtRow(std::int64_t row) {
    const auto thread = row < 0 ? nullptr : contents->at<HNMessageEntity>(static_cast<std::size_t>(row));
    if (thread && messageTableController && !thread->messageArray->isEmpty())
        messageTableController->showMessages(thread->messageArray->snapshot());
}

bool HNMMessageViewModel::searchFileByString(const NSString &text) {
    return searchRows(text, [&](const id &row) {
        const auto *thread = dynamic_cast<const HNMessageEntity *>(row.get());
        return thread && thread->contactName.containsIgnoringCase(text);
    });
}

void HNMMessageViewModel::resetDataContents() {
    contents->removeAllObjects();
    globalArray->removeAllObjects();
}

void HNMMessageViewModel::setFilterPhoneNumber(const NSString &number) {
    if (number.isEmpty())
        return;
    resetDataContents();
    const NSString key = number == localized("All_PhoneNumber") ? NSString(kAllNumbers) : number;
    if (const auto threads = phoneNumberModels->at<NSMutableArray>(key)) {
        contents->addObjectsFromArray(threads->snapshot());
        globalArray->addObjectsFromArray(threads->snapshot());
    }
    sortHNMessageEntityArray();
    tell(arrayController, [](NSArrayController &controller) { controller.rearrangeObjects(); });
}

void HNMMessageViewModel::messageAttachmentIcon_messageObj(const NSString &type, HNDetailMessage &row) {
    AttachmentMarks().classify(type, row);
}
