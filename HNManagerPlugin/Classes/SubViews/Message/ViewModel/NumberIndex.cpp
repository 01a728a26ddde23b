#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/NumberIndex.h"

#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/MessageTexts.h"

NumberIndex::NumberIndex(const ContactList &contacts) : contacts_(contacts) {
    for (const auto &contact : contacts_)
        for (const auto &number : contact->phone_numbers())
            if (number.phone_number)
                byNumber_.try_emplace(messageTexts::bareNumber(number.phone_number), contact.get());   // the first one stays
}

const ZpContactDataInfo *NumberIndex::contactOf(const NSString &number) const {
    if (!number)
        return nullptr;
    const auto found = byNumber_.find(number);
    return found == byNumber_.end() ? nullptr : found->second;
}
