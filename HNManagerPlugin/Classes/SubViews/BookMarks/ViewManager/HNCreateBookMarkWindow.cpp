#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/HNCreateBookMarkWindow.h"

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/InputWindow.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"

HN_CLASS_TABLE(HNCreateBookMarkWindow, NSWindowController,
               .key("bookMarkName", &HNCreateBookMarkWindow::bookMarkName)
                   .key("bookMarkURL", &HNCreateBookMarkWindow::bookMarkURL)
                   .key("saveButtonEnabled", &HNCreateBookMarkWindow::saveButtonEnabled)
                   .key("nameTextField", &HNCreateBookMarkWindow::nameTextField)
                   .key("URLTextField", &HNCreateBookMarkWindow::URLTextField)
                   .selector("onSaveButton:", &HNCreateBookMarkWindow::onSaveButton)
                   .selector("onCancelButton:", &HNCreateBookMarkWindow::onCancelButton))

void HNCreateBookMarkWindow::awakeFromNib() {
    inputWindow::setButtonTitles(saveButton, cancelButton);
    showHints();
    takeTexts();
}

void HNCreateBookMarkWindow::showHints() {
    inputWindow::showHint(nameTextField, "BookMarkViewTableHead_Name");
    inputWindow::showHint(URLTextField, "BookMarkViewTableHead_URL");
}

void HNCreateBookMarkWindow::takeTexts() {
    bookMarkName = inputWindow::textOf(nameTextField);
    bookMarkURL = inputWindow::textOf(URLTextField);
    saveButtonEnabled = inputWindow::hasText(bookMarkName) && inputWindow::hasText(bookMarkURL);
}

void HNCreateBookMarkWindow::controlTextDidChange(NSTextField &) { takeTexts(); }

void HNCreateBookMarkWindow::controlTextDidEndEditing(NSTextField &, TextMovement) {
    takeTexts();
    showHints();
}

void HNCreateBookMarkWindow::onSaveButton(const id &) { inputWindow::endWith(*this, 1); }
void HNCreateBookMarkWindow::onCancelButton(const id &) { inputWindow::endWith(*this, 0); }
