// Asks for the name of a folder, new or to be changed.
//
// Result   NSApp()->runModalForWindow gives 1 on Save, 0 on Cancel, -1000 by any other way out; then `folderName` is what
//          the field says.
// Save     enabled while the field has more than blanks. Threads: main.
#pragma once

#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "toolkit/Property.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSWindowController.h"

class HNCreateBookFolderWindow : public NSWindowController, public NSTextFieldDelegate {
public:
    HN_DECLARE_CLASS_TABLE
    Property<NSString> folderName;   // bound to the field, both ways
    Property<bool> saveButtonEnabled;
    std::weak_ptr<NSTextField> folderTextField;
    std::weak_ptr<RUIButton> saveButton, cancelButton;

    void awakeFromNib() override;
    void onSaveButton(const id &sender);
    void onCancelButton(const id &sender);
    void controlTextDidChange(NSTextField &field) override;
    void controlTextDidEndEditing(NSTextField &field, TextMovement movement) override;

private:
    void takeText();
    void showHint();
};
