#include "toolkit/views/NSSegmentedControl.h"

#include <algorithm>

#include "toolkit/TextMeasurer.h"
#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSSegmentedControl, NSControl,
               .key("selectedSegment", keys::get(&NSSegmentedControl::selectedSegment), keys::set(&NSSegmentedControl::setSelectedSegment)))

void NSSegmentedControl::setSegmentCount(std::int64_t count) {
    assertMain("NSSegmentedControl setSegmentCount:");
    segments_.resize(static_cast<std::size_t>(std::max<std::int64_t>(0, count)));
    if (!has(selected_))
        selected_ = -1;
    noteChanged("segments");
    invalidateIntrinsicContentSize();
}

NSString NSSegmentedControl::labelForSegment(std::int64_t segment) const {
    return has(segment) ? segments_[static_cast<std::size_t>(segment)].label : NSString();
}

void NSSegmentedControl::setLabel_forSegment(NSString label, std::int64_t segment) {
    if (!has(segment))
        return;
    segments_[static_cast<std::size_t>(segment)].label = std::move(label);
    noteChanged("segments");
    invalidateIntrinsicContentSize();
}

std::shared_ptr<NSImage> NSSegmentedControl::imageForSegment(std::int64_t segment) const {
    return has(segment) ? segments_[static_cast<std::size_t>(segment)].image : nullptr;
}

void NSSegmentedControl::setImage_forSegment(std::shared_ptr<NSImage> image, std::int64_t segment) {
    if (!has(segment))
        return;
    segments_[static_cast<std::size_t>(segment)].image = std::move(image);
    noteChanged("segments");
}

bool NSSegmentedControl::isEnabledForSegment(std::int64_t segment) const {
    return has(segment) && segments_[static_cast<std::size_t>(segment)].enabled;
}

void NSSegmentedControl::setEnabled_forSegment(bool enabled, std::int64_t segment) {
    if (!has(segment))
        return;
    segments_[static_cast<std::size_t>(segment)].enabled = enabled;
    noteChanged("segments");
}

void NSSegmentedControl::setSelectedSegment(std::int64_t segment) {
    assertMain("NSSegmentedControl setSelectedSegment:");
    selected_ = has(segment) ? segment : -1;
    noteChanged("selectedSegment");
}

bool NSSegmentedControl::chooseSegment(std::int64_t segment) {
    if (!isEnabled() || !isEnabledForSegment(segment))
        return false;
    setSelectedSegment(segment);
    sendAction();
    return true;
}

NSSize NSSegmentedControl::intrinsicContentSize() const {
    constexpr double kInset = 10, kHeight = 24;
    double width = 0;
    for (const Segment &segment : segments_)
        width += TextMeasurer::current()->boundingRect(segment.label, font(), 0).width + 2 * kInset;
    return {width, kHeight};
}

void NSSegmentedControl::drawRect(const NSRect &, Canvas &canvas) {
    const NSRect area = bounds();
    const double width = segments_.empty() ? 0 : area.size.width / static_cast<double>(segments_.size());
    for (std::size_t i = 0; i < segments_.size(); ++i) {
        const NSRect cell(area.minX() + width * static_cast<double>(i), area.minY(), width, area.size.height);
        if (static_cast<std::int64_t>(i) == selected_)
            canvas.fillRect(cell, NSColor::lightGrayColor());
        canvas.drawImage(segments_[i].image, cell);
        canvas.drawText(segments_[i].label, cell, {font(), textColor(), NSTextAlignment::center, LineBreak::truncateTail});
    }
}

void NSSegmentedControl::mouseDown(NSEvent &event) {
    const NSPoint point = convertPoint_fromView(event.locationInWindow, nullptr);
    if (!segments_.empty() && bounds().contains(point))
        chooseSegment(static_cast<std::int64_t>((point.x - bounds().minX()) / bounds().size.width * static_cast<double>(segments_.size())));
}

std::string NSSegmentedControl::describeContent() const {
    std::string text;
    for (std::size_t i = 0; i < segments_.size(); ++i)
        text += (i ? "|" : "") + segments_[i].label.str() + (static_cast<std::int64_t>(i) == selected_ ? "*" : "");
    return text + (isEnabled() ? "" : " disabled");
}
