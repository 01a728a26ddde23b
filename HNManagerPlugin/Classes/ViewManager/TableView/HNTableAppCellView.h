// The action cell of the apps table: its two buttons. Main thread.
#pragma once

#include "toolkit/tables/NSTableCellView.h"
#include "toolkit/views/NSButton.h"

class HNTableAppCellView : public NSTableCellView {
public:
    HN_DECLARE_CLASS_TABLE
    std::weak_ptr<NSButton> unInstallButton, cancelButton;   // nib outlets
};
