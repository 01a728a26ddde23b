#include "HNManagerPlugin/Classes/MainViewController/OutlineView/HNFileTypeOutlineView.h"

#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"
#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(HNFileTypeOutlineView, RVBaseOutlineView, )
HN_CLASS_TABLE(HNFileTypeTableRowView, RVBaseTableRowView,
               .key("wantsCustomColor", keys::get(&HNFileTypeTableRowView::wantsCustomColor),
                    keys::set(&HNFileTypeTableRowView::setWantsCustomColor)))
HN_CLASS_TABLE(HNFileTypeOutTableCellView, NSTableCellView, .key("expandButton", &HNFileTypeOutTableCellView::expandButton))

void HNFileTypeOutlineView::mouseDown(NSEvent &event) {
    if (rowAtPoint(convertPoint_fromView(event.locationInWindow, nullptr)) >= 0)
        RVBaseOutlineView::mouseDown(event);
}

void HNFileTypeTableRowView::setWantsCustomColor(bool wants) {
    wantsCustomColor_ = wants;
    setNeedsDisplay();
}

void HNFileTypeTableRowView::drawRect(const NSRect &rect, Canvas &canvas) {
    RVBaseTableRowView::drawRect(rect, canvas);
    if (mouseInside() || isSelected() || !wantsCustomColor_)
        return;
    canvas.saveState();
    canvas.fillRect(rect, UIThemeColor());
    canvas.restoreState();
}
