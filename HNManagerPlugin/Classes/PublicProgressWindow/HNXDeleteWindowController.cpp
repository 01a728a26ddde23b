#include "HNManagerPlugin/Classes/PublicProgressWindow/HNXDeleteWindowController.h"

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/services/NSUserDefaults.h"
#include "toolkit/views/NSApplication.h"

HN_CLASS_TABLE(HNXDeleteWindowController, NSWindowController,
    .key("strDeleteTipTitle", &HNXDeleteWindowController::strDeleteTipTitle)
    .selector("onDeleteCompleteButton:", &HNXDeleteWindowController::onDeleteCompleteButton)
    .selector("onDeleteButton:", &HNXDeleteWindowController::onDeleteButton)
    .selector("onCancelButton:", &HNXDeleteWindowController::onCancelButton))

std::shared_ptr<HNXDeleteWindowController> HNXDeleteWindowController::standardDeleteCompleteWindow_Title(const NSString &message,
                                                                                                         const NSString &title) {
    const auto controller = make<HNXDeleteWindowController>();
    controller->mainlabel = message;
    controller->window()->setTitle(title);
    return controller;
}

void HNXDeleteWindowController::awakeFromNib() {
    NSUserDefaults::standardUserDefaults().setBool_forKey(false, kCompleteKey);
    tell(label, [&](NSTextField &line) { line.setStringValue(mainlabel); });
    tell(CancelBtn, [](RUIButton &button) { button.setTitle(localized("FileManager_Cancel")); });
    tell(DeleteBtn, [](RUIButton &button) { button.setTitle(localized("FileManager_Delete")); });
    strDeleteTipTitle = localized("FileManager_DeleteMusicComplete");
}

void HNXDeleteWindowController::onDeleteCompleteButton(const id &) {
    tell(CheckBtn, [](RUICheckBox &box) { NSUserDefaults::standardUserDefaults().setBool_forKey(box.state() == NSOnState, kCompleteKey); });
}

void HNXDeleteWindowController::onDeleteButton(const id &) {
    result = 0;
    close();
}

void HNXDeleteWindowController::onCancelButton(const id &) {
    result = kConfirmed;
    close();
}

void HNXDeleteWindowController::windowWillClose(NSWindow &) {
    NSApp()->stopModalWithCode(result);
}
