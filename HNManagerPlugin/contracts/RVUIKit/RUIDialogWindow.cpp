#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindow.h"

HN_CLASS_TABLE(RUIDialogWindow, NSWindow)

void RUIDialogWindow::setEnableCloseButton(bool enable) {
    standardWindowButton(NSWindowCloseButton)->setEnabled(enable);
}
