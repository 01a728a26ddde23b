// Shows a picture. Threads: main.
#pragma once

#include "toolkit/NSImage.h"
#include "toolkit/views/NSControl.h"

enum class NSImageScaling { proportionallyDown, axesIndependently, none, proportionallyUpOrDown };

class NSImageView : public NSControl {
public:
    [[nodiscard]] static std::shared_ptr<NSImageView> imageViewWithImage(std::shared_ptr<NSImage> image);
    [[nodiscard]] const std::shared_ptr<NSImage> &image() const { return image_; }
    void setImage(std::shared_ptr<NSImage> image);
    [[nodiscard]] NSImageScaling imageScaling() const { return scaling_; }
    void setImageScaling(NSImageScaling scaling);
    // Where the picture stands in the bounds, by the scaling; centred.
    [[nodiscard]] NSRect imageRect() const;
    [[nodiscard]] NSSize intrinsicContentSize() const override;
    void drawRect(const NSRect &rect, Canvas &canvas) override;
    [[nodiscard]] std::string describeContent() const override;
    HN_DECLARE_CLASS_TABLE

private:
    std::shared_ptr<NSImage> image_;
    NSImageScaling scaling_ = NSImageScaling::proportionallyDown;
};
