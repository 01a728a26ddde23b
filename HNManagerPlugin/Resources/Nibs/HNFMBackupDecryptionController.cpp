// The window that asks for the password of the device's backups.
#include "HNManagerPlugin/Classes/SubViews/Message/BackupPasswordWindow/HNFMBackupDecryptionController.h"

#include "HNManagerPlugin/Resources/Nibs/NibParts.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindow.h"

namespace {

constexpr double kWindowWidth = 460, kWindowHeight = 216, kSide = 24, kInside = kWindowWidth - 2 * kSide;

template <class View> std::shared_ptr<View> addTo(NSWindow &window, const std::shared_ptr<View> &view, const char *identifier, const NSRect &frame) {
    view->setIdentifier(identifier);
    view->setFrame(frame);
    window.contentView()->addSubview(view);
    return view;
}

std::shared_ptr<NSTextField> paragraph(const char *identifier) {
    auto text = nibParts::label(identifier);
    text->setLineBreakMode(LineBreak::wrap);
    return text;
}

void build(Nib &nib) {
    const auto owner = nib.owner<HNFMBackupDecryptionController>();
    const auto window = nib.make<RUIDialogWindow>(NSRect(0, 0, kWindowWidth, kWindowHeight));
    window->setTitle(localized("DecryptionWindow_Title"));
    const auto main = addTo(*window, paragraph("decryptMainLabel"), "decryptMainLabel", {kSide, 160, kInside, 36});
    const auto password = addTo(*window, nib.make<NSSecureTextField>(), "passwordTextField", {kSide, 122, kInside, 28});
    password->setPlaceholderString(localized("DecryptionWindow_PasswordHint"));
    const auto bar = addTo(*window, nib.make<NSProgressIndicator>(), "decryptProgressIndicator", {kSide, 130, kInside, 12});
    const auto wrong = addTo(*window, nibParts::label("wrongMessageLabel", 12), "wrongMessageLabel", {kSide, 98, kInside, 18});
    wrong->setTextColor(NSColor::redColor());
    const auto spinner = addTo(*window, nib.make<NSProgressIndicator>(), "decryptLoadingIndicator", {kSide, 96, 20, 20});
    spinner->setIndeterminate(true);
    spinner->setSpinningStyle(true);
    const auto tips = addTo(*window, nib.make<RUILinkTextField>(), "decryptTipsLabel", {kSide, 54, kInside, 38});
    const auto okay = addTo(*window, nib.make<RUIButton>(), "okButton", {kWindowWidth - kSide - 104, 16, 104, 28});
    okay->setKeyEquivalent("\r");
    if (owner) {
        okay->connect(owner, "okButtonClick:");
        password->setDelegate(owner);
        window->setDelegate(owner);
        owner->decryptMainLabel = main;
        owner->passwordTextField = password;
        owner->okButton = okay;
        owner->decryptTipsLabel = tips;
        owner->wrongMessageLabel = wrong;
        owner->decryptProgressIndicator = bar;
        owner->decryptLoadingIndicator = spinner;
    }
    window->setInitialFirstResponder(password);
    window->center();
    nib.setWindow(window);
}

const NibRegistry::Entry entry("HNFMBackupDecryptionController", build);

}   // namespace
