// Shows the calendars category's placeholder rows. Main thread.
#pragma once

#include "HNManagerPlugin/Classes/ViewManager/TableView/HNTableViewManager.h"

class HNMCalendarViewManager : public HNTableViewManager {
public:
    HN_DECLARE_CLASS_TABLE
    void viewDidLoad() override;
    void viewManagerLoadData() override;
    void RowSelectedChange() override;
};
