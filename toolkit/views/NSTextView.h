// Several lines of plain text (with attributes as they were set). Flipped; grows to its text's height. Threads: main.
#pragma once

#include "toolkit/NSAttributedString.h"
#include "toolkit/views/NSView.h"

class NSTextView;

class NSTextViewDelegate {
public:
    virtual ~NSTextViewDelegate() = default;
    virtual void textDidChange(NSTextView &) {}
    virtual void textDidEndEditing(NSTextView &) {}
    // True: taken.
    virtual bool textView_clickedOnLink(NSTextView &, const NSString & /*link*/) { return false; }
};

class NSTextView : public NSView {
public:
    [[nodiscard]] bool isFlipped() const override { return true; }
    // Never absent.
    [[nodiscard]] NSString string() const { return text_->string().isNil() ? NSString("") : text_->string(); }
    void setString(NSString text);
    [[nodiscard]] const std::shared_ptr<NSAttributedString> &attributedString() const { return text_; }
    // Null is the empty text.
    void setAttributedString(std::shared_ptr<NSAttributedString> text);
    // A person's typing: the whole text as it stands afterwards. Nothing where it is not editable.
    void typeText(NSString text);
    bool clickLink(std::size_t index);
    [[nodiscard]] bool isEditable() const { return isEditable_; }
    void setEditable(bool editable);
    [[nodiscard]] const std::shared_ptr<NSFont> &font() const { return font_; }
    void setFont(std::shared_ptr<NSFont> font);
    [[nodiscard]] const std::shared_ptr<NSColor> &textColor() const { return color_; }
    void setTextColor(std::shared_ptr<NSColor> color);
    template <class T> void setDelegate(const std::shared_ptr<T> &delegate) { delegate_ = std::shared_ptr<NSTextViewDelegate>(delegate); }
    // Sets the height to the text's at the present width.
    void sizeToFit();
    [[nodiscard]] bool acceptsFirstResponder() const override { return true; }
    bool resignFirstResponder() override;
    void drawRect(const NSRect &rect, Canvas &canvas) override;
    [[nodiscard]] std::string describeContent() const override;
    HN_DECLARE_CLASS_TABLE

private:
    std::shared_ptr<NSAttributedString> text_ = ::make<NSAttributedString>(NSString(""));
    std::shared_ptr<NSFont> font_;
    std::shared_ptr<NSColor> color_;
    std::weak_ptr<NSTextViewDelegate> delegate_;
    bool isEditable_ = true, isEditing_ = false;
};
