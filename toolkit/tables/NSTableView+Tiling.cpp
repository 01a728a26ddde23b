#include "toolkit/tables/NSTableView.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "toolkit/views/NSScrollView.h"
#include "toolkit/views/NSWindow.h"

namespace {

constexpr const char *kPlainRow = "NSTableRowView";

class Flag {
public:
    explicit Flag(bool &flag) : flag_(flag), before_(std::exchange(flag, true)) {}
    ~Flag() { flag_ = before_; }
    Flag(const Flag &) = delete;
    Flag &operator=(const Flag &) = delete;

private:
    bool &flag_;
    bool before_;
};

}  // namespace

// ---------------------------------------------------------------- views

std::shared_ptr<NSView> NSTableView::makeViewWithIdentifier_owner(const NSString &identifier, const id &) { return queue_.take(identifier); }

std::shared_ptr<NSTableRowView> NSTableView::rowViewAtRow_makeIfNecessary(std::int64_t row, bool makeIfNecessary) {
    if (row < 0 || row >= numberOfRows())
        return nullptr;
    if (const auto found = rowViews_.find(row); found != rowViews_.end())
        return found->second;
    return makeIfNecessary ? makeRow(row) : nullptr;
}

std::shared_ptr<NSView> NSTableView::viewAtColumn_row_makeIfNecessary(std::int64_t column, std::int64_t row, bool makeIfNecessary) {
    const auto view = rowViewAtRow_makeIfNecessary(row, makeIfNecessary);
    return view ? view->viewAtColumn(column) : nullptr;
}

std::shared_ptr<NSTableRowView> NSTableView::makeRow(std::int64_t row) {
    const std::uint64_t generation = generation_;
    std::shared_ptr<NSTableRowView> view = askRowView(row);
    if (generation != generation_)
        return nullptr;
    if (!view)
        view = std::dynamic_pointer_cast<NSTableRowView>(queue_.take(kPlainRow));
    if (!view) {
        view = make<NSTableRowView>();
        view->setIdentifier(kPlainRow);
    }
    view->tableView_ = selfOf(this);
    view->row_ = row;
    view->cells_.assign(columns_.size(), nullptr);
    view->setSelected(isRowSelected(row));
    view->setGroupRowStyle(askGroupRow(row));
    rowViews_[row] = view;   // before the cells: whoever makes one may ask for its row view
    placeRow(*view);
    addSubview(view);
    for (std::size_t column = 0; column < columns_.size() && generation == generation_; ++column)
        makeCell(*view, column);
    if (generation == generation_)
        tellRowView(view, row, true);
    return view;
}

void NSTableView::makeCell(NSTableRowView &view, std::size_t column) {
    const auto tableColumn = columns_[column];
    if (tableColumn->isHidden())
        return;
    const std::uint64_t generation = generation_;
    const std::shared_ptr<NSView> cell = askView(tableColumn, view.row_);
    if (!cell || generation != generation_)
        return;
    view.cells_[column] = cell;
    view.addSubview(cell);
    placeRow(view);
    if (const auto shown = std::dynamic_pointer_cast<NSTableCellView>(cell))
        shown->setObjectValue(objectValueOf(tableColumn, view.row_));
}

void NSTableView::placeRow(NSTableRowView &view) {
    const NSRect rect = rectOfRow(view.row_);
    view.setFrame(rect);
    for (std::size_t column = 0; column < view.cells_.size() && column < columns_.size(); ++column)
        if (const auto &cell = view.cells_[column])
            cell->setFrame(frameOfCellAtColumn_row(static_cast<std::int64_t>(column), view.row_).offsetBy(-rect.minX(), -rect.minY()));
}

void NSTableView::recycleCell(NSTableRowView &view, std::size_t column) {
    const std::shared_ptr<NSView> cell = std::exchange(view.cells_[column], nullptr);
    if (!cell)
        return;
    view.dropObservers(cell.get());
    cell->removeFromSuperview();
    if (const auto shown = std::dynamic_pointer_cast<NSTableCellView>(cell)) {
        shown->setObjectValue({});
        shown->prepareForReuse();
    }
    queue_.put(cell);
}

