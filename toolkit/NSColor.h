// A colour: red, green, blue and alpha between 0 and 1, in the calibrated or the sRGB space. Immutable; a null colour
// stands for "none". Threads: any.
#pragma once

#include <memory>

#include "toolkit/NSObject.h"

class NSColor : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    enum class Space { calibrated, sRGB };

    [[nodiscard]] static std::shared_ptr<NSColor> colorWithCalibratedRed_green_blue_alpha(double red, double green, double blue,
                                                                                          double alpha);
    [[nodiscard]] static std::shared_ptr<NSColor> colorWithSRGBRed_green_blue_alpha(double red, double green, double blue, double alpha);
    [[nodiscard]] static std::shared_ptr<NSColor> colorWithCalibratedWhite_alpha(double white, double alpha);
    // Shared ones, calibrated.
    [[nodiscard]] static std::shared_ptr<NSColor> clearColor();
    [[nodiscard]] static std::shared_ptr<NSColor> whiteColor();
    [[nodiscard]] static std::shared_ptr<NSColor> blackColor();
    [[nodiscard]] static std::shared_ptr<NSColor> grayColor();
    [[nodiscard]] static std::shared_ptr<NSColor> lightGrayColor();
    [[nodiscard]] static std::shared_ptr<NSColor> redColor();
    [[nodiscard]] static std::shared_ptr<NSColor> blueColor();

    [[nodiscard]] Space space() const { return space_; }
    [[nodiscard]] double redComponent() const { return red_; }
    [[nodiscard]] double greenComponent() const { return green_; }
    [[nodiscard]] double blueComponent() const { return blue_; }
    [[nodiscard]] double alphaComponent() const { return alpha_; }
    // The same colour with another alpha.
    [[nodiscard]] std::shared_ptr<NSColor> colorWithAlphaComponent(double alpha) const;

    // Same space and same four components.
    [[nodiscard]] bool isEqual(const NSObject *other) const override;
    // "#AARRGGBB", each component rounded to 8 bits; a calibrated colour prints the same way.
    [[nodiscard]] NSString description() const override;
    HN_DECLARE_CLASS_TABLE

private:
    static std::shared_ptr<NSColor> of(Space space, double red, double green, double blue, double alpha);
    Space space_ = Space::calibrated;
    double red_ = 0, green_ = 0, blue_ = 0, alpha_ = 1;
};

// True where both are null or both are equal.
[[nodiscard]] bool sameColor(const std::shared_ptr<NSColor> &a, const std::shared_ptr<NSColor> &b);
