#include "HNManagerPlugin/HNManagerPrincipalClass.h"

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ActionRouter.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindow.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIWindow.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSSavePanel.h"

HN_CLASS_TABLE(HNManagerPrincipalClass, NSObjectTable,
               .key("mainViewController", &HNManagerPrincipalClass::mainViewController)
               .selector("loadWithViewController", &HNManagerPrincipalClass::loadWithViewController)
               .selector("closeOpenDialog", [](NSObject &, const std::vector<Value> &) {
                   HNManagerPrincipalClass::closeOpenDialog();
                   return Value();
               }))

extern "C" __attribute__((visibility("default"))) RVBasePluginObject *HNManagerPluginPrincipalClass() {
    return new HNManagerPrincipalClass;
}

std::shared_ptr<NSViewController> HNManagerPrincipalClass::loadWithViewController() {
    installGALogHook();
    if (!mainViewController)
        mainViewController = make<HNManagerMainViewController>("HNManagerMainViewController", NSBundle::bundleForClass());
    return mainViewController;
}

void HNManagerPrincipalClass::closeOpenDialog() {
    for (const auto &window : NSApplication::sharedApplication()->windows()) {
        if (window->isMemberOf<RUIWindow>() || !window->isOnActiveSpace())
            continue;
        if (window->isMemberOf<RUIDialogWindow>())
            window->close();
        if (window->isMemberOf<NSOpenPanel>())
            static_cast<NSOpenPanel &>(*window).cancel(nullptr);
        if (window->isMemberOf<NSSavePanel>())
            static_cast<NSSavePanel &>(*window).cancel(nullptr);
    }
}

void HNManagerPrincipalClass::dealloc() {
    if (ActionRouter.toolBarEvent().selectItem() == 1) {
        closeOpenDialog();
        // gives the dialogs' own blocks one turn of the main queue
        dispatch::async(dispatch::global(), [] { dispatch::async(dispatch::main(), [] {}); });
    }
    mainViewController = nullptr;
    RVBasePluginObject::dealloc();
}
