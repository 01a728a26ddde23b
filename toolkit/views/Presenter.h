// Whoever serves what waits for a person: the window, the command line, the tests each have one.
//
// Windows   windowDidOpen comes when a window becomes visible or a modal run begins on a visible one; the person's answer
//           comes later, through the window's controls: performClick, typeText, performClose. Never answer inside the call.
// Panels    are windows too: panelDidOpen comes instead of windowDidOpen; answer with choose(...) or cancel().
// Menus     popUpMenu blocks until the person has chosen and says what; the toolkit performs it.
// Editors   editorDidOpen when a text field begins editing by a program's wish; answer with typeText and endEditing.
// Threads   main.
#pragma once

#include <memory>

#include "toolkit/NSGeometry.h"

class NSMenu;
class NSMenuItem;
class NSSavePanel;
class NSTextField;
class NSView;
class NSWindow;

class Presenter {
public:
    virtual ~Presenter() = default;
    virtual void windowDidOpen(NSWindow &, bool /*modal*/) {}
    // Its modal run is over; the window may still be visible.
    virtual void modalRunDidEnd(NSWindow &) {}
    // Invisible from now on.
    virtual void windowDidClose(NSWindow &) {}
    // The panel is run modally; see NSSavePanel for its choices.
    virtual void panelDidOpen(NSSavePanel &) {}
    // `point` in the view's bounds; the view is null for a menu without a place. Null: nothing chosen. The entry may stand in
    // a submenu; one that is disabled or a separator counts as nothing.
    virtual std::shared_ptr<NSMenuItem> popUpMenu(const std::shared_ptr<NSMenu> &, NSPoint /*point*/, const std::shared_ptr<NSView> &) {
        return nullptr;
    }
    virtual void editorDidOpen(NSTextField &) {}

    // The one without an installed presenter cancels everything: a modal window is closed as by its title bar (its run is
    // aborted where it refuses), a panel is cancelled, a menu chooses nothing, an editor is left open.
    [[nodiscard]] static std::shared_ptr<Presenter> current();
    // Null puts that one back.
    static void install(std::shared_ptr<Presenter> presenter);
};
