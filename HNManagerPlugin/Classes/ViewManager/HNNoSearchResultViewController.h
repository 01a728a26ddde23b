// The panel that covers a list: loading, no data, or nothing found. Three flags, bound to its parts, choose which.
// Main thread; the flags may be set on any.
#pragma once

#include "toolkit/Property.h"
#include "toolkit/views/CALayer.h"
#include "toolkit/views/NSImageView.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSViewController.h"

// A layer that always turns about its middle.
class CenterAnchorPointLayer : public CALayer {
public:
    HN_DECLARE_CLASS_TABLE
    [[nodiscard]] NSPoint anchorPoint() const override { return {0.5, 0.5}; }
};

// The panel's root: a click on it reaches nothing below.
class HNNOSearchView : public NSView {
public:
    HN_DECLARE_CLASS_TABLE
    void mouseDown(NSEvent &) override {}
    void mouseUp(NSEvent &) override {}
    void rightMouseDown(NSEvent &) override {}
    void rightMouseUp(NSEvent &) override {}
};

class HNNoSearchResultViewController : public NSViewController {
public:
    HN_DECLARE_CLASS_TABLE

    Property<bool> hiddenNoSearchFieldInfo;   // hides the block that says that nothing was found
    Property<bool> hiddenNoDataInfo;          // hides the no-data picture
    Property<bool> hiddenRemindString;        // hides the line below
    std::weak_ptr<NSTextField> remindString;  // loading or no-data text
    std::weak_ptr<NSTextField> noSearchString;
    std::weak_ptr<NSImageView> animationImageView;   // the spinner
    Property<NSString> midLabelStr;
    NSPoint animationCenterPoint;

    void awakeFromNib() override;
    // One full turn a second, for ever; centres the spinner's layer first.
    [[nodiscard]] std::shared_ptr<CABasicAnimation> rotationAnimation();
};
