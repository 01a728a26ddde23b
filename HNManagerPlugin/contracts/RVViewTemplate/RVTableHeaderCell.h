// A header cell in colours of its own. Null colours paint nothing (background, separator) or are the cell's own text colour.
// Threads: main.
#pragma once

#include "toolkit/tables/NSTableHeaderCell.h"

class RVTableHeaderCell : public NSTableHeaderCell {
public:
    [[nodiscard]] const std::shared_ptr<NSColor> &highlightBackgroundColor() const { return highlightBackgroundColor_; }
    void setHighlightBackgroundColor(std::shared_ptr<NSColor> color) { highlightBackgroundColor_ = std::move(color); }
    [[nodiscard]] const std::shared_ptr<NSColor> &highlightTextColor() const { return highlightTextColor_; }
    void setHighlightTextColor(std::shared_ptr<NSColor> color) { highlightTextColor_ = std::move(color); }
    [[nodiscard]] const std::shared_ptr<NSColor> &separatorColor() const { return separatorColor_; }
    void setSeparatorColor(std::shared_ptr<NSColor> color) { separatorColor_ = std::move(color); }
    [[nodiscard]] bool hasSeparator() const { return hasSeparator_; }
    void setHasSeparator(bool has) { hasSeparator_ = has; }
    // Points from the left edge to the title.
    [[nodiscard]] double offsetX() const { return offsetX_; }
    void setOffsetX(double offset) { offsetX_ = offset; }
    // The mark of the sort order is not drawn.
    [[nodiscard]] bool noSortArrow() const { return noSortArrow_; }
    void setNoSortArrow(bool none) { noSortArrow_ = none; }

    // A column that the table is sorted by takes the highlight colours.
    void drawWithFrame_inView(const NSRect &frame, Canvas &canvas, NSTableHeaderView &view, SortIndicator indicator) override;
    HN_DECLARE_CLASS_TABLE

private:
    std::shared_ptr<NSColor> highlightBackgroundColor_, highlightTextColor_, separatorColor_;
    double offsetX_ = 0;
    bool hasSeparator_ = false, noSortArrow_ = false;
};
