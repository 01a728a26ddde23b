// Asks for the password of the device's backups.
//
// Result   the button runs the block, which checks and closes; NSApp()->runModalForWindow gives the code that it sends, and
//          -1000 for the title bar and Esc.
// States   see setDecryptState_flag. Threads: main.
#pragma once

#include <cstdint>
#include <functional>

#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUILinkTextField.h"
#include "toolkit/views/NSProgressIndicator.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSWindowController.h"

class HNFMBackupDecryptionController : public NSWindowController, public NSTextFieldDelegate, public NSWindowDelegate {
public:
    HN_DECLARE_CLASS_TABLE
    // Entry; checking; progress, which no flow enters; entry after a check.
    static constexpr std::uint32_t kEntry = 0, kChecking = 1, kProgress = 2, kEntryAgain = 3;

    // nib outlets
    std::weak_ptr<NSTextField> decryptMainLabel;
    std::weak_ptr<NSTextField> passwordTextField;
    std::weak_ptr<RUIButton> okButton;
    std::weak_ptr<RUILinkTextField> decryptTipsLabel;
    std::weak_ptr<NSTextField> wrongMessageLabel;
    std::weak_ptr<NSProgressIndicator> decryptProgressIndicator;
    std::weak_ptr<NSProgressIndicator> decryptLoadingIndicator;

    std::uint32_t decryptState = kEntry;
    std::function<void()> okButtonClickBlock;

    // Builds one and runs it modally.
    static void showDefaultWindow();

    void windowDidLoad() override;
    void setOkButtonClickBlock(std::function<void()> block) { okButtonClickBlock = std::move(block); }
    // Nothing where the state is the same; states above 3 are kept and change nothing on show. `flag` matters in state 3
    // alone: false shows that the password was wrong.
    void setDecryptState_flag(std::uint32_t state, bool flag);
    void setDecryptionProgress(double percent);
    [[nodiscard]] NSString getPassword() const;

    void okButtonClick(const id &sender);
    void openPasswordHelp(const id &sender);
    void controlTextDidChange(NSTextField &field) override;
    bool windowShouldClose(NSWindow &) override { return true; }

private:
    void initView();
    void initText();
    void showTips();
    void showChecking();
    void showProgress();
    void showEntryAgain(bool hidesWrongMessage);
    void setMainText(const char *key);
};
