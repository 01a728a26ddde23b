#include "HNManagerPlugin/Classes/SubViews/Message/BackupPasswordWindow/HNFMBackupDecryptionController.h"

#include <cmath>

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/dispatch/RunLoop.h"
#include "toolkit/services/NSWorkspace.h"
#include "toolkit/views/NSApplication.h"

using namespace std::chrono_literals;

HN_CLASS_TABLE(HNFMBackupDecryptionController, NSWindowController,
               .key("decryptState", &HNFMBackupDecryptionController::decryptState)
                   .key("passwordTextField", &HNFMBackupDecryptionController::passwordTextField)
                   .selector("okButtonClick:", &HNFMBackupDecryptionController::okButtonClick)
                   .selector("openPasswordHelp:", &HNFMBackupDecryptionController::openPasswordHelp))

namespace {

template <class View> void hide(const std::weak_ptr<View> &view, bool hidden) {
    tell(view, [hidden](NSView &v) { v.setHidden(hidden); });
}

void enable(const std::weak_ptr<RUIButton> &button, bool enabled) {
    tell(button, [enabled](NSButton &b) { b.setEnabled(enabled); });
}

}   // namespace

void HNFMBackupDecryptionController::showDefaultWindow() {
    const auto controller = make<HNFMBackupDecryptionController>(NSString("HNFMBackupDecryptionController"));
    NSApp()->runModalForWindow(controller->window());
}

void HNFMBackupDecryptionController::windowDidLoad() {
    NSWindowController::windowDidLoad();
    initView();
    initText();
}

// ---------------------------------------------------------------- first state

void HNFMBackupDecryptionController::initView() {
    hide(decryptMainLabel, false);
    hide(okButton, false);
    hide(passwordTextField, false);
    hide(decryptProgressIndicator, true);
    hide(wrongMessageLabel, true);
    hide(decryptLoadingIndicator, true);
    enable(okButton, false);
    tell(decryptTipsLabel, [this](NSControl &label) { label.connect(selfOf(this), "openPasswordHelp:"); });
}

void HNFMBackupDecryptionController::setMainText(const char *key) {
    tell(decryptMainLabel, [key](NSTextField &label) { label.setStringValue(localized(key)); });
}

void HNFMBackupDecryptionController::initText() {
    setMainText("DecryptionWindow_MainDecryption_Info");
    tell(okButton, [](NSButton &button) { button.setTitle(localized("MessageDialog_Ok")); });
    tell(wrongMessageLabel, [](NSTextField &label) { label.setStringValue(localized("DecryptionWindow_WrongPassword_Info")); });
    showTips();
}

// The link word stands out by its font in the first part, and as a link in the second.
void HNFMBackupDecryptionController::showTips() {
    const NSString link = localized("DecryptionWindow_Tips_Keymender_Link");
    const NSString first = localized("DecryptionWindow_Tips_Info");
    const NSString second = NSString::stringWithFormat(localized("DecryptionWindow_Tips_Visit_Info"), link);
    const auto text = make<NSMutableAttributedString>();
    text->appendText(NSString::stringWithFormat("%@%@", first, second));
    // Folding keeps the number of characters, so ranges hold in the text itself.
    const auto placeIn = [&](const NSString &part) { return part.folded().rangeOfString(link.folded().view()); };
    if (const auto range = placeIn(first); range && range->length > 0)
        text->setFont(NSFont::fontWithName_size("Helvetica Neue Medium", 14.0), *range);
    if (auto range = placeIn(second); range && range->length > 0) {
        range->location += first.length();
        text->setUnderline(true, *range);
        text->setColor(NSColor::colorWithCalibratedRed_green_blue_alpha(0, 173 / 255.0, 196 / 255.0, 1.0), *range);
    }
    tell(decryptTipsLabel, [&](RUILinkTextField &label) { label.drawActionAttributedTextField(text); });
}

void HNFMBackupDecryptionController::openPasswordHelp(const id &) {
    NSWorkspace::sharedWorkspace().openURL(localizedAddress("PasswordHelpPageURL"));
}

// ---------------------------------------------------------------- states

void HNFMBackupDecryptionController::setDecryptState_flag(std::uint32_t state, bool flag) {
    if (state == decryptState)
        return;
    decryptState = state;
    switch (state) {
    case kEntry:
        initView();
        initText();
        break;
    case kChecking: showChecking(); break;
    case kProgress: showProgress(); break;
    case kEntryAgain: showEntryAgain(flag); break;
    default: break;
    }
}

void HNFMBackupDecryptionController::showChecking() {
    constexpr double kLastWithoutLoop = 1504.76;
    hide(wrongMessageLabel, true);
    hide(decryptProgressIndicator, true);
    hide(decryptLoadingIndicator, false);
    tell(decryptLoadingIndicator, [](NSProgressIndicator &spinner) { spinner.startAnimation(); });
    enable(okButton, false);
    tell(passwordTextField, [](NSTextField &field) { field.setEditable(false); });
    setMainText("DecryptionWindow_Decrypting_Info");
    if (std::floor(NSAppKitVersionNumber()) > kLastWithoutLoop)
        NSRunLoop::current().runFor(1ms);   // the spinner is drawn before the check begins
}

void HNFMBackupDecryptionController::showProgress() {
    hide(wrongMessageLabel, true);
    tell(decryptProgressIndicator, [](NSProgressIndicator &bar) { bar.setDoubleValue(0); });
    hide(decryptProgressIndicator, false);
    hide(decryptLoadingIndicator, true);
    hide(okButton, true);
    hide(passwordTextField, true);
    setMainText("DecryptionWindow_Decrypting_Info");
}

void HNFMBackupDecryptionController::showEntryAgain(bool hidesWrongMessage) {
    hide(wrongMessageLabel, hidesWrongMessage);
    hide(decryptProgressIndicator, true);
    hide(decryptLoadingIndicator, true);
    hide(okButton, false);
    enable(okButton, true);
    hide(passwordTextField, false);
    tell(passwordTextField, [](NSTextField &field) { field.setEditable(true); });
    setMainText("DecryptionWindow_MainDecryption_Info");
}

void HNFMBackupDecryptionController::setDecryptionProgress(double percent) {
    tell(decryptProgressIndicator, [percent](NSProgressIndicator &bar) { bar.setDoubleValue(percent); });
}

// ---------------------------------------------------------------- a person's doing

NSString HNFMBackupDecryptionController::getPassword() const {
    const auto field = passwordTextField.lock();
    return field ? field->stringValue() : NSString();
}

void HNFMBackupDecryptionController::controlTextDidChange(NSTextField &) {
    hide(wrongMessageLabel, true);
    enable(okButton, !getPassword().isEmpty());
}

void HNFMBackupDecryptionController::okButtonClick(const id &) {
    if (const auto block = okButtonClickBlock)
        block();
}
