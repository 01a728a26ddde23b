// The base of all list rows.
#pragma once

#include "toolkit/NSObject.h"

class HNMbaseEntity : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    HN_DECLARE_CLASS_TABLE

    bool islocal = false;   // the item lives on the device, not in the cloud alone; set by the media categories
    NSString type;          // the category's own classification
    NSString sortKey;       // title of the row's check box, and what the check-box column sorts by
};
