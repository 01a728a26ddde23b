#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/HNDuplicateBaseView.h"

HN_CLASS_TABLE(HNDuplicateBaseView, NSView)

void HNDuplicateBaseView::awakeFromNib() {
    NSView::awakeFromNib();
    const auto controller = arrayController.lock();
    tell(tableView, [&](NSTableView &table) {
        if (controller)
            table.bindToArrayController(controller);
    });
}
