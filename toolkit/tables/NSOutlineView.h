// A table whose rows are the open part of a tree. Items are the nodes of the bound tree controller.
//
// Open       an item that is no leaf can be opened; an item keeps its state while its node is in the tree, also under a
//            closed ancestor. An empty folder can be open.
// Selection  bound to the tree controller's selected nodes, both ways. Collapsing takes hidden rows out of the outline's
//            selection (the delegate is told) while the tree controller keeps its nodes; expanding does not bring them back.
// Mark       the disclosure mark stands in the outline column, indented by level; a click on it opens or closes the item
//            and selects nothing. Right and left arrow (from right to left: left and right) open and close the selected item.
// Threads    main. No walk recurses.
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "toolkit/lists/NSTreeController.h"
#include "toolkit/tables/NSOutlineViewDelegate.h"
#include "toolkit/tables/NSTableView.h"

class NSOutlineView : public NSTableView, public NSTreeControllerObserver {
public:
    using Item = std::shared_ptr<NSTreeNode>;

    template <class T> void setDelegate(const std::shared_ptr<T> &delegate) { outlineDelegate_ = std::shared_ptr<NSOutlineViewDelegate>(delegate); delegateDidChange(); }
    template <class T> void setDataSource(const std::shared_ptr<T> &source) { outlineSource_ = std::shared_ptr<NSOutlineViewDataSource>(source); delegateDidChange(); }
    void setDelegate(std::nullptr_t) { outlineDelegate_.reset(); }
    void setDataSource(std::nullptr_t) { outlineSource_.reset(); }
    [[nodiscard]] std::shared_ptr<NSOutlineViewDelegate> delegate() const { return outlineDelegate_.lock(); }
    [[nodiscard]] std::shared_ptr<NSOutlineViewDataSource> dataSource() const { return outlineSource_.lock(); }

    // "content" to a tree controller's "arrangedObjects", "selectionIndexPaths" to its "selectionIndexPaths".
    void bind_toObject_withKeyPath(std::string_view binding, const std::shared_ptr<NSObject> &controller, std::string_view keyPath) override;
    void unbind(std::string_view binding) override;
    // Both.
    void bindToTreeController(const std::shared_ptr<NSTreeController> &controller);
    [[nodiscard]] std::shared_ptr<NSTreeController> boundTree() const { return tree_; }

    // ------------------------------------------------------------ items and rows; null and -1 for none
    [[nodiscard]] Item itemAtRow(std::int64_t row) const;
    [[nodiscard]] std::int64_t rowForItem(const Item &item) const;
    // 0 for top-level items.
    [[nodiscard]] std::int64_t levelForRow(std::int64_t row) const;
    [[nodiscard]] std::int64_t levelForItem(const Item &item) const { return levelForRow(rowForItem(item)); }
    // Null for a top-level item.
    [[nodiscard]] Item parentForItem(const Item &item) const;
    // Of the top level for null.
    [[nodiscard]] std::int64_t numberOfChildrenOfItem(const Item &item) const;
    [[nodiscard]] id objectAtRow(std::int64_t row) const override { return itemAtRow(row); }

    // ------------------------------------------------------------ opening
    [[nodiscard]] bool isExpandable(const Item &item) const { return item && item->isInTree() && !item->isLeaf(); }
    [[nodiscard]] bool isItemExpanded(const Item &item) const;
    // Null opens or closes the top-level items; with children also all below. Each item asks the delegate.
    void expandItem(const Item &item, bool expandChildren = false);
    void collapseItem(const Item &item, bool collapseChildren = false);
    void reloadItem(const Item &item, bool reloadChildren = false);

    // ------------------------------------------------------------ geometry
    [[nodiscard]] double indentationPerLevel() const { return indentation_; }
    void setIndentationPerLevel(double points);
    // The first column unless another was set.
    [[nodiscard]] std::shared_ptr<NSTableColumn> outlineTableColumn() const;
    void setOutlineTableColumn(const std::shared_ptr<NSTableColumn> &column);
    // Where the disclosure mark stands; empty for an item that cannot be opened.
    [[nodiscard]] virtual NSRect frameOfOutlineCellAtRow(std::int64_t row);
    [[nodiscard]] NSRect frameOfCellAtColumn_row(std::int64_t column, std::int64_t row) override;

    void keyDown(NSEvent &event) override;
    // The rows are the open part of the tree, and each selected row's node is selected in the tree controller.
    [[nodiscard]] bool isConsistent() override;
    void dealloc() override;
    HN_DECLARE_CLASS_TABLE

    void arrangedNodesDidChange(NSTreeController &controller, const TreeChange &change) override;
    void selectionIndexPathsDidChange(NSTreeController &controller) override;

protected:
    std::int64_t askNumberOfRows() override { return static_cast<std::int64_t>(rows_.size()); }
    std::shared_ptr<NSView> askView(const std::shared_ptr<NSTableColumn> &column, std::int64_t row) override;
    std::shared_ptr<NSTableRowView> askRowView(std::int64_t row) override;
    double askHeight(std::int64_t row) override;
    bool askGroupRow(std::int64_t row) override;
    bool askSelectionShouldChange() override;
    NSIndexSet askProposedSelection(const NSIndexSet &proposed) override;
    bool askReorder(std::int64_t column, std::int64_t to) override;
    bool askEdit(const std::shared_ptr<NSTableColumn> &column, std::int64_t row) override;
    void tellRowView(const std::shared_ptr<NSTableRowView> &view, std::int64_t row, bool added) override;
    void tellHeaderPressed(const std::shared_ptr<NSTableColumn> &column) override;
    void tellColumnClicked(const std::shared_ptr<NSTableColumn> &column) override;
    void tellColumnMoved(std::int64_t from, std::int64_t to) override;
    void tellSortDescriptors(const NSSortDescriptors &old) override;
    void tellSelectionDidChange() override;
    Value objectValueOf(const std::shared_ptr<NSTableColumn> &, std::int64_t row) override { return Value(itemAtRow(row)); }
    void pushSelection() override;
    bool handlesClick(NSPoint point, std::int64_t row) override;
    void drawInRow(NSTableRowView &view, Canvas &canvas) override;

private:
    struct Row {
        Item item;
        std::int64_t level = 0;
    };
    // The open rows below an item, null for the top level, which stands at `level`.
    [[nodiscard]] std::vector<Row> openRowsBelow(const Item &item, std::int64_t level) const;
    void rebuild();
    void renumber(std::size_t from);
    [[nodiscard]] NSIndexSet rowsOfSelectedNodes() const;
    bool expandOne(const Item &item);
    bool collapseOne(const Item &item);
    // The item (null: none) and all below it that can be opened, parents first.
    [[nodiscard]] std::vector<Item> foldersFrom(const Item &item, bool deep) const;

    std::weak_ptr<NSOutlineViewDelegate> outlineDelegate_;
    std::weak_ptr<NSOutlineViewDataSource> outlineSource_;
    std::shared_ptr<NSTreeController> tree_, treeSelection_;
    std::weak_ptr<NSTableColumn> outlineColumn_;
    std::vector<Row> rows_;
    std::unordered_map<const NSTreeNode *, std::size_t> rowOf_;
    std::unordered_map<const NSTreeNode *, std::weak_ptr<NSTreeNode>> open_;
    double indentation_ = 16;
};
