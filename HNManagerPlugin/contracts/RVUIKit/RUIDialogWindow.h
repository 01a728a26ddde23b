// The window of every question and message. Open ones are found by this exact class and closed when the host lets the
// plug-in go, so nothing derives from it. Threads: main.
#pragma once

#include "toolkit/views/NSWindow.h"

class RUIDialogWindow : public NSWindow {
public:
    // Off: neither the title bar nor Escape closes the window.
    void setEnableCloseButton(bool enable);
    HN_DECLARE_CLASS_TABLE
};
