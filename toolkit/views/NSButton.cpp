#include "toolkit/views/NSButton.h"

#include <algorithm>

#include "toolkit/TextMeasurer.h"
#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSButton, NSControl, .key("title", keys::get(&NSButton::title), keys::set(&NSButton::setTitle))
                   .key("state", keys::get(&NSButton::state), keys::set(&NSButton::setState))
                   .key("image", keys::get(&NSButton::image), keys::set(&NSButton::setImage))
                   .key("alternateImage", keys::get(&NSButton::alternateImage), keys::set(&NSButton::setAlternateImage))
                   .key("attributedTitle", keys::get(&NSButton::attributedTitle), keys::set(&NSButton::setAttributedTitle))
                   .selector("performClick:", &NSButton::performClick))

#define HN_BUTTON_SETTER(Setter, Type, field, keyName) \
    void NSButton::Setter(Type value) {                \
        assertMain("NSButton " #Setter);               \
        field = std::move(value);                      \
        noteChanged(keyName);                          \
        invalidateIntrinsicContentSize();              \
    }
HN_BUTTON_SETTER(setAlternateTitle, NSString, alternateTitle_, "alternateTitle")
HN_BUTTON_SETTER(setAttributedTitle, std::shared_ptr<NSAttributedString>, attributedTitle_, "attributedTitle")
HN_BUTTON_SETTER(setImage, std::shared_ptr<NSImage>, image_, "image")
HN_BUTTON_SETTER(setAlternateImage, std::shared_ptr<NSImage>, alternateImage_, "alternateImage")
HN_BUTTON_SETTER(setImagePosition, NSCellImagePosition, imagePosition_, "imagePosition")
HN_BUTTON_SETTER(setButtonType, NSButtonType, type_, "buttonType")
HN_BUTTON_SETTER(setBordered, bool, isBordered_, "bordered")
HN_BUTTON_SETTER(setKeyEquivalent, NSString, keyEquivalent_, "keyEquivalent")
#undef HN_BUTTON_SETTER

void NSButton::setTitle(NSString title) {
    assertMain("NSButton setTitle:");
    title_ = std::move(title);
    attributedTitle_.reset();
    noteChanged("title");
    invalidateIntrinsicContentSize();
}

void NSButton::setState(int state) {
    assertMain("NSButton setState:");
    const int wanted = state == 0 ? NSOffState : state < 0 && allowsMixed_ ? NSMixedState : NSOnState;
    if (std::exchange(state_, wanted) != wanted)
        noteChanged("state");
}

void NSButton::setAllowsMixedState(bool allows) {
    allowsMixed_ = allows;
    if (!allows && state_ == NSMixedState)
        setState(NSOnState);
}

void NSButton::setNextState() {
    switch (state_) {
    case NSOffState:
        return setState(allowsMixed_ ? NSMixedState : NSOnState);
    case NSOnState:
        return setState(NSOffState);
    default:
        return setState(NSOnState);
    }
}

void NSButton::performClick() {
    assertMain("NSButton performClick:");
    if (!isEnabled() || isHiddenOrHasHiddenAncestor())
        return;
    const auto self = selfOf(this);   // the action may take the button out of its window
    if (type_ == NSButtonType::radio)
        setState(NSOnState);
    else if (type_ != NSButtonType::momentaryPushIn)
        setNextState();
    sendAction();
}

NSString NSButton::stringValue() const { return NSString(std::to_string(state_)); }

const std::shared_ptr<NSImage> &NSButton::shownImage() const {
    return alternateImage_ && (state_ == NSOnState || isHighlighted_) ? alternateImage_ : image_;
}

NSSize NSButton::intrinsicContentSize() const {
    constexpr double kImageEdge = 16, kGap = 4, kPushInset = 12;
    const NSString &text = attributedTitle_ ? attributedTitle_->string() : title_;
    NSSize size = text.isEmpty() ? NSSize{} : TextMeasurer::current()->boundingRect(text, font(), 0);
    const bool isBox = type_ == NSButtonType::switchButton || type_ == NSButtonType::radio;
    NSSize picture = image_ ? image_->size() : NSSize{};
    if (isBox && !image_)
        picture = {kImageEdge, kImageEdge};
    if (picture.width > 0) {
        size.width += picture.width + (text.isEmpty() ? 0 : kGap);
        size.height = std::max(size.height, picture.height);
    }
    if (isBordered_ && !isBox)
        return {size.width + 2 * kPushInset, std::max(size.height, 17.0) + 8};
    return size;
}

void NSButton::drawRect(const NSRect &, Canvas &canvas) {
    const NSRect area = bounds();
    const auto &picture = shownImage();
    if (picture && imagePosition_ != NSCellImagePosition::noImage) {
        const NSSize size = picture->size();
        const bool alone = title_.isEmpty() || imagePosition_ == NSCellImagePosition::imageOnly;
        canvas.drawImage(picture, {alone ? (area.size.width - size.width) / 2 : 0, (area.size.height - size.height) / 2, size.width, size.height});
    }
    if (imagePosition_ == NSCellImagePosition::imageOnly)
        return;
    TextStyle style = textStyle();
    if (isBordered_)
        style.alignment = NSTextAlignment::center;
    if (attributedTitle_)
        canvas.drawAttributedText(attributedTitle_, area, style);
    else
        canvas.drawText(title_, area, style);
}

void NSButton::setHighlighted(bool highlighted) {
    if (std::exchange(isHighlighted_, highlighted) != highlighted)
        noteChanged("highlighted");
}

void NSButton::mouseDown(NSEvent &) {
    if (!isEnabled())
        return;
    isPressed_ = true;
    setHighlighted(true);
}

void NSButton::mouseDragged(NSEvent &event) {
    if (isPressed_)
        setHighlighted(bounds().contains(convertPoint_fromView(event.locationInWindow, nullptr)));
}

void NSButton::mouseUp(NSEvent &event) {
    if (!std::exchange(isPressed_, false))
        return;
    setHighlighted(false);
    if (bounds().contains(convertPoint_fromView(event.locationInWindow, nullptr)))
        performClick();
}

void NSButton::keyDown(NSEvent &event) {
    if (event.keyCode == keycode::space && isEnabled())
        performClick();
    else
        NSControl::keyDown(event);
}

bool NSButton::performKeyEquivalent(NSEvent &event) {
    constexpr NSEventModifierFlags kLooked = NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand;
    if (keyEquivalent_.isEmpty() || !isEnabled() || isHiddenOrHasHiddenAncestor() || keyEquivalent_ != event.characters ||
        (event.modifierFlags & kLooked) != (keyMask_ & kLooked))
        return NSControl::performKeyEquivalent(event);
    performClick();
    return true;
}

std::string NSButton::describeContent() const {
    const NSString &text = attributedTitle_ ? attributedTitle_->string() : title_;
    std::string line = text.isEmpty() ? "" : "\"" + text.str() + "\"";
    line += state_ == NSOnState ? " on" : state_ == NSMixedState ? " mixed" : "";
    return line + (isEnabled() ? "" : " disabled");
}
