// A frame with a fill round one content view, or a separating line. Threads: main.
#pragma once

#include "toolkit/views/NSView.h"

class NSBox : public NSView {
public:
    void initWithFrame(const NSRect &frame) override;
    [[nodiscard]] const NSString &title() const { return title_; }
    void setTitle(NSString title);
    [[nodiscard]] const std::shared_ptr<NSView> &contentView() const { return content_; }
    // Null takes the old one away.
    void setContentView(const std::shared_ptr<NSView> &view);
    [[nodiscard]] bool isSeparator() const { return isSeparator_; }
    void setSeparator(bool separator);
    void setFillColor(std::shared_ptr<NSColor> color);
    void setBorderColor(std::shared_ptr<NSColor> color);
    void setBorderWidth(double width);
    [[nodiscard]] const std::shared_ptr<NSColor> &fillColor() const { return fillColor_; }
    [[nodiscard]] const std::shared_ptr<NSColor> &borderColor() const { return borderColor_; }
    [[nodiscard]] double borderWidth() const { return borderWidth_; }
    void layout() override;
    void drawRect(const NSRect &rect, Canvas &canvas) override;
    [[nodiscard]] std::string describeContent() const override;
    HN_DECLARE_CLASS_TABLE

private:
    NSString title_;
    std::shared_ptr<NSView> content_;
    std::shared_ptr<NSColor> fillColor_, borderColor_ = NSColor::lightGrayColor();
    double borderWidth_ = 1;
    bool isSeparator_ = false;
};
