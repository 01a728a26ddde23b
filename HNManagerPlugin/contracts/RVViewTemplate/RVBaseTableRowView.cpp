#include "HNManagerPlugin/contracts/RVViewTemplate/RVBaseTableRowView.h"

HN_CLASS_TABLE(RVBaseTableRowView, NSTableRowView)

void RVBaseTableRowView::setMouseInside(bool inside) {
    NSTableRowView::setMouseInside(inside && wantsMouseFocus_);
}
