#include "HNManagerPlugin/contracts/RVUIKit/RUICheckBox.h"

#include <algorithm>

#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"

HN_CLASS_TABLE(RUICheckBox, NSButton)

namespace {
constexpr double kBox = 14, kRadius = 2, kGap = 6, kDisabledAlpha = 0.4;
}

void RUICheckBox::initWithFrame(const NSRect &frame) {
    NSButton::initWithFrame(frame);
    setButtonType(NSButtonType::switchButton);
    setBordered(false);
}

void RUICheckBox::setBackgroundColor(std::shared_ptr<NSColor> color) {
    backgroundColor_ = std::move(color);
    setNeedsDisplay();
}

void RUICheckBox::setBoxFillColor(std::shared_ptr<NSColor> color) {
    boxFillColor_ = std::move(color);
    setNeedsDisplay();
}

void RUICheckBox::drawRect(const NSRect &, Canvas &canvas) {
    const NSSize size = bounds().size;
    const bool boxAlone = imagePosition() == NSCellImagePosition::imageOnly;
    const double side = std::min(kBox, std::min(size.width, size.height));
    const NSRect box{boxAlone ? (size.width - side) / 2 : 0, (size.height - side) / 2, side, side};
    canvas.saveState();
    if (!isEnabled())
        canvas.setAlpha(kDisabledAlpha);
    canvas.fillRect(bounds(), backgroundColor_);
    if (state() == NSOffState) {
        canvas.strokeRoundedRect(box, kRadius, NSColor::lightGrayColor());
    } else {
        canvas.fillRoundedRect(box, kRadius, boxFillColor_ ? boxFillColor_ : UIThemeColor());
        const auto at = [&](double x, double y) { return NSPoint{box.minX() + x * side, box.minY() + y * side}; };
        if (state() == NSMixedState) {
            canvas.strokeLine(at(0.25, 0.5), at(0.75, 0.5), NSColor::whiteColor(), 2);
        } else {
            canvas.strokeLine(at(0.2, 0.5), at(0.43, 0.27), NSColor::whiteColor(), 2);
            canvas.strokeLine(at(0.43, 0.27), at(0.82, 0.74), NSColor::whiteColor(), 2);
        }
    }
    if (!boxAlone)
        canvas.drawText(title(), {box.maxX() + kGap, 0, size.width - box.maxX() - kGap, size.height}, textStyle());
    canvas.restoreState();
}
