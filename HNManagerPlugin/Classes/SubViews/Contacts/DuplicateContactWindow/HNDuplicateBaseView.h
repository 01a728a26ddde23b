// A view with a table of duplicates; `awakeFromNib` lets the table show what the controller arranges. Threads: main.
#pragma once

#include "toolkit/lists/NSArrayController.h"
#include "toolkit/tables/NSTableView.h"

class HNDuplicateBaseView : public NSView {
public:
    HN_DECLARE_CLASS_TABLE

    // nib outlets
    std::weak_ptr<NSTableView> tableView;
    std::weak_ptr<NSArrayController> arrayController;

    void awakeFromNib() override;
};
