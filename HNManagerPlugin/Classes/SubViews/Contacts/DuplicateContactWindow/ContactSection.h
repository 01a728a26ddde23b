// One row of the merge window: the contacts of a group and what they become. Threads: main.
#pragma once

#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/ContactCellData.h"

class ContactSection : public NSObject {
public:
    HN_DECLARE_CLASS_TABLE

    std::vector<std::shared_ptr<ContactCellData>> cellDatas;   // one per contact, in the group's order
    std::shared_ptr<ContactCellData> mergedCellData;
    NSString mergedName;   // absent where no contact has a name
    int selected = 1;      // state of the row's check box
    std::int64_t sectionIndex = 0;   // nobody reads it

    // Points: all contacts below each other.
    [[nodiscard]] double height() const;
    // The contact that the others are folded into: the first one named `mergedName`, or one without a name that opened
    // the group; null without one.
    [[nodiscard]] std::shared_ptr<ZpContactDataInfo> survivor() const;
};
