// A question or a message in a modal window of its own: a picture, a text, one or two buttons, perhaps a link line.
//
//     const auto dialog = RUIDialogWindowController::dialog(title, message, picture, left, right, 0);
//     if (NSApp()->runModalForWindow(dialog->window()) == 1) ...
//
// Types    0  two buttons: left 1, right 0.
//          1  two buttons: right 1, left 0.
//          2  one button: 1. It has the left title, or the right one where the left is empty.
// Codes    every other way out (title bar, Escape, stopModal) gives -1000. A button closes the window and ends its run.
// Owners   whoever made it; the window goes with it. Threads: main; close may be called on any thread.
#pragma once

#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindow.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUILinkTextField.h"
#include "toolkit/views/NSImageView.h"
#include "toolkit/views/NSWindowController.h"

class RUIDialogWindowController : public NSWindowController {
public:
    static constexpr std::int64_t kLeftIsOne = 0, kRightIsOne = 1, kOneButton = 2;

    using NSWindowController::init;
    void initTitle_WithMessage_markImage_leftBtnTitle_rightBtnTitle_windowType(const NSString &title, const NSString &message,
                                                                               const std::shared_ptr<NSImage> &markImage,
                                                                               const NSString &leftBtnTitle,
                                                                               const NSString &rightBtnTitle, std::int64_t windowType);
    // alloc and that init.
    [[nodiscard]] static std::shared_ptr<RUIDialogWindowController> dialog(const NSString &title, const NSString &message,
                                                                           const std::shared_ptr<NSImage> &markImage,
                                                                           const NSString &leftBtnTitle, const NSString &rightBtnTitle,
                                                                           std::int64_t windowType);

    [[nodiscard]] std::int64_t windowType() const { return windowType_; }
    [[nodiscard]] const std::shared_ptr<NSTextField> &messageLabel() const { return messageLabel_; }
    [[nodiscard]] const std::shared_ptr<NSImageView> &markImageView() const { return markImageView_; }
    // The left one is hidden in a dialog of one button.
    [[nodiscard]] const std::shared_ptr<RUIButton> &leftButton() const { return leftButton_; }
    [[nodiscard]] const std::shared_ptr<RUIButton> &rightButton() const { return rightButton_; }
    // Hidden until it is given a link.
    [[nodiscard]] const std::shared_ptr<RUILinkTextField> &linkLabel() const { return linkLabel_; }

    void leftButtonClick(const id &sender);
    void rightButtonClick(const id &sender);
    HN_DECLARE_CLASS_TABLE

private:
    void endWith(std::int64_t code);
    std::int64_t windowType_ = kOneButton;
    std::shared_ptr<NSTextField> messageLabel_;
    std::shared_ptr<NSImageView> markImageView_;
    std::shared_ptr<RUIButton> leftButton_, rightButton_;
    std::shared_ptr<RUILinkTextField> linkLabel_;
};
