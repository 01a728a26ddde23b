// A column of a table. Widths in points, kept between minimum and maximum. Threads: main.
#pragma once

#include <memory>
#include <optional>

#include "toolkit/NSObject.h"
#include "toolkit/lists/NSSortDescriptor.h"
#include "toolkit/tables/NSTableHeaderCell.h"

class NSTableView;

class NSTableColumn : public NSObject {
public:
    void init() override { initWithIdentifier(NSString("")); }
    void init(NSString identifier) { initWithIdentifier(std::move(identifier)); }
    void initWithIdentifier(NSString identifier);

    [[nodiscard]] const NSString &identifier() const { return identifier_; }
    void setIdentifier(NSString identifier) { identifier_ = std::move(identifier); }
    // The header cell's.
    [[nodiscard]] NSString title() const { return headerCell_->title(); }
    void setTitle(NSString title);
    [[nodiscard]] double width() const { return width_; }
    void setWidth(double width);
    [[nodiscard]] double minWidth() const { return minWidth_; }
    void setMinWidth(double width);
    [[nodiscard]] double maxWidth() const { return maxWidth_; }
    void setMaxWidth(double width);
    [[nodiscard]] bool isEditable() const { return isEditable_; }
    void setEditable(bool editable) { isEditable_ = editable; }
    [[nodiscard]] bool isHidden() const { return isHidden_; }
    void setHidden(bool hidden);
    // Whether a person may drag its edge.
    [[nodiscard]] bool isResizable() const { return isResizable_; }
    void setResizable(bool resizable) { isResizable_ = resizable; }
    // What a click on the header sorts by; absent for a column that does not sort.
    [[nodiscard]] const std::optional<NSSortDescriptor> &sortDescriptorPrototype() const { return prototype_; }
    void setSortDescriptorPrototype(std::optional<NSSortDescriptor> prototype) { prototype_ = std::move(prototype); }
    [[nodiscard]] const std::shared_ptr<NSTableHeaderCell> &headerCell() const { return headerCell_; }
    // Null puts an empty plain cell there.
    void setHeaderCell(std::shared_ptr<NSTableHeaderCell> cell);
    [[nodiscard]] std::shared_ptr<NSTableView> tableView() const { return tableView_.lock(); }
    HN_DECLARE_CLASS_TABLE

private:
    friend class NSTableView;
    void changed(bool views = false);

    NSString identifier_;
    std::shared_ptr<NSTableHeaderCell> headerCell_;
    std::optional<NSSortDescriptor> prototype_;
    std::weak_ptr<NSTableView> tableView_;
    double width_ = 100, minWidth_ = 10, maxWidth_ = 1e7;
    bool isEditable_ = true, isHidden_ = false, isResizable_ = true;
};
