// What a view that draws itself needs in a layout from right to left. Threads: main.
#pragma once

#include "toolkit/views/Canvas.h"
#include "toolkit/views/NSView.h"

[[nodiscard]] inline bool isLayoutRightToLeft() { return NSView::userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::rightToLeft; }

// `rect` as it is, or from right to left on the other side of `around`.
[[nodiscard]] inline NSRect placedIn(const NSRect &around, const NSRect &rect) {
    return isLayoutRightToLeft() ? NSRect(around.minX() + around.maxX() - rect.maxX(), rect.minY(), rect.size.width, rect.size.height) : rect;
}

// Left and right change places.
[[nodiscard]] inline NSTextAlignment placed(NSTextAlignment alignment) {
    if (!isLayoutRightToLeft())
        return alignment;
    return alignment == NSTextAlignment::left ? NSTextAlignment::right : alignment == NSTextAlignment::right ? NSTextAlignment::left : alignment;
}
