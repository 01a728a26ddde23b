// Whatever can take an event or an action: views, windows, controllers, the application. Each passes on what it does not
// take to its next responder. Threads: main.
#pragma once

#include <memory>

#include "toolkit/views/NSEvent.h"

class NSMenu;

class NSResponder : public NSObject {
public:
    // The one that was set, else what the class says (a view: its superview; a window's content: the window).
    [[nodiscard]] std::shared_ptr<NSResponder> nextResponder() const;
    void setNextResponder(const std::shared_ptr<NSResponder> &responder) { nextResponder_ = responder; }

    [[nodiscard]] virtual bool acceptsFirstResponder() const { return false; }
    // False refuses.
    virtual bool becomeFirstResponder() { return true; }
    virtual bool resignFirstResponder() { return true; }

    // A subclass that swallows an event overrides without calling the base.
    virtual void mouseDown(NSEvent &event);
    virtual void mouseUp(NSEvent &event);
    virtual void mouseDragged(NSEvent &event);
    virtual void rightMouseDown(NSEvent &event);
    virtual void rightMouseUp(NSEvent &event);
    virtual void rightMouseDragged(NSEvent &event);
    virtual void mouseMoved(NSEvent &event);
    virtual void mouseEntered(NSEvent &event);
    virtual void mouseExited(NSEvent &event);
    virtual void scrollWheel(NSEvent &event);
    virtual void keyDown(NSEvent &event);
    virtual void keyUp(NSEvent &event);
    virtual void flagsChanged(NSEvent &event);
    // True when somebody below took the key as an equivalent of a button or menu entry.
    virtual bool performKeyEquivalent(NSEvent &) { return false; }
    HN_DECLARE_CLASS_TABLE

protected:
    [[nodiscard]] virtual std::shared_ptr<NSResponder> defaultNextResponder() const { return nullptr; }

private:
    void passOn(void (NSResponder::*handler)(NSEvent &), NSEvent &event);
    std::weak_ptr<NSResponder> nextResponder_;
};
