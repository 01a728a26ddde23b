// The plug-in's main view: the category tree at the left, the chosen category at the right. No state of its own.
#pragma once

#include "HNManagerPlugin/Classes/SubItemViewController/HNMbaseViewController.h"
#include "toolkit/tables/NSTableView.h"

class HNManagerMainViewController : public HNMbaseViewController, public NSTableViewDelegate {
public:
    HN_DECLARE_CLASS_TABLE
};
