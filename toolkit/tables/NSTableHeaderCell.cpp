#include "toolkit/tables/NSTableHeaderCell.h"

#include "toolkit/views/ClassKeys.h"
#include "toolkit/views/Mirrored.h"

HN_CLASS_TABLE(NSTableHeaderCell, NSObjectTable, .key("title", keys::get(&NSTableHeaderCell::title), keys::set(&NSTableHeaderCell::setTitle)))

void NSTableHeaderCell::drawWithFrame_inView(const NSRect &frame, Canvas &canvas, NSTableHeaderView &, SortIndicator indicator) {
    constexpr double kMargin = 4, kArrow = 8;
    canvas.fillRect(frame, backgroundColor_);
    NSRect text = frame.insetBy(kMargin, kMargin);
    if (indicator != SortIndicator::none) {
        const NSRect arrow = placedIn(frame, {frame.maxX() - kMargin - kArrow, frame.minY(), kArrow, frame.size.height});
        const double middle = frame.minY() + frame.size.height / 2;
        const double up = indicator == SortIndicator::ascending ? -kArrow / 4 : kArrow / 4;
        canvas.fillPolygon({{arrow.minX(), middle - up}, {arrow.maxX(), middle - up}, {arrow.minX() + kArrow / 2, middle + up}}, NSColor::grayColor());
        text.size.width = std::max(0.0, text.size.width - kArrow - kMargin);
    }
    canvas.drawText(title_, placedIn(frame, text), {font_, textColor_, placed(alignment_), LineBreak::truncateTail});
}
