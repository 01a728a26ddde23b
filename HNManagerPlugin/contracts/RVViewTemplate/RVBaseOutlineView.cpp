#include "HNManagerPlugin/contracts/RVViewTemplate/RVBaseOutlineView.h"

#include "toolkit/views/NSMenu.h"

HN_CLASS_TABLE(RVBaseOutlineView, NSOutlineView)

void RVBaseOutlineView::setCustomHeaderViewHeight_color(double height, const std::shared_ptr<NSColor> &color) {
    const std::shared_ptr<NSTableHeaderView> &header = headerView();
    if (!header)
        return;
    header->setFrameSize({header->frame().size.width, height});
    header->setWantsLayer(true);
    header->layer()->setBackgroundColor(color);
}

std::shared_ptr<NSMenu> RVBaseOutlineView::menuForEvent(NSEvent &event) {
    const std::shared_ptr<NSMenu> plain = NSOutlineView::menuForEvent(event);   // notes the row that was clicked
    const std::int64_t row = clickedRow();
    if (row < 0)
        return nullptr;
    if (!isRowSelected(row))
        proposeSelection(NSIndexSet::indexSetWithIndex(static_cast<std::size_t>(row)), row);
    return rightMouseMenu_ ? rightMouseMenu_ : plain;
}
