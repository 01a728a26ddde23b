// A folder or a bookmark in the tree.
//
// Links    a node holds its children; the link to the parent is weak, so that a dropped tree ends.
// Threads  belongs to the load, then to the main thread.
#pragma once

#include <cstdint>
#include <vector>

#include "HNManagerPlugin/contracts/RVViewTemplate/RVOutlineBaseNode.h"
#include "toolkit/NSImage.h"

class HNBookMarkEntity : public RVOutlineBaseNode {
public:
    static constexpr bool kEndsOnAnyThread = true;
    HN_DECLARE_CLASS_TABLE

    // A hundred thousand hits end when the next search begins: their texts are asked for together rather than one by one.
    ~HNBookMarkEntity() override {
        name.prefetch();
        url.prefetch();
    }

    bool isFolder = false;
    bool isSelected = false;   // spare
    std::int32_t position = 0;
    NSString name, url, pKey, parentKey;
    std::weak_ptr<HNBookMarkEntity> parent;
    std::shared_ptr<NSImage> icon;
    std::vector<NSString> childrenKey;   // pKey of each child
    std::shared_ptr<NSImage> expandMarkIcon;   // of the row's disclosure mark; null before its first click
};
