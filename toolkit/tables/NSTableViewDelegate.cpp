#include "toolkit/tables/NSTableViewDelegate.h"

#include "toolkit/tables/NSTableView.h"

std::shared_ptr<NSView> NSTableViewDelegate::tableView_viewForTableColumn_row(NSTableView &table, const std::shared_ptr<NSTableColumn> &column,
                                                                              std::int64_t) {
    return table.makeViewWithIdentifier_owner(column->identifier());
}

double NSTableViewDelegate::tableView_heightOfRow(NSTableView &table, std::int64_t) { return table.rowHeight(); }

NSIndexSet NSTableViewDelegate::tableView_selectionIndexesForProposedSelection(NSTableView &table, const NSIndexSet &proposed) {
    NSMutableIndexSet added(proposed), allowed(proposed);
    added.removeIndexes(table.selectedRowIndexes());
    added.enumerateIndexesUsingBlock([&](std::size_t row) {
        if (!tableView_shouldSelectRow(table, static_cast<std::int64_t>(row)))
            allowed.removeIndex(row);
    });
    return allowed.isEmpty() && !proposed.isEmpty() ? table.selectedRowIndexes() : allowed;
}
