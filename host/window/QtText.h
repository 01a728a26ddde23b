// Between the toolkit's texts and fonts and Qt's. Any thread.
#pragma once

#include <QFont>
#include <QString>

#include "toolkit/NSFont.h"
#include "toolkit/NSString.h"
#include "toolkit/TextMeasurer.h"

namespace host {

[[nodiscard]] QString qtString(const NSString &text);
[[nodiscard]] NSString toolkitString(const QString &text);
// For native widgets: in a window from right to left a text of the other direction keeps the dots at its end.
[[nodiscard]] QString inOwnDirection(const QString &text);
// Points of the toolkit are pixels of an unscaled screen. Null is the system's font; a family that is not installed gives
// way to the system's.
[[nodiscard]] QFont qtFont(const std::shared_ptr<NSFont> &font);
// The family of the system's font; set once at the start, before the first text.
void setSystemFontFamily(const QString &family);

// The widths and heights that the window's own painting has.
class QtTextMeasurer : public TextMeasurer {
public:
    [[nodiscard]] NSSize boundingRect(const NSString &text, const std::shared_ptr<NSFont> &font, double width) const override;
};

}  // namespace host
