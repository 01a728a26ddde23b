// What the detail panel shows of the selected contact.
//
// Threads  main. `name` and `image` are bound by the nib; `detailInfoArray` is the content of the panel's controller, which
//          has to rearrange after a change.
#pragma once

#include "HNManagerPlugin/Classes/ModelEntify/HNMbaseEntity.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"
#include "toolkit/Property.h"
#include "toolkit/lists/NSMutableArray.h"

// One row of the panel; `type` (inherited) is its label.
class HNContactInfo : public HNMbaseEntity {
public:
    HN_DECLARE_CLASS_TABLE
    NSString info;
    NSString label;   // spare
};

class HNContactEntity : public HNMbaseEntity {
public:
    HN_DECLARE_CLASS_TABLE
    Property<NSString> name;
    Property<std::shared_ptr<NSImage>> image;
    std::shared_ptr<NSMutableArray> detailInfoArray;   // of HNContactInfo

    void init() override;
    // Name and rows of this contact; leaves the picture alone.
    void showDetails(const ZpContactDataInfo &contact);
};
