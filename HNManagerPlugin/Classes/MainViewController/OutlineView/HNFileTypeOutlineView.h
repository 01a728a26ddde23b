// The tree's own views: an outline that keeps its selection, rows that may show the theme colour, cells with a
// disclosure button.
#pragma once

#include "HNManagerPlugin/contracts/RVViewTemplate/RVBaseOutlineView.h"
#include "HNManagerPlugin/contracts/RVViewTemplate/RVBaseTableRowView.h"
#include "toolkit/tables/NSTableCellView.h"
#include "toolkit/views/NSButton.h"

class HNFileTypeOutlineView : public RVBaseOutlineView {
public:
    HN_DECLARE_CLASS_TABLE
    // A click on the empty area must not clear the selection.
    void mouseDown(NSEvent &event) override;
    // Arrow keys do not move the selection.
    void keyDown(NSEvent &) override {}
};

class HNFileTypeTableRowView : public RVBaseTableRowView {
public:
    HN_DECLARE_CLASS_TABLE
    [[nodiscard]] bool wantsCustomColor() const { return wantsCustomColor_; }
    // Redraws at once.
    void setWantsCustomColor(bool wants);
    void drawRect(const NSRect &rect, Canvas &canvas) override;

private:
    bool wantsCustomColor_ = false;
};

class HNFileTypeOutTableCellView : public NSTableCellView {
public:
    HN_DECLARE_CLASS_TABLE
    std::weak_ptr<NSButton> expandButton;
};
