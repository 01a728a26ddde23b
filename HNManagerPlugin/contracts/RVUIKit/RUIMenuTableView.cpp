#include "HNManagerPlugin/contracts/RVUIKit/RUIMenuTableView.h"

#include "toolkit/views/NSMenu.h"

HN_CLASS_TABLE(RUIMenuTableView, NSTableView)

void RUIMenuTableView::setCustomHeaderViewHeight_color(double height, const std::shared_ptr<NSColor> &color) {
    const std::shared_ptr<NSTableHeaderView> &header = headerView();
    if (!header)
        return;
    header->setFrameSize({header->frame().size.width, height});
    header->setWantsLayer(true);
    header->layer()->setBackgroundColor(color);
}

std::shared_ptr<NSMenu> RUIMenuTableView::menuForEvent(NSEvent &event) {
    const std::shared_ptr<NSMenu> plain = NSTableView::menuForEvent(event);   // notes the row that was clicked
    const std::int64_t row = clickedRow();
    if (row < 0)
        return noItemMenu_;
    if (!isRowSelected(row))
        proposeSelection(NSIndexSet::indexSetWithIndex(static_cast<std::size_t>(row)), row);
    return rowMenu_ ? rowMenu_ : plain;
}

void RUIMenuTableView::mouseDown(NSEvent &event) {
    const NSEventModifierFlags given = event.modifierFlags;
    if (!canExtendSelection_)
        event.modifierFlags &= ~(NSEventModifierFlagShift | NSEventModifierFlagCommand);
    NSTableView::mouseDown(event);
    event.modifierFlags = given;
}
