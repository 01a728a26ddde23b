#include "toolkit/views/NSEvent.h"

HN_CLASS_TABLE(NSEvent, NSObjectTable, .key("clickCount", &NSEvent::clickCount).key("keyCode", &NSEvent::keyCode)
                                           .key("modifierFlags", &NSEvent::modifierFlags).key("characters", &NSEvent::characters))

std::shared_ptr<NSEvent> NSEvent::mouse(NSEventType type, NSPoint locationInWindow, int clickCount,
                                        NSEventModifierFlags modifierFlags) {
    const auto event = make<NSEvent>();
    event->type = type;
    event->locationInWindow = locationInWindow;
    event->clickCount = clickCount;
    event->modifierFlags = modifierFlags;
    return event;
}

std::shared_ptr<NSEvent> NSEvent::key(std::uint16_t keyCode, NSString characters, NSEventModifierFlags modifierFlags, NSEventType type) {
    const auto event = make<NSEvent>();
    event->type = type;
    event->keyCode = keyCode;
    event->characters = std::move(characters);
    event->modifierFlags = modifierFlags;
    return event;
}
