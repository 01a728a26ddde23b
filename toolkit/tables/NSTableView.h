// A table: columns, rows of views, a selection. It makes views only for the rows that show, plus those asked for with
// make-if-necessary, and uses them again for other rows.
//
// Place      in a clip view it shows what that shows, and takes its size from rows and columns; elsewhere its own bounds;
//            where neither has a size, and without a superview, a viewport of 1000 by 600 (see scrollToPoint).
//            The table is flipped: row 0 is at y 0.
// Sides      from right to left the first column stands at the right edge, and a wide table shows its right end first.
// Rows       as many as the data source says, else as the bound list has. A change of the bound list is followed by
//            itself; with a data source, and after the list was changed behind its controller, reloadData or insertRows /
//            removeRows say it.
// Heights    row rectangles include the gap of intercellSpacing. Heights are asked of the delegate when a row comes into
//            view or is asked for; until then rowHeight is the estimate.
// Selection  a program's changes ask nobody; a person's go through the delegate. A change reaches the bound controller
//            first, then the delegate. A table without multiple selection takes the last of several rows. Rows that only
//            get other numbers, by insertRows, removeRows, expanding or collapsing, are no change for the delegate.
// Updates    between beginUpdates and endUpdates no view is made. Changes made by the delegate while views are being made
//            are taken up right after.
// Threads    main; mutators throw std::logic_error elsewhere.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/lists/NSArrayController.h"
#include "toolkit/lists/NSIndexSet.h"
#include "toolkit/tables/NSTableCellView.h"
#include "toolkit/tables/NSTableColumn.h"
#include "toolkit/tables/NSTableHeaderView.h"
#include "toolkit/tables/NSTableRowView.h"
#include "toolkit/tables/NSTableViewDelegate.h"
#include "toolkit/tables/ReuseQueue.h"
#include "toolkit/tables/RowHeights.h"
#include "toolkit/views/NSControl.h"
#include "toolkit/views/NSEvent.h"

class NSClipView;

enum class NSTableViewColumnAutoresizingStyle { none, uniform, lastColumnOnly };

// How rows come and go; the end state holds at once.
constexpr unsigned NSTableViewAnimationEffectNone = 0, NSTableViewAnimationEffectFade = 1, NSTableViewAnimationEffectGap = 2,
                   NSTableViewAnimationSlideUp = 16, NSTableViewAnimationSlideDown = 32, NSTableViewAnimationSlideLeft = 48,
                   NSTableViewAnimationSlideRight = 64;

// For a host that shows the way. Indexes count as in ListChange.
struct RowAnimation {
    ListChange::Kind kind;
    NSIndexSet rows;
    unsigned animation;
};

class NSTableView : public NSControl, public NSArrayControllerObserver {
public:
    static constexpr double kViewportWidth = 1000, kViewportHeight = 600;

    void initWithFrame(const NSRect &frame) override;

    // Weak; null takes them away.
    template <class T> void setDelegate(const std::shared_ptr<T> &delegate) { delegate_ = std::shared_ptr<NSTableViewDelegate>(delegate); delegateDidChange(); }
    template <class T> void setDataSource(const std::shared_ptr<T> &source) { dataSource_ = std::shared_ptr<NSTableViewDataSource>(source); delegateDidChange(); }
    void setDelegate(std::nullptr_t) { delegate_.reset(); }
    void setDataSource(std::nullptr_t) { dataSource_.reset(); }
    [[nodiscard]] std::shared_ptr<NSTableViewDelegate> delegate() const { return delegate_.lock(); }
    [[nodiscard]] std::shared_ptr<NSTableViewDataSource> dataSource() const { return dataSource_.lock(); }

    // Bindings: "content" to an array controller's "arrangedObjects", "selectionIndexes" to its "selectionIndexes",
    // "sortDescriptors" to its "sortDescriptors"; others are ignored. The controller is held.
    virtual void bind_toObject_withKeyPath(std::string_view binding, const std::shared_ptr<NSObject> &controller, std::string_view keyPath);
    virtual void unbind(std::string_view binding);
    // Content and selection.
    void bindToArrayController(const std::shared_ptr<NSArrayController> &controller);
    [[nodiscard]] std::shared_ptr<NSArrayController> boundController() const { return content_; }

