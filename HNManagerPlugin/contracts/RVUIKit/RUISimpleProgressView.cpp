#include "HNManagerPlugin/contracts/RVUIKit/RUISimpleProgressView.h"

#include <algorithm>

#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"
#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(RUISimpleProgressView, NSView,
    .key("progressValue", keys::get(&RUISimpleProgressView::progressValue), keys::set(&RUISimpleProgressView::setProgressValue)))

void RUISimpleProgressView::setProgressValue(std::int64_t value) {
    if (value == progressValue_)
        return;
    progressValue_ = value;
    noteChanged("progressValue");
}

void RUISimpleProgressView::setBarColor(std::shared_ptr<NSColor> color) {
    barColor_ = std::move(color);
    setNeedsDisplay();
}

void RUISimpleProgressView::drawRect(const NSRect &, Canvas &canvas) {
    static const auto track = NSColor::colorWithCalibratedWhite_alpha(0.9, 1);
    const NSSize size = bounds().size;
    const double radius = size.height / 2;
    canvas.fillRoundedRect(bounds(), radius, track);
    const double part = static_cast<double>(std::clamp<std::int64_t>(progressValue_, 0, 100)) / 100;
    if (part > 0)
        canvas.fillRoundedRect({0, 0, size.width * part, size.height}, radius, barColor_ ? barColor_ : UIThemeColor());
}

std::string RUISimpleProgressView::describeContent() const {
    return std::to_string(progressValue_) + "%";
}
