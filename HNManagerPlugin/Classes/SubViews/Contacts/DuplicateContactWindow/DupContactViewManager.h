// A view manager for a list of duplicates: has its model show the rows as soon as its view is there. Threads: main.
#pragma once

#include "HNManagerPlugin/Classes/ViewManager/HNMbaseViewManager.h"

class DupContactViewManager : public HNMbaseViewManager {
public:
    HN_DECLARE_CLASS_TABLE

    void viewDidLoad() override;
};
