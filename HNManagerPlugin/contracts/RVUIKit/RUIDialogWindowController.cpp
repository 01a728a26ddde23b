#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindowController.h"

#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"
#include "toolkit/views/ClassKeys.h"
#include "toolkit/views/NSApplication.h"

HN_CLASS_TABLE(RUIDialogWindowController, NSWindowController,
    .key("windowType", keys::get(&RUIDialogWindowController::windowType))
    .selector("leftButtonClick:", &RUIDialogWindowController::leftButtonClick)
    .selector("rightButtonClick:", &RUIDialogWindowController::rightButtonClick))

void RUIDialogWindowController::initTitle_WithMessage_markImage_leftBtnTitle_rightBtnTitle_windowType(
    const NSString &title, const NSString &message, const std::shared_ptr<NSImage> &markImage, const NSString &leftBtnTitle,
    const NSString &rightBtnTitle, std::int64_t windowType) {
    init();
    windowType_ = windowType;
    const auto window = make<RUIDialogWindow>(NSRect(0, 0, 440, 170));
    window->setTitle(title);
    const std::shared_ptr<NSView> &content = window->contentView();

    markImageView_ = make<NSImageView>(NSRect(24, 82, 64, 64));
    markImageView_->setIdentifier("markImage");
    markImageView_->setImage(markImage);
    messageLabel_ = NSTextField::labelWithString(message);
    messageLabel_->setFrame({104, 78, 312, 72});
    messageLabel_->setIdentifier("message");
    linkLabel_ = make<RUILinkTextField>(NSRect(104, 54, 312, 20));
    linkLabel_->setIdentifier("link");
    linkLabel_->setHidden(true);

    const bool oneButton = windowType == kOneButton;
    leftButton_ = make<RUIButton>(NSRect(196, 16, 104, 28));
    leftButton_->setIdentifier("leftButton");
    leftButton_->setTitle(leftBtnTitle);
    leftButton_->setBorderColor(UIThemeColor());
    leftButton_->setHidden(oneButton);
    leftButton_->connect(shared_from_this(), "leftButtonClick:");
    rightButton_ = make<RUIButton>(NSRect(312, 16, 104, 28));
    rightButton_->setIdentifier("rightButton");
    rightButton_->setTitle(oneButton && !leftBtnTitle.isEmpty() ? leftBtnTitle : rightBtnTitle);
    rightButton_->setKeyEquivalent("\r");
    rightButton_->connect(shared_from_this(), "rightButtonClick:");

    for (const std::shared_ptr<NSView> &view :
         {std::shared_ptr<NSView>(markImageView_), std::shared_ptr<NSView>(messageLabel_), std::shared_ptr<NSView>(linkLabel_),
          std::shared_ptr<NSView>(leftButton_), std::shared_ptr<NSView>(rightButton_)})
        content->addSubview(view);
    window->center();
    setWindow(window);
}

std::shared_ptr<RUIDialogWindowController> RUIDialogWindowController::dialog(const NSString &title, const NSString &message,
                                                                             const std::shared_ptr<NSImage> &markImage,
                                                                             const NSString &leftBtnTitle,
                                                                             const NSString &rightBtnTitle, std::int64_t windowType) {
    const auto made = alloc<RUIDialogWindowController>();
    made->initTitle_WithMessage_markImage_leftBtnTitle_rightBtnTitle_windowType(title, message, markImage, leftBtnTitle, rightBtnTitle,
                                                                                windowType);
    return made;
}

void RUIDialogWindowController::leftButtonClick(const id &) {
    endWith(windowType_ == kLeftIsOne ? 1 : 0);
}

void RUIDialogWindowController::rightButtonClick(const id &) {
    endWith(windowType_ == kLeftIsOne ? 0 : 1);
}

void RUIDialogWindowController::endWith(std::int64_t code) {
    close();
    NSApp()->stopModalWithCode(code);
}
