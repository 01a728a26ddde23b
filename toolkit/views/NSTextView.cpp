#include "toolkit/views/NSTextView.h"

#include "toolkit/TextMeasurer.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSTextView, NSView, .key("string", keys::get(&NSTextView::string), keys::set(&NSTextView::setString))
                   .key("editable", keys::get(&NSTextView::isEditable), keys::set(&NSTextView::setEditable)))

void NSTextView::setString(NSString text) { setAttributedString(::make<NSAttributedString>(std::move(text))); }

void NSTextView::setAttributedString(std::shared_ptr<NSAttributedString> text) {
    assertMain("NSTextView setAttributedString:");
    text_ = text ? std::move(text) : ::make<NSAttributedString>(NSString(""));
    noteChanged("string");
}

void NSTextView::typeText(NSString text) {
    if (!isEditable_)
        return;
    const auto self = selfOf(this);
    isEditing_ = true;
    setString(std::move(text));
    tell(delegate_, [&](NSTextViewDelegate &delegate) { dispatch::guarded("textDidChange:", [&] { delegate.textDidChange(*this); }); });
}

bool NSTextView::resignFirstResponder() {
    if (std::exchange(isEditing_, false))
        tell(delegate_, [&](NSTextViewDelegate &delegate) {
            dispatch::guarded("textDidEndEditing:", [&] { delegate.textDidEndEditing(*this); });
        });
    return true;
}

bool NSTextView::clickLink(std::size_t index) {
    const auto links = text_->linkRuns();
    if (index >= links.size())
        return false;
    bool taken = false;
    tell(delegate_, [&](NSTextViewDelegate &delegate) {
        dispatch::guarded("a click on a link", [&] { taken = delegate.textView_clickedOnLink(*this, links[index].attributes.link); });
    });
    return taken;
}

void NSTextView::setEditable(bool editable) {
    assertMain("NSTextView setEditable:");
    isEditable_ = editable;
    noteChanged("editable");
}

void NSTextView::setFont(std::shared_ptr<NSFont> font) {
    assertMain("NSTextView setFont:");
    font_ = std::move(font);
    noteChanged("font");
}

void NSTextView::setTextColor(std::shared_ptr<NSColor> color) {
    assertMain("NSTextView setTextColor:");
    color_ = std::move(color);
    noteChanged("textColor");
}

void NSTextView::sizeToFit() {
    setFrameSize({frame().size.width, TextMeasurer::current()->boundingRect(text_->string(), font_, frame().size.width).height});
}

void NSTextView::drawRect(const NSRect &, Canvas &canvas) {
    canvas.drawAttributedText(text_, bounds(), {font_, color_ ? color_ : NSColor::blackColor(), NSTextAlignment::left, LineBreak::wrap});
}

std::string NSTextView::describeContent() const { return "\"" + string().str() + "\""; }
