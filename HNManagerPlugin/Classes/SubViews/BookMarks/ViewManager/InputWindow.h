// What the two input windows do alike. Threads: main.
#pragma once

#include <cstdint>

#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSWindowController.h"

namespace inputWindow {

void setButtonTitles(const std::weak_ptr<RUIButton> &save, const std::weak_ptr<RUIButton> &cancel);
// Systems before 10.10 have no hints.
void showHint(const std::weak_ptr<NSTextField> &field, const char *key);
[[nodiscard]] NSString textOf(const std::weak_ptr<NSTextField> &field);
// More than blanks.
[[nodiscard]] bool hasText(const NSString &text);
// A text that a program sets.
void showText(const std::weak_ptr<NSTextField> &field, const NSString &text);
// Ends editing, closes the window and its modal run.
void endWith(NSWindowController &controller, std::int64_t code);

}   // namespace inputWindow
