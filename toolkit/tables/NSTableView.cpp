#include "toolkit/tables/NSTableView.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "toolkit/views/ClassKeys.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSScrollView.h"
#include "toolkit/views/NSWindow.h"
#include "toolkit/views/Presenter.h"

HN_CLASS_TABLE(NSTableView, NSControl,
    .key("numberOfRows", &NSTableView::numberOfRows)
    .key("selectedRow", &NSTableView::selectedRow)
    .key("clickedRow", &NSTableView::clickedRow)
    .key("selectedRowIndexes", [](NSObject &o) { return Value(Value::List(static_cast<NSTableView &>(o).selectedRowIndexes())); },
         [](NSObject &o, const Value &v) {
             static_cast<NSTableView &>(o).selectRowIndexes_byExtendingSelection(NSIndexSet::fromList(v.list()), false);
         })
    .key("allowsMultipleSelection", keys::get(&NSTableView::allowsMultipleSelection), keys::set(&NSTableView::setAllowsMultipleSelection))
    .key("rowHeight", keys::get(&NSTableView::rowHeight), keys::set(&NSTableView::setRowHeight))
    .key("allowsMultipleSelection", keys::get(&NSTableView::allowsMultipleSelection), keys::set(&NSTableView::setAllowsMultipleSelection))
    .key("allowsEmptySelection", keys::get(&NSTableView::allowsEmptySelection), keys::set(&NSTableView::setAllowsEmptySelection))
    .selector("reloadData", &NSTableView::reloadData)
    .selector("selectAll:", [](NSObject &o, const std::vector<Value> &) {
        static_cast<NSTableView &>(o).selectAll();
        return Value();
    })
    .selector("deselectAll:", [](NSObject &o, const std::vector<Value> &) {
        static_cast<NSTableView &>(o).deselectAll();
        return Value();
    }))

