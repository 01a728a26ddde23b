#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/HNCreateBookFolderWindow.h"

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/InputWindow.h"

HN_CLASS_TABLE(HNCreateBookFolderWindow, NSWindowController,
               .key("folderName", &HNCreateBookFolderWindow::folderName)
                   .key("saveButtonEnabled", &HNCreateBookFolderWindow::saveButtonEnabled)
                   .key("folderTextField", &HNCreateBookFolderWindow::folderTextField)
                   .selector("onSaveButton:", &HNCreateBookFolderWindow::onSaveButton)
                   .selector("onCancelButton:", &HNCreateBookFolderWindow::onCancelButton))

void HNCreateBookFolderWindow::awakeFromNib() {
    inputWindow::setButtonTitles(saveButton, cancelButton);
    showHint();
    takeText();
}

void HNCreateBookFolderWindow::showHint() { inputWindow::showHint(folderTextField, "BMView_FolderName"); }

void HNCreateBookFolderWindow::takeText() {
    folderName = inputWindow::textOf(folderTextField);
    saveButtonEnabled = inputWindow::hasText(folderName);
}

void HNCreateBookFolderWindow::controlTextDidChange(NSTextField &) { takeText(); }

void HNCreateBookFolderWindow::controlTextDidEndEditing(NSTextField &, TextMovement) {
    takeText();
    showHint();
}

void HNCreateBookFolderWindow::onSaveButton(const id &) { inputWindow::endWith(*this, 1); }
void HNCreateBookFolderWindow::onCancelButton(const id &) { inputWindow::endWith(*this, 0); }
