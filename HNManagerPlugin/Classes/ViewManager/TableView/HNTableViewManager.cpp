#include "HNManagerPlugin/Classes/ViewManager/TableView/HNTableViewManager.h"

#include <cmath>

#include "HNManagerPlugin/Classes/ViewManager/HeaderCells.h"
#include "HNManagerPlugin/Classes/ViewManager/TableView/HNTableAppCellView.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVViewTemplate/RVBaseTableRowView.h"
#include "HNManagerPlugin/contracts/RVViewTemplate/RVCheckBoxTableCellView.h"

HN_CLASS_TABLE(HNTableViewManager, HNMbaseViewManager,
               .key("tableView", &HNTableViewManager::tableView)
               .key("headCheckBox", &HNTableViewManager::headCheckBox)
               .key("tableViewSortKey", &HNTableViewManager::tableViewSortKey)
               .selector("onClickHeadViewCheckBox:", &HNTableViewManager::onClickHeadViewCheckBox)
               .selector("checkBoxClick:", &HNTableViewManager::checkBoxClick)
               .selector("uninstall:", &HNTableViewManager::uninstall)
               .selector("cancelInstallOrUninstall:", &HNTableViewManager::cancelInstallOrUninstall)
               .selector("openSync", &HNTableViewManager::openSync)
               .selector("closeSync", &HNTableViewManager::closeSync))

namespace {

constexpr const char *kCheckBoxColumn = "CheckBoxCell";
constexpr const char *kActionColumn = "AppActions";
constexpr const char *kUnsortedKey = "checkBoxSortValue";
constexpr const char *kRowView = "TableRowView";
constexpr double kSmallestRowHeight = 40.0;
constexpr double kCheckBoxSide = 18.0, kCheckBoxColumnWidth = 40.0;

}  // namespace

std::shared_ptr<NSArrayController> HNTableViewManager::arrayController() const {
    const auto model = viewModel.lock();
    return model ? model->arrayController.lock() : nullptr;
}

std::size_t HNTableViewManager::contentsCount() const {
    const auto model = viewModel.lock();
    return model ? model->contents->count() : 0;
}

// ---------------------------------------------------------------- set-up

void HNTableViewManager::initViewModel(const std::shared_ptr<HNMbaseViewModel> &model) {
    HNMbaseViewManager::initViewModel(model);
    initTableView();
}

void HNTableViewManager::initTableView() {
    const auto table = tableView.lock();
    if (!table)
        return;
    table->setDelegate(selfOf(this));
    table->setAllowsMultipleSelection(true);
    table->setRowHeight(std::max(table->rowHeight(), kSmallestRowHeight));
    table->setDataSource(selfOf(this));
    if (wantAddFirstColumnCheckBox())
        addCheckBoxToFirstColumn();
    table->setCustomHeaderViewHeight_color(kHeaderHeight, headerGrey());
    for (const auto &column : table->tableColumns())
        column->setHeaderCell(makeHeaderCell(column->title(), 0.0));
}

void HNTableViewManager::addCheckBoxToFirstColumn() {
    const auto table = tableView.lock();
    const auto header = table ? table->headerView() : nullptr;
    if (!table)
        return;
    if (!table->tableColumnWithIdentifier(kCheckBoxColumn)) {
        auto column = make<NSTableColumn>(NSString(kCheckBoxColumn));
        column->setMinWidth(kCheckBoxColumnWidth);
        column->setMaxWidth(kCheckBoxColumnWidth);
        column->setWidth(kCheckBoxColumnWidth);
        column->setTitle("");
        column->setEditable(false);
        column->setSortDescriptorPrototype(NSSortDescriptor("sortKey", true));
        table->addTableColumn(column);
        if (header)
            makeHeadCheckBox(*header);
    }
    table->moveColumn_toColumn(table->columnWithIdentifier(kCheckBoxColumn), 0);
    if (header)
        placeHeadCheckBox(header);
}

void HNTableViewManager::makeHeadCheckBox(NSTableHeaderView &header) {
    headCheckBox = make<RUICheckBox>();
    headCheckBox->setIdentifier("HeadCheckBox");
    headCheckBox->setAccessibilityName(localized("FileManager_SelectAll"));
    headCheckBox->setBackgroundColor(NSColor::whiteColor());
    headCheckBox->setBoxFillColor(NSColor::colorWithCalibratedRed_green_blue_alpha(10 / 255.0, 179 / 255.0, 203 / 255.0, 1.0));
    headCheckBox->setImagePosition(NSCellImagePosition::imageOnly);
    headCheckBox->setAllowsMixedState(true);
    headCheckBox->connect(selfOf(this), "onClickHeadViewCheckBox:");
    header.addSubview(headCheckBox);
}