namespace {

constexpr const char *kPlainRow = "NSTableRowView";

NSIndexSet range(std::int64_t from, std::int64_t to) {
    const auto [low, high] = std::minmax(from, to);
    return NSIndexSet::indexSetWithIndexesInRange({static_cast<std::size_t>(low), static_cast<std::size_t>(high - low + 1)});
}

NSIndexSet one(std::int64_t row) { return row < 0 ? NSIndexSet() : NSIndexSet::indexSetWithIndex(static_cast<std::size_t>(row)); }

// The row's new number, -1 where it is gone.
std::int64_t moved(std::int64_t row, const NSIndexSet &inserted, const NSIndexSet &removed) {
    const NSIndexSet now = one(row).afterRemoving(removed).afterInserting(inserted);
    return now.isEmpty() ? -1 : static_cast<std::int64_t>(now.firstIndex());
}

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

void NSTableView::initWithFrame(const NSRect &frame) {
    NSControl::initWithFrame(frame);
    header_ = make<NSTableHeaderView>();
    header_->setTableView(selfOf(this));
}

void NSTableView::dealloc() {
    for (const auto &controller : {content_, selection_})
        if (controller)
            controller->removeObserver(this);
    NSControl::dealloc();
}

// ---------------------------------------------------------------- what is asked and told

std::int64_t NSTableView::askNumberOfRows() {
    if (const auto source = dataSource())
        if (const std::int64_t rows = source->numberOfRowsInTableView(*this); rows >= 0)
            return rows;
    return content_ ? static_cast<std::int64_t>(content_->arrangedCount()) : 0;
}

std::shared_ptr<NSView> NSTableView::askView(const std::shared_ptr<NSTableColumn> &column, std::int64_t row) {
    const auto delegate = this->delegate();
    return delegate ? delegate->tableView_viewForTableColumn_row(*this, column, row) : makeViewWithIdentifier_owner(column->identifier());
}

std::shared_ptr<NSTableRowView> NSTableView::askRowView(std::int64_t row) {
    const auto delegate = this->delegate();
    return delegate ? delegate->tableView_rowViewForRow(*this, row) : nullptr;
}

double NSTableView::askHeight(std::int64_t row) {
    const auto delegate = this->delegate();
    return delegate ? delegate->tableView_heightOfRow(*this, row) : rowHeight_;
}

bool NSTableView::askGroupRow(std::int64_t row) {
    const auto delegate = this->delegate();
    return delegate && delegate->tableView_isGroupRow(*this, row);
}

bool NSTableView::askSelectionShouldChange() {
    const auto delegate = this->delegate();
    return !delegate || delegate->selectionShouldChangeInTableView(*this);
}

NSIndexSet NSTableView::askProposedSelection(const NSIndexSet &proposed) {
    const auto delegate = this->delegate();
    return delegate ? delegate->tableView_selectionIndexesForProposedSelection(*this, proposed) : proposed;
}

bool NSTableView::askReorder(std::int64_t column, std::int64_t to) {
    const auto delegate = this->delegate();
    return !delegate || delegate->tableView_shouldReorderColumn_toColumn(*this, column, to);
}

bool NSTableView::askEdit(const std::shared_ptr<NSTableColumn> &column, std::int64_t row) {
    const auto delegate = this->delegate();
    return !delegate || delegate->tableView_shouldEditTableColumn_row(*this, column, row);
}

void NSTableView::tellRowView(const std::shared_ptr<NSTableRowView> &view, std::int64_t row, bool added) {
    if (const auto delegate = this->delegate())
        added ? delegate->tableView_didAddRowView_forRow(*this, view, row) : delegate->tableView_didRemoveRowView_forRow(*this, view, row);
}

void NSTableView::tellHeaderPressed(const std::shared_ptr<NSTableColumn> &column) {
    if (const auto delegate = this->delegate())
        delegate->tableView_mouseDownInHeaderOfTableColumn(*this, column);
}

void NSTableView::tellColumnClicked(const std::shared_ptr<NSTableColumn> &column) {
    if (const auto delegate = this->delegate())
        delegate->tableView_didClickTableColumn(*this, column);
}

void NSTableView::tellColumnMoved(std::int64_t from, std::int64_t to) {
    if (const auto delegate = this->delegate())
        delegate->tableViewColumnDidMove(*this, from, to);
}

void NSTableView::tellSortDescriptors(const NSSortDescriptors &old) {
    if (const auto source = dataSource())
        source->tableView_sortDescriptorsDidChange(*this, old);
}

void NSTableView::tellSelectionDidChange() {
    if (const auto delegate = this->delegate())
        delegate->tableViewSelectionDidChange(*this);
}

Value NSTableView::objectValueOf(const std::shared_ptr<NSTableColumn> &column, std::int64_t row) {
    if (content_)
        return Value(objectAtRow(row));
    const auto source = dataSource();
    return source ? source->tableView_objectValueForTableColumn_row(*this, column, row) : Value();
}

id NSTableView::objectAtRow(std::int64_t row) const {
    return content_ && row >= 0 ? content_->arrangedObjectAtIndex(static_cast<std::size_t>(row)) : nullptr;
}

void NSTableView::delegateDidChange() {
    assertMain("NSTableView setDelegate:");
    reloadData();
}

// ---------------------------------------------------------------- bindings

void NSTableView::bind_toObject_withKeyPath(std::string_view binding, const std::shared_ptr<NSObject> &object, std::string_view) {
    const auto controller = std::dynamic_pointer_cast<NSArrayController>(object);
    if (!controller)
        return;
    const auto self = selfOf(this);
    if (binding == "content") {
        unbind(binding);
        content_ = controller;
        controller->addObserver(self);
        reloadData();
    } else if (binding == "selectionIndexes") {
        unbind(binding);
        selection_ = controller;
        controller->addObserver(self);
        takeSelection(controller->selectionIndexes(), false);
    } else if (binding == "sortDescriptors") {
        sorting_ = controller;
    }
}

void NSTableView::unbind(std::string_view binding) {
    if (binding == "sortDescriptors")
        sorting_ = nullptr;
    auto &bound = binding == "content" ? content_ : selection_;
    if ((binding != "content" && binding != "selectionIndexes") || !bound)
        return;
    const auto old = std::exchange(bound, nullptr);
    if (old != content_ && old != selection_)
        old->removeObserver(this);
    if (binding == "content")
        reloadData();
}

void NSTableView::bindToArrayController(const std::shared_ptr<NSArrayController> &controller) {
    bind_toObject_withKeyPath("content", controller, "arrangedObjects");
    bind_toObject_withKeyPath("selectionIndexes", controller, "selectionIndexes");
}

void NSTableView::arrangedObjectsDidChange(NSArrayController &controller, const ListChange &change) {
    if (&controller != content_.get())
        return;
    const auto now = static_cast<std::size_t>(askNumberOfRows());
    const bool isInsertion = change.kind == ListChange::Kind::inserted, isRemoval = change.kind == ListChange::Kind::removed;
    const bool follows = (isInsertion && heights_.count() + change.indexes.count() == now) ||
                         (isRemoval && heights_.count() == now + change.indexes.count());
    if (!follows)
        return reloadData();
    const NSIndexSet shifted = isInsertion ? selected_.afterInserting(change.indexes) : selected_.afterRemoving(change.indexes);
    isInsertion ? rowsCame(change.indexes) : rowsWent(change.indexes);
    takeSelection(selection_ ? selection_->selectionIndexes() : shifted, false);
    tile();
}

void NSTableView::selectionIndexesDidChange(NSArrayController &controller) {
    if (&controller == selection_.get())
        takeSelection(controller.selectionIndexes(), false);
}

void NSTableView::pushSelection() {
    if (selection_)
        selection_->setSelectionIndexes(selected_);
}

// ---------------------------------------------------------------- columns

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

// ---------------------------------------------------------------- rows

void NSTableView::setRowHeight(double height) {
    assertMain("NSTableView setRowHeight:");
    if (height == rowHeight_ || !(height >= 0))
        return;
    rowHeight_ = height;
    heights_.reset(heights_.count(), rowHeight_ + spacing_.height);
    tile();
}

void NSTableView::setIntercellSpacing(NSSize spacing) {
    spacing_ = spacing;
    heights_.reset(heights_.count(), rowHeight_ + spacing_.height);
    tile();
}

void NSTableView::reloadData() {
    assertMain("NSTableView reloadData");
    reloadWithSelection(selection_ ? selection_->selectionIndexes() : selected_, false);
}

void NSTableView::reloadWithSelection(const NSIndexSet &selection, bool push) {
    forgetAllRows();
    heights_.reset(static_cast<std::size_t>(std::max<std::int64_t>(0, askNumberOfRows())), rowHeight_ + spacing_.height);
    ++generation_;
    const std::int64_t last = numberOfRows() - 1;
    anchor_ = std::min(anchor_, last);
    takeSelection(selection, push);
    tile();
}

void NSTableView::noteNumberOfRowsChanged() {
    const auto now = static_cast<std::size_t>(std::max<std::int64_t>(0, askNumberOfRows()));
    const std::size_t before = heights_.count();
    if (now > before)
        rowsCame(NSIndexSet::indexSetWithIndexesInRange({before, now - before}));
    if (now < before)
        rowsWent(NSIndexSet::indexSetWithIndexesInRange({now, before - now}));
    takeSelection(selected_, true);
    tile();
}

void NSTableView::noteHeightOfRowsWithIndexesChanged(const NSIndexSet &rows) {
    for (const std::size_t row : rows.clippedTo(heights_.count()).indexes())
        heights_.forget(row);
    tile();
}

void NSTableView::endUpdates() {
    if (updates_ > 0 && --updates_ == 0)
        tile();
}

void NSTableView::renumberRows(const std::function<std::int64_t(std::int64_t)> &renumbered) {
    std::map<std::int64_t, std::shared_ptr<NSTableRowView>> views;
    for (auto &[row, view] : rowViews_) {
        view->row_ = renumbered(row);
        views[view->row_] = view;
    }
    rowViews_ = std::move(views);
    lead_ = renumbered(lead_);
    anchor_ = renumbered(anchor_);
}

void NSTableView::rowsCame(const NSIndexSet &rows) {
    ++generation_;
    heights_.insert(rows);
    renumberRows([&rows](std::int64_t row) { return moved(row, rows, {}); });
}

void NSTableView::rowsWent(const NSIndexSet &rows) {
    ++generation_;
    std::vector<std::int64_t> gone;
    for (const auto &[row, view] : rowViews_)
        if (rows.containsIndex(static_cast<std::size_t>(row)))
            gone.push_back(row);
    for (const std::int64_t row : gone)
        if (const auto found = rowViews_.find(row); found != rowViews_.end())
            recycleRow(found);
    heights_.remove(rows);
    renumberRows([&rows](std::int64_t row) { return moved(row, {}, rows); });
}

void NSTableView::insertRowsAtIndexes_withAnimation(const NSIndexSet &rows, unsigned animation) {
    assertMain("NSTableView insertRowsAtIndexes:withAnimation:");
    const NSIndexSet inserted = rows.clippedTo(heights_.count() + rows.count());
    if (inserted.isEmpty())
        return;
    rowAnimations_.push_back({ListChange::Kind::inserted, inserted, animation});
    const NSIndexSet shifted = selected_.afterInserting(inserted);
    rowsCame(inserted);
    shiftSelection(shifted, true);
    tile();
}

void NSTableView::removeRowsAtIndexes_withAnimation(const NSIndexSet &rows, unsigned animation) {
    assertMain("NSTableView removeRowsAtIndexes:withAnimation:");
    const NSIndexSet removed = rows.clippedTo(heights_.count());
    if (removed.isEmpty())
        return;
    rowAnimations_.push_back({ListChange::Kind::removed, removed, animation});
    const NSIndexSet shifted = selected_.afterRemoving(removed);
    rowsWent(removed);
    shiftSelection(shifted, true);
    tile();
}

void NSTableView::reloadDataForRowIndexes_columnIndexes(const NSIndexSet &rows, const NSIndexSet &columns) {
    assertMain("NSTableView reloadDataForRowIndexes:columnIndexes:");
    std::vector<std::shared_ptr<NSTableRowView>> views;
    for (const auto &[row, view] : rowViews_)
        if (rows.containsIndex(static_cast<std::size_t>(row)))
            views.push_back(view);
    for (const auto &view : views)
        for (const std::size_t column : columns.clippedTo(columns_.size()).indexes()) {
            if (view->row_ < 0 || column >= view->cells_.size())
                continue;
            recycleCell(*view, column);
            makeCell(*view, column);
        }
}

void NSTableView::reloadDataForRowIndexes(const NSIndexSet &rows) {
    reloadDataForRowIndexes_columnIndexes(rows, NSIndexSet::indexSetWithIndexesInRange({0, columns_.size()}));
}

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

// ---------------------------------------------------------------- selection

std::int64_t NSTableView::selectedRow() const {
    if (isRowSelected(lead_))
        return lead_;
    return selected_.isEmpty() ? -1 : static_cast<std::int64_t>(selected_.lastIndex());
}

void NSTableView::markSelection(const NSIndexSet &rows, bool push) {
    selected_ = rows;
    const auto views = rowViews_;
    for (const auto &[row, view] : views)
        view->setSelected(isRowSelected(row));
    if (push)
        pushSelection();
    noteChanged("selectedRowIndexes", false);
}

void NSTableView::takeSelection(const NSIndexSet &rows, bool push) {
    const NSIndexSet wanted = rows.clippedTo(heights_.count());
    if (wanted == selected_)
        return;
    NSMutableIndexSet added(wanted);
    added.removeIndexes(selected_);
    if (!added.isEmpty())
        lead_ = static_cast<std::int64_t>(added.lastIndex());
    markSelection(wanted, push);
    tellSelectionDidChange();
}

void NSTableView::shiftSelection(const NSIndexSet &rows, bool push) {
    const bool haveGone = rows.count() != selected_.count();
    if (rows != selected_)
        markSelection(rows, push);
    if (haveGone)
        tellSelectionDidChange();
}

void NSTableView::selectRowIndexes_byExtendingSelection(const NSIndexSet &rows, bool extend) {
    assertMain("NSTableView selectRowIndexes:byExtendingSelection:");
    NSMutableIndexSet wanted(rows.clippedTo(heights_.count()));
    if (wanted.isEmpty() && (extend || !allowsEmpty_))
        return;
    if (!allowsMultiple_ && wanted.count() > 1)
        wanted = one(static_cast<std::int64_t>(wanted.lastIndex()));
    const std::int64_t last = wanted.isEmpty() ? -1 : static_cast<std::int64_t>(wanted.lastIndex());
    if (extend && allowsMultiple_)
        wanted.addIndexes(selected_);
    anchor_ = last;
    takeSelection(wanted, true);
    lead_ = last;
}

void NSTableView::deselectRow(std::int64_t row) {
    assertMain("NSTableView deselectRow:");
    NSMutableIndexSet rest(selected_);
    rest.removeIndexes(one(row));
    takeSelection(rest, true);
}

void NSTableView::deselectAll(const id &) {
    assertMain("NSTableView deselectAll:");
    if (allowsEmpty_)
        takeSelection({}, true);
}

void NSTableView::selectAll(const id &) {
    assertMain("NSTableView selectAll:");
    if (allowsMultiple_ && numberOfRows() > 0)
        takeSelection(range(0, numberOfRows() - 1), true);
}

void NSTableView::proposeSelection(const NSIndexSet &proposed, std::int64_t lead) {
    if (!askSelectionShouldChange())
        return;
    const NSIndexSet wanted = !allowsMultiple_ && proposed.count() > 1 ? one(lead) : proposed;
    const NSIndexSet answer = askProposedSelection(wanted).clippedTo(heights_.count());
    if (answer.isEmpty() && !allowsEmpty_)
        return;
    takeSelection(answer, true);
    if (isRowSelected(lead))
        lead_ = lead;
}

// ---------------------------------------------------------------- a person's doing

void NSTableView::clickSelects(std::int64_t row, NSEventModifierFlags modifiers) {
    const bool toggles = (modifiers & NSEventModifierFlagCommand) != 0, extends = (modifiers & NSEventModifierFlagShift) != 0;
    if (row < 0) {
        if (!toggles && !extends)
            proposeSelection({}, -1);
        return;
    }
    if (extends && allowsMultiple_ && anchor_ >= 0)
        return proposeSelection(range(anchor_, row), row);
    NSIndexSet proposed = one(row);
    if (toggles) {
        NSMutableIndexSet turned(allowsMultiple_ ? selected_ : isRowSelected(row) ? one(row) : NSIndexSet());
        isRowSelected(row) ? turned.removeIndexes(one(row)) : turned.addIndexes(one(row));
        proposed = turned;
    }
    anchor_ = row;
    proposeSelection(proposed, row);
}

void NSTableView::clickActs(int clickCount) {
    if (clickCount < 2) {
        sendAction();
        return;
    }
    if (!doubleAction_.empty()) {
        NSApp()->sendAction_to_from(doubleAction_, target(), selfOf(this));
        return;
    }
    const auto column = columnAtIndex(clickedColumn_);
    if (column && clickedRow_ >= 0 && clickedRow_ < numberOfRows() && column->isEditable() && askEdit(column, clickedRow_))
        editColumn_row(clickedColumn_, clickedRow_);
}

void NSTableView::performClick(std::int64_t row, std::int64_t column, NSEventModifierFlags modifiers, int clickCount) {
    assertMain("NSTableView performClick");
    const auto self = selfOf(this);
    if (!isEnabled() || row >= numberOfRows())
        return;
    clickedRow_ = row;
    clickedColumn_ = column;
    clickSelects(row, modifiers);
    for (int click = 1; click <= clickCount; ++click)
        clickActs(click);
}

void NSTableView::mouseDown(NSEvent &event) {
    if (!isEnabled())
        return;
    const NSPoint point = convertPoint_fromView(event.locationInWindow, nullptr);
    clickedRow_ = rowAtPoint(point);
    clickedColumn_ = columnAtPoint(point);
    if (const auto window = this->window())
        window->makeFirstResponder(selfOf(this));
    clickTaken_ = handlesClick(point, clickedRow_);
    if (!clickTaken_ && event.clickCount < 2)
        clickSelects(clickedRow_, event.modifierFlags);
}

void NSTableView::mouseUp(NSEvent &event) {
    if (isEnabled() && !std::exchange(clickTaken_, false))
        clickActs(event.clickCount);
}

std::int64_t NSTableView::pageRows() {
    const NSRange shown = rowsInRect(viewport());
    return std::max<std::int64_t>(1, static_cast<std::int64_t>(shown.length) - 1);
}

void NSTableView::moveSelection(std::int64_t to, bool extend) {
    if (numberOfRows() == 0)
        return;
    to = std::max<std::int64_t>(0, std::min(to, numberOfRows() - 1));
    if (extend && allowsMultiple_ && anchor_ >= 0) {
        proposeSelection(range(anchor_, to), to);
    } else {
        anchor_ = to;
        proposeSelection(one(to), to);
    }
    scrollRowToVisible(selectedRow());
}

void NSTableView::keyDown(NSEvent &event) {
    const std::int64_t last = numberOfRows() - 1, now = selectedRow();
    const bool extend = event.has(NSEventModifierFlagShift);
    // Where nothing can be selected the key scrolls.
    const auto move = [&](std::int64_t to, double scrolledBy) {
        moveSelection(to, extend);
        if (selected_.isEmpty())
            scrollToPoint({viewport().minX(), viewport().minY() + scrolledBy});
    };
    constexpr double kLine = 40;
    const double page = viewport().size.height - kLine, all = heights_.total();
    switch (event.keyCode) {
    case keycode::up:
        return move(now < 0 ? last : now - 1, -kLine);
    case keycode::down:
        return move(now + 1, kLine);
    case keycode::pageUp:
        return move(now - pageRows(), -page);
    case keycode::pageDown:
        return move(now + pageRows(), page);
    case keycode::home:
        return move(0, -all);
    case keycode::end:
        return move(last, all);
    case keycode::a:
        if (event.has(NSEventModifierFlagCommand)) {
            if (allowsMultiple_ && last >= 0)
                proposeSelection(range(0, last), last);
            return;
        }
        [[fallthrough]];
    default:
        NSControl::keyDown(event);
    }
}

std::shared_ptr<NSMenu> NSTableView::menuForEvent(NSEvent &event) {
    const NSPoint point = convertPoint_fromView(event.locationInWindow, nullptr);
    clickedRow_ = rowAtPoint(point);
    clickedColumn_ = columnAtPoint(point);
    return NSControl::menuForEvent(event);
}

bool NSTableView::editColumn_row(std::int64_t column, std::int64_t row) {
    assertMain("NSTableView editColumn:row:");
    scrollRowToVisible(row);
    const auto view = viewAtColumn_row_makeIfNecessary(column, row, true);
    const auto cell = std::dynamic_pointer_cast<NSTableCellView>(view);
    const auto field = cell ? cell->textField() : std::dynamic_pointer_cast<NSTextField>(view);
    if (!field || !field->beginEditing())
        return false;
    if (const auto window = this->window())
        window->makeFirstResponder(field);
    Presenter::current()->editorDidOpen(*field);
    return true;
}

// ---------------------------------------------------------------- checking

std::string NSTableView::describeContent() const { return "rows " + std::to_string(numberOfRows()) + " selection " + selected_.toString(); }

bool NSTableView::isConsistent() {
    if (!selected_.isEmpty() && selected_.lastIndex() >= heights_.count())
        return false;
    for (const auto &[row, view] : rowViews_)
        if (view->row_ != row || row >= numberOfRows() || view->superview().get() != this || view->frame() != rectOfRow(row) ||
            view->isSelected() != isRowSelected(row) || view->cells_.size() != columns_.size())
            return false;
    const NSRange shown = rowsInRect(viewport());
    for (std::size_t row = shown.location; row < shown.location + shown.length; ++row)
        if (!rowViews_.contains(static_cast<std::int64_t>(row)))
            return false;
    if (subviews().size() != rowViews_.size())
        return false;
    return !selection_ || selection_ != content_ || content_->arrangedCount() != heights_.count() || selection_->selectionIndexes() == selected_;
}
