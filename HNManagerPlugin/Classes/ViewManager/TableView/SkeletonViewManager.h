// Shows the rows of a category without device access. Threads: main.
#pragma once

#include "HNManagerPlugin/Classes/ViewManager/TableView/HNTableViewManager.h"

class SkeletonViewManager : public HNTableViewManager {
public:
    HN_DECLARE_CLASS_TABLE
    void viewDidLoad() override;
    void viewManagerLoadData() override;
    void RowSelectedChange() override;

protected:
    // What the panel says where there are no rows.
    [[nodiscard]] virtual NSString noDataText() const { return ""; }
};
