#include "toolkit/views/NSBox.h"

#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSBox, NSView, .key("title", keys::get(&NSBox::title), keys::set(&NSBox::setTitle)))

void NSBox::initWithFrame(const NSRect &frame) {
    NSView::initWithFrame(frame);
    setContentView(make<NSView>());
}

#define HN_BOX_SETTER(Setter, Type, field, keyName) \
    void NSBox::Setter(Type value) {                \
        assertMain("NSBox " #Setter);               \
        field = std::move(value);                   \
        noteChanged(keyName);                       \
        layout();                                   \
    }
HN_BOX_SETTER(setTitle, NSString, title_, "title")
HN_BOX_SETTER(setSeparator, bool, isSeparator_, "separator")
HN_BOX_SETTER(setFillColor, std::shared_ptr<NSColor>, fillColor_, "fillColor")
HN_BOX_SETTER(setBorderColor, std::shared_ptr<NSColor>, borderColor_, "borderColor")
HN_BOX_SETTER(setBorderWidth, double, borderWidth_, "borderWidth")
#undef HN_BOX_SETTER

void NSBox::setContentView(const std::shared_ptr<NSView> &view) {
    assertMain("NSBox setContentView:");
    if (content_ == view)
        return;
    if (content_)
        content_->removeFromSuperview();
    content_ = view;
    if (view)
        addSubview(view);
}

void NSBox::layout() {
    NSView::layout();
    if (content_ && content_->translatesAutoresizingMaskIntoConstraints())
        content_->setFrame(bounds().insetBy(borderWidth_, borderWidth_));
}

void NSBox::drawRect(const NSRect &, Canvas &canvas) {
    const NSRect area = bounds();
    if (isSeparator_) {
        const bool isRow = area.size.width >= area.size.height;
        const NSPoint from{isRow ? area.minX() : area.minX() + area.size.width / 2, isRow ? area.minY() + area.size.height / 2 : area.minY()};
        canvas.strokeLine(from, {isRow ? area.maxX() : from.x, isRow ? from.y : area.maxY()}, borderColor_, borderWidth_);
        return;
    }
    canvas.fillRect(area, fillColor_);
    canvas.strokeRect(area, borderColor_, borderWidth_);
}

std::string NSBox::describeContent() const { return isSeparator_ ? "separator" : title_.isEmpty() ? "" : "\"" + title_.str() + "\""; }
