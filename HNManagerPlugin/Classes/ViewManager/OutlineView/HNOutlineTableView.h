// The outline of the browsers: a coloured header, and disclosure marks that stand a little further in.
#pragma once

#include "HNManagerPlugin/contracts/RVViewTemplate/RVBaseOutlineView.h"

class HNOutlineTableView : public RVBaseOutlineView {
public:
    HN_DECLARE_CLASS_TABLE

    // Fills the gap over the vertical scroller on toolkits that leave one; null elsewhere.
    std::shared_ptr<NSView> headerPatchView;

    // `color` may be null: the patch then takes the first header cell's background.
    void setCustomHeaderViewHeight_color(double height, const std::shared_ptr<NSColor> &color) override;
    [[nodiscard]] NSRect frameOfOutlineCellAtRow(std::int64_t row) override;
};
