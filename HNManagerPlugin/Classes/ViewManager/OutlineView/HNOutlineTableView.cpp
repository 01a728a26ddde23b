#include "HNManagerPlugin/Classes/ViewManager/OutlineView/HNOutlineTableView.h"

#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSScrollView.h"

HN_CLASS_TABLE(HNOutlineTableView, RVBaseOutlineView, .key("headerPatchView", &HNOutlineTableView::headerPatchView))

namespace {

constexpr double kFirstVersionWithoutGap = 1265;   // of the toolkit: headers reach over the scroller from here on
constexpr double kMarkOffset = 12.0;
constexpr double kScrollerWidth = 15.0;

}  // namespace

void HNOutlineTableView::setCustomHeaderViewHeight_color(double height, const std::shared_ptr<NSColor> &color) {
    RVBaseOutlineView::setCustomHeaderViewHeight_color(height, color);
    if (NSAppKitVersionNumber() >= kFirstVersionWithoutGap)
        return;
    std::shared_ptr<NSColor> background = color;
    if (!background && numberOfColumns() > 0)
        background = columnAtIndex(0)->headerCell()->backgroundColor();
    headerPatchView = make<NSView>(NSRect(0, 0, kScrollerWidth, height));
    headerPatchView->setWantsLayer(true);
    headerPatchView->layer()->setBackgroundColor(background);
}

NSRect HNOutlineTableView::frameOfOutlineCellAtRow(std::int64_t row) {
    return RVBaseOutlineView::frameOfOutlineCellAtRow(row).offsetBy(isRightToLeft() ? -kMarkOffset : kMarkOffset, 0);
}
