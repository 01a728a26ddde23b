#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/HNCreateBookFolderWindow.h"

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/InputWindow.h"
#include "HNManagerPlugin/Resources/Nibs/NibParts.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindow.h"

static const NibRegistry::Entry entry("HNCreateBookFolderWindow", [](Nib &nib) {
    const auto owner = nib.owner<HNCreateBookFolderWindow>();
    const auto window = nib.make<RUIDialogWindow>(NSRect(0, 0, 440, 120));
    const auto name = nib.make<NSTextField>(NSRect(24, 68, 392, 28));
    name->setIdentifier("folderTextField");
    name->setDelegate(owner);
    const auto [cancel, save] = nibParts::dialogButtons(nib, owner, 440, "onCancelButton:", "onSaveButton:");
    for (const std::shared_ptr<NSView> &view : NSView::List{name, cancel, save})
        window->contentView()->addSubview(view);
    owner->folderTextField = name;
    owner->saveButton = save;
    owner->cancelButton = cancel;
    owner->folderName.observe([field = std::weak_ptr(name)](const NSString &text) { inputWindow::showText(field, text); });
    nibParts::enabledBy(owner->saveButtonEnabled, save);
    window->setInitialFirstResponder(name);
    window->center();
    nib.setWindow(window);
});
