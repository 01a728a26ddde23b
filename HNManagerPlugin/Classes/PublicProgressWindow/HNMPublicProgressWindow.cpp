#include "HNManagerPlugin/Classes/PublicProgressWindow/HNMPublicProgressWindow.h"

#include <algorithm>
#include <cmath>

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVLoger.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindow.h"
#include "toolkit/services/NSNotificationCenter.h"
#include "toolkit/views/NSApplication.h"

HN_CLASS_TABLE(HNMPublicProgressWindow, NSWindowController,
    .key("isHiddenBtn", &HNMPublicProgressWindow::isHiddenBtn)
    .key("strCancelBtnTitle", &HNMPublicProgressWindow::strCancelBtnTitle)
    .selector("WindowCloseNotify:", &HNMPublicProgressWindow::WindowCloseNotify)
    .selector("cancelButtonClicked:", &HNMPublicProgressWindow::cancelButtonClicked))

namespace {

constexpr std::int64_t kCreepsUpTo = 94;

void show(const std::weak_ptr<NSTextField> &field, const std::shared_ptr<NSAttributedString> &text) {
    tell(field, [&](NSTextField &line) {
        if (text)
            line.setAttributedStringValue(text);
        else
            line.setStringValue("");
    });
}

}  // namespace

void HNMPublicProgressWindow::windowDidLoad() {
    NSWindowController::windowDidLoad();
    if (const auto dialog = std::dynamic_pointer_cast<RUIDialogWindow>(window()); dialog && hiddenWndCloseBtn)
        dialog->setEnableCloseButton(false);
    NSNotificationCenter::defaultCenter().addObserver_selector_name_object(shared_from_this(), "WindowCloseNotify:",
                                                                           NSWindowWillCloseNotification, window());
    strCancelBtnTitle = localized("FileManager_Cancel");
    isStart = false;
}

void HNMPublicProgressWindow::setProgressDialogInfo_DownTextField_progressValue(const std::shared_ptr<NSAttributedString> &up,
                                                                                const std::shared_ptr<NSAttributedString> &down,
                                                                                double value) {
    show(upTextField, up);
    show(downTextField, down);
    const double bounded = std::isnan(value) ? 0 : std::clamp(value, -1e9, 1e9);
    tell(progress, [&](RUISimpleProgressView &bar) { bar.setProgressValue(static_cast<std::int64_t>(bounded)); });
    isStart = true;
}

void HNMPublicProgressWindow::WindowCloseNotify(const id &) {
    isClosed = true;
    NSApp()->stopModal();
}

void HNMPublicProgressWindow::cancelButtonClicked(const id &) {
    isClosed = true;
    NSApp()->stopModal();
    close();
}

void HNMPublicProgressWindow::updataProgress() {
    tell(progress, [](RUISimpleProgressView &bar) {
        if (bar.progressValue() <= kCreepsUpTo)
            bar.setProgressValue(bar.progressValue() + 1);
    });
}

void HNMPublicProgressWindow::dealloc() {
    RVLog(NSString::stringWithFormat("%@ dealloc", className()));
    NSNotificationCenter::defaultCenter().removeObserver(this);
    NSWindowController::dealloc();
}