void NSTableView::recycleRow(std::map<std::int64_t, std::shared_ptr<NSTableRowView>>::iterator found) {
    const auto [row, view] = *found;
    rowViews_.erase(found);
    for (std::size_t column = 0; column < view->cells_.size(); ++column)
        recycleCell(*view, column);
    view->dropObservers(nullptr);
    view->removeFromSuperview();
    view->row_ = -1;
    view->setMouseInside(false);
    view->prepareForReuse();
    queue_.put(view);
    tellRowView(view, row, false);
}

void NSTableView::forgetAllRows() {
    ++generation_;
    while (!rowViews_.empty())
        recycleRow(rowViews_.begin());
}

std::shared_ptr<NSTableRowView> NSTableView::rowViewOf(const std::shared_ptr<NSView> &view) const {
    for (auto above = view; above; above = above->superview())
        if (const auto row = std::dynamic_pointer_cast<NSTableRowView>(above); row && row->superview().get() == this)
            return row;
    return nullptr;
}

std::int64_t NSTableView::rowForView(const std::shared_ptr<NSView> &view) const {
    const auto row = rowViewOf(view);
    return row ? row->row_ : -1;
}

std::int64_t NSTableView::columnForView(const std::shared_ptr<NSView> &view) const {
    const auto row = rowViewOf(view);
    if (!row)
        return -1;
    for (std::size_t column = 0; column < row->cells_.size(); ++column)
        if (const auto &cell = row->cells_[column]; cell && (cell == view || view->isDescendantOf(*cell)))
            return static_cast<std::int64_t>(column);
    return -1;
}

void NSTableView::enumerateAvailableRowViewsUsingBlock(const std::function<void(const std::shared_ptr<NSTableRowView> &, std::int64_t)> &block) {
    const auto views = rowViews_;
    for (const auto &[row, view] : views)
        block(view, row);
}

// ---------------------------------------------------------------- geometry

std::shared_ptr<NSClipView> NSTableView::clipView() const { return std::dynamic_pointer_cast<NSClipView>(superview()); }

NSRect NSTableView::viewport() const {
    if (const auto clip = clipView()) {
        if (const NSRect shown = clip->documentVisibleRect(); !shown.isEmpty())
            return shown;
    } else if (superview() && !bounds().isEmpty()) {
        return bounds();
    }
    return {offset_, {kViewportWidth, kViewportHeight}};
}

double NSTableView::columnsWidth() const {
    double width = 0;
    for (const auto &column : columns_)
        if (!column->isHidden())
            width += column->width() + spacing_.width;
    return width;
}

double NSTableView::fullWidth() const { return std::max(frame().size.width, columnsWidth()); }

bool NSTableView::isRightToLeft() { return userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::rightToLeft; }

NSRect NSTableView::rectOfColumn(std::int64_t index) const {
    if (index < 0 || index >= numberOfColumns())
        return {};
    double x = 0;
    for (std::int64_t i = 0; i < index; ++i)
        if (const auto &before = columns_[static_cast<std::size_t>(i)]; !before->isHidden())
            x += before->width() + spacing_.width;
    const auto &column = columns_[static_cast<std::size_t>(index)];
    const double width = column->isHidden() ? 0 : column->width() + spacing_.width;
    return {isRightToLeft() ? fullWidth() - x - width : x, 0, width, heights_.total()};
}

std::int64_t NSTableView::columnAtX(double x) const {
    if (isRightToLeft())   // a column's left edge is its own, as it is from left to right
        x = std::nextafter(fullWidth() - x, 0.0);
    double right = 0;
    for (std::size_t i = 0; i < columns_.size() && x >= 0; ++i) {
        if (columns_[i]->isHidden())
            continue;
        right += columns_[i]->width() + spacing_.width;
        if (x < right)
            return static_cast<std::int64_t>(i);
    }
    return -1;
}

