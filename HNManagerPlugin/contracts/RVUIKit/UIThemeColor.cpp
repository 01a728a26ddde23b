#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"

std::shared_ptr<NSColor> UIThemeColor() {
    static const std::shared_ptr<NSColor> color =
        NSColor::colorWithCalibratedRed_green_blue_alpha(10 / 255.0, 179 / 255.0, 203 / 255.0, 1);
    return color;
}
