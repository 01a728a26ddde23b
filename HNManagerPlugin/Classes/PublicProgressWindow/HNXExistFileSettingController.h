// The question what to do with an item that the device holds already: replace, keep both, skip; perhaps for all that follow.
// The modal result is the choice. Threads: main.
#pragma once

#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUICheckBox.h"
#include "toolkit/views/NSImageView.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSWindowController.h"

class HNXExistFileSettingController : public NSWindowController, public NSWindowDelegate {
public:
    static constexpr std::int64_t kNoChoice = 0, kReplace = 1, kKeepBoth = 2, kSkip = 3;
    static constexpr const char *kNotShowAgainKey = "mange_not_show_again";
    HN_DECLARE_CLASS_TABLE

    std::int64_t selectMethod = kNoChoice;
    std::weak_ptr<NSImageView> imageViewLogo;
    std::weak_ptr<NSTextField> labelTopTip;
    NSString topTip;
    std::weak_ptr<NSButton> btnSelect;   // nib outlet without further use
    std::weak_ptr<RUIButton> replaceBtn, keepBothBtn, SkipBtn;
    std::weak_ptr<RUICheckBox> applyBtn;
    std::int8_t *isRepeat = nullptr;     // the caller's apply-to-all cell; outlives the modal run

    // Without a cell the box writes the user default alone.
    [[nodiscard]] static std::shared_ptr<HNXExistFileSettingController> standardExistFileSettingWindow_Title(const NSString &message,
                                                                                                            const NSString &title);
    [[nodiscard]] static std::shared_ptr<HNXExistFileSettingController> standardExistFileSettingWindow_Title_isRepeat(
        const NSString &message, const NSString &title, std::int8_t *isRepeat);
    void awakeFromNib() override;
    void onReplaceButton(const id &sender);
    void onKeepBothButton(const id &sender);
    void onSkipButtton(const id &sender);
    void onApplyToAllButton(const id &sender);
    void windowWillClose(NSWindow &window) override;

private:
    void choose(std::int64_t method);
};
