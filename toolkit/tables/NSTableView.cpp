#include "toolkit/tables/NSTableView.h"

#include "toolkit/tables/RowSets.h"
#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSTableView, NSControl,
    .key("numberOfRows", &NSTableView::numberOfRows)
    .key("selectedRow", &NSTableView::selectedRow)
    .key("clickedRow", &NSTableView::clickedRow)
    .key("selectedRowIndexes", [](NSObject &o) { return Value(Value::List(static_cast<NSTableView &>(o).selectedRowIndexes())); },
         [](NSObject &o, const Value &v) {
             static_cast<NSTableView &>(o).selectRowIndexes_byExtendingSelection(NSIndexSet::fromList(v.list()), false);
         })
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
    renumberRows([&rows](std::int64_t row) { return rowSets::moved(row, rows, {}); });
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
    renumberRows([&rows](std::int64_t row) { return rowSets::moved(row, {}, rows); });
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
