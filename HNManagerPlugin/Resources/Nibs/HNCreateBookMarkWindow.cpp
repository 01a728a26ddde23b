#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/HNCreateBookMarkWindow.h"

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/InputWindow.h"
#include "HNManagerPlugin/Resources/Nibs/NibParts.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindow.h"

static const NibRegistry::Entry entry("HNCreateBookMarkWindow", [](Nib &nib) {
    const auto owner = nib.owner<HNCreateBookMarkWindow>();
    const auto window = nib.make<RUIDialogWindow>(NSRect(0, 0, 440, 160));
    const auto name = nib.make<NSTextField>(NSRect(24, 108, 392, 28));
    name->setIdentifier("nameTextField");
    const auto url = nib.make<NSTextField>(NSRect(24, 68, 392, 28));
    url->setIdentifier("URLTextField");
    const auto [cancel, save] = nibParts::dialogButtons(nib, owner, 440, "onCancelButton:", "onSaveButton:");
    for (const std::shared_ptr<NSView> &view : NSView::List{name, url, cancel, save})
        window->contentView()->addSubview(view);
    for (const auto &field : {name, url})
        field->setDelegate(owner);
    owner->nameTextField = name;
    owner->URLTextField = url;
    owner->saveButton = save;
    owner->cancelButton = cancel;
    owner->bookMarkName.observe([field = std::weak_ptr(name)](const NSString &text) { inputWindow::showText(field, text); });
    owner->bookMarkURL.observe([field = std::weak_ptr(url)](const NSString &text) { inputWindow::showText(field, text); });
    nibParts::enabledBy(owner->saveButtonEnabled, save);
    window->setInitialFirstResponder(name);
    window->center();
    nib.setWindow(window);
});
