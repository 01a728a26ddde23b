#include "HNManagerPlugin/Classes/PublicProgressWindow/HNXExistFileSettingController.h"

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/services/NSUserDefaults.h"
#include "toolkit/views/NSApplication.h"

HN_CLASS_TABLE(HNXExistFileSettingController, NSWindowController,
    .selector("onReplaceButton:", &HNXExistFileSettingController::onReplaceButton)
    .selector("onKeepBothButton:", &HNXExistFileSettingController::onKeepBothButton)
    .selector("onSkipButtton:", &HNXExistFileSettingController::onSkipButtton)
    .selector("onApplyToAllButton:", &HNXExistFileSettingController::onApplyToAllButton))

std::shared_ptr<HNXExistFileSettingController> HNXExistFileSettingController::standardExistFileSettingWindow_Title(
    const NSString &message, const NSString &title) {
    return standardExistFileSettingWindow_Title_isRepeat(message, title, nullptr);
}

std::shared_ptr<HNXExistFileSettingController> HNXExistFileSettingController::standardExistFileSettingWindow_Title_isRepeat(
    const NSString &message, const NSString &title, std::int8_t *isRepeat) {
    const auto controller = make<HNXExistFileSettingController>();
    controller->topTip = message;
    controller->isRepeat = isRepeat;
    controller->window()->setTitle(title);
    return controller;
}

void HNXExistFileSettingController::awakeFromNib() {
    NSUserDefaults::standardUserDefaults().setBool_forKey(false, kNotShowAgainKey);
    tell(labelTopTip, [&](NSTextField &line) { line.setStringValue(topTip); });
    selectMethod = kNoChoice;
    tell(replaceBtn, [](RUIButton &button) { button.setTitle(localized("Replace_btn")); });
    tell(keepBothBtn, [](RUIButton &button) { button.setTitle(localized("Keep_Both_btn")); });
    tell(SkipBtn, [](RUIButton &button) { button.setTitle(localized("Skip_btn")); });
    tell(applyBtn, [](RUICheckBox &box) { box.setTitle(localized("Apply_to_All_btn")); });
}

void HNXExistFileSettingController::onReplaceButton(const id &) {
    choose(kReplace);
}

void HNXExistFileSettingController::onKeepBothButton(const id &) {
    choose(kKeepBoth);
}

void HNXExistFileSettingController::onSkipButtton(const id &) {
    choose(kSkip);
}

void HNXExistFileSettingController::onApplyToAllButton(const id &) {
    tell(applyBtn, [&](RUICheckBox &box) {
        const bool on = box.state() == NSOnState;
        NSUserDefaults::standardUserDefaults().setBool_forKey(on, kNotShowAgainKey);
        if (isRepeat)
            *isRepeat = on ? 1 : 0;
    });
}

void HNXExistFileSettingController::windowWillClose(NSWindow &) {
    NSApp()->stopModalWithCode(selectMethod);
}

void HNXExistFileSettingController::choose(std::int64_t method) {
    selectMethod = method;
    close();
}
