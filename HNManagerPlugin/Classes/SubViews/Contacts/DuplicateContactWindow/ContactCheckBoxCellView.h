// The check box of a group's row. Threads: main.
#pragma once

#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/ContactSection.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUICheckBox.h"
#include "toolkit/tables/NSTableCellView.h"

class ContactCheckBoxCellView : public NSTableCellView {
public:
    HN_DECLARE_CLASS_TABLE

    std::shared_ptr<RUICheckBox> checkBox;   // sends onItemCheckBox: to the window

    void connect(const std::shared_ptr<NSObject> &target);
    void show(const ContactSection &section, std::int64_t row);
};