    // ------------------------------------------------------------ columns
    [[nodiscard]] const std::vector<std::shared_ptr<NSTableColumn>> &tableColumns() const { return columns_; }
    [[nodiscard]] std::int64_t numberOfColumns() const { return static_cast<std::int64_t>(columns_.size()); }
    // Null out of range and where none has the identifier.
    [[nodiscard]] std::shared_ptr<NSTableColumn> columnAtIndex(std::int64_t column) const;
    [[nodiscard]] std::shared_ptr<NSTableColumn> tableColumnWithIdentifier(const NSString &identifier) const;
    [[nodiscard]] std::int64_t columnWithIdentifier(const NSString &identifier) const;
    void addTableColumn(const std::shared_ptr<NSTableColumn> &column);
    void removeTableColumn(const std::shared_ptr<NSTableColumn> &column);
    void moveColumn_toColumn(std::int64_t from, std::int64_t to);
    [[nodiscard]] bool allowsColumnReordering() const { return allowsColumnReordering_; }
    void setAllowsColumnReordering(bool allows) { allowsColumnReordering_ = allows; }
    void setColumnAutoresizingStyle(NSTableViewColumnAutoresizingStyle style);
    // Null for a table without a header.
    [[nodiscard]] const std::shared_ptr<NSTableHeaderView> &headerView() const { return header_; }
    void setHeaderView(std::shared_ptr<NSTableHeaderView> header);
    [[nodiscard]] const NSSortDescriptors &sortDescriptors() const { return sortDescriptors_; }
    // Tells the data source where they differ.
    void setSortDescriptors(NSSortDescriptors descriptors);
    [[nodiscard]] SortIndicator sortIndicatorOfColumn(std::int64_t column) const;

    // ------------------------------------------------------------ rows
    [[nodiscard]] std::int64_t numberOfRows() const { return static_cast<std::int64_t>(heights_.count()); }
    void reloadData();
    // Makes the views of these rows and columns anew.
    void reloadDataForRowIndexes_columnIndexes(const NSIndexSet &rows, const NSIndexSet &columns);
    void reloadDataForRowIndexes(const NSIndexSet &rows);
    void noteNumberOfRowsChanged();
    void noteHeightOfRowsWithIndexesChanged(const NSIndexSet &rows);
    void beginUpdates() { ++updates_; }
    void endUpdates();
    // `rows` count after the insertion, before the removal. The selection follows its rows.
    void insertRowsAtIndexes_withAnimation(const NSIndexSet &rows, unsigned animation = NSTableViewAnimationEffectNone);
    void removeRowsAtIndexes_withAnimation(const NSIndexSet &rows, unsigned animation = NSTableViewAnimationEffectNone);
    [[nodiscard]] std::vector<RowAnimation> takeRowAnimations() { return std::exchange(rowAnimations_, {}); }
    [[nodiscard]] double rowHeight() const { return rowHeight_; }
    void setRowHeight(double height);
    [[nodiscard]] NSSize intercellSpacing() const { return spacing_; }
    void setIntercellSpacing(NSSize spacing);
    // The bound list's object at a row; null without one.
    [[nodiscard]] virtual id objectAtRow(std::int64_t row) const;

    // ------------------------------------------------------------ views
    // A view that waits, or a fresh one of the registered maker; null where there is neither. `owner` is for the reader.
    [[nodiscard]] std::shared_ptr<NSView> makeViewWithIdentifier_owner(const NSString &identifier, const id &owner = {});
    template <class T> [[nodiscard]] std::shared_ptr<T> makeView(const NSString &identifier) {
        return std::dynamic_pointer_cast<T>(makeViewWithIdentifier_owner(identifier));
    }
    // A nib's prototype of a cell or row view.
    void registerMaker_forIdentifier(ReuseQueue::Maker maker, const NSString &identifier) { queue_.registerMaker(identifier, std::move(maker)); }
    // Null where the row does not exist, or is not on show and is not to be made.
    [[nodiscard]] std::shared_ptr<NSTableRowView> rowViewAtRow_makeIfNecessary(std::int64_t row, bool makeIfNecessary);
    [[nodiscard]] std::shared_ptr<NSView> viewAtColumn_row_makeIfNecessary(std::int64_t column, std::int64_t row, bool makeIfNecessary);
    // For a view in a cell, a cell, a row view; -1 where it does not stand in this table.
    [[nodiscard]] std::int64_t rowForView(const std::shared_ptr<NSView> &view) const;
    [[nodiscard]] std::int64_t columnForView(const std::shared_ptr<NSView> &view) const;
    // Rows that have views, top down.
    void enumerateAvailableRowViewsUsingBlock(const std::function<void(const std::shared_ptr<NSTableRowView> &, std::int64_t row)> &block);
    [[nodiscard]] std::size_t numberOfRowViews() const { return rowViews_.size(); }
    [[nodiscard]] std::size_t numberOfWaitingViews() const { return queue_.waiting(); }

