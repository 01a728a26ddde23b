#include "toolkit/tables/NSTableColumn.h"

#include <algorithm>

#include "toolkit/tables/NSTableView.h"
#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSTableColumn, NSObjectTable,
    .key("identifier", &NSTableColumn::identifier_)
    .key("title", keys::get(&NSTableColumn::title), keys::set(&NSTableColumn::setTitle))
    .key("width", keys::get(&NSTableColumn::width), keys::set(&NSTableColumn::setWidth))
    .key("hidden", keys::get(&NSTableColumn::isHidden), keys::set(&NSTableColumn::setHidden))
    .key("editable", keys::get(&NSTableColumn::isEditable), keys::set(&NSTableColumn::setEditable))
    .key("headerCell", &NSTableColumn::headerCell_))

void NSTableColumn::initWithIdentifier(NSString identifier) {
    identifier_ = std::move(identifier);
    headerCell_ = make<NSTableHeaderCell>(NSString(""));
}

void NSTableColumn::changed(bool views) {
    tell(tableView_, [views](NSTableView &table) { table.columnDidChange(views); });
}

void NSTableColumn::setTitle(NSString title) {
    headerCell_->setTitle(std::move(title));
    changed();
}

void NSTableColumn::setWidth(double width) {
    width = std::max(minWidth_, std::min(width, maxWidth_));
    if (width == width_)
        return;
    width_ = width;
    changed();
}

void NSTableColumn::setMinWidth(double width) {
    minWidth_ = std::max(0.0, width);
    setWidth(width_);
}

void NSTableColumn::setMaxWidth(double width) {
    maxWidth_ = std::max(0.0, width);
    setWidth(width_);
}

void NSTableColumn::setHidden(bool hidden) {
    if (isHidden_ == hidden)
        return;
    isHidden_ = hidden;
    changed(true);
}

void NSTableColumn::setHeaderCell(std::shared_ptr<NSTableHeaderCell> cell) {
    headerCell_ = cell ? std::move(cell) : make<NSTableHeaderCell>(NSString(""));
    changed();
}
