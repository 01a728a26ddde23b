#include "HNManagerPlugin/HNCustomMethod.h"

#include "HNManagerPlugin/Classes/PublicProgressWindow/Dialogs.h"
#include "HNManagerPlugin/Classes/PublicProgressWindow/HNPhototDiolagWindowController.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/views/NSApplication.h"

HN_CLASS_TABLE(HNCustomMethod, NSObjectTable)

namespace {

enum class WindowClass { plain, link, deleteLink };
struct Buttons {
    const char *left, *right;   // keys
    std::int64_t type;
};
// The order of the two titles differs between the cases of a row; kept as the callers' codes depend on it.
struct Look {
    WindowClass window;
    Buttons mixed, failed, success;
};

constexpr Buttons kOk{"OK", "OK", 2}, kManagerOk{"FileManager_OK", "FileManager_OK", 2};
constexpr Buttons kManagerOkOrOpen{"FileManager_OK", "Open_Folder", 0};

constexpr Look kShow{WindowClass::plain, kOk, kOk, kOk};
constexpr Look kNewShow{WindowClass::plain, kOk, kOk, kOk};
constexpr Look kDouble{WindowClass::plain, {"Open_Folder", "OK", 0}, {"Open_Folder", "OK", 2}, {"OK", "Open_Folder", 0}};
constexpr Look kLink{WindowClass::link, kOk, kOk, kOk};
constexpr Look kDoubleLink{WindowClass::link, kManagerOkOrOpen, kManagerOk, {"OK", "Open_Folder", 0}};
constexpr Look kNewLink{WindowClass::link, kManagerOk, kManagerOk, kManagerOk};
constexpr Look kNewDouble{WindowClass::plain, kManagerOkOrOpen, {"Open_Folder", "FileManager_OK", 2}, kManagerOkOrOpen};
constexpr Look kNewDoubleLink{WindowClass::link, kManagerOkOrOpen, kManagerOk, kManagerOkOrOpen};
constexpr Look kDeleteLink{WindowClass::deleteLink, kManagerOk, kManagerOk, kManagerOk};

std::int64_t runLinkDialog(WindowClass kind, const NSString &title, const NSString &text, const std::shared_ptr<NSImage> &mark,
                           const Buttons &buttons) {
    const auto dialog = alloc<HNPhototDiolagWindowController>();
    const auto fill =
        kind == WindowClass::deleteLink
            ? &HNPhototDiolagWindowController::initDeleteTitle_WithMessage_markImage_leftBtnTitle_rightBtnTitle_windowType
            : &HNPhototDiolagWindowController::initTitle_WithMessage_markImage_leftBtnTitle_rightBtnTitle_windowType;
    (*dialog.*fill)(title, text, mark, localized(buttons.left), localized(buttons.right), buttons.type);
    return NSApp()->runModalForWindow(dialog->window());
}

// `success` and `failure` are the finished lines.
std::int64_t show(const Look &look, std::int64_t succeeded, std::int64_t failed, const NSString &success, const NSString &failure,
                  const NSString &title) {
    const bool isFailed = succeeded == 0, isMixed = succeeded > 0 && failed > 0;
    const Buttons &buttons = isFailed ? look.failed : isMixed ? look.mixed : look.success;
    const NSString text = isFailed ? failure : isMixed ? NSString::stringWithFormat("%@\n%@", success, failure) : success;
    const char *icon = isFailed ? "icon_exclamation" : "icon_ok";
    if (look.window != WindowClass::plain)
        return runLinkDialog(look.window, title, text, dialogs::icon(icon), buttons);
    return dialogs::run(title, text, icon, localized(buttons.left), localized(buttons.right), buttons.type);
}

NSString line(std::int64_t count, const NSString &what, const NSString &message) {
    return NSString::stringWithFormat("%li %@ %@", count, what, message);
}

std::int64_t showLong(const Look &look, std::int64_t succeeded, std::int64_t failed, const NSString &succeededStr,
                      const NSString &failedStr, const NSString &messageSuccedded, const NSString &messageFailed, const NSString &title) {
    return show(look, succeeded, failed, line(succeeded, succeededStr, messageSuccedded), line(failed, failedStr, messageFailed), title);
}

}  // namespace

std::int64_t HNCustomMethod::showDialogSucceededCount_FailedCount_SucceededStr_FailedStr_MessageSuccedded_MessageFailed_Title(
    std::int64_t s, std::int64_t f, const NSString &sStr, const NSString &fStr, const NSString &sMessage, const NSString &fMessage,
    const NSString &title) {
    return showLong(kShow, s, f, sStr, fStr, sMessage, fMessage, title);
}

std::int64_t HNCustomMethod::showDialogHaveDoubleButtonSucceededCount_FailedCount_SucceededStr_FailedStr_MessageSuccedded_MessageFailed_Title(
    std::int64_t s, std::int64_t f, const NSString &sStr, const NSString &fStr, const NSString &sMessage, const NSString &fMessage,
    const NSString &title) {
    return showLong(kDouble, s, f, sStr, fStr, sMessage, fMessage, title);
}

std::int64_t HNCustomMethod::showDialogWithLinkSucceededCount_FailedCount_SucceededStr_FailedStr_MessageSuccedded_MessageFailed_Title(
    std::int64_t s, std::int64_t f, const NSString &sStr, const NSString &fStr, const NSString &sMessage, const NSString &fMessage,
    const NSString &title) {
    return showLong(kLink, s, f, sStr, fStr, sMessage, fMessage, title);
}

std::int64_t
HNCustomMethod::showDialogHaveDoubleButtonWithLinkURLSucceededCount_FailedCount_SucceededStr_FailedStr_MessageSuccedded_MessageFailed_Title(
    std::int64_t s, std::int64_t f, const NSString &sStr, const NSString &fStr, const NSString &sMessage, const NSString &fMessage,
    const NSString &title) {
    return showLong(kDoubleLink, s, f, sStr, fStr, sMessage, fMessage, title);
}

std::int64_t HNCustomMethod::New_showDialogSucceededCount_FailedCount_SucceededStr_FailedStr_Title(
    std::int64_t s, std::int64_t f, const NSString &success, const NSString &failure, const NSString &title) {
    return show(kNewShow, s, f, success, failure, title);
}

std::int64_t HNCustomMethod::New_showDialogWithLinkSucceededCount_FailedCount_SucceededStr_FailedStr_Title(
    std::int64_t s, std::int64_t f, const NSString &success, const NSString &failure, const NSString &title) {
    return show(kNewLink, s, f, success, failure, title);
}

std::int64_t HNCustomMethod::New_showDialogHaveDoubleButtonSucceededCount_FailedCount_SucceededStr_FailedStr_Title(
    std::int64_t s, std::int64_t f, const NSString &success, const NSString &failure, const NSString &title) {
    return show(kNewDouble, s, f, success, failure, title);
}

std::int64_t HNCustomMethod::New_showDialogHaveDoubleButtonWithLinkURLSucceededCount_FailedCount_SucceededStr_FailedStr_Title(
    std::int64_t s, std::int64_t f, const NSString &success, const NSString &failure, const NSString &title) {
    return show(kNewDoubleLink, s, f, success, failure, title);
}

std::int64_t HNCustomMethod::delete_showDialogWithLinkSucceededCount_FailedCount_SucceededStr_FailedStr_Title(
    std::int64_t s, std::int64_t f, const NSString &success, const NSString &failure, const NSString &title) {
    return show(kDeleteLink, s, f, success, failure, title);
}
