// The sections of the contact editor. Threads: main.
#pragma once

#include "HNManagerPlugin/Classes/SubViews/Contacts/NewContactWindow/ContactInfoView.h"

class NewContactViewModel : public NSObject {
public:
    HN_DECLARE_CLASS_TABLE

    std::weak_ptr<ContactInfoView> nameGroup, phoneGroup, emailGroup, noteGroup;

    void setContact(const std::shared_ptr<ZpContactDataInfo> &contact);
    void setDelegate(const std::weak_ptr<ContactInfoViewDelegate> &delegate);
    // Somebody has typed, and a section holds text now.
    [[nodiscard]] bool holdsText() const;
};
