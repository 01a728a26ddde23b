#include "HNManagerPlugin/Classes/PublicProgressWindow/HNMPublicProgressWindow.h"

#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindow.h"

static const NibRegistry::Entry entry("HNMPublicProgressWindow", [](Nib &nib) {
    const auto owner = nib.owner<HNMPublicProgressWindow>();
    const auto window = nib.make<RUIDialogWindow>(NSRect(0, 0, 460, 150));
    const auto up = NSTextField::labelWithString("");
    up->setFrame({24, 96, 412, 40});
    up->setIdentifier("upText");
    const auto down = NSTextField::labelWithString("");
    down->setFrame({24, 52, 412, 20});
    down->setIdentifier("downText");
    const auto bar = nib.make<RUISimpleProgressView>(NSRect(24, 80, 412, 8));
    bar->setIdentifier("progress");
    const auto cancel = nib.make<RUIButton>(NSRect(332, 12, 104, 28));
    cancel->setIdentifier("cancelButton");
    cancel->connect(owner, "cancelButtonClicked:");
    for (const std::shared_ptr<NSView> &view : NSView::List{up, down, bar, cancel})
        window->contentView()->addSubview(view);
    owner->upTextField = up;
    owner->downTextField = down;
    owner->progress = bar;
    owner->strCancelBtnTitle.observe([link = std::weak_ptr(cancel)](const NSString &title) {
        tell(link, [&](RUIButton &button) { button.setTitle(title); });
    });
    owner->isHiddenBtn.observe([link = std::weak_ptr(cancel)](const bool &hidden) {
        tell(link, [&](RUIButton &button) { button.setHidden(hidden); });
    });
    window->center();
    nib.setWindow(window);
});
