// The row of column titles above a table.
//
// Click    press: the delegate's mouseDownInHeaderOfTableColumn; release: the sort descriptors change (a column with a
//          prototype comes first, ascending as the prototype says; the column that is first already turns round), then
//          didClickTableColumn.
// Drag     by more than kDragDistance: the column goes where the delegate lets it. From a column's right edge: its width.
// Threads  main.
#pragma once

#include "toolkit/tables/NSTableHeaderCell.h"
#include "toolkit/views/NSView.h"

class NSTableView;

class NSTableHeaderView : public NSView {
public:
    static constexpr double kHeight = 23, kDragDistance = 4, kEdge = 3;

    void initWithFrame(const NSRect &frame) override;
    [[nodiscard]] std::shared_ptr<NSTableView> tableView() const { return tableView_.lock(); }
    void setTableView(const std::shared_ptr<NSTableView> &table) { tableView_ = table; }
    // Empty out of range.
    [[nodiscard]] NSRect headerRectOfColumn(std::int64_t column) const;
    // `point` in this view's bounds; -1 for none.
    [[nodiscard]] std::int64_t columnAtPoint(NSPoint point) const;
    // A whole click, as a person's.
    void performClickOnColumn(std::int64_t column);

    [[nodiscard]] bool isFlipped() const override { return true; }
    [[nodiscard]] bool mirrorsSubviews() const override { return false; }
    [[nodiscard]] bool acceptsFirstMouse() const override { return true; }
    void drawRect(const NSRect &rect, Canvas &canvas) override;
    void mouseDown(NSEvent &event) override;
    void mouseDragged(NSEvent &event) override;
    void mouseUp(NSEvent &event) override;
    HN_DECLARE_CLASS_TABLE

protected:
    void frameDidChange(const NSRect &old) override;

private:
    enum class Drag { none, refused, move, resize };
    void press(std::int64_t column);
    void release(std::int64_t column);

    std::weak_ptr<NSTableView> tableView_;
    NSPoint pressed_;
    std::int64_t pressedColumn_ = -1;
    double widthBefore_ = 0;
    Drag drag_ = Drag::none;
};
