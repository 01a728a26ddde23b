#include "toolkit/views/NSControl.h"

#include <cstdio>

#include "toolkit/views/ClassKeys.h"
#include "toolkit/views/NSApplication.h"

HN_CLASS_TABLE(NSControl, NSView, .key("enabled", keys::get(&NSControl::isEnabled), keys::set(&NSControl::setEnabled))
                   .key("stringValue", keys::get(&NSControl::stringValue), keys::set(&NSControl::setStringValue))
                   .key("integerValue", keys::get(&NSControl::integerValue), keys::set(&NSControl::setIntegerValue))
                   .key("doubleValue", keys::get(&NSControl::doubleValue), keys::set(&NSControl::setDoubleValue))
                   .key("font", keys::get(&NSControl::font), keys::set(&NSControl::setFont))
                   .key("textColor", keys::get(&NSControl::textColor), keys::set(&NSControl::setTextColor))
                   .key("alignment", keys::get(&NSControl::alignment), keys::set(&NSControl::setAlignment)))

void NSControl::connect(const std::shared_ptr<NSObject> &target, std::string selector) {
    setTarget(target);
    setAction(std::move(selector));
}

bool NSControl::sendAction() {
    assertMain("NSControl sendAction");
    return !action_.empty() && NSApplication::sharedApplication()->sendAction_to_from(action_, target(), selfOf(this));
}

void NSControl::setEnabled(bool enabled) {
    assertMain("NSControl setEnabled:");
    if (std::exchange(isEnabled_, enabled) != enabled)
        noteChanged("enabled");
}

void NSControl::setStringValue(NSString text) {
    assertMain("NSControl setStringValue:");
    if (stringValue_ == text)
        return;
    stringValue_ = std::move(text);
    noteChanged("stringValue");
    invalidateIntrinsicContentSize();
}

void NSControl::setIntegerValue(std::int64_t number) { setStringValue(NSString(std::to_string(number))); }

void NSControl::setDoubleValue(double number) {
    char text[40];
    std::snprintf(text, sizeof text, "%.15g", number);
    setStringValue(NSString(text));
}

void NSControl::setFont(std::shared_ptr<NSFont> font) {
    assertMain("NSControl setFont:");
    font_ = std::move(font);
    noteChanged("font");
    invalidateIntrinsicContentSize();
}

void NSControl::setTextColor(std::shared_ptr<NSColor> color) {
    assertMain("NSControl setTextColor:");
    textColor_ = std::move(color);
    noteChanged("textColor");
}

void NSControl::setAlignment(NSTextAlignment alignment) {
    assertMain("NSControl setAlignment:");
    alignment_ = alignment;
    noteChanged("alignment");
}

void NSControl::setLineBreakMode(LineBreak mode) {
    assertMain("NSControl setLineBreakMode:");
    lineBreak_ = mode;
    noteChanged("lineBreakMode");
}

void NSControl::sizeToFit() {
    const NSSize natural = intrinsicContentSize();
    setFrameSize({natural.width >= 0 ? natural.width : frame().size.width, natural.height >= 0 ? natural.height : frame().size.height});
}

TextStyle NSControl::textStyle() const {
    NSTextAlignment alignment = alignment_;
    if (alignment == NSTextAlignment::natural)
        alignment = userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::rightToLeft ? NSTextAlignment::right
                                                                                                 : NSTextAlignment::left;
    return {font_, textColor_ ? textColor_ : NSColor::blackColor(), alignment, lineBreak_};
}

std::string NSControl::describeContent() const {
    const NSString text = stringValue();
    return (text.isEmpty() ? "" : "\"" + text.str() + "\"") + (isEnabled_ ? "" : " disabled");
}
