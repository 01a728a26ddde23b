// A view with a value and an action. The target is weak; a null target sends the action along the responder chain.
// Threads: main; setEnabled and the values throw elsewhere, as all views do.
#pragma once

#include <memory>
#include <string>

#include "toolkit/NSAttributedString.h"
#include "toolkit/views/NSView.h"

class NSControl : public NSView {
public:
    [[nodiscard]] std::shared_ptr<NSObject> target() const { return target_.lock(); }
    void setTarget(const std::shared_ptr<NSObject> &target) { target_ = target; }
    // A selector with its colons, "onDeleteButton:"; empty for none.
    [[nodiscard]] const std::string &action() const { return action_; }
    void setAction(std::string selector) { action_ = std::move(selector); }
    void connect(const std::shared_ptr<NSObject> &target, std::string selector);
    // Runs target->perform(action, {this}) inside the guard. False where nobody took it.
    bool sendAction();

    [[nodiscard]] bool isEnabled() const { return isEnabled_; }
    virtual void setEnabled(bool enabled);

    // Absent where it was never set; the numbers are read from the text, as NSString reads them.
    [[nodiscard]] virtual NSString stringValue() const { return stringValue_; }
    virtual void setStringValue(NSString text);
    [[nodiscard]] virtual std::int64_t integerValue() const { return stringValue().integerValue(); }
    virtual void setIntegerValue(std::int64_t number);
    [[nodiscard]] virtual double doubleValue() const { return stringValue().doubleValue(); }
    virtual void setDoubleValue(double number);

    // Null is the system's font and the default text colour.
    [[nodiscard]] const std::shared_ptr<NSFont> &font() const { return font_; }
    void setFont(std::shared_ptr<NSFont> font);
    [[nodiscard]] const std::shared_ptr<NSColor> &textColor() const { return textColor_; }
    void setTextColor(std::shared_ptr<NSColor> color);
    [[nodiscard]] NSTextAlignment alignment() const { return alignment_; }
    void setAlignment(NSTextAlignment alignment);
    [[nodiscard]] LineBreak lineBreakMode() const { return lineBreak_; }
    void setLineBreakMode(LineBreak mode);

    // Sets the size to the natural one.
    void sizeToFit();
    [[nodiscard]] std::string describeContent() const override;
    HN_DECLARE_CLASS_TABLE

protected:
    // The text as it stands, without telling anybody.
    void storeStringValue(NSString text) { stringValue_ = std::move(text); }
    [[nodiscard]] TextStyle textStyle() const;

private:
    std::weak_ptr<NSObject> target_;
    std::string action_;
    NSString stringValue_;
    std::shared_ptr<NSFont> font_;
    std::shared_ptr<NSColor> textColor_;
    NSTextAlignment alignment_ = NSTextAlignment::natural;
    LineBreak lineBreak_ = LineBreak::wrap;
    bool isEnabled_ = true;
};
