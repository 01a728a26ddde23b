// A short message with one button, modal. Threads: main.
#pragma once

#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSWindowController.h"

class MessageDialog : public NSWindowController {
public:
    // Returns when the message was dismissed, by whatever way. `icon` is the number of a picture of the kit: 3 warns.
    static void runWithString_defaultButton_icon(const NSString &text, const NSString &buttonTitle, std::int64_t icon);

    [[nodiscard]] const std::shared_ptr<NSTextField> &messageLabel() const { return messageLabel_; }
    [[nodiscard]] const std::shared_ptr<RUIButton> &defaultButton() const { return defaultButton_; }
    [[nodiscard]] std::int64_t icon() const { return icon_; }
    void defaultButtonClick(const id &sender);
    HN_DECLARE_CLASS_TABLE

private:
    void build(const NSString &text, const NSString &buttonTitle, std::int64_t icon);
    std::shared_ptr<NSTextField> messageLabel_;
    std::shared_ptr<RUIButton> defaultButton_;
    std::int64_t icon_ = 0;
};
