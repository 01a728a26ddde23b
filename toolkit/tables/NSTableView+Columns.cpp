#include "toolkit/tables/NSTableView.h"

#include <algorithm>

#include "toolkit/views/NSScrollView.h"

std::shared_ptr<NSTableColumn> NSTableView::columnAtIndex(std::int64_t column) const {
    return column >= 0 && column < numberOfColumns() ? columns_[static_cast<std::size_t>(column)] : nullptr;
}

std::int64_t NSTableView::columnWithIdentifier(const NSString &identifier) const {
    const auto found = std::find_if(columns_.begin(), columns_.end(), [&](const auto &column) { return column->identifier() == identifier; });
    return found == columns_.end() ? -1 : found - columns_.begin();
}

std::shared_ptr<NSTableColumn> NSTableView::tableColumnWithIdentifier(const NSString &identifier) const {
    return columnAtIndex(columnWithIdentifier(identifier));
}

void NSTableView::addTableColumn(const std::shared_ptr<NSTableColumn> &column) {
    assertMain("NSTableView addTableColumn:");
    if (!column || std::find(columns_.begin(), columns_.end(), column) != columns_.end())
        return;
    column->tableView_ = selfOf(this);
    columns_.push_back(column);
    columnDidChange(true);
}

void NSTableView::removeTableColumn(const std::shared_ptr<NSTableColumn> &column) {
    assertMain("NSTableView removeTableColumn:");
    const auto found = std::find(columns_.begin(), columns_.end(), column);
    if (found == columns_.end())
        return;
    forgetAllRows();
    column->tableView_.reset();
    columns_.erase(found);
    columnDidChange(true);
}

void NSTableView::moveColumn_toColumn(std::int64_t from, std::int64_t to) {
    assertMain("NSTableView moveColumn:toColumn:");
    if (!columnAtIndex(from) || !columnAtIndex(to) || from == to)
        return;
    const auto shift = [from, to](auto &list) {
        auto one = std::move(list[static_cast<std::size_t>(from)]);
        list.erase(list.begin() + from);
        list.insert(list.begin() + to, std::move(one));
    };
    ++generation_;
    shift(columns_);
    for (const auto &[row, view] : rowViews_)
        shift(view->cells_);
    tile();
    tellColumnMoved(from, to);
}

void NSTableView::columnDidChange(bool views) {
    if (isFitting_)
        return;
    if (views)
        forgetAllRows();
    if (header_)
        header_->setNeedsDisplay(true);
    tile();
}

void NSTableView::setColumnAutoresizingStyle(NSTableViewColumnAutoresizingStyle style) {
    autoresizing_ = style;
    tile();
}

void NSTableView::setHeaderView(std::shared_ptr<NSTableHeaderView> header) {
    assertMain("NSTableView setHeaderView:");
    header_ = std::move(header);
    if (header_)
        header_->setTableView(selfOf(this));
    if (const auto clip = clipView())
        if (const auto scroll = std::dynamic_pointer_cast<NSScrollView>(clip->superview()))
            scroll->setHeaderView(header_);
    tile();
}

void NSTableView::setSortDescriptors(NSSortDescriptors descriptors) {
    assertMain("NSTableView setSortDescriptors:");
    if (descriptors == sortDescriptors_)
        return;
    const NSSortDescriptors old = std::exchange(sortDescriptors_, std::move(descriptors));
    if (header_)
        header_->setNeedsDisplay(true);
    tellSortDescriptors(old);
    if (sorting_)
        sorting_->setSortDescriptors(sortDescriptors_);
}

SortIndicator NSTableView::sortIndicatorOfColumn(std::int64_t column) const {
    const auto sorted = columnAtIndex(column);
    if (!sorted || sortDescriptors_.empty() || !sorted->sortDescriptorPrototype() ||
        sorted->sortDescriptorPrototype()->key() != sortDescriptors_.front().key())
        return SortIndicator::none;
    return sortDescriptors_.front().ascending() ? SortIndicator::ascending : SortIndicator::descending;
}

void NSTableView::headerPressed(std::int64_t column) {
    if (const auto pressed = columnAtIndex(column))
        tellHeaderPressed(pressed);
}

void NSTableView::headerClicked(std::int64_t column) {
    const auto clicked = columnAtIndex(column);
    if (!clicked)
        return;
    if (const auto &prototype = clicked->sortDescriptorPrototype()) {
        NSSortDescriptor first = *prototype;
        NSSortDescriptors descriptors = sortDescriptors_;
        if (!descriptors.empty() && descriptors.front().key() == first.key())
            first = descriptors.front().reversedSortDescriptor();
        std::erase_if(descriptors, [&first](const NSSortDescriptor &one) { return one.key() == first.key(); });
        descriptors.insert(descriptors.begin(), first);
        setSortDescriptors(std::move(descriptors));
    }
    tellColumnClicked(clicked);
}
