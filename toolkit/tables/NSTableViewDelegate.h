// What a table asks and tells. Every call is optional: the default is what happens where nobody answers.
//
// Rows     count from 0; -1 stands for none. Columns count in the order on show, hidden ones included.
// Person   calls marked "person" come only for a person's click or key, never for a program's change.
// Threads  main. Table and delegate are alive for the length of a call; a call may change the table.
#pragma once

#include <cstdint>
#include <memory>

#include "toolkit/lists/NSIndexSet.h"
#include "toolkit/lists/NSSortDescriptor.h"
#include "toolkit/tables/NSTableColumn.h"

class NSTableRowView;
class NSTableView;
class NSView;

class NSTableViewDelegate {
public:
    virtual ~NSTableViewDelegate() = default;

    // ------------------------------------------------------------ views, for rows on show and those asked for
    // Default: the view under the column's identifier. Null leaves the cell empty. The table sets the object value of a
    // NSTableCellView afterwards.
    virtual std::shared_ptr<NSView> tableView_viewForTableColumn_row(NSTableView &table, const std::shared_ptr<NSTableColumn> &column, std::int64_t row);
    // Null: a plain one.
    virtual std::shared_ptr<NSTableRowView> tableView_rowViewForRow(NSTableView &, std::int64_t /*row*/) { return nullptr; }
    virtual void tableView_didAddRowView_forRow(NSTableView &, const std::shared_ptr<NSTableRowView> &, std::int64_t /*row*/) {}
    virtual void tableView_didRemoveRowView_forRow(NSTableView &, const std::shared_ptr<NSTableRowView> &, std::int64_t /*row*/) {}
    // Without the gap between rows; asked once per row until the table is told that it changed. Default: rowHeight.
    virtual double tableView_heightOfRow(NSTableView &table, std::int64_t row);
    virtual bool tableView_isGroupRow(NSTableView &, std::int64_t /*row*/) { return false; }

    // ------------------------------------------------------------ selection
    // Person. False keeps the selection.
    virtual bool selectionShouldChangeInTableView(NSTableView &) { return true; }
    // Person. What is selected instead of the proposal. Default: the proposal without the new rows that
    // tableView_shouldSelectRow refuses; where it refuses all, the selection stays.
    virtual NSIndexSet tableView_selectionIndexesForProposedSelection(NSTableView &table, const NSIndexSet &proposed);
    virtual bool tableView_shouldSelectRow(NSTableView &, std::int64_t /*row*/) { return true; }
    // After a person's and a program's change alike; a bound controller has the new selection already.
    virtual void tableViewSelectionDidChange(NSTableView &) {}

    // ------------------------------------------------------------ columns
    virtual void tableView_mouseDownInHeaderOfTableColumn(NSTableView &, const std::shared_ptr<NSTableColumn> &) {}
    // After the sort descriptors changed.
    virtual void tableView_didClickTableColumn(NSTableView &, const std::shared_ptr<NSTableColumn> &) {}
    // Person. Asked with -1 when a drag begins, then with the place.
    virtual bool tableView_shouldReorderColumn_toColumn(NSTableView &, std::int64_t /*column*/, std::int64_t /*to*/) { return true; }
    virtual void tableViewColumnDidMove(NSTableView &, std::int64_t /*from*/, std::int64_t /*to*/) {}

    // Person.
    virtual bool tableView_shouldEditTableColumn_row(NSTableView &, const std::shared_ptr<NSTableColumn> &, std::int64_t /*row*/) { return true; }
};

class NSTableViewDataSource {
public:
    static constexpr std::int64_t kBoundList = -1;

    virtual ~NSTableViewDataSource() = default;
    // kBoundList: the rows of the bound list, none without one.
    virtual std::int64_t numberOfRowsInTableView(NSTableView &) { return kBoundList; }
    // For tables without a bound list.
    virtual Value tableView_objectValueForTableColumn_row(NSTableView &, const std::shared_ptr<NSTableColumn> &, std::int64_t /*row*/) { return {}; }
    // `old` are the descriptors before; the table has the new ones.
    virtual void tableView_sortDescriptorsDidChange(NSTableView &, const NSSortDescriptors & /*old*/) {}
};
