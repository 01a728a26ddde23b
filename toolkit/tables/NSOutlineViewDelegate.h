// What an outline asks and tells. Every call is optional; see NSTableViewDelegate for rows, "person" and threads.
#pragma once

#include <cstdint>
#include <memory>

#include "toolkit/lists/NSTreeNode.h"
#include "toolkit/tables/NSTableViewDelegate.h"

class NSOutlineView;

class NSOutlineViewDelegate {
public:
    using Item = std::shared_ptr<NSTreeNode>;

    virtual ~NSOutlineViewDelegate() = default;

    // Default: the view under the column's identifier.
    virtual std::shared_ptr<NSView> outlineView_viewForTableColumn_item(NSOutlineView &outline, const std::shared_ptr<NSTableColumn> &column,
                                                                        const Item &item);
    // Null: a plain one.
    virtual std::shared_ptr<NSTableRowView> outlineView_rowViewForItem(NSOutlineView &, const Item &) { return nullptr; }
    virtual void outlineView_didAddRowView_forRow(NSOutlineView &, const std::shared_ptr<NSTableRowView> &, std::int64_t /*row*/) {}
    virtual void outlineView_didRemoveRowView_forRow(NSOutlineView &, const std::shared_ptr<NSTableRowView> &, std::int64_t /*row*/) {}
    // Default: rowHeight.
    virtual double outlineView_heightOfRowByItem(NSOutlineView &outline, const Item &item);
    virtual bool outlineView_isGroupItem(NSOutlineView &, const Item &) { return false; }

    // ------------------------------------------------------------ selection
    // Person.
    virtual bool selectionShouldChangeInOutlineView(NSOutlineView &) { return true; }
    // Person, once for each row that would be newly selected. It may expand, collapse and select; an item that is allowed
    // is selected where it stands afterwards. Where all are refused, the selection stays as the calls left it.
    virtual bool outlineView_shouldSelectItem(NSOutlineView &, const Item &) { return true; }
    virtual void outlineViewSelectionDidChange(NSOutlineView &) {}

    // ------------------------------------------------------------ expanding, by persons and programs alike
    virtual bool outlineView_shouldExpandItem(NSOutlineView &, const Item &) { return true; }
    virtual bool outlineView_shouldCollapseItem(NSOutlineView &, const Item &) { return true; }
    virtual void outlineViewItemDidExpand(NSOutlineView &, const Item &) {}
    virtual void outlineViewItemDidCollapse(NSOutlineView &, const Item &) {}

    // ------------------------------------------------------------ columns
    virtual void outlineView_mouseDownInHeaderOfTableColumn(NSOutlineView &, const std::shared_ptr<NSTableColumn> &) {}
    virtual void outlineView_didClickTableColumn(NSOutlineView &, const std::shared_ptr<NSTableColumn> &) {}
    virtual bool outlineView_shouldReorderColumn_toColumn(NSOutlineView &, std::int64_t /*column*/, std::int64_t /*to*/) { return true; }
    virtual void outlineViewColumnDidMove(NSOutlineView &, std::int64_t /*from*/, std::int64_t /*to*/) {}

    // Person.
    virtual bool outlineView_shouldEditTableColumn_item(NSOutlineView &, const std::shared_ptr<NSTableColumn> &, const Item &) { return true; }
};

class NSOutlineViewDataSource {
public:
    virtual ~NSOutlineViewDataSource() = default;
    // `old` are the descriptors before.
    virtual void outlineView_sortDescriptorsDidChange(NSOutlineView &, const NSSortDescriptors & /*old*/) {}
};
