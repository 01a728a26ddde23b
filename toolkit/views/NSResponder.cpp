#include "toolkit/views/NSResponder.h"

HN_CLASS_TABLE(NSResponder, NSObjectTable, .selector("becomeFirstResponder", &NSResponder::becomeFirstResponder))

std::shared_ptr<NSResponder> NSResponder::nextResponder() const {
    const auto set = nextResponder_.lock();
    return set ? set : defaultNextResponder();
}

void NSResponder::passOn(void (NSResponder::*handler)(NSEvent &), NSEvent &event) {
    if (const auto next = nextResponder())
        (next.get()->*handler)(event);
}

void NSResponder::mouseDown(NSEvent &event) { passOn(&NSResponder::mouseDown, event); }
void NSResponder::mouseUp(NSEvent &event) { passOn(&NSResponder::mouseUp, event); }
void NSResponder::mouseDragged(NSEvent &event) { passOn(&NSResponder::mouseDragged, event); }
void NSResponder::rightMouseDown(NSEvent &event) { passOn(&NSResponder::rightMouseDown, event); }
void NSResponder::rightMouseUp(NSEvent &event) { passOn(&NSResponder::rightMouseUp, event); }
void NSResponder::rightMouseDragged(NSEvent &event) { passOn(&NSResponder::rightMouseDragged, event); }
void NSResponder::mouseMoved(NSEvent &event) { passOn(&NSResponder::mouseMoved, event); }
void NSResponder::mouseEntered(NSEvent &event) { passOn(&NSResponder::mouseEntered, event); }
void NSResponder::mouseExited(NSEvent &event) { passOn(&NSResponder::mouseExited, event); }
void NSResponder::scrollWheel(NSEvent &event) { passOn(&NSResponder::scrollWheel, event); }
void NSResponder::keyDown(NSEvent &event) { passOn(&NSResponder::keyDown, event); }
void NSResponder::keyUp(NSEvent &event) { passOn(&NSResponder::keyUp, event); }
void NSResponder::flagsChanged(NSEvent &event) { passOn(&NSResponder::flagsChanged, event); }
