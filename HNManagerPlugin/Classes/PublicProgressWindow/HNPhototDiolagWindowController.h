// A dialog with a message, a mark, one or two buttons and a link line below that says why something failed.
//
// Type     0 two buttons, left 1, right 0; 1 two buttons, right 1, left 0; 2 the right button only, 1.
// Codes    a button closes the window and ends its run; any other way out gives -1000.
// Texts    the nib shows what the fields say when the window loads, and follows them. Threads: main.
#pragma once

#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUILinkTextField.h"
#include "toolkit/NSImage.h"
#include "toolkit/Property.h"
#include "toolkit/views/NSWindowController.h"

class HNPhototDiolagWindowController : public NSWindowController, public NSWindowDelegate {
public:
    HN_DECLARE_CLASS_TABLE

    std::shared_ptr<NSAttributedString> attributeString;   // where not empty it replaces the message as the window loads
    Property<NSString> messageStr, leftBtnTitle, rightBtnTitle;
    Property<std::shared_ptr<NSImage>> markImage;
    std::weak_ptr<NSTextField> messageLable;
    std::weak_ptr<RUIButton> leftButton, rightButton;
    std::weak_ptr<RUILinkTextField> linkLable;

    using NSWindowController::init;
    // Why an export failed stands under the link.
    void initTitle_WithMessage_markImage_leftBtnTitle_rightBtnTitle_windowType(const NSString &title, const NSString &message,
                                                                               const std::shared_ptr<NSImage> &mark, const NSString &left,
                                                                               const NSString &right, std::int64_t type);
    // Why a deletion failed.
    void initDeleteTitle_WithMessage_markImage_leftBtnTitle_rightBtnTitle_windowType(const NSString &title, const NSString &message,
                                                                                     const std::shared_ptr<NSImage> &mark,
                                                                                     const NSString &left, const NSString &right,
                                                                                     std::int64_t type);
    // Without a link.
    void initTitle_WithAttributeString_markImage_leftBtnTitle_rightBtnTitle_windowType(const NSString &title,
                                                                                       const std::shared_ptr<NSAttributedString> &message,
                                                                                       const std::shared_ptr<NSImage> &mark,
                                                                                       const NSString &left, const NSString &right,
                                                                                       std::int64_t type);
    // For what lies in iCloud alone and cannot be viewed.
    void initShowViewPhoto();

    [[nodiscard]] std::int64_t dialogType() const { return dialogType_; }
    // 2 hides the left button.
    void setDialogType(std::int64_t type);
    void windowDidLoad() override;
    void leftButtonClick(const id &sender);
    void rightButtonClick(const id &sender);
    bool windowShouldClose(NSWindow &) override { return true; }

private:
    void fill(const NSString &title, const NSString &message, const std::shared_ptr<NSImage> &mark, const NSString &left,
              const NSString &right, std::int64_t type);
    void setLink(const NSString &text, const NSString &address);
    void endWith(std::int64_t code);
    std::int64_t dialogType_ = 0;
};
