// The notes category. Threads: main.
#pragma once

#include "HNManagerPlugin/Classes/ViewManager/TableView/SkeletonViewManager.h"

class HNMNoteViewManager : public SkeletonViewManager {
public:
    HN_DECLARE_CLASS_TABLE

protected:
    [[nodiscard]] NSString noDataText() const override;
};
