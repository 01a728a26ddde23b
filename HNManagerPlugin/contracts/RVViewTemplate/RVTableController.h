// A view controller whose view is a table: its delegate and data source. Threads: main.
#pragma once

#include "toolkit/tables/NSTableView.h"
#include "toolkit/views/NSViewController.h"

class RVTableController : public NSViewController, public NSTableViewDelegate, public NSTableViewDataSource {
public:
    HN_DECLARE_CLASS_TABLE
    std::weak_ptr<NSTableView> tableView;   // nib outlet

    // setupUI, then becomes the table's delegate and data source.
    void viewDidLoad() override;
    // What a subclass prepares before the table asks for rows.
    virtual void setupUI() {}
};
