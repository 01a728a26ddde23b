// A flat bar from 0 to 100, in whole steps. Threads: main.
#pragma once

#include "toolkit/views/NSView.h"

class RUISimpleProgressView : public NSView {
public:
    [[nodiscard]] std::int64_t progressValue() const { return progressValue_; }
    // Kept as given; drawn cut to 0..100.
    void setProgressValue(std::int64_t value);
    // Null is the theme's.
    void setBarColor(std::shared_ptr<NSColor> color);

    void drawRect(const NSRect &rect, Canvas &canvas) override;
    [[nodiscard]] std::string describeContent() const override;
    HN_DECLARE_CLASS_TABLE

private:
    std::int64_t progressValue_ = 0;
    std::shared_ptr<NSColor> barColor_;
};
