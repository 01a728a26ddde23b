// A bar or a spinner. Threads: main.
#pragma once

#include "toolkit/views/NSView.h"

class NSProgressIndicator : public NSView {
public:
    [[nodiscard]] double minValue() const { return min_; }
    void setMinValue(double value);
    [[nodiscard]] double maxValue() const { return max_; }
    void setMaxValue(double value);
    // Cut to minValue and maxValue when it is set; not a number counts as minValue.
    [[nodiscard]] double doubleValue() const { return value_; }
    void setDoubleValue(double value);
    void incrementBy(double delta) { setDoubleValue(value_ + delta); }
    [[nodiscard]] bool isIndeterminate() const { return isIndeterminate_; }
    void setIndeterminate(bool indeterminate);
    [[nodiscard]] bool isSpinning() const { return isSpinning_; }
    void setSpinningStyle(bool spinning);
    [[nodiscard]] bool isAnimating() const { return isAnimating_; }
    void startAnimation(const id &sender = nullptr);
    void stopAnimation(const id &sender = nullptr);
    // Hidden from hosts while it is a spinner that stands still.
    [[nodiscard]] bool isDisplayedWhenStopped() const { return isDisplayedWhenStopped_; }
    void setDisplayedWhenStopped(bool displayed);

    [[nodiscard]] NSSize intrinsicContentSize() const override;
    void drawRect(const NSRect &rect, Canvas &canvas) override;
    [[nodiscard]] std::string describeContent() const override;
    HN_DECLARE_CLASS_TABLE

private:
    double min_ = 0, max_ = 100, value_ = 0;
    bool isIndeterminate_ = false, isSpinning_ = false, isAnimating_ = false, isDisplayedWhenStopped_ = true;
};
