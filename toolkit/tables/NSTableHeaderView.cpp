#include "toolkit/tables/NSTableHeaderView.h"

#include <cmath>

#include "toolkit/tables/NSTableView.h"
#include "toolkit/views/NSScrollView.h"

HN_CLASS_TABLE(NSTableHeaderView, NSView)

namespace {
bool isTurned() { return NSView::userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::rightToLeft; }
}  // namespace

void NSTableHeaderView::initWithFrame(const NSRect &frame) {
    NSView::initWithFrame(frame.isEmpty() ? NSRect(0, 0, frame.size.width, kHeight) : frame);
}

void NSTableHeaderView::frameDidChange(const NSRect &old) {
    NSView::frameDidChange(old);
    if (old.size.height != frame().size.height)
        if (const auto scroll = std::dynamic_pointer_cast<NSScrollView>(superview()))
            scroll->tile();
}

NSRect NSTableHeaderView::headerRectOfColumn(std::int64_t column) const {
    const auto table = tableView();
    if (!table || column < 0 || column >= table->numberOfColumns())
        return {};
    const NSRect rect = table->rectOfColumn(column);
    return {rect.minX(), 0, rect.size.width, frame().size.height};
}

std::int64_t NSTableHeaderView::columnAtPoint(NSPoint point) const {
    const auto table = tableView();
    return table && point.y >= 0 && point.y < frame().size.height ? table->columnAtX(point.x) : -1;
}

void NSTableHeaderView::performClickOnColumn(std::int64_t column) {
    press(column);
    release(column);
}

void NSTableHeaderView::press(std::int64_t column) {
    pressedColumn_ = column;
    drag_ = Drag::none;
    if (const auto table = tableView(); table && column >= 0)
        table->headerPressed(column);
}

void NSTableHeaderView::release(std::int64_t column) {
    const auto table = tableView();
    const std::int64_t pressed = std::exchange(pressedColumn_, -1);
    if (!table || pressed < 0)
        return;
    if (drag_ == Drag::none && column == pressed)
        table->headerClicked(pressed);
    if (drag_ == Drag::move && column >= 0 && column != pressed && table->mayReorder(pressed, column))
        table->moveColumn_toColumn(pressed, column);
    drag_ = Drag::none;
}

void NSTableHeaderView::mouseDown(NSEvent &event) {
    const auto table = tableView();
    pressed_ = convertPoint_fromView(event.locationInWindow, nullptr);
    // The edge at the end of the line resizes a column: its right one, from right to left its left one.
    const double toEnd = isTurned() ? -1 : 1;
    const std::int64_t column = columnAtPoint(pressed_), before = columnAtPoint({pressed_.x - toEnd * kEdge, pressed_.y});
    for (const std::int64_t edge : {column, before}) {
        const NSRect rect = headerRectOfColumn(edge);
        if (!table || edge < 0 || std::abs((isTurned() ? rect.minX() : rect.maxX()) - pressed_.x) > kEdge)
            continue;
        if (const auto resized = table->columnAtIndex(edge); resized->isResizable() && resized->minWidth() < resized->maxWidth()) {
            pressedColumn_ = edge;
            widthBefore_ = resized->width();
            drag_ = Drag::resize;
            return;
        }
    }
    press(column);
}

void NSTableHeaderView::mouseDragged(NSEvent &event) {
    const auto table = tableView();
    const NSPoint point = convertPoint_fromView(event.locationInWindow, nullptr);
    if (!table || pressedColumn_ < 0)
        return;
    if (drag_ == Drag::resize)
        return table->columnAtIndex(pressedColumn_)->setWidth(widthBefore_ + (isTurned() ? pressed_.x - point.x : point.x - pressed_.x));
    if (drag_ == Drag::none && std::abs(point.x - pressed_.x) > kDragDistance)
        drag_ = table->allowsColumnReordering() && table->mayReorder(pressedColumn_, -1) ? Drag::move : Drag::refused;
}

void NSTableHeaderView::mouseUp(NSEvent &event) { release(columnAtPoint(convertPoint_fromView(event.locationInWindow, nullptr))); }

void NSTableHeaderView::drawRect(const NSRect &rect, Canvas &canvas) {
    const auto table = tableView();
    if (!table)
        return;
    for (std::int64_t column = 0; column < table->numberOfColumns(); ++column)
        if (const NSRect frame = headerRectOfColumn(column); frame.intersects(rect))
            table->columnAtIndex(column)->headerCell()->drawWithFrame_inView(frame, canvas, *this, table->sortIndicatorOfColumn(column));
}