    // ------------------------------------------------------------ geometry, in the table's own space
    [[nodiscard]] NSRect rectOfRow(std::int64_t row);
    [[nodiscard]] NSRect rectOfColumn(std::int64_t column) const;
    // Without the gaps.
    [[nodiscard]] virtual NSRect frameOfCellAtColumn_row(std::int64_t column, std::int64_t row);
    [[nodiscard]] std::int64_t rowAtPoint(NSPoint point);
    [[nodiscard]] std::int64_t columnAtPoint(NSPoint point) const { return point.y < 0 ? -1 : columnAtX(point.x); }
    [[nodiscard]] std::int64_t columnAtX(double x) const;
    [[nodiscard]] NSRange rowsInRect(const NSRect &rect);
    // What shows, in the table's space.
    [[nodiscard]] NSRect viewport() const;
    void scrollRowToVisible(std::int64_t row);
    void scrollToPoint(NSPoint offset);
    // Brings sizes and views in step with what shows; called by itself whenever something changed.
    void tile();

    // ------------------------------------------------------------ selection
    [[nodiscard]] const NSIndexSet &selectedRowIndexes() const { return selected_; }
    // The row that was selected last; -1 without a selection.
    [[nodiscard]] std::int64_t selectedRow() const;
    [[nodiscard]] std::int64_t numberOfSelectedRows() const { return static_cast<std::int64_t>(selected_.count()); }
    [[nodiscard]] bool isRowSelected(std::int64_t row) const { return row >= 0 && selected_.containsIndex(static_cast<std::size_t>(row)); }
    // Rows out of range are left out.
    void selectRowIndexes_byExtendingSelection(const NSIndexSet &rows, bool extend);
    void deselectRow(std::int64_t row);
    // Nothing where an empty selection is not allowed, or several rows are not.
    void deselectAll(const id &sender = {});
    void selectAll(const id &sender = {});
    [[nodiscard]] bool allowsMultipleSelection() const { return allowsMultiple_; }
    void setAllowsMultipleSelection(bool allows) { allowsMultiple_ = allows; }
    [[nodiscard]] bool allowsEmptySelection() const { return allowsEmpty_; }
    void setAllowsEmptySelection(bool allows) { allowsEmpty_ = allows; }

    // ------------------------------------------------------------ a person's doing
    // A whole click: selection, then action or double action. Row -1 is the empty area.
    void performClick(std::int64_t row, std::int64_t column = -1, NSEventModifierFlags modifiers = 0, int clickCount = 1);
    // Of the last click or right click; -1 for the empty area.
    [[nodiscard]] std::int64_t clickedRow() const { return clickedRow_; }
    [[nodiscard]] std::int64_t clickedColumn() const { return clickedColumn_; }
    [[nodiscard]] const std::string &doubleAction() const { return doubleAction_; }
    void setDoubleAction(std::string selector) { doubleAction_ = std::move(selector); }
    // Opens the cell's text field for a person. False where the cell has none or it cannot be edited.
    bool editColumn_row(std::int64_t column, std::int64_t row);

    void mouseDown(NSEvent &event) override;
    void mouseUp(NSEvent &event) override;
    void keyDown(NSEvent &event) override;
    [[nodiscard]] std::shared_ptr<NSMenu> menuForEvent(NSEvent &event) override;
    [[nodiscard]] bool isFlipped() const override { return true; }
    [[nodiscard]] bool mirrorsSubviews() const override { return false; }
    [[nodiscard]] bool acceptsFirstResponder() const override { return isEnabled(); }
    void viewDidMoveToSuperview() override;
    void setFrame(const NSRect &frame) override;
    void drawRect(const NSRect &rect, Canvas &canvas) override;
    [[nodiscard]] const std::shared_ptr<NSColor> &backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(std::shared_ptr<NSColor> color);

    // "rows 3 selection {0-1}"
    [[nodiscard]] std::string describeContent() const override;
    // Every row on show has its view in its place with its mark, no other row than those asked for has one; the selection
    // lies within the rows and agrees with the bound controller.
    [[nodiscard]] virtual bool isConsistent();
    void dealloc() override;
    HN_DECLARE_CLASS_TABLE

    void arrangedObjectsDidChange(NSArrayController &controller, const ListChange &change) override;
    void selectionIndexesDidChange(NSArrayController &controller) override;

protected:
    // What an outline answers through its own delegate. Rows exist.
    virtual std::int64_t askNumberOfRows();
    virtual std::shared_ptr<NSView> askView(const std::shared_ptr<NSTableColumn> &column, std::int64_t row);
    virtual std::shared_ptr<NSTableRowView> askRowView(std::int64_t row);
    virtual double askHeight(std::int64_t row);
    virtual bool askGroupRow(std::int64_t row);
    virtual bool askSelectionShouldChange();
    virtual NSIndexSet askProposedSelection(const NSIndexSet &proposed);
    virtual bool askReorder(std::int64_t column, std::int64_t to);
    virtual bool askEdit(const std::shared_ptr<NSTableColumn> &column, std::int64_t row);
    virtual void tellRowView(const std::shared_ptr<NSTableRowView> &view, std::int64_t row, bool added);
    virtual void tellHeaderPressed(const std::shared_ptr<NSTableColumn> &column);
    virtual void tellColumnClicked(const std::shared_ptr<NSTableColumn> &column);
    virtual void tellColumnMoved(std::int64_t from, std::int64_t to);
    virtual void tellSortDescriptors(const NSSortDescriptors &old);
    virtual void tellSelectionDidChange();
    // The value of a cell; the bound object or the data source's.
    virtual Value objectValueOf(const std::shared_ptr<NSTableColumn> &column, std::int64_t row);
    // Hands the selection to the bound controller.
    virtual void pushSelection();
    // A click that is no selection (an outline's mark); true where it was taken.
    virtual bool handlesClick(NSPoint, std::int64_t /*row*/) { return false; }
    // What stands in a row beside its cells (an outline's mark), above the row's ground; the canvas is in the row's space.
    virtual void drawInRow(NSTableRowView &, Canvas &) {}
    [[nodiscard]] static bool isRightToLeft();

