// Push buttons, check boxes, radio buttons, disclosure marks.
//
// State     1 on, 0 off, -1 mixed. A click on a check box goes off -> on -> off; where mixed is allowed
//           off -> mixed -> on -> off. Push buttons keep 0. setState of -1 without allowsMixedState gives 1.
// Click     a person's press and release inside, space or return with the focus, or performClick: the state goes on, then
//           the action is sent. A disabled or hidden button does nothing.
// Threads   main.
#pragma once

#include "toolkit/NSImage.h"
#include "toolkit/views/NSControl.h"

constexpr int NSMixedState = -1, NSOffState = 0, NSOnState = 1;

enum class NSButtonType { momentaryPushIn, toggle, switchButton, radio };
enum class NSCellImagePosition { noImage, imageOnly, imageLeft, imageRight, imageAbove, imageBelow, imageOverlaps };

class NSButton : public NSControl {
public:
    [[nodiscard]] const NSString &title() const { return title_; }
    virtual void setTitle(NSString title);
    [[nodiscard]] const NSString &alternateTitle() const { return alternateTitle_; }
    void setAlternateTitle(NSString title);
    // Null where the plain title stands.
    [[nodiscard]] const std::shared_ptr<NSAttributedString> &attributedTitle() const { return attributedTitle_; }
    void setAttributedTitle(std::shared_ptr<NSAttributedString> title);
    [[nodiscard]] const std::shared_ptr<NSImage> &image() const { return image_; }
    void setImage(std::shared_ptr<NSImage> image);
    // Shown while the state is on or the button is held down.
    [[nodiscard]] const std::shared_ptr<NSImage> &alternateImage() const { return alternateImage_; }
    void setAlternateImage(std::shared_ptr<NSImage> image);
    [[nodiscard]] NSCellImagePosition imagePosition() const { return imagePosition_; }
    void setImagePosition(NSCellImagePosition position);

    [[nodiscard]] NSButtonType buttonType() const { return type_; }
    void setButtonType(NSButtonType type);
    [[nodiscard]] int state() const { return state_; }
    virtual void setState(int state);
    [[nodiscard]] bool allowsMixedState() const { return allowsMixed_; }
    void setAllowsMixedState(bool allows);
    // Makes the step of one click.
    void setNextState();
    [[nodiscard]] bool isBordered() const { return isBordered_; }
    void setBordered(bool bordered);
    [[nodiscard]] bool isHighlighted() const { return isHighlighted_; }
    // "\r" is return, "\x1b" escape; modifiers as NSEvent's bits.
    [[nodiscard]] const NSString &keyEquivalent() const { return keyEquivalent_; }
    void setKeyEquivalent(NSString key);
    [[nodiscard]] NSEventModifierFlags keyEquivalentModifierMask() const { return keyMask_; }
    void setKeyEquivalentModifierMask(NSEventModifierFlags mask) { keyMask_ = mask; }

    virtual void performClick();

    // The values of a button are its state.
    [[nodiscard]] NSString stringValue() const override;
    void setStringValue(NSString text) override { setState(static_cast<int>(text.integerValue())); }
    [[nodiscard]] std::int64_t integerValue() const override { return state_; }
    void setIntegerValue(std::int64_t number) override { setState(static_cast<int>(number)); }
    [[nodiscard]] double doubleValue() const override { return state_; }
    void setDoubleValue(double number) override { setState(static_cast<int>(number)); }

    [[nodiscard]] NSSize intrinsicContentSize() const override;
    void drawRect(const NSRect &rect, Canvas &canvas) override;
    [[nodiscard]] bool acceptsFirstResponder() const override { return isEnabled(); }
    void mouseDown(NSEvent &event) override;
    void mouseDragged(NSEvent &event) override;
    void mouseUp(NSEvent &event) override;
    void keyDown(NSEvent &event) override;
    bool performKeyEquivalent(NSEvent &event) override;
    [[nodiscard]] std::string describeContent() const override;
    HN_DECLARE_CLASS_TABLE

protected:
    void setHighlighted(bool highlighted);

private:
    [[nodiscard]] const std::shared_ptr<NSImage> &shownImage() const;
    NSString title_, alternateTitle_, keyEquivalent_;
    std::shared_ptr<NSAttributedString> attributedTitle_;
    std::shared_ptr<NSImage> image_, alternateImage_;
    NSEventModifierFlags keyMask_ = 0;
    NSButtonType type_ = NSButtonType::momentaryPushIn;
    NSCellImagePosition imagePosition_ = NSCellImagePosition::imageLeft;
    int state_ = NSOffState;
    bool allowsMixed_ = false, isBordered_ = true, isHighlighted_ = false, isPressed_ = false;
};
