#include "toolkit/tables/NSOutlineView.h"

#include <algorithm>
#include <utility>

#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSOutlineView, NSTableView,
    .key("indentationPerLevel", keys::get(&NSOutlineView::indentationPerLevel), keys::set(&NSOutlineView::setIndentationPerLevel)))

std::shared_ptr<NSView> NSOutlineViewDelegate::outlineView_viewForTableColumn_item(NSOutlineView &outline,
                                                                                   const std::shared_ptr<NSTableColumn> &column, const Item &) {
    return outline.makeViewWithIdentifier_owner(column->identifier());
}

double NSOutlineViewDelegate::outlineView_heightOfRowByItem(NSOutlineView &outline, const Item &) { return outline.rowHeight(); }

void NSOutlineView::dealloc() {
    for (const auto &tree : {tree_, treeSelection_})
        if (tree)
            tree->removeObserver(this);
    NSTableView::dealloc();
}

// ---------------------------------------------------------------- bindings

void NSOutlineView::bind_toObject_withKeyPath(std::string_view binding, const std::shared_ptr<NSObject> &object, std::string_view) {
    const auto tree = std::dynamic_pointer_cast<NSTreeController>(object);
    if (!tree || (binding != "content" && binding != "selectionIndexPaths"))
        return;
    unbind(binding);
    tree->addObserver(selfOf(this));
    if (binding == "content") {
        tree_ = tree;
        rebuild();
    } else {
        treeSelection_ = tree;
        takeSelection(rowsOfSelectedNodes(), false);
    }
}

void NSOutlineView::unbind(std::string_view binding) {
    if (binding != "content" && binding != "selectionIndexPaths")
        return;
    const auto old = std::exchange(binding == "content" ? tree_ : treeSelection_, nullptr);
    if (!old)
        return;
    if (old != tree_ && old != treeSelection_)
        old->removeObserver(this);
    if (binding == "content")
        rebuild();
}

void NSOutlineView::bindToTreeController(const std::shared_ptr<NSTreeController> &controller) {
    bind_toObject_withKeyPath("content", controller, "arrangedObjects");
    bind_toObject_withKeyPath("selectionIndexPaths", controller, "selectionIndexPaths");
}

void NSOutlineView::arrangedNodesDidChange(NSTreeController &controller, const TreeChange &) {
    if (&controller == tree_.get())
        rebuild();
}

void NSOutlineView::selectionIndexPathsDidChange(NSTreeController &controller) {
    if (&controller == treeSelection_.get())
        takeSelection(rowsOfSelectedNodes(), false);
}

NSIndexSet NSOutlineView::rowsOfSelectedNodes() const {
    NSMutableIndexSet rows;
    if (treeSelection_)
        for (const Item &node : treeSelection_->selectedNodes())
            if (const std::int64_t row = rowForItem(node); row >= 0)
                rows.addIndex(static_cast<std::size_t>(row));
    return rows;
}

void NSOutlineView::pushSelection() {
    if (!treeSelection_)
        return;
    NSTreeNodes nodes;
    for (const std::size_t row : selectedRowIndexes().indexes())
        nodes.push_back(itemAtRow(static_cast<std::int64_t>(row)));
    treeSelection_->setSelectedNodes(std::move(nodes));
}

// ---------------------------------------------------------------- rows

std::vector<NSOutlineView::Row> NSOutlineView::openRowsBelow(const Item &item, std::int64_t level) const {
    struct Frame {
        Item node;
        std::size_t next;
    };
    std::vector<Row> rows;
    const Item top = item ? item : tree_ ? tree_->arrangedObjects() : nullptr;
    if (!top)
        return rows;
    std::vector<Frame> stack{{top, 0}};
    while (!stack.empty()) {
        Frame &frame = stack.back();
        const Item child = frame.node->childAtIndex(frame.next++);
        if (!child) {
            stack.pop_back();
            continue;
        }
        rows.push_back({child, level + static_cast<std::int64_t>(stack.size()) - 1});
        if (isItemExpanded(child))
            stack.push_back({child, 0});
    }
    return rows;
}

void NSOutlineView::renumber(std::size_t from) {
    for (std::size_t row = from; row < rows_.size(); ++row)
        rowOf_[rows_[row].item.get()] = row;
}

void NSOutlineView::rebuild() {
    std::erase_if(open_, [](const auto &entry) { return entry.second.expired() || !entry.second.lock()->isInTree(); });
    rows_ = openRowsBelow(nullptr, 0);
    rowOf_.clear();
    renumber(0);
    reloadWithSelection(treeSelection_ ? rowsOfSelectedNodes() : selectedRowIndexes(), false);
}

