// A line or a paragraph of text, shown or edited.
//
// Editing   a person's typing comes through `typeText` (a host's native field hands in the whole text) and ends with
//           `endEditing`; both tell the delegate. setStringValue tells nobody.
// Return    `endEditing(TextMovement::returnKey)` sends the action after the delegate was told.
// Links     runs of the attributed value with a link; a click on one tells `linkClicked`, else the delegate.
// Threads   main.
#pragma once

#include <functional>

#include "toolkit/views/NSControl.h"

class NSTextField;

enum class TextMovement { other, returnKey, tab, backtab, cancel };

// All optional. The field's delegate is weak; calls that it does not override do nothing.
class NSTextFieldDelegate {
public:
    virtual ~NSTextFieldDelegate() = default;
    virtual bool control_textShouldBeginEditing(NSTextField &) { return true; }
    virtual void controlTextDidBeginEditing(NSTextField &) {}
    virtual void controlTextDidChange(NSTextField &) {}
    virtual bool control_textShouldEndEditing(NSTextField &) { return true; }
    virtual void controlTextDidEndEditing(NSTextField &, TextMovement) {}
    // A key command inside the field ("insertNewline:", "cancelOperation:", "moveDown:"); true: taken.
    virtual bool control_doCommandBySelector(NSTextField &, std::string_view /*selector*/) { return false; }
    virtual void textField_clickedOnLink(NSTextField &, const NSString & /*link*/) {}
};

class NSTextField : public NSControl {
public:
    // An uneditable, unbordered line.
    [[nodiscard]] static std::shared_ptr<NSTextField> labelWithString(NSString text);

    [[nodiscard]] bool isEditable() const { return isEditable_; }
    virtual void setEditable(bool editable);
    [[nodiscard]] bool isSelectable() const { return isSelectable_ || isEditable_; }
    void setSelectable(bool selectable);
    [[nodiscard]] bool isBordered() const { return isBordered_; }
    void setBordered(bool bordered);
    [[nodiscard]] bool drawsBackground() const { return drawsBackground_; }
    void setDrawsBackground(bool draws);
    [[nodiscard]] const std::shared_ptr<NSColor> &backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(std::shared_ptr<NSColor> color);
    [[nodiscard]] const NSString &placeholderString() const { return placeholder_; }
    void setPlaceholderString(NSString text);
    // A secure field shows dots; see NSSecureTextField.
    [[nodiscard]] virtual bool isSecure() const { return false; }
    // Lines before the text is cut; 0 for any.
    [[nodiscard]] int maximumNumberOfLines() const { return maximumLines_; }
    void setMaximumNumberOfLines(int lines);
    // Where lines break, for the natural height; 0 for one line.
    [[nodiscard]] double preferredMaxLayoutWidth() const { return preferredWidth_; }
    void setPreferredMaxLayoutWidth(double width);

    // Setting either value drops the other; the attributed value of a plain field is made from font and colour.
    void setStringValue(NSString text) override;
    [[nodiscard]] std::shared_ptr<NSAttributedString> attributedStringValue() const;
    void setAttributedStringValue(std::shared_ptr<NSAttributedString> text);
    [[nodiscard]] bool hasAttributedValue() const { return attributed_ != nullptr; }

    template <class T> void setDelegate(const std::shared_ptr<T> &delegate) { delegate_ = std::shared_ptr<NSTextFieldDelegate>(delegate); }
    void setDelegate(std::nullptr_t) { delegate_.reset(); }
    [[nodiscard]] std::shared_ptr<NSTextFieldDelegate> delegate() const { return delegate_.lock(); }

    // ------------------------------------------------------------ a person's doing
    // False where the field is not editable, not enabled, or the delegate refuses.
    bool beginEditing();
    // The whole text as it stands after one change by a person. Begins editing where that has not been done.
    void typeText(NSString text);
    // False where the delegate keeps the editor open. Nothing where nobody edits.
    bool endEditing(TextMovement movement = TextMovement::other);
    // Puts the text of before back, tells the end with `cancel`.
    void abortEditing();
    [[nodiscard]] bool isEditing() const { return isEditing_; }
    // Selection of the editor; characters.
    [[nodiscard]] NSRange selectedRange() const { return selectedRange_; }
    void setSelectedRange(NSRange range);
    // A program's wish that a person edits here: takes the focus, selects all, opens the editor through the presenter.
    void selectText();
    // Clicks the n-th link; false without one.
    bool clickLink(std::size_t index);
    std::function<void(const NSString &link)> linkClicked;

    [[nodiscard]] NSSize intrinsicContentSize() const override;
    void drawRect(const NSRect &rect, Canvas &canvas) override;
    [[nodiscard]] bool acceptsFirstResponder() const override { return isEnabled() && isSelectable(); }
    bool resignFirstResponder() override;
    void mouseDown(NSEvent &event) override;
    void keyDown(NSEvent &event) override;
    [[nodiscard]] std::string describeContent() const override;
    HN_DECLARE_CLASS_TABLE

private:
    bool doCommand(std::string_view selector);
    std::shared_ptr<NSAttributedString> attributed_;
    std::shared_ptr<NSColor> backgroundColor_;
    std::weak_ptr<NSTextFieldDelegate> delegate_;
    NSString placeholder_, textBefore_;
    NSRange selectedRange_;
    double preferredWidth_ = 0;
    int maximumLines_ = 0;
    bool isEditable_ = true, isSelectable_ = true, isBordered_ = true, drawsBackground_ = true, isEditing_ = false;
};

class NSSecureTextField : public NSTextField {
public:
    [[nodiscard]] bool isSecure() const override { return true; }
    [[nodiscard]] std::string describeContent() const override;
    HN_DECLARE_CLASS_TABLE
};
