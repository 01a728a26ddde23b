// A push button of the kit: rounded, in colours of its own. Null colours are the theme's and white.
// Threads: main.
#pragma once

#include "toolkit/views/NSButton.h"

class RUIButton : public NSButton {
public:
    [[nodiscard]] const std::shared_ptr<NSColor> &fillColor() const { return fillColor_; }
    void setFillColor(std::shared_ptr<NSColor> color);
    [[nodiscard]] const std::shared_ptr<NSColor> &titleColor() const { return titleColor_; }
    void setTitleColor(std::shared_ptr<NSColor> color);
    [[nodiscard]] const std::shared_ptr<NSColor> &borderColor() const { return borderColor_; }
    // With a border colour the button is drawn as an outline, the title in the border's colour.
    void setBorderColor(std::shared_ptr<NSColor> color);

    void drawRect(const NSRect &rect, Canvas &canvas) override;
    HN_DECLARE_CLASS_TABLE

private:
    std::shared_ptr<NSColor> fillColor_, titleColor_, borderColor_;
};