NSOutlineView::Item NSOutlineView::itemAtRow(std::int64_t row) const {
    return row >= 0 && row < static_cast<std::int64_t>(rows_.size()) ? rows_[static_cast<std::size_t>(row)].item : nullptr;
}

std::int64_t NSOutlineView::rowForItem(const Item &item) const {
    const auto found = rowOf_.find(item.get());
    return found == rowOf_.end() ? -1 : static_cast<std::int64_t>(found->second);
}

std::int64_t NSOutlineView::levelForRow(std::int64_t row) const { return itemAtRow(row) ? rows_[static_cast<std::size_t>(row)].level : -1; }

NSOutlineView::Item NSOutlineView::parentForItem(const Item &item) const {
    const Item parent = item ? item->parentNode() : nullptr;
    return tree_ && parent == tree_->arrangedObjects() ? nullptr : parent;
}

std::int64_t NSOutlineView::numberOfChildrenOfItem(const Item &item) const {
    const Item node = item ? item : tree_ ? tree_->arrangedObjects() : nullptr;
    return node ? static_cast<std::int64_t>(node->childCount()) : 0;
}

// ---------------------------------------------------------------- opening

bool NSOutlineView::isItemExpanded(const Item &item) const {
    const auto found = open_.find(item.get());
    return found != open_.end() && found->second.lock() == item && isExpandable(item);
}

std::vector<NSOutlineView::Item> NSOutlineView::foldersFrom(const Item &item, bool deep) const {
    std::vector<Item> folders;
    const Item top = item ? item : tree_ ? tree_->arrangedObjects() : nullptr;
    NSTreeNodes waiting;
    if (item)
        waiting.push_back(item);
    else if (top)
        waiting = top->childNodes();
    std::reverse(waiting.begin(), waiting.end());
    while (!waiting.empty()) {
        const Item node = std::move(waiting.back());
        waiting.pop_back();
        if (isExpandable(node))
            folders.push_back(node);
        if (!deep)
            continue;
        NSTreeNodes children = node->childNodes();
        waiting.insert(waiting.end(), children.rbegin(), children.rend());
    }
    return folders;
}

bool NSOutlineView::expandOne(const Item &item) {
    if (!isExpandable(item) || isItemExpanded(item))
        return false;
    const auto delegate = this->delegate();
    if (delegate && !delegate->outlineView_shouldExpandItem(*this, item))
        return false;
    if (!isExpandable(item) || isItemExpanded(item))
        return false;   // the delegate did it, or took the item away
    open_[item.get()] = item;
    const std::int64_t row = rowForItem(item);
    if (row >= 0) {
        const auto at = static_cast<std::size_t>(row) + 1;
        std::vector<Row> come = openRowsBelow(item, levelForRow(row) + 1);
        const NSIndexSet indexes = NSIndexSet::indexSetWithIndexesInRange({at, come.size()});
        rows_.insert(rows_.begin() + row + 1, std::make_move_iterator(come.begin()), std::make_move_iterator(come.end()));
        renumber(at);
        const NSIndexSet shifted = selectedRowIndexes().afterInserting(indexes);
        rowsCame(indexes);
        shiftSelection(shifted, false);   // the same nodes
        reloadItem(item);
        tile();
    }
    if (delegate)
        delegate->outlineViewItemDidExpand(*this, item);
    return true;
}

bool NSOutlineView::collapseOne(const Item &item) {
    if (!isItemExpanded(item))
        return false;
    const auto delegate = this->delegate();
    if (delegate && !delegate->outlineView_shouldCollapseItem(*this, item))
        return false;
    if (!isItemExpanded(item))
        return false;
    const std::int64_t row = rowForItem(item);
    open_.erase(item.get());
    if (row >= 0) {
        const auto at = static_cast<std::size_t>(row) + 1;
        std::size_t end = at;
        while (end < rows_.size() && rows_[end].level > rows_[at - 1].level)
            rowOf_.erase(rows_[end++].item.get());
        const NSIndexSet indexes = NSIndexSet::indexSetWithIndexesInRange({at, end - at});
        rows_.erase(rows_.begin() + row + 1, rows_.begin() + static_cast<std::ptrdiff_t>(end));
        renumber(at);
        const NSIndexSet shifted = selectedRowIndexes().afterRemoving(indexes);
        rowsWent(indexes);
        shiftSelection(shifted, false);   // the tree controller keeps what is hidden
        reloadItem(item);
        tile();
    }
    if (delegate)
        delegate->outlineViewItemDidCollapse(*this, item);
    return true;
}

void NSOutlineView::expandItem(const Item &item, bool expandChildren) {
    assertMain("NSOutlineView expandItem:");
    beginUpdates();
    for (const Item &folder : foldersFrom(item, expandChildren))
        expandOne(folder);
    endUpdates();
}

