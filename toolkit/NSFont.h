// A font: a family or face name, a size in points, bold or not. Immutable. Threads: any.
#pragma once

#include <memory>

#include "toolkit/NSObject.h"

class NSFont : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    static constexpr double kSystemFontSize = 13;

    // A size of 0 or less gives the system's size. A name is never refused: the host picks the nearest font it has.
    [[nodiscard]] static std::shared_ptr<NSFont> fontWithName_size(NSString name, double size);
    [[nodiscard]] static std::shared_ptr<NSFont> systemFontOfSize(double size);
    [[nodiscard]] static std::shared_ptr<NSFont> boldSystemFontOfSize(double size);

    [[nodiscard]] const NSString &fontName() const { return name_; }
    [[nodiscard]] double pointSize() const { return size_; }
    [[nodiscard]] bool isBold() const { return isBold_; }

    [[nodiscard]] bool isEqual(const NSObject *other) const override;
    // "Helvetica Neue 13", " bold" behind it where it is.
    [[nodiscard]] NSString description() const override;
    HN_DECLARE_CLASS_TABLE

private:
    NSString name_;
    double size_ = kSystemFontSize;
    bool isBold_ = false;
};
