#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/HNCreateBookFolderWindow.h"

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/InputWindow.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindow.h"
#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"

static const NibRegistry::Entry entry("HNCreateBookFolderWindow", [](Nib &nib) {
    const auto owner = nib.owner<HNCreateBookFolderWindow>();
    const auto window = nib.make<RUIDialogWindow>(NSRect(0, 0, 440, 120));
    const auto name = nib.make<NSTextField>(NSRect(24, 68, 392, 28));
    name->setIdentifier("folderTextField");
    name->setDelegate(owner);
    const auto cancel = nib.make<RUIButton>(NSRect(196, 16, 104, 28));
    cancel->setIdentifier("cancelButton");
    cancel->setBorderColor(UIThemeColor());
    cancel->setKeyEquivalent("\x1b");
    cancel->connect(owner, "onCancelButton:");
    const auto save = nib.make<RUIButton>(NSRect(312, 16, 104, 28));
    save->setIdentifier("saveButton");
    save->setKeyEquivalent("\r");
    save->connect(owner, "onSaveButton:");
    for (const std::shared_ptr<NSView> &view : NSView::List{name, cancel, save})
        window->contentView()->addSubview(view);
    owner->folderTextField = name;
    owner->saveButton = save;
    owner->cancelButton = cancel;
    owner->folderName.observe([field = std::weak_ptr(name)](const NSString &text) { inputWindow::showText(field, text); });
    owner->saveButtonEnabled.observe([link = std::weak_ptr(save)](const bool &enabled) {
        tell(link, [enabled](RUIButton &button) { button.setEnabled(enabled); });
    });
    window->setInitialFirstResponder(name);
    window->center();
    nib.setWindow(window);
});