    void delegateDidChange();
    // Takes a selection, hands it to the bound controller where `push` says so, and tells the delegate; nothing where it
    // is the same.
    void takeSelection(const NSIndexSet &rows, bool push);
    // The same rows under other numbers: the delegate is told only where some have gone.
    void shiftSelection(const NSIndexSet &rows, bool push);
    // As a person's: through the delegate.
    void proposeSelection(const NSIndexSet &proposed, std::int64_t lead);
    // Changes rows without touching the selection.
    void rowsCame(const NSIndexSet &rows);
    void rowsWent(const NSIndexSet &rows);
    // All rows anew, with this selection.
    void reloadWithSelection(const NSIndexSet &selection, bool push);
    void forgetAllRows();

private:
    friend class NSTableColumn;
    friend class NSTableHeaderView;
    friend class NSTableRowView;
    void columnDidChange(bool views = false);
    void headerPressed(std::int64_t column);
    void headerClicked(std::int64_t column);
    [[nodiscard]] bool mayReorder(std::int64_t column, std::int64_t to) { return askReorder(column, to); }
    [[nodiscard]] std::shared_ptr<NSClipView> clipView() const;
    [[nodiscard]] double columnsWidth() const;
    [[nodiscard]] double fullWidth() const;
    void fitColumns();
    void fitSize();
    [[nodiscard]] NSRange measureVisibleRows();
    double knownHeight(std::int64_t row);
    void tileOnce();
    std::shared_ptr<NSTableRowView> makeRow(std::int64_t row);
    void makeCell(NSTableRowView &view, std::size_t column);
    void markSelection(const NSIndexSet &rows, bool push);
    void placeRow(NSTableRowView &view);
    void recycleRow(std::map<std::int64_t, std::shared_ptr<NSTableRowView>>::iterator row);
    void recycleCell(NSTableRowView &view, std::size_t column);
    void renumberRows(const std::function<std::int64_t(std::int64_t)> &moved);
    [[nodiscard]] std::shared_ptr<NSTableRowView> rowViewOf(const std::shared_ptr<NSView> &view) const;
    void clickSelects(std::int64_t row, NSEventModifierFlags modifiers);
    void clickActs(int clickCount);
    void moveSelection(std::int64_t to, bool extend);
    [[nodiscard]] std::int64_t pageRows();

    std::weak_ptr<NSTableViewDelegate> delegate_;
    std::weak_ptr<NSTableViewDataSource> dataSource_;
    std::shared_ptr<NSArrayController> content_, selection_, sorting_;
    std::vector<std::shared_ptr<NSTableColumn>> columns_;
    std::shared_ptr<NSTableHeaderView> header_;
    NSSortDescriptors sortDescriptors_;
    RowHeights heights_;
    ReuseQueue queue_;
    std::map<std::int64_t, std::shared_ptr<NSTableRowView>> rowViews_;
    std::vector<RowAnimation> rowAnimations_;
    NSIndexSet selected_;
    std::int64_t lead_ = -1, anchor_ = -1, clickedRow_ = -1, clickedColumn_ = -1;
    std::string doubleAction_;
    std::shared_ptr<NSColor> backgroundColor_;
    NSPoint offset_;
    NSSize spacing_{3, 2};
    double rowHeight_ = 17;
    double beyondRight_ = 0, shownWidth_ = 0;   // of the content: what is hidden at the right, what the clip showed
    NSTableViewColumnAutoresizingStyle autoresizing_ = NSTableViewColumnAutoresizingStyle::lastColumnOnly;
    int updates_ = 0;
    std::uint64_t generation_ = 0;   // grows with each change of rows or columns
    bool isTiling_ = false, needsTile_ = false, isFitting_ = false, clickTaken_ = false;
    bool allowsMultiple_ = false, allowsEmpty_ = true, allowsColumnReordering_ = true;
};