double NSTableView::knownHeight(std::int64_t row) {
    const auto index = static_cast<std::size_t>(row);
    if (!heights_.isKnown(index)) {
        const std::uint64_t generation = generation_;
        const double height = askHeight(row);
        if (generation != generation_)
            return rowHeight_ + spacing_.height;
        heights_.set(index, (std::isfinite(height) && height >= 0 ? height : rowHeight_) + spacing_.height);
    }
    return heights_.height(index);
}

NSRect NSTableView::rectOfRow(std::int64_t row) {
    if (row < 0 || row >= numberOfRows())
        return {};
    const double height = knownHeight(row);
    return {0, heights_.top(static_cast<std::size_t>(row)), fullWidth(), height};
}

NSRect NSTableView::frameOfCellAtColumn_row(std::int64_t column, std::int64_t row) {
    if (row < 0 || row >= numberOfRows() || column < 0 || column >= numberOfColumns())
        return {};
    const NSRect across = rectOfColumn(column), down = rectOfRow(row);
    return {across.minX() + spacing_.width / 2, down.minY() + spacing_.height / 2, std::max(0.0, across.size.width - spacing_.width),
            std::max(0.0, down.size.height - spacing_.height)};
}

std::int64_t NSTableView::rowAtPoint(NSPoint point) {
    if (point.y < 0 || point.x < 0 || point.x >= std::max(frame().size.width, viewport().maxX()))
        return -1;
    auto row = static_cast<std::int64_t>(heights_.rowAt(point.y));
    while (row < numberOfRows() && heights_.top(static_cast<std::size_t>(row)) + knownHeight(row) <= point.y)
        ++row;   // the row turned out to be lower than estimated
    return row < numberOfRows() ? row : -1;
}

NSRange NSTableView::rowsInRect(const NSRect &rect) {
    if (rect.isEmpty() || rect.maxY() <= 0 || heights_.count() == 0)
        return {};
    const std::size_t first = heights_.rowAt(rect.minY());
    std::size_t last = first;
    while (last < heights_.count() && heights_.top(last) < rect.maxY())
        ++last;
    return first < heights_.count() ? NSRange{first, last - first} : NSRange{};
}

NSRange NSTableView::measureVisibleRows() {
    const NSRect shown = viewport();
    const std::uint64_t generation = generation_;
    std::size_t first = heights_.rowAt(shown.minY());
    while (first < heights_.count() && heights_.top(first) + knownHeight(static_cast<std::int64_t>(first)) <= shown.minY() && generation == generation_)
        ++first;
    std::size_t end = first;
    while (end < heights_.count() && heights_.top(end) < shown.maxY() && generation == generation_)
        knownHeight(static_cast<std::int64_t>(end++));
    return {first, end - first};
}

void NSTableView::fitColumns() {
    if (autoresizing_ == NSTableViewColumnAutoresizingStyle::none || !superview() || (clipView() ? clipView()->bounds() : bounds()).isEmpty())
        return;
    std::vector<NSTableColumn *> shown;
    for (const auto &column : columns_)
        if (!column->isHidden())
            shown.push_back(column.get());
    if (shown.empty())
        return;
    const Flag fitting(isFitting_);
    const double missing = viewport().size.width - columnsWidth();
    if (autoresizing_ == NSTableViewColumnAutoresizingStyle::lastColumnOnly)
        return shown.back()->setWidth(shown.back()->width() + missing);
    for (NSTableColumn *column : shown)
        column->setWidth(column->width() + missing / static_cast<double>(shown.size()));
}

void NSTableView::fitSize() {
    const auto clip = clipView();
    if (!clip)
        return;
    const Flag fitting(isFitting_);
    const NSSize shown = viewport().size;
    const double width = std::max(shown.width, columnsWidth());
    NSPoint offset = clip->bounds().origin;
    if (!isRightToLeft() || (width == frame().size.width && shown.width == shownWidth_))
        beyondRight_ = width - clip->bounds().maxX();
    else
        offset.x = width - shown.width - beyondRight_;
    shownWidth_ = shown.width;
    setFrame({0, 0, width, std::max(shown.height, heights_.total())});
    clip->scrollToPoint(offset);   // the end may have come nearer
    if (header_)
        header_->setBoundsOrigin({clip->bounds().minX(), 0});
}

