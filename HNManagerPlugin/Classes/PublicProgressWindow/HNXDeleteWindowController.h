// The question before tracks leave a playlist, with a box that asks to delete them from the device too.
//
// Result   kConfirmed on Delete, 0 on Cancel and on the title bar. The two action names are crossed over: the Delete button
//          is connected to onCancelButton:, the Cancel button to onDeleteButton:. Kept: callers wait for 1000.
// Box      its state lies under the user default kCompleteKey, false whenever the window opens; the caller reads it and
//          writes it back to false. Threads: main.
#pragma once

#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUICheckBox.h"
#include "toolkit/Property.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSWindowController.h"

class HNXDeleteWindowController : public NSWindowController, public NSWindowDelegate {
public:
    static constexpr std::int64_t kConfirmed = 1000;
    static constexpr const char *kCompleteKey = "manage_delete_complete";
    HN_DECLARE_CLASS_TABLE

    std::weak_ptr<NSTextField> label;
    NSString mainlabel;
    std::int64_t result = 0;
    std::weak_ptr<RUIButton> CancelBtn, DeleteBtn;
    std::weak_ptr<RUICheckBox> CheckBtn;
    Property<NSString> strDeleteTipTitle;

    [[nodiscard]] static std::shared_ptr<HNXDeleteWindowController> standardDeleteCompleteWindow_Title(const NSString &message,
                                                                                                     const NSString &title);
    void awakeFromNib() override;
    void onDeleteCompleteButton(const id &sender);
    void onDeleteButton(const id &sender);
    void onCancelButton(const id &sender);
    void windowWillClose(NSWindow &window) override;
};
