// The manager of flat lists: a table with a check-box column, sortable headers and a selection that drives the buttons.
//
// Rows      come from the model through its arrayController, to which the nib binds the table.
// Sorting   a click on a header sorts `contents` alone; the model's globalArray keeps its order.
// Threads   main.
#pragma once

#include <optional>

#include "HNManagerPlugin/Classes/ViewManager/HNMbaseViewManager.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUICheckBox.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIMenuTableView.h"

class HNTableViewManager : public HNMbaseViewManager, public NSTableViewDelegate, public NSTableViewDataSource {
public:
    HN_DECLARE_CLASS_TABLE

    std::weak_ptr<RUIMenuTableView> tableView;     // nib outlet
    std::shared_ptr<RUICheckBox> headCheckBox;     // in the column header
    NSString tableViewSortKey;                     // of the header last pressed

    void initViewModel(const std::shared_ptr<HNMbaseViewModel> &model) override;
    virtual void initTableView();
    [[nodiscard]] virtual bool wantAddFirstColumnCheckBox() { return true; }
    // The selection changed, by a person or a program.
    virtual void RowSelectedChange();
    virtual void uninstall(const id &) {}
    virtual void cancelInstallOrUninstall(const id &) {}
    void openSync() { loadingFinished = true; }
    void closeSync() { loadingFinished = false; }

    bool addData(const id &entity);
    std::size_t addDatas(const NSArray &entities);
    // Removes the selected rows; gives how many were selected.
    std::size_t removeData();
    void resetDataContents();
    void removeSelectRowAtIndexSet(const NSIndexSet &rows);
    // On for a whole selection of a list that is not empty, mixed for a part, else off.
    void updateHeadCheckBoxState();
    // The same by table rows; absent stands for the table's own selection.
    void headCheckBoxUpdateStateWithSelectionIndexes(const std::optional<NSIndexSet> &rows);
    // `point` in the window's space.
    [[nodiscard]] bool isPointInTableView(NSPoint point) const;

    void onClickHeadViewCheckBox(const id &sender);
    void checkBoxClick(const id &sender);

    std::shared_ptr<NSView> tableView_viewForTableColumn_row(NSTableView &table, const std::shared_ptr<NSTableColumn> &column, std::int64_t row) override;
    std::shared_ptr<NSTableRowView> tableView_rowViewForRow(NSTableView &table, std::int64_t row) override;
    NSIndexSet tableView_selectionIndexesForProposedSelection(NSTableView &table, const NSIndexSet &proposed) override;
    bool tableView_shouldReorderColumn_toColumn(NSTableView &table, std::int64_t column, std::int64_t to) override;
    bool tableView_isGroupRow(NSTableView &, std::int64_t) override { return false; }
    void tableView_mouseDownInHeaderOfTableColumn(NSTableView &table, const std::shared_ptr<NSTableColumn> &column) override;
    void tableView_sortDescriptorsDidChange(NSTableView &table, const NSSortDescriptors &old) override;
    void tableViewSelectionDidChange(NSTableView &table) override;

protected:
    void addCheckBoxToFirstColumn();
    // The box's mark mirrors the row's selection, its title the entity's sortKey.
    void bindTableCellViewCheckBox_atRow(const std::shared_ptr<NSView> &cell, std::int64_t row);
    [[nodiscard]] std::shared_ptr<NSArrayController> arrayController() const;
    [[nodiscard]] std::size_t contentsCount() const;

private:
    void makeHeadCheckBox(NSTableHeaderView &header);
    void placeHeadCheckBox(const std::shared_ptr<NSTableHeaderView> &header);
    void setHeadCheckBoxState(std::size_t selected, std::size_t all);
};
