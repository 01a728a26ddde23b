#include "HNManagerPlugin/contracts/RVUIKit/MessageDialog.h"

#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindow.h"
#include "toolkit/views/ClassKeys.h"
#include "toolkit/views/NSApplication.h"

HN_CLASS_TABLE(MessageDialog, NSWindowController,
    .key("icon", keys::get(&MessageDialog::icon))
    .selector("defaultButtonClick:", &MessageDialog::defaultButtonClick))

void MessageDialog::runWithString_defaultButton_icon(const NSString &text, const NSString &buttonTitle, std::int64_t icon) {
    const auto dialog = make<MessageDialog>();
    dialog->build(text, buttonTitle, icon);
    NSApp()->runModalForWindow(dialog->window());
    dialog->close();
}

void MessageDialog::build(const NSString &text, const NSString &buttonTitle, std::int64_t icon) {
    icon_ = icon;
    const auto window = make<RUIDialogWindow>(NSRect(0, 0, 400, 130));
    messageLabel_ = NSTextField::labelWithString(text);
    messageLabel_->setFrame({24, 56, 352, 56});
    messageLabel_->setIdentifier("message");
    defaultButton_ = make<RUIButton>(NSRect(272, 16, 104, 28));
    defaultButton_->setIdentifier("defaultButton");
    defaultButton_->setTitle(buttonTitle);
    defaultButton_->setKeyEquivalent("\r");
    defaultButton_->connect(shared_from_this(), "defaultButtonClick:");
    window->contentView()->addSubview(messageLabel_);
    window->contentView()->addSubview(defaultButton_);
    window->center();
    setWindow(window);
}

void MessageDialog::defaultButtonClick(const id &) {
    close();
    NSApp()->stopModalWithCode(1);
}
