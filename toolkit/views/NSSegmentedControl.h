// Buttons side by side, one of them chosen. Threads: main.
#pragma once

#include <vector>

#include "toolkit/NSImage.h"
#include "toolkit/views/NSControl.h"

class NSSegmentedControl : public NSControl {
public:
    [[nodiscard]] std::int64_t segmentCount() const { return static_cast<std::int64_t>(segments_.size()); }
    void setSegmentCount(std::int64_t count);
    // Absent and null out of range; setters out of range do nothing.
    [[nodiscard]] NSString labelForSegment(std::int64_t segment) const;
    void setLabel_forSegment(NSString label, std::int64_t segment);
    [[nodiscard]] std::shared_ptr<NSImage> imageForSegment(std::int64_t segment) const;
    void setImage_forSegment(std::shared_ptr<NSImage> image, std::int64_t segment);
    [[nodiscard]] bool isEnabledForSegment(std::int64_t segment) const;
    void setEnabled_forSegment(bool enabled, std::int64_t segment);
    // -1 without one.
    [[nodiscard]] std::int64_t selectedSegment() const { return selected_; }
    void setSelectedSegment(std::int64_t segment);
    // A person's: selects and sends the action.
    bool chooseSegment(std::int64_t segment);
    [[nodiscard]] std::int64_t integerValue() const override { return selected_; }
    void setIntegerValue(std::int64_t number) override { setSelectedSegment(number); }
    [[nodiscard]] NSSize intrinsicContentSize() const override;
    void drawRect(const NSRect &rect, Canvas &canvas) override;
    void mouseDown(NSEvent &event) override;
    [[nodiscard]] std::string describeContent() const override;
    HN_DECLARE_CLASS_TABLE

private:
    struct Segment {
        NSString label;
        std::shared_ptr<NSImage> image;
        bool enabled = true;
    };
    [[nodiscard]] bool has(std::int64_t segment) const { return segment >= 0 && segment < segmentCount(); }
    std::vector<Segment> segments_;
    std::int64_t selected_ = -1;
};
