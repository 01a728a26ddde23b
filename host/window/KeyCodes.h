// Keys and buttons of Qt as the platform's hardware codes and modifier bits that views act on. Threads: main.
#pragma once

#include <QKeyEvent>

#include <cstdint>
#include <memory>
#include <optional>

#include "toolkit/views/NSEvent.h"

namespace host {

// Absent for keys that the platform's keyboards lack.
[[nodiscard]] std::optional<std::uint16_t> keyCodeOf(int qtKey);
// Control of this system is Command of the platform: it is the key of shortcuts and of adding to a selection.
[[nodiscard]] NSEventModifierFlags modifiersOf(Qt::KeyboardModifiers modifiers);
// A key of characters only has the code 0xFFFF; a modifier alone is a change of the flags.
[[nodiscard]] std::shared_ptr<NSEvent> keyEventOf(const QKeyEvent &event);

}  // namespace host
