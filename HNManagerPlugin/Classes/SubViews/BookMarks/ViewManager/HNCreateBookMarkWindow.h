// Asks for the name and the address of a bookmark, new or to be changed. Any address goes.
//
// Result   NSApp()->runModalForWindow gives 1 on Save, 0 on Cancel, -1000 by any other way out; then `bookMarkName` and
//          `bookMarkURL` are what the fields say.
// Save     enabled while both fields have more than blanks. Threads: main.
#pragma once

#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "toolkit/Property.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSWindowController.h"

class HNCreateBookMarkWindow : public NSWindowController, public NSTextFieldDelegate {
public:
    HN_DECLARE_CLASS_TABLE
    Property<NSString> bookMarkName, bookMarkURL;   // bound to the fields, both ways
    Property<bool> saveButtonEnabled;
    std::weak_ptr<NSTextField> nameTextField, URLTextField;
    std::weak_ptr<RUIButton> saveButton, cancelButton;

    void awakeFromNib() override;
    void onSaveButton(const id &sender);
    void onCancelButton(const id &sender);
    void controlTextDidChange(NSTextField &field) override;
    void controlTextDidEndEditing(NSTextField &field, TextMovement movement) override;

private:
    void takeTexts();
    void showHints();
};