void HNTableViewManager::placeHeadCheckBox(const std::shared_ptr<NSTableHeaderView> &header) {
    if (!headCheckBox)
        return;
    if (isRightToLeftLanguage()) {
        headCheckBox->setTranslatesAutoresizingMaskIntoConstraints(false);
        header->addConstraint(NSLayoutConstraint::tie(headCheckBox, NSLayoutAttribute::right, header, NSLayoutAttribute::right, -14.0));
        header->addConstraint(NSLayoutConstraint::tie(headCheckBox, NSLayoutAttribute::bottom, header, NSLayoutAttribute::bottom));
        for (const auto side : {NSLayoutAttribute::width, NSLayoutAttribute::height})
            headCheckBox->addConstraint(
                NSLayoutConstraint::tie(headCheckBox, side, nullptr, NSLayoutAttribute::notAnAttribute, kCheckBoxSide));
        return;
    }
    const NSSize cell = header->headerRectOfColumn(0).size;
    headCheckBox->setFrame({std::trunc(cell.width * 0.5) - 9, std::trunc(cell.height * 0.5) - 5, kCheckBoxSide, kCheckBoxSide});
}

// ---------------------------------------------------------------- lists

bool HNTableViewManager::addData(const id &entity) {
    if (const auto controller = arrayController()) {
        controller->addObject(entity);
        controller->rearrangeObjects();
    }
    return true;
}

std::size_t HNTableViewManager::addDatas(const NSArray &entities) {
    if (const auto controller = arrayController()) {
        controller->addObjects(entities);
        controller->rearrangeObjects();
    }
    return entities.count();
}

std::size_t HNTableViewManager::removeData() {
    const auto controller = arrayController();
    if (!controller)
        return 0;
    const NSIndexSet rows = controller->selectionIndexes();
    controller->removeObjectsAtArrangedObjectIndexes(rows);
    controller->rearrangeObjects();
    return rows.count();
}

void HNTableViewManager::resetDataContents() {
    if (const auto model = viewModel.lock())
        model->contents->removeAllObjects();
    if (const auto controller = arrayController())
        controller->rearrangeObjects();
}

void HNTableViewManager::removeSelectRowAtIndexSet(const NSIndexSet &rows) {
    if (const auto model = viewModel.lock())
        model->removeModelAtIndexes(rows);
    tell(tableView, [&](RUIMenuTableView &table) { table.removeRowsAtIndexes_withAnimation(rows, NSTableViewAnimationSlideRight); });
    if (headCheckBox)
        headCheckBox->setState(NSOffState);
}

// ---------------------------------------------------------------- check boxes

void HNTableViewManager::setHeadCheckBoxState(std::size_t selected, std::size_t all) {
    if (headCheckBox)
        headCheckBox->setState(selected == all && all != 0 ? NSOnState : selected > 0 ? NSMixedState : NSOffState);
}

void HNTableViewManager::updateHeadCheckBoxState() {
    const auto controller = arrayController();
    setHeadCheckBoxState(controller ? controller->selectionIndexes().count() : 0, contentsCount());
}

void HNTableViewManager::headCheckBoxUpdateStateWithSelectionIndexes(const std::optional<NSIndexSet> &rows) {
    const auto table = tableView.lock();
    const std::size_t all = table ? static_cast<std::size_t>(table->numberOfRows()) : 0;
    const std::size_t selected = all == 0 ? 0 : rows ? rows->count() : table->selectedRowIndexes().count();
    setHeadCheckBoxState(selected, all);
}

bool HNTableViewManager::isPointInTableView(NSPoint point) const {
    const auto table = tableView.lock();
    return table && table->rowAtPoint(table->convertPoint_fromView(point, nullptr)) != -1;
}

void HNTableViewManager::onClickHeadViewCheckBox(const id &sender) {
    const auto box = std::dynamic_pointer_cast<NSButton>(sender);
    const auto table = tableView.lock();
    if (!box || !table)
        return;
    if (box->state() == NSOffState)
        return table->deselectAll(nullptr);
    const NSIndexSet all = NSIndexSet::indexSetWithIndexesInRange({0, static_cast<std::size_t>(table->numberOfRows())});
    table->selectRowIndexes_byExtendingSelection(all, true);
    if (box->state() != NSOnState)
        box->setState(NSOnState);
}

