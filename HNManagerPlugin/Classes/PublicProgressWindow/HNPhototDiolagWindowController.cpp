#include "HNManagerPlugin/Classes/PublicProgressWindow/HNPhototDiolagWindowController.h"

#include "HNManagerPlugin/Classes/PublicProgressWindow/Dialogs.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/views/NSApplication.h"

HN_CLASS_TABLE(HNPhototDiolagWindowController, NSWindowController,
    .key("messageStr", &HNPhototDiolagWindowController::messageStr)
    .key("leftBtnTitle", &HNPhototDiolagWindowController::leftBtnTitle)
    .key("rightBtnTitle", &HNPhototDiolagWindowController::rightBtnTitle)
    .key("dialogType", [](NSObject &o) { return Value(static_cast<HNPhototDiolagWindowController &>(o).dialogType()); })
    .selector("leftButtonClick:", &HNPhototDiolagWindowController::leftButtonClick)
    .selector("rightButtonClick:", &HNPhototDiolagWindowController::rightButtonClick))

void HNPhototDiolagWindowController::initTitle_WithMessage_markImage_leftBtnTitle_rightBtnTitle_windowType(
    const NSString &title, const NSString &message, const std::shared_ptr<NSImage> &mark, const NSString &left, const NSString &right,
    std::int64_t type) {
    fill(title, message, mark, left, right, type);
    setLink(localized("Why_failed_export_photo"), localizedAddress("ExportPhotoFailedURL"));
}

void HNPhototDiolagWindowController::initDeleteTitle_WithMessage_markImage_leftBtnTitle_rightBtnTitle_windowType(
    const NSString &title, const NSString &message, const std::shared_ptr<NSImage> &mark, const NSString &left, const NSString &right,
    std::int64_t type) {
    fill(title, message, mark, left, right, type);
    setLink(localized("Why_failed_delete_photo"), localizedAddress("DeletePhotoFailedURL"));
}

void HNPhototDiolagWindowController::initTitle_WithAttributeString_markImage_leftBtnTitle_rightBtnTitle_windowType(
    const NSString &title, const std::shared_ptr<NSAttributedString> &message, const std::shared_ptr<NSImage> &mark, const NSString &left,
    const NSString &right, std::int64_t type) {
    attributeString = message;
    fill(title, NSString(), mark, left, right, type);
}

void HNPhototDiolagWindowController::initShowViewPhoto() {
    fill(localized("View_photo"), localized("View_Video_failed"), dialogs::icon("icon_exclamation"), "", localized("FileManager_OK"), 2);
    setLink(localized("Why_failed_view_photo"), localizedAddress("ExportPhotoFailedURL"));
}

void HNPhototDiolagWindowController::fill(const NSString &title, const NSString &message, const std::shared_ptr<NSImage> &mark,
                                          const NSString &left, const NSString &right, std::int64_t type) {
    init();
    messageStr = message;
    markImage = mark;
    leftBtnTitle = left;
    rightBtnTitle = right;
    window()->setTitle(title);
    setDialogType(type);
}

void HNPhototDiolagWindowController::setLink(const NSString &text, const NSString &address) {
    tell(linkLable, [&](RUILinkTextField &line) { line.setLinkText_withURL(text, address); });
}

void HNPhototDiolagWindowController::setDialogType(std::int64_t type) {
    dialogType_ = type;
    tell(leftButton, [&](RUIButton &button) { button.setHidden(type == 2); });
}

void HNPhototDiolagWindowController::windowDidLoad() {
    NSWindowController::windowDidLoad();
    if (attributeString && attributeString->length() > 0)
        tell(messageLable, [&](NSTextField &line) { line.setAttributedStringValue(attributeString); });
}

void HNPhototDiolagWindowController::leftButtonClick(const id &) {
    endWith(dialogType_ == 0 ? 1 : 0);
}

void HNPhototDiolagWindowController::rightButtonClick(const id &) {
    endWith(dialogType_ == 1 || dialogType_ == 2 ? 1 : 0);
}

void HNPhototDiolagWindowController::endWith(std::int64_t code) {
    close();
    NSApp()->stopModalWithCode(code);
}
