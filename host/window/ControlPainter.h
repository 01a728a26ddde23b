// How the plain controls look in this window. A view of any other class paints itself. Threads: main.
#pragma once

#include "host/window/QtCanvas.h"
#include "toolkit/views/NSView.h"

namespace host {

// What the window knows of a view beyond the view's own state.
struct ControlState {
    bool hasFocus = false;      // the keyboard's focus stands on it
    bool isBeingEdited = false; // a native editor lies over it and shows its text
    int turn = 0;               // steps of 30 degrees that something turning has made
};

// The picture of this view alone; the canvas's origin is the view's upper left corner.
void paintView(NSView &view, QtCanvas &canvas, const ControlState &state);
// True for a view that goes on moving by itself: a spinner at work, a layer that turns for ever.
[[nodiscard]] bool turnsByItself(NSView &view);

}  // namespace host
