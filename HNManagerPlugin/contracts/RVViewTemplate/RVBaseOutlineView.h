// The outline that the categories' outlines derive from: a row menu, and a header of any height. Threads: main.
#pragma once

#include "toolkit/tables/NSOutlineView.h"

class RVBaseOutlineView : public NSOutlineView {
public:
    // A right click on a row that is not selected selects it alone first. Null shows nothing; the empty area never has one.
    [[nodiscard]] const std::shared_ptr<NSMenu> &rightMouseMenu() const { return rightMouseMenu_; }
    void setRightMouseMenu(std::shared_ptr<NSMenu> menu) { rightMouseMenu_ = std::move(menu); }
    virtual void setCustomHeaderViewHeight_color(double height, const std::shared_ptr<NSColor> &color);

    [[nodiscard]] std::shared_ptr<NSMenu> menuForEvent(NSEvent &event) override;
    HN_DECLARE_CLASS_TABLE

private:
    std::shared_ptr<NSMenu> rightMouseMenu_;
};
