// Light and dark: the palette of native parts, and what the colours that views paint with become.
//
// Views name colours for a light window. A light theme keeps them, but for coloured ones that are too pale to be read on
// white, or white on them: those are deepened. A dark theme turns lightness round and keeps the hue, but leaves coloured
// areas and the white on them as they are. What comes out has a contrast of kTextContrast or better between any text and
// the plain grounds, and between white and a coloured area, in both themes.
// Threads: main, but for the colour functions, which any thread may call.
#pragma once

#include <QColor>
#include <QPalette>

#include "toolkit/NSColor.h"

namespace host {

enum class ThemeKind { light, dark };

class Theme {
public:
    static constexpr double kTextContrast = 4.5;

    explicit Theme(ThemeKind kind) : kind_(kind) {}

    [[nodiscard]] static const Theme &current();
    // Also sets the application's palette; windows paint themselves anew by it.
    static void use(ThemeKind kind);
    // What the platform's palette asks for, whatever the program's own is.
    [[nodiscard]] static ThemeKind ofSystem();
    [[nodiscard]] static ThemeKind kindOf(const QPalette &palette);

    [[nodiscard]] ThemeKind kind() const { return kind_; }
    // Areas, edges, polygons.
    [[nodiscard]] QColor fill(const NSColor &color) const;
    // Lines of a mark; a white one stands on a coloured area.
    [[nodiscard]] QColor stroke(const NSColor &color) const;
    // Glyphs. A text that is almost white is taken to stand on a coloured area, others on the plain ground.
    [[nodiscard]] QColor text(const NSColor &color) const;
    [[nodiscard]] QColor window() const;        // behind everything
    [[nodiscard]] QColor ground() const;        // of lists and fields
    [[nodiscard]] QColor control() const;       // faces of push buttons and fields
    [[nodiscard]] QColor line() const;          // edges
    [[nodiscard]] QColor plainText() const;
    [[nodiscard]] QColor accent() const;
    [[nodiscard]] QPalette palette() const;

    // WCAG 2 contrast of two opaque colours, 1 to 21.
    [[nodiscard]] static double contrast(const QColor &a, const QColor &b);

private:
    [[nodiscard]] QColor turned(const NSColor &color) const;
    ThemeKind kind_;
};

}  // namespace host
