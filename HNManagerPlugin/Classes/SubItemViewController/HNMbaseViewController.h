// The controller of every sub-view: one plain class, whatever the category; its nib decides manager and model.
//
// Links    all four outlets are weak and filled by the nib; the controller owns the nib's top-level objects as such.
// Threads  main.
#pragma once

#include "HNManagerPlugin/Classes/ViewManager/HNMbaseViewManager.h"
#include "HNManagerPlugin/contracts/RVPluginProtocol/RVBasePluginObject.h"
#include "toolkit/views/NSViewController.h"

class HNMbaseViewController : public NSViewController, public IPluginProtocol {
public:
    HN_DECLARE_CLASS_TABLE

    std::weak_ptr<HNMbaseViewManager> viewManager;
    std::weak_ptr<HNMbaseViewModel> viewModel;
    std::weak_ptr<NSViewController> viewController;   // the image browser's; photo and album nibs only
    std::weak_ptr<HNMbaseViewModel> imageViewModel;   // the same; never read here

    // Passes the model to the manager, then to the browser controller.
    void initViewModel();
    // Below the toolkit version that delivers viewDidLoad, initViewModel runs here; so it runs once on every system.
    void loadView() override;
    void viewDidLoad() override;
    void dealloc() override;
};
