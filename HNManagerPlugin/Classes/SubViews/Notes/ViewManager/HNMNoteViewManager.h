// Shows the notes category's placeholder rows. Main thread.
#pragma once

#include "HNManagerPlugin/Classes/ViewManager/TableView/HNTableViewManager.h"

class HNMNoteViewManager : public HNTableViewManager {
public:
    HN_DECLARE_CLASS_TABLE
    void viewDidLoad() override;
    void viewManagerLoadData() override;
    void RowSelectedChange() override;
};
