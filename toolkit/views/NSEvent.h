// One event of a person: a mouse button, a move, a key. Made by a host or a test, sent through NSWindow::sendEvent.
//
// Points   locationInWindow counts from the lower left corner of the window's content, upwards, in points.
// Threads  main.
#pragma once

#include <cstdint>
#include <memory>

#include "toolkit/NSGeometry.h"
#include "toolkit/NSObject.h"

class NSWindow;

enum class NSEventType {
    leftMouseDown, leftMouseUp, leftMouseDragged, rightMouseDown, rightMouseUp, rightMouseDragged, mouseMoved,
    mouseEntered, mouseExited, scrollWheel, keyDown, keyUp, flagsChanged,
};

using NSEventModifierFlags = std::uint64_t;
constexpr NSEventModifierFlags NSEventModifierFlagCapsLock = 1u << 16;
constexpr NSEventModifierFlags NSEventModifierFlagShift = 1u << 17;
constexpr NSEventModifierFlags NSEventModifierFlagControl = 1u << 18;
constexpr NSEventModifierFlags NSEventModifierFlagOption = 1u << 19;
constexpr NSEventModifierFlags NSEventModifierFlagCommand = 1u << 20;

// Key codes that views act on (hardware codes of the platform's keyboards).
namespace keycode {
constexpr std::uint16_t a = 0, returnKey = 36, tab = 48, space = 49, deleteBackward = 51, escape = 53, enter = 76,
                        home = 115, pageUp = 116, deleteForward = 117, end = 119, pageDown = 121, left = 123, right = 124,
                        down = 125, up = 126;
}

class NSEvent : public NSObject {
public:
    NSEventType type = NSEventType::leftMouseDown;
    NSPoint locationInWindow;
    NSEventModifierFlags modifierFlags = 0;
    // 1 for a single click, 2 for the second of a double click; 0 for what is no click.
    int clickCount = 0;
    std::uint16_t keyCode = 0;
    // What the key types; absent for mouse events.
    NSString characters;
    // Scroll distance in points; positive moves the content to the right and down.
    double scrollingDeltaX = 0, scrollingDeltaY = 0;
    std::weak_ptr<NSWindow> window;
    // Of an enter or exit event: the area crossed.
    std::weak_ptr<NSObject> trackingArea;

    [[nodiscard]] bool isMouse() const { return type < NSEventType::mouseEntered; }
    [[nodiscard]] bool isKey() const { return type == NSEventType::keyDown || type == NSEventType::keyUp; }
    [[nodiscard]] bool has(NSEventModifierFlags flag) const { return (modifierFlags & flag) != 0; }

    [[nodiscard]] static std::shared_ptr<NSEvent> mouse(NSEventType type, NSPoint locationInWindow, int clickCount = 1,
                                                        NSEventModifierFlags modifierFlags = 0);
    [[nodiscard]] static std::shared_ptr<NSEvent> key(std::uint16_t keyCode, NSString characters = NSString(""),
                                                      NSEventModifierFlags modifierFlags = 0,
                                                      NSEventType type = NSEventType::keyDown);
    HN_DECLARE_CLASS_TABLE
};
