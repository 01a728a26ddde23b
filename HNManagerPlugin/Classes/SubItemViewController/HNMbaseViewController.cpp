#include "HNManagerPlugin/Classes/SubItemViewController/HNMbaseViewController.h"

#include <cmath>

#include "toolkit/services/NSLog.h"
#include "toolkit/views/NSApplication.h"

HN_CLASS_TABLE(HNMbaseViewController, NSViewController,
               .key("viewManager", &HNMbaseViewController::viewManager)
               .key("viewModel", &HNMbaseViewController::viewModel)
               .key("viewController", &HNMbaseViewController::viewController)
               .key("imageViewModel", &HNMbaseViewController::imageViewModel))

void HNMbaseViewController::initViewModel() {
    const auto model = viewModel.lock();
    tell(viewManager, [&](HNMbaseViewManager &manager) { manager.initViewModel(model); });
    tell(viewController, [&](NSViewController &browser) { browser.perform("initViewModel:", {Value(model)}); });
}

void HNMbaseViewController::loadView() {
    NSViewController::loadView();
    if (std::floor(NSAppKitVersionNumber()) < kFirstVersionWithViewDidLoad)
        initViewModel();
}

void HNMbaseViewController::viewDidLoad() {
    NSViewController::viewDidLoad();
    initViewModel();
}

void HNMbaseViewController::dealloc() {
    NSViewController::dealloc();   // manager and model go, and say so, before their controller does
    NSLog("%s", "-[HNMbaseViewController dealloc]");
}
