// One node of the category tree. Main thread; the fields that the cell shows are bound.
#pragma once

#include "HNManagerPlugin/contracts/RVViewTemplate/RVOutlineBaseNode.h"
#include "toolkit/NSColor.h"
#include "toolkit/NSImage.h"
#include "toolkit/Property.h"

class HNFileTypeObject : public RVOutlineBaseNode {
public:
    HN_DECLARE_CLASS_TABLE

    Property<NSString> fileTypeName;                        // label
    Property<std::shared_ptr<NSImage>> fileTypeImage;       // icon shown now; null on child nodes
    Property<bool> hiddenExpandBgColor;
    NSString nibName;                                       // of the sub-view; empty for an entry that only groups
    std::shared_ptr<NSImage> imageA, imageB;                // normal and highlighted icon
    Property<std::shared_ptr<NSImage>> expandMarkIcon;      // disclosure mark shown now
    std::shared_ptr<NSImage> expandMarkIconA, expandMarkIconB;   // collapsed and expanded; only on nodes with children
    Property<std::shared_ptr<NSColor>> textColor;           // shown now
    NSString textNormalColor, textHighLightColor;           // AARRGGBB
    Property<NSString> itemCountString;                     // "(%li)", empty for an unknown count; absent from the start

    // Number of items; -1 means unknown.
    [[nodiscard]] std::int64_t itemCount() const { return itemCount_; }
    void setItemCount(std::int64_t count);

private:
    std::int64_t itemCount_ = 0;
};
