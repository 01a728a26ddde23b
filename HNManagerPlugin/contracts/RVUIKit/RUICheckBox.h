// A check box of the kit: a filled box with a mark, or a bar where the state is mixed. Threads: main.
#pragma once

#include "toolkit/views/NSButton.h"

class RUICheckBox : public NSButton {
public:
    void initWithFrame(const NSRect &frame) override;

    // Behind the whole control; null leaves it clear.
    [[nodiscard]] const std::shared_ptr<NSColor> &backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(std::shared_ptr<NSColor> color);
    // Of the box while the state is on or mixed; null is the theme's.
    [[nodiscard]] const std::shared_ptr<NSColor> &boxFillColor() const { return boxFillColor_; }
    void setBoxFillColor(std::shared_ptr<NSColor> color);

    void drawRect(const NSRect &rect, Canvas &canvas) override;
    HN_DECLARE_CLASS_TABLE

private:
    std::shared_ptr<NSColor> backgroundColor_, boxFillColor_;
};
