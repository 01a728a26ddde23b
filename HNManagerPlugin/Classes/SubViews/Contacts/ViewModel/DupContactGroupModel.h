// One group of duplicates. Threads: made by the search on a background queue, then main.
#pragma once

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

class DupContactGroupModel : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    HN_DECLARE_CLASS_TABLE

    // The contacts that the opener matches, then those that these brought in, last the one that opened the group.
    ContactList dupContactGroupArray;
    // Nobody reads these three.
    bool isNameDuplicate = false;
    NSString selectedMergeName;
    double contactSectionHeight = 0;
};

using DupContactGroups = std::vector<std::shared_ptr<DupContactGroupModel>>;
