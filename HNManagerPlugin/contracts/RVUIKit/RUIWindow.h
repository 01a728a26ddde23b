// The kit's plain window; the host's main window is one, and so is every progress window. Dismissing all open dialogs
// passes it over, by exact class. Threads: main.
#pragma once

#include "toolkit/views/NSWindow.h"

class RUIWindow : public NSWindow {
public:
    HN_DECLARE_CLASS_TABLE
};