void NSTableView::tile() {
    if (updates_ > 0 || isTiling_) {
        needsTile_ = true;
        return;
    }
    const Flag tiling(isTiling_);
    constexpr int kRounds = 16;   // a delegate that changes the table at every call shall not hang it
    for (int round = 0; round < kRounds; ++round) {
        needsTile_ = false;
        tileOnce();
        if (!needsTile_)
            return;
    }
}

// Ends early, to be called again, as soon as a call of the delegate changed rows or columns.
void NSTableView::tileOnce() {
    const auto changed = [this, generation = generation_] { return generation != generation_ && (needsTile_ = true); };
    fitColumns();
    fitSize();
    const NSRange visible = measureVisibleRows();
    fitSize();
    if (changed())
        return;
    const auto window = this->window();
    const auto focus = std::dynamic_pointer_cast<NSView>(window ? window->firstResponder() : nullptr);
    std::vector<std::int64_t> leaving;
    for (const auto &[row, view] : rowViews_) {
        const auto index = static_cast<std::size_t>(row);
        const bool isEdited = focus && focus->isDescendantOf(*view);
        if ((index < visible.location || index >= visible.location + visible.length) && !isEdited)
            leaving.push_back(row);
    }
    for (const std::int64_t row : leaving) {
        if (const auto found = rowViews_.find(row); found != rowViews_.end())
            recycleRow(found);
        if (changed())
            return;
    }
    for (std::size_t row = visible.location; row < visible.location + visible.length; ++row) {
        if (!rowViews_.contains(static_cast<std::int64_t>(row)))
            makeRow(static_cast<std::int64_t>(row));
        if (changed())
            return;
    }
    const auto views = rowViews_;
    for (const auto &[row, view] : views)
        placeRow(*view);
}

void NSTableView::scrollToPoint(NSPoint offset) {
    if (const auto clip = clipView()) {
        clip->scrollToPoint(offset);
    } else {
        const NSRect shown = viewport();
        offset_ = {std::max(0.0, std::min(offset.x, columnsWidth() - shown.size.width)),
                   std::max(0.0, std::min(offset.y, heights_.total() - shown.size.height))};
    }
    tile();
}

void NSTableView::scrollRowToVisible(std::int64_t row) {
    assertMain("NSTableView scrollRowToVisible:");
    if (row < 0 || row >= numberOfRows())
        return;
    // Rows above it that come into view turn out higher than estimated and may push it out again; at the top it stays.
    constexpr int kTries = 4;
    for (int i = 0; i <= kTries; ++i) {
        const NSRect rect = rectOfRow(row), shown = viewport();
        if (rect.minY() >= shown.minY() && rect.maxY() <= shown.maxY())
            return;
        const bool toTop = i == kTries || rect.minY() < shown.minY() || rect.size.height > shown.size.height;
        scrollToPoint({shown.minX(), toTop ? rect.minY() : rect.maxY() - shown.size.height});
        if (toTop && viewport().minY() == shown.minY())
            return;
    }
}

void NSTableView::viewDidMoveToSuperview() {
    NSControl::viewDidMoveToSuperview();
    if (const auto clip = clipView()) {
        clip->visibleRectDidChange = [weak = weakOf(this)] { tell(weak, [](NSTableView &table) { table.tile(); }); };
        if (const auto scroll = std::dynamic_pointer_cast<NSScrollView>(clip->superview()))
            scroll->setHeaderView(header_);
    }
    if (superview())
        tile();
}

void NSTableView::setFrame(const NSRect &wanted) {
    const NSSize before = frame().size;
    NSControl::setFrame(wanted);
    if (!isFitting_ && frame().size != before)
        tile();
}

void NSTableView::drawRect(const NSRect &rect, Canvas &canvas) { canvas.fillRect(rect, backgroundColor_); }

void NSTableView::setBackgroundColor(std::shared_ptr<NSColor> color) {
    backgroundColor_ = std::move(color);
    noteChanged("backgroundColor");
}
