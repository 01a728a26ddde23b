// One bookmark or folder as the device layer reads and writes it.
//
// Texts    may be absent; an empty text is present.
// Threads  no lock: a record belongs to the load, then to the main thread.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "toolkit/NSObject.h"

class BookmarkDataInfo : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    HN_DECLARE_CLASS_TABLE

    NSString pKey;        // identity on the device
    NSString parentKey;   // pKey of the folder; absent at the top level
    NSString markName, url;
    bool isFolder = false;
    std::int32_t position = 0;   // place among its siblings, as the device counts
};

using BookmarkList = std::vector<std::shared_ptr<BookmarkDataInfo>>;
