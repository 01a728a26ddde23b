// The sections of the contact editor, one below the other. Threads: main.
#pragma once

#include "HNManagerPlugin/Classes/SubViews/Contacts/NewContactWindow/ContactInfoView.h"

class NewContactViewModel : public NSObject, public ContactInfoViewDelegate {
public:
    HN_DECLARE_CLASS_TABLE
    static constexpr double kItemHeight = 42;   // points, by which an item changes its section

    std::weak_ptr<NSView> container;   // of the sections
    std::weak_ptr<ContactInfoView> nameGroup, phoneGroup, emailGroup, noteGroup;

    void setContact(const std::shared_ptr<ZpContactDataInfo> &contact);
    void setEditing(const std::weak_ptr<ContactInfoViewEditing> &editing);
    void ContactInfoView_viewIndex_selectRow(ContactInfoView &view, std::int64_t index, std::int64_t row) override;
    // The button in a section's title: an item more, with a stand-in for its text.
    void onSectionButton(ContactInfoView &section);
    // Somebody has typed, and a section holds text now.
    [[nodiscard]] bool holdsText() const;

private:
    void changeHeight(ContactInfoView &section, double by);
};
