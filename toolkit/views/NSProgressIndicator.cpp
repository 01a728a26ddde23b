#include "toolkit/views/NSProgressIndicator.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSProgressIndicator, NSView,
               .key("doubleValue", keys::get(&NSProgressIndicator::doubleValue), keys::set(&NSProgressIndicator::setDoubleValue))
                   .key("minValue", keys::get(&NSProgressIndicator::minValue), keys::set(&NSProgressIndicator::setMinValue))
                   .key("maxValue", keys::get(&NSProgressIndicator::maxValue), keys::set(&NSProgressIndicator::setMaxValue))
                   .key("indeterminate", keys::get(&NSProgressIndicator::isIndeterminate), keys::set(&NSProgressIndicator::setIndeterminate))
                   .key("animating", &NSProgressIndicator::isAnimating)
                   .selector("startAnimation:", &NSProgressIndicator::startAnimation)
                   .selector("stopAnimation:", &NSProgressIndicator::stopAnimation))

void NSProgressIndicator::setMinValue(double value) {
    min_ = value;
    noteChanged("minValue");
    setDoubleValue(value_);
}

void NSProgressIndicator::setMaxValue(double value) {
    max_ = value;
    noteChanged("maxValue");
    setDoubleValue(value_);
}

void NSProgressIndicator::setDoubleValue(double value) {
    assertMain("NSProgressIndicator setDoubleValue:");
    const double cut = std::isnan(value) ? min_ : std::max(min_, std::min(value, max_));
    if (std::exchange(value_, cut) != cut)
        noteChanged("doubleValue");
}

#define HN_PROGRESS_SETTER(Setter, field, keyName)     \
    void NSProgressIndicator::Setter(bool value) {     \
        assertMain("NSProgressIndicator " #Setter);    \
        field = value;                                 \
        noteChanged(keyName);                          \
    }
HN_PROGRESS_SETTER(setIndeterminate, isIndeterminate_, "indeterminate")
HN_PROGRESS_SETTER(setSpinningStyle, isSpinning_, "style")
HN_PROGRESS_SETTER(setDisplayedWhenStopped, isDisplayedWhenStopped_, "displayedWhenStopped")
#undef HN_PROGRESS_SETTER

void NSProgressIndicator::startAnimation(const id &) {
    assertMain("NSProgressIndicator startAnimation:");
    isAnimating_ = true;
    noteChanged("animating");
}

void NSProgressIndicator::stopAnimation(const id &) {
    assertMain("NSProgressIndicator stopAnimation:");
    isAnimating_ = false;
    noteChanged("animating");
}

NSSize NSProgressIndicator::intrinsicContentSize() const {
    constexpr double kBarHeight = 20, kSpinner = 32;
    return isSpinning_ ? NSSize{kSpinner, kSpinner} : NSSize{NSViewNoIntrinsicMetric, kBarHeight};
}

void NSProgressIndicator::drawRect(const NSRect &, Canvas &canvas) {
    if (isSpinning_ || isIndeterminate_)
        return;   // what moves is the host's
    const NSRect area = bounds();
    canvas.fillRoundedRect(area, area.size.height / 2, NSColor::lightGrayColor());
    const double part = max_ > min_ ? (value_ - min_) / (max_ - min_) : 0;
    canvas.fillRoundedRect({area.origin, {area.size.width * part, area.size.height}}, area.size.height / 2, NSColor::blueColor());
}

std::string NSProgressIndicator::describeContent() const {
    char text[64];
    std::snprintf(text, sizeof text, "%g of %g..%g", value_, min_, max_);
    const std::string what = isIndeterminate_ || isSpinning_ ? "indeterminate" : text;
    return what + (isAnimating_ ? " animating" : "");
}
