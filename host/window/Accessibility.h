// What screen readers are told of a surface: every view that means something, painted or native, with role, name, value and
// place.
//
// Names    the view's accessibilityName, else the text that it shows, else its placeholder or tool tip. A picture inside a
//          button is the button's; layout views are passed through, their children take their place.
// Tables   rows are told as they stand on show, each named by its texts.
// Threads  main.
#pragma once

#include <memory>
#include <string>

class NSView;

namespace host {

class ViewSurface;

// Once, before the first surface is made.
void installAccessibility();
// The name that is told for a view; empty where it has none.
[[nodiscard]] std::string accessibleNameOf(NSView &view);
// One line per thing: role, "name", value, state; two blanks per level. An unnamed control says "unnamed".
[[nodiscard]] std::string accessibilityDump(ViewSurface &surface);

}  // namespace host
