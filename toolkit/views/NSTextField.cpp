#include "toolkit/views/NSTextField.h"

#include <algorithm>

#include "toolkit/TextMeasurer.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/views/ClassKeys.h"
#include "toolkit/views/NSWindow.h"
#include "toolkit/views/Presenter.h"

HN_CLASS_TABLE(NSTextField, NSControl, .key("editable", keys::get(&NSTextField::isEditable), keys::set(&NSTextField::setEditable))
                   .key("placeholderString", keys::get(&NSTextField::placeholderString), keys::set(&NSTextField::setPlaceholderString))
                   .key("attributedStringValue", keys::get(&NSTextField::attributedStringValue),
                        keys::set(&NSTextField::setAttributedStringValue)))
HN_CLASS_TABLE(NSSecureTextField, NSTextField)

std::shared_ptr<NSTextField> NSTextField::labelWithString(NSString text) {
    const auto field = make<NSTextField>();
    field->isEditable_ = field->isBordered_ = field->drawsBackground_ = field->isSelectable_ = false;
    field->setStringValue(std::move(text));
    return field;
}

#define HN_FIELD_SETTER(Setter, Type, field, keyName) \
    void NSTextField::Setter(Type value) {            \
        assertMain("NSTextField " #Setter);           \
        field = std::move(value);                     \
        noteChanged(keyName);                         \
        invalidateIntrinsicContentSize();             \
    }
HN_FIELD_SETTER(setSelectable, bool, isSelectable_, "selectable")
HN_FIELD_SETTER(setBordered, bool, isBordered_, "bordered")
HN_FIELD_SETTER(setDrawsBackground, bool, drawsBackground_, "drawsBackground")
HN_FIELD_SETTER(setBackgroundColor, std::shared_ptr<NSColor>, backgroundColor_, "backgroundColor")
HN_FIELD_SETTER(setPlaceholderString, NSString, placeholder_, "placeholderString")
HN_FIELD_SETTER(setMaximumNumberOfLines, int, maximumLines_, "maximumNumberOfLines")
HN_FIELD_SETTER(setPreferredMaxLayoutWidth, double, preferredWidth_, "preferredMaxLayoutWidth")
#undef HN_FIELD_SETTER

void NSTextField::setEditable(bool editable) {
    assertMain("NSTextField setEditable:");
    isEditable_ = editable;
    noteChanged("editable");
    if (!editable)
        endEditing();
}

void NSTextField::setStringValue(NSString text) {
    assertMain("NSTextField setStringValue:");
    const bool wasAttributed = std::exchange(attributed_, nullptr) != nullptr;
    if (wasAttributed && stringValue() == text) {
        noteChanged("stringValue");
        return;
    }
    NSControl::setStringValue(std::move(text));
}

std::shared_ptr<NSAttributedString> NSTextField::attributedStringValue() const {
    return attributed_ ? attributed_ : make<NSAttributedString>(stringValue(), TextAttributes{font(), textColor(), false, {}});
}

void NSTextField::setAttributedStringValue(std::shared_ptr<NSAttributedString> text) {
    assertMain("NSTextField setAttributedStringValue:");
    attributed_ = std::move(text);
    storeStringValue(attributed_ ? attributed_->string() : NSString());
    noteChanged("attributedStringValue");
    invalidateIntrinsicContentSize();
}

// ---------------------------------------------------------------- editing

bool NSTextField::beginEditing() {
    assertMain("NSTextField beginEditing");
    if (isEditing_)
        return true;
    if (!isEditable_ || !isEnabled())
        return false;
    const auto delegate = this->delegate();
    if (delegate && !delegate->control_textShouldBeginEditing(*this))
        return false;
    isEditing_ = true;
    textBefore_ = stringValue();
    if (delegate)
        delegate->controlTextDidBeginEditing(*this);
    return true;
}

void NSTextField::typeText(NSString text) {
    const auto self = selfOf(this);
    if (!beginEditing())
        return;
    setStringValue(std::move(text));
    const std::size_t length = stringValue().length();
    selectedRange_ = {length, 0};
    if (const auto delegate = this->delegate())
        dispatch::guarded("controlTextDidChange:", [&] { delegate->controlTextDidChange(*this); });
}

bool NSTextField::endEditing(TextMovement movement) {
    assertMain("NSTextField endEditing");
    const auto self = selfOf(this);
    if (isEditing_) {
        const auto delegate = this->delegate();
        if (delegate && !delegate->control_textShouldEndEditing(*this))
            return false;
        isEditing_ = false;
        if (delegate)
            dispatch::guarded("controlTextDidEndEditing:", [&] { delegate->controlTextDidEndEditing(*this, movement); });
    }
    if (movement == TextMovement::returnKey && isEnabled())
        sendAction();
    return true;
}

void NSTextField::abortEditing() {
    if (!isEditing_)
        return;
    isEditing_ = false;
    setStringValue(textBefore_);
    if (const auto delegate = this->delegate())
        dispatch::guarded("controlTextDidEndEditing:", [&] { delegate->controlTextDidEndEditing(*this, TextMovement::cancel); });
}

void NSTextField::setSelectedRange(NSRange range) {
    const std::size_t length = stringValue().length();
    range.location = std::min(range.location, length);
    range.length = std::min(range.length, length - range.location);
    selectedRange_ = range;
    noteChanged("selectedRange", false);
}

void NSTextField::selectText() {
    const auto self = selfOf(this);
    if (const auto window = this->window(); window && window->firstResponder() != self && !window->makeFirstResponder(self))
        return;
    setSelectedRange({0, stringValue().length()});
    if (!isEditing_ && beginEditing())
        Presenter::current()->editorDidOpen(*this);
}

bool NSTextField::resignFirstResponder() { return endEditing(); }

bool NSTextField::doCommand(std::string_view selector) {
    const auto delegate = this->delegate();
    return delegate && delegate->control_doCommandBySelector(*this, selector);
}

void NSTextField::keyDown(NSEvent &event) {
    struct Command {
        std::uint16_t key;
        const char *selector;
    };
    static constexpr Command kCommands[] = {{keycode::returnKey, "insertNewline:"}, {keycode::enter, "insertNewline:"},
                                            {keycode::escape, "cancelOperation:"},  {keycode::down, "moveDown:"},
                                            {keycode::up, "moveUp:"},               {keycode::tab, "insertTab:"}};
    for (const Command &command : kCommands)
        if (command.key == event.keyCode && doCommand(command.selector))
            return;
    const bool isReturn = event.keyCode == keycode::returnKey || event.keyCode == keycode::enter;
    if (isReturn && isEditable_) {
        endEditing(TextMovement::returnKey);
        if (action().empty())
            NSControl::keyDown(event);   // return then belongs to the default button
    } else if (event.keyCode == keycode::deleteBackward && isEditable_) {
        const NSString text = stringValue();
        typeText(text.isEmpty() ? text : text.substringToIndex(text.length() - 1));
    } else if (isEditable_ && !event.characters.isEmpty() && !event.has(NSEventModifierFlagCommand) &&
               !unicode::isControl(event.characters.characterAtIndex(0))) {
        typeText((stringValue().isNil() ? NSString("") : stringValue()).stringByAppendingString(event.characters));
    } else {
        NSControl::keyDown(event);
    }
}

// ---------------------------------------------------------------- links

bool NSTextField::clickLink(std::size_t index) {
    const auto self = selfOf(this);
    const auto links = attributed_ ? attributed_->linkRuns() : std::vector<TextRun>();
    if (index >= links.size() || !isEnabled())
        return false;
    const NSString link = links[index].attributes.link;
    dispatch::guarded("a click on a link", [&] {
        if (const auto told = linkClicked)
            told(link);
        else if (const auto delegate = this->delegate())
            delegate->textField_clickedOnLink(*this, link);
    });
    return true;
}

void NSTextField::mouseDown(NSEvent &event) {
    const auto links = attributed_ ? attributed_->linkRuns() : std::vector<TextRun>();
    if (!links.empty()) {
        // Where the runs stand on the first line; a host with true metrics calls clickLink itself.
        const double x = convertPoint_fromView(event.locationInWindow, nullptr).x;
        const auto edge = [this](std::size_t index) {
            const auto style = attributed_->attributesAtIndex(index > 0 ? index - 1 : 0);
            return TextMeasurer::current()->boundingRect(attributed_->string().substringToIndex(index), style.font ? style.font : font(), 0).width;
        };
        for (std::size_t i = 0; i < links.size(); ++i)
            if (x >= edge(links[i].range.location) && x < edge(links[i].range.location + links[i].range.length)) {
                clickLink(i);
                return;
            }
    }
    if (!isSelectable())
        NSControl::mouseDown(event);
}

// ---------------------------------------------------------------- picture

NSSize NSTextField::intrinsicContentSize() const {
    const NSSize text = TextMeasurer::current()->boundingRect(stringValue(), font(), preferredWidth_);
    const double line = TextMeasurer::current()->boundingRect("", font(), 0).height;
    const double height = maximumLines_ > 0 ? std::min(text.height, maximumLines_ * line) : text.height;
    constexpr double kBorder = 3, kSide = 2;
    const double width = isEditable_ ? NSViewNoIntrinsicMetric : text.width + 2 * kSide;
    return {width, height + (isBordered_ ? 2 * kBorder : 0)};
}

void NSTextField::drawRect(const NSRect &, Canvas &canvas) {
    if (drawsBackground_)
        canvas.fillRect(bounds(), backgroundColor_ ? backgroundColor_ : NSColor::whiteColor());
    if (isBordered_)
        canvas.strokeRect(bounds(), NSColor::grayColor());
    TextStyle style = textStyle();
    const NSString text = stringValue();
    if (attributed_)
        canvas.drawAttributedText(attributed_, bounds(), style);
    else if (!text.isEmpty()) {
        std::string dots;
        for (std::size_t i = 0; isSecure() && i < text.length(); ++i)
            dots += "\u2022";
        canvas.drawText(isSecure() ? NSString(dots) : text, bounds(), style);
    } else {
        style.color = NSColor::grayColor();
        canvas.drawText(placeholder_, bounds(), style);
    }
}

std::string NSTextField::describeContent() const {
    std::string line = NSControl::describeContent();
    if (stringValue().isEmpty() && !placeholder_.isEmpty())
        line = "(" + placeholder_.str() + ")" + line;
    return line + (isEditing_ ? " editing" : "");
}

std::string NSSecureTextField::describeContent() const {
    return std::to_string(stringValue().length()) + " dots" + (isEnabled() ? "" : " disabled");
}
