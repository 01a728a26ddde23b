#include "toolkit/NSColor.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

HN_CLASS_TABLE(NSColor, NSObjectTable, .key("alphaComponent", &NSColor::alphaComponent))

std::shared_ptr<NSColor> NSColor::of(Space space, double red, double green, double blue, double alpha) {
    const auto color = make<NSColor>();
    color->space_ = space;
    color->red_ = red;
    color->green_ = green;
    color->blue_ = blue;
    color->alpha_ = std::clamp(alpha, 0.0, 1.0);
    return color;
}

std::shared_ptr<NSColor> NSColor::colorWithCalibratedRed_green_blue_alpha(double red, double green, double blue, double alpha) {
    return of(Space::calibrated, red, green, blue, alpha);
}
std::shared_ptr<NSColor> NSColor::colorWithSRGBRed_green_blue_alpha(double red, double green, double blue, double alpha) {
    return of(Space::sRGB, red, green, blue, alpha);
}
std::shared_ptr<NSColor> NSColor::colorWithCalibratedWhite_alpha(double white, double alpha) {
    return of(Space::calibrated, white, white, white, alpha);
}

std::shared_ptr<NSColor> NSColor::clearColor() {
    static const auto color = colorWithCalibratedWhite_alpha(0, 0);
    return color;
}
std::shared_ptr<NSColor> NSColor::whiteColor() {
    static const auto color = colorWithCalibratedWhite_alpha(1, 1);
    return color;
}
std::shared_ptr<NSColor> NSColor::blackColor() {
    static const auto color = colorWithCalibratedWhite_alpha(0, 1);
    return color;
}
std::shared_ptr<NSColor> NSColor::grayColor() {
    static const auto color = colorWithCalibratedWhite_alpha(0.5, 1);
    return color;
}
std::shared_ptr<NSColor> NSColor::lightGrayColor() {
    static const auto color = colorWithCalibratedWhite_alpha(2.0 / 3, 1);
    return color;
}
std::shared_ptr<NSColor> NSColor::redColor() {
    static const auto color = colorWithCalibratedRed_green_blue_alpha(1, 0, 0, 1);
    return color;
}
std::shared_ptr<NSColor> NSColor::blueColor() {
    static const auto color = colorWithCalibratedRed_green_blue_alpha(0, 0, 1, 1);
    return color;
}

std::shared_ptr<NSColor> NSColor::colorWithAlphaComponent(double alpha) const { return of(space_, red_, green_, blue_, alpha); }

bool NSColor::isEqual(const NSObject *other) const {
    const auto *color = dynamic_cast<const NSColor *>(other);
    return color && space_ == color->space_ && red_ == color->red_ && green_ == color->green_ && blue_ == color->blue_ &&
           alpha_ == color->alpha_;
}

NSString NSColor::description() const {
    const auto byte = [](double part) { return static_cast<unsigned>(std::lround(std::clamp(part, 0.0, 1.0) * 255)); };
    char text[10];
    std::snprintf(text, sizeof text, "#%02X%02X%02X%02X", byte(alpha_), byte(red_), byte(green_), byte(blue_));
    return NSString(text);
}

bool sameColor(const std::shared_ptr<NSColor> &a, const std::shared_ptr<NSColor> &b) {
    return a == b || (a && b && a->isEqual(b.get()));
}