void NSOutlineView::collapseItem(const Item &item, bool collapseChildren) {
    assertMain("NSOutlineView collapseItem:");
    std::vector<Item> folders = foldersFrom(item, collapseChildren);
    beginUpdates();
    for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder)   // from below, so that each row is there
        collapseOne(*folder);
    endUpdates();
}

void NSOutlineView::reloadItem(const Item &item, bool reloadChildren) {
    if (!item && !reloadChildren)
        return;
    if (!item)
        return reloadDataForRowIndexes(NSIndexSet::indexSetWithIndexesInRange({0, rows_.size()}));
    const std::int64_t row = rowForItem(item);
    if (row < 0)
        return;
    std::size_t end = static_cast<std::size_t>(row) + 1;
    while (reloadChildren && end < rows_.size() && rows_[end].level > levelForRow(row))
        ++end;
    reloadDataForRowIndexes(NSIndexSet::indexSetWithIndexesInRange({static_cast<std::size_t>(row), end - static_cast<std::size_t>(row)}));
}

// ---------------------------------------------------------------- geometry

void NSOutlineView::setIndentationPerLevel(double points) {
    indentation_ = points;
    tile();
}

std::shared_ptr<NSTableColumn> NSOutlineView::outlineTableColumn() const {
    const auto column = outlineColumn_.lock();
    return column ? column : columnAtIndex(0);
}

void NSOutlineView::setOutlineTableColumn(const std::shared_ptr<NSTableColumn> &column) {
    outlineColumn_ = column;
    tile();
}

NSRect NSOutlineView::frameOfOutlineCellAtRow(std::int64_t row) {
    const Item item = itemAtRow(row);
    const auto column = outlineTableColumn();
    if (!isExpandable(item) || !column)
        return {};
    const NSRect cell = NSTableView::frameOfCellAtColumn_row(columnWithIdentifier(column->identifier()), row);
    const double indent = indentation_ * static_cast<double>(levelForRow(row));
    return {isRightToLeft() ? cell.maxX() - indent - indentation_ : cell.minX() + indent, cell.minY(), indentation_, cell.size.height};
}

NSRect NSOutlineView::frameOfCellAtColumn_row(std::int64_t column, std::int64_t row) {
    const NSRect cell = NSTableView::frameOfCellAtColumn_row(column, row);
    if (!itemAtRow(row) || columnAtIndex(column) != outlineTableColumn())
        return cell;
    // Leaves leave the mark's place free as well, so that texts of one level stand under one another.
    const double indent = std::min(cell.size.width, indentation_ * static_cast<double>(levelForRow(row) + 1));
    return {isRightToLeft() ? cell.minX() : cell.minX() + indent, cell.minY(), cell.size.width - indent, cell.size.height};
}

bool NSOutlineView::handlesClick(NSPoint point, std::int64_t row) {
    const Item item = itemAtRow(row);
    if (!isExpandable(item) || !frameOfOutlineCellAtRow(row).contains(point))
        return false;
    isItemExpanded(item) ? collapseItem(item) : expandItem(item);
    return true;
}

// A triangle at the beginning of the mark's place: it points at what it opens, or down where that is open.
void NSOutlineView::drawInRow(NSTableRowView &view, Canvas &canvas) {
    constexpr double kHigh = 4, kDeep = 2.5;
    const NSRect place = frameOfOutlineCellAtRow(view.row());
    if (place.isEmpty())
        return;
    const double ahead = isRightToLeft() ? -1 : 1;
    const double x = (isRightToLeft() ? place.maxX() : place.minX()) + ahead * kDeep;
    const double y = place.minY() + place.size.height / 2 - rectOfRow(view.row()).minY();
    const bool isOpen = isItemExpanded(itemAtRow(view.row()));
    canvas.fillPolygon(isOpen ? std::vector<NSPoint>{{x - kHigh, y - kDeep}, {x + kHigh, y - kDeep}, {x, y + kDeep}}
                              : std::vector<NSPoint>{{x - ahead * kDeep, y - kHigh}, {x - ahead * kDeep, y + kHigh}, {x + ahead * kDeep, y}},
                       NSColor::grayColor());
}

void NSOutlineView::keyDown(NSEvent &event) {
    const Item item = itemAtRow(selectedRow());
    const auto open = isRightToLeft() ? keycode::left : keycode::right, close = isRightToLeft() ? keycode::right : keycode::left;
    if (event.keyCode == open && item)
        return expandItem(item);
    if (event.keyCode == close && item)
        return collapseItem(item);
    NSTableView::keyDown(event);
}

// ---------------------------------------------------------------- what is asked and told

