#include "HNManagerPlugin/Classes/ViewManager/HeaderCells.h"

#include "toolkit/NSFont.h"

namespace {

std::shared_ptr<NSColor> grey(double value) { return NSColor::colorWithCalibratedRed_green_blue_alpha(value, value, value, 1.0); }

}  // namespace

std::shared_ptr<NSColor> headerGrey() { return grey(240 / 255.0); }

std::shared_ptr<RVTableHeaderCell> makeHeaderCell(const NSString &title, double offsetX) {
    auto cell = make<RVTableHeaderCell>();
    cell->setTitle(title);
    cell->setBackgroundColor(headerGrey());
    cell->setHighlightBackgroundColor(headerGrey());
    cell->setTextColor(grey(61 / 255.0));
    cell->setHighlightTextColor(grey(61 / 255.0));
    cell->setSeparatorColor(NSColor::clearColor());
    cell->setHasSeparator(true);
    cell->setFont(NSFont::fontWithName_size("HelveticaNeue", 13.0));
    cell->setOffsetX(offsetX);
    if (title.isEmpty())
        cell->setNoSortArrow(true);
    return cell;
}

std::shared_ptr<RVBaseTableRowView> makeRowView(const NSString &identifier) {
    auto row = make<RVBaseTableRowView>();
    row->setIdentifier(identifier);
    row->setHighlightColor(NSColor::colorWithCalibratedRed_green_blue_alpha(210 / 255.0, 236 / 255.0, 246 / 255.0, 0.5));
    row->setSelectedColor(NSColor::colorWithCalibratedRed_green_blue_alpha(10 / 255.0, 179 / 255.0, 203 / 255.0, 0.1));
    return row;
}
