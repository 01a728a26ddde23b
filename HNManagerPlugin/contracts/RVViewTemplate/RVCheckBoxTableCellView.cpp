#include "HNManagerPlugin/contracts/RVViewTemplate/RVCheckBoxTableCellView.h"

HN_CLASS_TABLE(RVCheckBoxTableCellView, NSTableCellView,
    .key("checkBox", [](NSObject &o) { return Value(static_cast<RVCheckBoxTableCellView &>(o).checkBox()); }))

void RVCheckBoxTableCellView::initWithFrame(const NSRect &frame) {
    checkBox_ = make<RUICheckBox>(NSRect(0, 0, kBox, kBox));
    checkBox_->setIdentifier("checkBox");
    checkBox_->setImagePosition(NSCellImagePosition::imageOnly);
    NSTableCellView::initWithFrame(frame);
    addSubview(checkBox_);
    frameDidChange({});
}

void RVCheckBoxTableCellView::frameDidChange(const NSRect &old) {
    NSTableCellView::frameDidChange(old);
    const NSSize size = frame().size;
    checkBox_->setFrameOrigin({(size.width - kBox) / 2, (size.height - kBox) / 2});
}
