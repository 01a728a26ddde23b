#include "HNManagerPlugin/Classes/PublicProgressWindow/HNXExistFileSettingController.h"

#include "HNManagerPlugin/Classes/PublicProgressWindow/Dialogs.h"
#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"

static const NibRegistry::Entry entry("HNXExistFileSettingController", [](Nib &nib) {
    const auto owner = nib.owner<HNXExistFileSettingController>();
    const auto window = nib.make<RUIDialogWindow>(NSRect(0, 0, 480, 180));
    const auto logo = nib.make<NSImageView>(NSRect(24, 92, 64, 64));
    logo->setIdentifier("logo");
    logo->setImage(dialogs::icon("icon_help"));
    const auto tip = NSTextField::labelWithString("");
    tip->setFrame({104, 92, 352, 64});
    tip->setIdentifier("message");
    const auto apply = nib.make<RUICheckBox>(NSRect(104, 60, 352, 20));
    apply->setIdentifier("applyToAll");
    apply->connect(owner, "onApplyToAllButton:");
    const auto button = [&](double x, const char *identifier, const char *action) {
        const auto made = nib.make<RUIButton>(NSRect(x, 16, 108, 28));
        made->setIdentifier(identifier);
        made->connect(owner, action);
        return made;
    };
    const auto skip = button(116, "skip", "onSkipButtton:");
    const auto keepBoth = button(232, "keepBoth", "onKeepBothButton:");
    const auto replace = button(348, "replace", "onReplaceButton:");
    skip->setBorderColor(UIThemeColor());
    keepBoth->setBorderColor(UIThemeColor());
    for (const std::shared_ptr<NSView> &view : NSView::List{logo, tip, apply, skip, keepBoth, replace})
        window->contentView()->addSubview(view);
    owner->imageViewLogo = logo;
    owner->labelTopTip = tip;
    owner->applyBtn = apply;
    owner->SkipBtn = skip;
    owner->keepBothBtn = keepBoth;
    owner->replaceBtn = replace;
    window->setDelegate(owner);
    window->center();
    nib.setWindow(window);
});