void HNTableViewManager::checkBoxClick(const id &sender) {
    const auto box = std::dynamic_pointer_cast<NSView>(sender);
    const auto table = tableView.lock();
    const auto controller = arrayController();
    if (!box || !table || !controller)
        return;
    const std::int64_t row = table->rowAtPoint(box->convertPoint_toView(box->frame().origin, table));
    if (row < 0)
        return;
    const auto index = static_cast<std::size_t>(row);
    NSMutableIndexSet selection(controller->selectionIndexes());
    if (selection.containsIndex(index)) {
        table->deselectRow(row);
        selection.removeIndex(index);
    } else {
        selection.addIndex(index);
        table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(index), true);
    }
    if (headCheckBox)
        headCheckBox->setState(selection.count() == contentsCount() ? NSOnState : selection.isEmpty() ? NSOffState : NSMixedState);
}

void HNTableViewManager::bindTableCellViewCheckBox_atRow(const std::shared_ptr<NSView> &cell, std::int64_t row) {
    const auto boxCell = std::dynamic_pointer_cast<RVCheckBoxTableCellView>(cell);
    const auto table = tableView.lock();
    const auto box = boxCell ? boxCell->checkBox() : nullptr;
    if (!box || !table)
        return;
    if (const auto rowView = table->rowViewAtRow_makeIfNecessary(row, true))
        rowView->observeSelected(box, [weak = std::weak_ptr(box)](bool selected) {
            tell(weak, [selected](NSButton &b) { b.setState(selected ? NSOnState : NSOffState); });
        });
    const auto model = viewModel.lock();
    if (model && row >= 0 && static_cast<std::size_t>(row) < model->contents->count())
        if (const id entity = model->contents->objectAtIndex(static_cast<std::size_t>(row)))
            box->setTitle(entity->valueForKey("sortKey").text());
}

// ---------------------------------------------------------------- the table's questions

std::shared_ptr<NSView> HNTableViewManager::tableView_viewForTableColumn_row(NSTableView &table, const std::shared_ptr<NSTableColumn> &column,
                                                                             std::int64_t row) {
    std::shared_ptr<NSView> view = table.makeViewWithIdentifier_owner(column->identifier(), selfOf(this));
    if (column->identifier() == kCheckBoxColumn) {
        auto cell = std::dynamic_pointer_cast<RVCheckBoxTableCellView>(view);
        if (!cell) {
            cell = make<RVCheckBoxTableCellView>();
            cell->setIdentifier(kCheckBoxColumn);
        }
        cell->checkBox()->connect(selfOf(this), "checkBoxClick:");
        bindTableCellViewCheckBox_atRow(cell, row);
        return cell;
    }
    if (column->identifier() == kActionColumn)
        if (const auto cell = std::dynamic_pointer_cast<HNTableAppCellView>(view)) {
            tell(cell->unInstallButton, [this](NSButton &button) {
                button.connect(selfOf(this), "uninstall:");
                button.setEnabled(true);
            });
            tell(cell->cancelButton, [this](NSButton &button) { button.connect(selfOf(this), "cancelInstallOrUninstall:"); });
        }
    return view;
}

std::shared_ptr<NSTableRowView> HNTableViewManager::tableView_rowViewForRow(NSTableView &table, std::int64_t) {
    if (auto reused = table.makeView<NSTableRowView>(kRowView))
        return reused;
    return makeRowView(kRowView);
}

NSIndexSet HNTableViewManager::tableView_selectionIndexesForProposedSelection(NSTableView &table, const NSIndexSet &proposed) {
    if (table.isKindOf<RUIMenuTableView>())
        headCheckBoxUpdateStateWithSelectionIndexes(proposed);
    return proposed;
}

// The check-box column stays where it is, and nothing goes in front of it.
bool HNTableViewManager::tableView_shouldReorderColumn_toColumn(NSTableView &, std::int64_t column, std::int64_t to) {
    return column != 0 && to != 0;
}

void HNTableViewManager::tableView_mouseDownInHeaderOfTableColumn(NSTableView &, const std::shared_ptr<NSTableColumn> &column) {
    tableViewSortKey = column->sortDescriptorPrototype() ? column->sortDescriptorPrototype()->key() : NSString();
}

void HNTableViewManager::tableView_sortDescriptorsDidChange(NSTableView &, const NSSortDescriptors &old) {
    const bool again = !old.empty() && tableViewSortKey == old.front().key();
    const bool ascending = again ? !old.front().ascending() : true;
    if (tableViewSortKey == kUnsortedKey)
        return;
    const auto model = viewModel.lock();
    if (!model)
        return;
    model->contents->sortUsingDescriptors({NSSortDescriptor(tableViewSortKey, ascending)});
    if (const auto controller = arrayController())
        controller->rearrangeObjects();
    updateHeadCheckBoxState();
}

void HNTableViewManager::tableViewSelectionDidChange(NSTableView &) { RowSelectedChange(); }

void HNTableViewManager::RowSelectedChange() {
    const auto controller = arrayController();
    hasSelectedRow = controller && !controller->selectionIndexes().isEmpty();
}
