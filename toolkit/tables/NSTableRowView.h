// One row of a table on show: its cells, its selection mark, whether the mouse is over it. Threads: main.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "toolkit/views/NSView.h"

class NSTableView;

class NSTableRowView : public NSView {
public:
    void initWithFrame(const NSRect &frame) override;

    [[nodiscard]] bool isSelected() const { return isSelected_; }
    virtual void setSelected(bool selected);
    // Called at once and on each change, while `owner` lives and stands in this row: a check box that mirrors the row's
    // selection. A second call for the same owner replaces the first.
    void observeSelected(const std::shared_ptr<NSObject> &owner, std::function<void(bool)> observer);

    // Painted while the mouse is over a row that is not selected, and on a selected row. Null paints nothing.
    [[nodiscard]] const std::shared_ptr<NSColor> &highlightColor() const { return highlightColor_; }
    void setHighlightColor(std::shared_ptr<NSColor> color);
    [[nodiscard]] const std::shared_ptr<NSColor> &selectedColor() const { return selectedColor_; }
    void setSelectedColor(std::shared_ptr<NSColor> color);
    [[nodiscard]] bool mouseInside() const { return mouseInside_; }
    [[nodiscard]] bool isGroupRowStyle() const { return isGroupRow_; }
    void setGroupRowStyle(bool group) { isGroupRow_ = group; }

    // In column order; null for a hidden column, for one without a view and out of range.
    [[nodiscard]] std::shared_ptr<NSView> viewAtColumn(std::int64_t column) const;
    [[nodiscard]] std::size_t numberOfColumns() const { return cells_.size(); }
    // -1 while the view waits for a row.
    [[nodiscard]] std::int64_t row() const { return row_; }
    [[nodiscard]] std::shared_ptr<NSTableView> tableView() const { return tableView_.lock(); }
    virtual void prepareForReuse() {}

    [[nodiscard]] bool isFlipped() const override { return true; }
    [[nodiscard]] bool mirrorsSubviews() const override { return false; }
    void drawRect(const NSRect &rect, Canvas &canvas) override;
    void mouseEntered(NSEvent &event) override;
    void mouseExited(NSEvent &event) override;
    [[nodiscard]] std::string describeContent() const override;
    HN_DECLARE_CLASS_TABLE

protected:
    virtual void setMouseInside(bool inside);

private:
    friend class NSTableView;
    struct Observer {
        std::weak_ptr<NSObject> owner;
        std::function<void(bool)> tell;
    };
    // Those in `cell`, or all for null.
    void dropObservers(const NSView *cell);

    std::vector<std::shared_ptr<NSView>> cells_;
    std::vector<Observer> observers_;
    std::shared_ptr<NSColor> highlightColor_, selectedColor_;
    std::weak_ptr<NSTableView> tableView_;
    std::int64_t row_ = -1;
    bool isSelected_ = false, mouseInside_ = false, isGroupRow_ = false;
};
