// A number or e-mail of a contact in the merge window, with the button that takes it out. Threads: main.
#pragma once

#include "toolkit/tables/NSTableCellView.h"
#include "toolkit/views/NSButton.h"

class ContactTableCellView : public NSTableCellView {
public:
    HN_DECLARE_CLASS_TABLE

    std::shared_ptr<NSButton> deleteButton;   // sends deleteLine:

    void connect(const std::shared_ptr<NSObject> &target);
    void show(const NSString &line, std::int64_t row, bool canDelete);
};
