// A row that paints itself light under the mouse and in another colour while it is selected. The colours and the mouse flag
// (mouseInside) are the row's own ones. Threads: main.
#pragma once

#include "toolkit/tables/NSTableRowView.h"

class RVBaseTableRowView : public NSTableRowView {
public:
    // Off: the mouse leaves no trace.
    [[nodiscard]] bool wantsMouseFocus() const { return wantsMouseFocus_; }
    void setWantsMouseFocus(bool wants) { wantsMouseFocus_ = wants; }
    HN_DECLARE_CLASS_TABLE

protected:
    void setMouseInside(bool inside) override;

private:
    bool wantsMouseFocus_ = true;
};
