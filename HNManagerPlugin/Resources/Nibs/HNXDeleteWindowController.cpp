#include "HNManagerPlugin/Classes/PublicProgressWindow/HNXDeleteWindowController.h"

#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindow.h"
#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"

static const NibRegistry::Entry entry("HNXDeleteWindowController", [](Nib &nib) {
    const auto owner = nib.owner<HNXDeleteWindowController>();
    const auto window = nib.make<RUIDialogWindow>(NSRect(0, 0, 440, 160));
    const auto label = NSTextField::labelWithString("");
    label->setFrame({24, 88, 392, 56});
    label->setIdentifier("message");
    const auto check = nib.make<RUICheckBox>(NSRect(24, 60, 392, 20));
    check->setIdentifier("checkBox");
    check->connect(owner, "onDeleteCompleteButton:");
    const auto cancel = nib.make<RUIButton>(NSRect(196, 16, 104, 28));
    cancel->setIdentifier("cancelButton");
    cancel->setBorderColor(UIThemeColor());
    // Crossed over: the callers go on with the result of onCancelButton:.
    cancel->connect(owner, "onDeleteButton:");
    const auto remove = nib.make<RUIButton>(NSRect(312, 16, 104, 28));
    remove->setIdentifier("deleteButton");
    remove->connect(owner, "onCancelButton:");
    for (const std::shared_ptr<NSView> &view : NSView::List{label, check, cancel, remove})
        window->contentView()->addSubview(view);
    owner->label = label;
    owner->CheckBtn = check;
    owner->CancelBtn = cancel;
    owner->DeleteBtn = remove;
    owner->strDeleteTipTitle.observe([link = std::weak_ptr(check)](const NSString &title) {
        tell(link, [&](RUICheckBox &box) { box.setTitle(title); });
    });
    window->setDelegate(owner);
    window->center();
    nib.setWindow(window);
});
