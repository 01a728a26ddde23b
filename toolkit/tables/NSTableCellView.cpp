#include "toolkit/tables/NSTableCellView.h"

#include <utility>

#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSTableCellView, NSView,
    .key("textField", &NSTableCellView::textField_)
    .key("objectValue", keys::get(&NSTableCellView::objectValue), keys::set(&NSTableCellView::setObjectValue)))

void NSTableCellView::setObjectValue(Value value) {
    objectValue_ = std::move(value);
    if (!objectValue_.isAbsent() && objectValueDidChange)
        objectValueDidChange(*this);
}

Value NSTableCellView::valueOfObject(std::string_view keyPath) const {
    const id object = objectValue_.object();
    return object ? object->valueForKeyPath(keyPath) : Value();
}
