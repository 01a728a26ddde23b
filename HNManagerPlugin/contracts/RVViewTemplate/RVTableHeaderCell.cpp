#include "HNManagerPlugin/contracts/RVViewTemplate/RVTableHeaderCell.h"

#include "toolkit/NSFont.h"
#include "toolkit/tables/NSTableHeaderView.h"
#include "toolkit/views/Mirrored.h"

HN_CLASS_TABLE(RVTableHeaderCell, NSTableHeaderCell)

namespace {

constexpr double kPadding = 4, kArrow = 7;

void drawSortArrow(const NSRect &frame, Canvas &canvas, const std::shared_ptr<NSColor> &color, bool up) {
    const NSRect place = placedIn(frame, {frame.maxX() - kPadding - kArrow, frame.minY(), kArrow, frame.size.height});
    const double left = place.minX(), right = place.maxX(), middle = frame.minY() + frame.size.height / 2;
    const double base = middle + (up ? kArrow / 2 : -kArrow / 2), tip = middle - (up ? kArrow / 2 : -kArrow / 2);
    canvas.fillPolygon({{left, base}, {right, base}, {(left + right) / 2, tip}}, color);   // the header counts y down
}

}  // namespace

void RVTableHeaderCell::drawWithFrame_inView(const NSRect &frame, Canvas &canvas, NSTableHeaderView &, SortIndicator indicator) {
    const bool highlighted = indicator != SortIndicator::none;
    canvas.fillRect(frame, highlighted && highlightBackgroundColor_ ? highlightBackgroundColor_ : backgroundColor());
    const std::shared_ptr<NSColor> color = highlighted && highlightTextColor_ ? highlightTextColor_ : textColor();
    const double line = (font() ? font()->pointSize() : NSFont::kSystemFontSize) + 4;
    const double arrow = highlighted && !noSortArrow_ ? kArrow + kPadding : 0;
    const NSRect text{frame.minX() + kPadding + offsetX_, frame.minY() + (frame.size.height - line) / 2,
                      std::max(0.0, frame.size.width - 2 * kPadding - offsetX_ - arrow), line};
    canvas.drawText(title(), placedIn(frame, text), TextStyle{font(), color, placed(alignment()), LineBreak::truncateTail});
    if (arrow > 0)
        drawSortArrow(frame, canvas, color, indicator == SortIndicator::ascending);
    if (hasSeparator_)
        canvas.fillRect(placedIn(frame, {frame.maxX() - 1, frame.minY(), 1, frame.size.height}), separatorColor_);
}