std::shared_ptr<NSView> NSOutlineView::askView(const std::shared_ptr<NSTableColumn> &column, std::int64_t row) {
    const auto delegate = this->delegate();
    return delegate ? delegate->outlineView_viewForTableColumn_item(*this, column, itemAtRow(row))
                    : makeViewWithIdentifier_owner(column->identifier());
}

std::shared_ptr<NSTableRowView> NSOutlineView::askRowView(std::int64_t row) {
    const auto delegate = this->delegate();
    return delegate ? delegate->outlineView_rowViewForItem(*this, itemAtRow(row)) : nullptr;
}

double NSOutlineView::askHeight(std::int64_t row) {
    const auto delegate = this->delegate();
    return delegate ? delegate->outlineView_heightOfRowByItem(*this, itemAtRow(row)) : rowHeight();
}

bool NSOutlineView::askGroupRow(std::int64_t row) {
    const auto delegate = this->delegate();
    return delegate && delegate->outlineView_isGroupItem(*this, itemAtRow(row));
}

bool NSOutlineView::askSelectionShouldChange() {
    const auto delegate = this->delegate();
    return !delegate || delegate->selectionShouldChangeInOutlineView(*this);
}

NSIndexSet NSOutlineView::askProposedSelection(const NSIndexSet &proposed) {
    const auto delegate = this->delegate();
    if (!delegate || proposed.isEmpty())
        return proposed;
    std::vector<Item> kept, added;
    for (const std::size_t row : proposed.indexes())
        (isRowSelected(static_cast<std::int64_t>(row)) ? kept : added).push_back(itemAtRow(static_cast<std::int64_t>(row)));
    for (const Item &item : added)
        if (delegate->outlineView_shouldSelectItem(*this, item))
            kept.push_back(item);
    if (kept.empty())
        return selectedRowIndexes();
    NSMutableIndexSet rows;   // looked up anew: the delegate may have opened and closed items
    for (const Item &item : kept)
        if (const std::int64_t row = rowForItem(item); row >= 0)
            rows.addIndex(static_cast<std::size_t>(row));
    return rows;
}

bool NSOutlineView::askReorder(std::int64_t column, std::int64_t to) {
    const auto delegate = this->delegate();
    return !delegate || delegate->outlineView_shouldReorderColumn_toColumn(*this, column, to);
}

bool NSOutlineView::askEdit(const std::shared_ptr<NSTableColumn> &column, std::int64_t row) {
    const auto delegate = this->delegate();
    return !delegate || delegate->outlineView_shouldEditTableColumn_item(*this, column, itemAtRow(row));
}

void NSOutlineView::tellRowView(const std::shared_ptr<NSTableRowView> &view, std::int64_t row, bool added) {
    if (const auto delegate = this->delegate())
        added ? delegate->outlineView_didAddRowView_forRow(*this, view, row) : delegate->outlineView_didRemoveRowView_forRow(*this, view, row);
}

void NSOutlineView::tellHeaderPressed(const std::shared_ptr<NSTableColumn> &column) {
    if (const auto delegate = this->delegate())
        delegate->outlineView_mouseDownInHeaderOfTableColumn(*this, column);
}

void NSOutlineView::tellColumnClicked(const std::shared_ptr<NSTableColumn> &column) {
    if (const auto delegate = this->delegate())
        delegate->outlineView_didClickTableColumn(*this, column);
}

void NSOutlineView::tellColumnMoved(std::int64_t from, std::int64_t to) {
    if (const auto delegate = this->delegate())
        delegate->outlineViewColumnDidMove(*this, from, to);
}

void NSOutlineView::tellSortDescriptors(const NSSortDescriptors &old) {
    if (const auto source = dataSource())
        source->outlineView_sortDescriptorsDidChange(*this, old);
}

void NSOutlineView::tellSelectionDidChange() {
    if (const auto delegate = this->delegate())
        delegate->outlineViewSelectionDidChange(*this);
}

// ---------------------------------------------------------------- checking

bool NSOutlineView::isConsistent() {
    if (!NSTableView::isConsistent() || static_cast<std::size_t>(numberOfRows()) != rows_.size() || rowOf_.size() != rows_.size())
        return false;
    const std::vector<Row> open = openRowsBelow(nullptr, 0);
    if (open.size() != rows_.size())
        return false;
    for (std::size_t row = 0; row < rows_.size(); ++row)
        if (open[row].item != rows_[row].item || open[row].level != rows_[row].level || rowOf_.at(rows_[row].item.get()) != row)
            return false;
    if (!treeSelection_)
        return true;
    const NSTreeNodes &nodes = treeSelection_->selectedNodes();
    const std::vector<std::size_t> selected = selectedRowIndexes().indexes();
    return std::all_of(selected.begin(), selected.end(), [&](std::size_t row) { return std::find(nodes.begin(), nodes.end(), rows_[row].item) != nodes.end(); });
}
