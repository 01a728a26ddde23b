#include "toolkit/tables/NSTableRowView.h"

#include <algorithm>
#include <utility>

#include "toolkit/tables/NSTableView.h"
#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSTableRowView, NSView,
    .key("selected", keys::get(&NSTableRowView::isSelected), keys::set(&NSTableRowView::setSelected))
    .key("highlightColor", keys::get(&NSTableRowView::highlightColor), keys::set(&NSTableRowView::setHighlightColor))
    .key("selectedColor", keys::get(&NSTableRowView::selectedColor), keys::set(&NSTableRowView::setSelectedColor))
    .key("row", &NSTableRowView::row))

void NSTableRowView::initWithFrame(const NSRect &frame) {
    NSView::initWithFrame(frame);
    addTrackingArea(make<NSTrackingArea>(NSRect(), selfOf(this)));
}

void NSTableRowView::setSelected(bool selected) {
    if (isSelected_ == selected)
        return;
    isSelected_ = selected;
    noteChanged("selected");
    const std::vector<Observer> observers = observers_;
    for (const Observer &observer : observers)
        if (const auto owner = observer.owner.lock())
            observer.tell(selected);
}

void NSTableRowView::observeSelected(const std::shared_ptr<NSObject> &owner, std::function<void(bool)> observer) {
    std::erase_if(observers_, [&owner](const Observer &one) { return one.owner.expired() || one.owner.lock() == owner; });
    observers_.push_back({owner, observer});
    observer(isSelected_);
}

void NSTableRowView::dropObservers(const NSView *cell) {
    std::erase_if(observers_, [cell](const Observer &one) {
        const auto view = std::dynamic_pointer_cast<NSView>(one.owner.lock());
        return !cell || !view || view.get() == cell || view->isDescendantOf(*cell);
    });
}

void NSTableRowView::setHighlightColor(std::shared_ptr<NSColor> color) {
    highlightColor_ = std::move(color);
    noteChanged("highlightColor");
}

void NSTableRowView::setSelectedColor(std::shared_ptr<NSColor> color) {
    selectedColor_ = std::move(color);
    noteChanged("selectedColor");
}

void NSTableRowView::setMouseInside(bool inside) {
    if (mouseInside_ == inside)
        return;
    mouseInside_ = inside;
    setNeedsDisplay(true);
}

std::shared_ptr<NSView> NSTableRowView::viewAtColumn(std::int64_t column) const {
    return column >= 0 && column < static_cast<std::int64_t>(cells_.size()) ? cells_[static_cast<std::size_t>(column)] : nullptr;
}

void NSTableRowView::drawRect(const NSRect &, Canvas &canvas) {
    if (isSelected_)
        canvas.fillRect(bounds(), selectedColor_);
    else if (mouseInside_)
        canvas.fillRect(bounds(), highlightColor_);
    if (const auto table = tableView())
        table->drawInRow(*this, canvas);
}

void NSTableRowView::mouseEntered(NSEvent &) { setMouseInside(true); }
void NSTableRowView::mouseExited(NSEvent &) { setMouseInside(false); }

std::string NSTableRowView::describeContent() const { return "row " + std::to_string(row_) + (isSelected_ ? " selected" : ""); }
