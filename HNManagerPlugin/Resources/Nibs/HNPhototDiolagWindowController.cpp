#include "HNManagerPlugin/Classes/PublicProgressWindow/HNPhototDiolagWindowController.h"

#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindow.h"
#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"
#include "toolkit/views/NSImageView.h"

static const NibRegistry::Entry entry("HNPhototDiolagWindowController", [](Nib &nib) {
    const auto owner = nib.owner<HNPhototDiolagWindowController>();
    const auto window = nib.make<RUIDialogWindow>(NSRect(0, 0, 440, 180));
    const auto mark = nib.make<NSImageView>(NSRect(24, 92, 64, 64));
    mark->setIdentifier("markImage");
    const auto message = NSTextField::labelWithString("");
    message->setFrame({104, 88, 312, 72});
    message->setIdentifier("message");
    const auto link = nib.make<RUILinkTextField>(NSRect(104, 60, 312, 20));
    link->setIdentifier("link");
    link->setHidden(true);
    const auto left = nib.make<RUIButton>(NSRect(196, 16, 104, 28));
    left->setIdentifier("leftButton");
    left->setBorderColor(UIThemeColor());
    left->connect(owner, "leftButtonClick:");
    const auto right = nib.make<RUIButton>(NSRect(312, 16, 104, 28));
    right->setIdentifier("rightButton");
    right->setKeyEquivalent("\r");
    right->connect(owner, "rightButtonClick:");
    for (const std::shared_ptr<NSView> &view : NSView::List{mark, message, link, left, right})
        window->contentView()->addSubview(view);
    owner->messageLable = message;
    owner->linkLable = link;
    owner->leftButton = left;
    owner->rightButton = right;
    owner->messageStr.observe([field = std::weak_ptr(message)](const NSString &text) {
        tell(field, [&](NSTextField &line) { line.setStringValue(text); });
    });
    owner->markImage.observe([view = std::weak_ptr(mark)](const std::shared_ptr<NSImage> &image) {
        tell(view, [&](NSImageView &shown) { shown.setImage(image); });
    });
    owner->leftBtnTitle.observe([field = std::weak_ptr(left)](const NSString &text) {
        tell(field, [&](RUIButton &button) { button.setTitle(text); });
    });
    owner->rightBtnTitle.observe([field = std::weak_ptr(right)](const NSString &text) {
        tell(field, [&](RUIButton &button) { button.setTitle(text); });
    });
    window->setDelegate(owner);
    window->center();
    nib.setWindow(window);
});
