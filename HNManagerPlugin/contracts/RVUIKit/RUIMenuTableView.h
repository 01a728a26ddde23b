// A table whose rows and empty area have menus of their own, with a header of any height.
//
// Menus      a right click on a row that is not selected selects it alone first; then rowMenu shows, or the table's plain
//            menu. On the empty area noItemMenu shows; null shows nothing.
// Extending  while it is on (as it is at first), a plain click keeps to the platform's rules; while it is off, a click with
//            shift or command selects one row alone.
// Threads    main.
#pragma once

#include "toolkit/tables/NSTableView.h"

class RUIMenuTableView : public NSTableView {
public:
    void setCustomHeaderViewHeight_color(double height, const std::shared_ptr<NSColor> &color);
    [[nodiscard]] bool canExtendSelection() const { return canExtendSelection_; }
    void setCanExtendSelection(bool can) { canExtendSelection_ = can; }

    [[nodiscard]] const std::shared_ptr<NSMenu> &rowMenu() const { return rowMenu_; }
    void setRowMenu(std::shared_ptr<NSMenu> menu) { rowMenu_ = std::move(menu); }
    [[nodiscard]] const std::shared_ptr<NSMenu> &noItemMenu() const { return noItemMenu_; }
    void setNoItemMenu(std::shared_ptr<NSMenu> menu) { noItemMenu_ = std::move(menu); }

    [[nodiscard]] std::shared_ptr<NSMenu> menuForEvent(NSEvent &event) override;
    void mouseDown(NSEvent &event) override;
    HN_DECLARE_CLASS_TABLE

private:
    std::shared_ptr<NSMenu> rowMenu_, noItemMenu_;
    bool canExtendSelection_ = true;
};
