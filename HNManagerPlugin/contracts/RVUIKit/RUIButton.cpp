#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"

#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"

HN_CLASS_TABLE(RUIButton, NSButton)

namespace {
constexpr double kRadius = 4, kDisabledAlpha = 0.4, kHighlightedAlpha = 0.8;
}

void RUIButton::setFillColor(std::shared_ptr<NSColor> color) {
    fillColor_ = std::move(color);
    setNeedsDisplay();
}

void RUIButton::setTitleColor(std::shared_ptr<NSColor> color) {
    titleColor_ = std::move(color);
    setNeedsDisplay();
}

void RUIButton::setBorderColor(std::shared_ptr<NSColor> color) {
    borderColor_ = std::move(color);
    setNeedsDisplay();
}

void RUIButton::drawRect(const NSRect &, Canvas &canvas) {
    canvas.saveState();
    if (!isEnabled())
        canvas.setAlpha(kDisabledAlpha);
    else if (isHighlighted())
        canvas.setAlpha(kHighlightedAlpha);
    const NSRect face = bounds().insetBy(0.5, 0.5);
    std::shared_ptr<NSColor> text = titleColor_;
    if (borderColor_) {
        canvas.fillRoundedRect(face, kRadius, fillColor_ ? fillColor_ : NSColor::whiteColor());
        canvas.strokeRoundedRect(face, kRadius, borderColor_);
        if (!text)
            text = borderColor_;
    } else {
        canvas.fillRoundedRect(face, kRadius, fillColor_ ? fillColor_ : UIThemeColor());
        if (!text)
            text = NSColor::whiteColor();
    }
    TextStyle style{font(), text, NSTextAlignment::center, LineBreak::truncateTail};
    const double height = 17;   // one line of the system's font
    canvas.drawText(title(), {0, (bounds().size.height - height) / 2, bounds().size.width, height}, style);
    canvas.restoreState();
}
