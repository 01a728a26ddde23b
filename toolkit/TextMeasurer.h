// Measures texts. The window hands in its own measurer; without one, fixed metrics stand, the same on every machine.
//
// Fixed metrics  a character is 0.5 em wide, a wide one (CJK, emoji) 1 em; a line is 1.25 em high, rounded up to whole
//                points. Lines break at line feeds, at blanks where a width is given, inside a word only where it alone
//                is wider.
// Threads        any; the conversation pane measures in the background.
#pragma once

#include <memory>

#include "toolkit/NSFont.h"
#include "toolkit/NSGeometry.h"
#include "toolkit/NSString.h"

class TextMeasurer {
public:
    virtual ~TextMeasurer() = default;
    // Size of the text in points. `width` of 0 or less: no limit, lines break at line feeds alone. A null font is the
    // system's. An empty text has width 0 and the height of one line.
    [[nodiscard]] virtual NSSize boundingRect(const NSString &text, const std::shared_ptr<NSFont> &font, double width) const = 0;

    [[nodiscard]] static std::shared_ptr<TextMeasurer> current();
    // Null puts the fixed metrics back.
    static void install(std::shared_ptr<TextMeasurer> measurer);
};
