// A rectangle of the screen: its place, its subviews, its events, its picture. Headless: a host mirrors it.
//
// Making    make<NSView>() or make<NSView>(frame); subclasses set themselves up in initWithFrame, calling the base first.
// Space     frame is in the superview's bounds; bounds begin at (0, 0) unless scrolled. y counts up, or down in a view that
//           says isFlipped().
// Layout    at once: a changed size or constraint lays out the subviews before the call returns.
// Owners    the superview holds its subviews; superview and window are weak links back.
// Threads   main; mutators throw std::logic_error elsewhere. setHidden may be called on any thread: it hops.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/NSGeometry.h"
#include "toolkit/views/CALayer.h"
#include "toolkit/views/Canvas.h"
#include "toolkit/views/NSLayoutConstraint.h"
#include "toolkit/views/NSResponder.h"
#include "toolkit/views/ViewObserver.h"

class NSMenu;
class NSView;
class NSViewController;
class NSWindow;

// Bits of autoresizingMask: what takes part of a change of the superview's size.
constexpr unsigned NSViewNotSizable = 0, NSViewMinXMargin = 1, NSViewWidthSizable = 2, NSViewMaxXMargin = 4, NSViewMinYMargin = 8,
                   NSViewHeightSizable = 16, NSViewMaxYMargin = 32;

// The natural size of a view has no meaning on that axis.
constexpr double NSViewNoIntrinsicMetric = -1;

enum class NSUserInterfaceLayoutDirection { leftToRight, rightToLeft };

class NSTrackingArea : public NSObject {
public:
    using NSObject::init;
    // `rect` in the view's bounds; an empty one means the visible bounds, whatever they are. `owner` gets mouseEntered and
    // mouseExited.
    void init(const NSRect &rect, const std::shared_ptr<NSResponder> &owner);
    [[nodiscard]] const NSRect &rect() const { return rect_; }
    [[nodiscard]] std::shared_ptr<NSResponder> owner() const { return owner_.lock(); }
    HN_DECLARE_CLASS_TABLE

private:
    friend class NSWindow;
    NSRect rect_;
    std::weak_ptr<NSResponder> owner_;
    bool isInside_ = false;
};

// What animator() did, for a host that shows the way: key and the values before and after.
struct AnimatorRecord {
    std::string key;
    NSRect fromFrame, toFrame;
    double from = 0, to = 0;
};

// Sets at once and records.
class NSViewAnimator {
public:
    explicit NSViewAnimator(std::shared_ptr<NSView> view) : view_(std::move(view)) {}
    void setFrame(const NSRect &frame);
    void setFrameOrigin(NSPoint origin);
    void setAlphaValue(double alpha);
    void setHidden(bool hidden);

private:
    std::shared_ptr<NSView> view_;
};

class NSView : public NSResponder {
public:
    using List = std::vector<std::shared_ptr<NSView>>;

    void init() override { initWithFrame({}); }
    void init(const NSRect &frame) { initWithFrame(frame); }
    virtual void initWithFrame(const NSRect &frame);

    // ------------------------------------------------------------ identity
    [[nodiscard]] const NSString &identifier() const { return identifier_; }
    void setIdentifier(NSString identifier);
    // What a screen reader says; absent where the text on show says it.
    [[nodiscard]] const NSString &accessibilityName() const { return accessibilityName_; }
    void setAccessibilityName(NSString name);
    [[nodiscard]] const NSString &toolTip() const { return toolTip_; }
    void setToolTip(NSString text);
    [[nodiscard]] virtual std::int64_t tag() const { return tag_; }
    virtual void setTag(std::int64_t tag) { tag_ = tag; }

    // ------------------------------------------------------------ tree
    [[nodiscard]] const List &subviews() const { return subviews_; }
    [[nodiscard]] std::shared_ptr<NSView> superview() const { return superview_.lock(); }
    [[nodiscard]] std::shared_ptr<NSWindow> window() const;
    // On top of its new siblings; taken from its old superview first. A view that contains this one, or null, is ignored.
    virtual void addSubview(const std::shared_ptr<NSView> &view);
    // Just below `sibling`, at the very bottom where that is null.
    void addSubview_below(const std::shared_ptr<NSView> &view, const std::shared_ptr<NSView> &sibling);
    void removeFromSuperview();
    void replaceSubview_with(const std::shared_ptr<NSView> &old, const std::shared_ptr<NSView> &by);
    [[nodiscard]] bool isDescendantOf(const NSView &ancestor) const;
    // Nearest of both, possibly one of them; null without one.
    [[nodiscard]] std::shared_ptr<NSView> ancestorSharedWithView(const std::shared_ptr<NSView> &other);
    // Depth first, this view included; null where none has it.
    [[nodiscard]] std::shared_ptr<NSView> viewWithIdentifier(const NSString &identifier);
    [[nodiscard]] std::shared_ptr<NSView> viewWithTag(std::int64_t tag);
    // Every view below, this one first, parents before children; stops where `visit` says false.
    void walk(const std::function<bool(NSView &)> &visit);

    virtual void viewWillMoveToSuperview(const std::shared_ptr<NSView> &) {}
    virtual void viewDidMoveToSuperview() {}
    virtual void viewDidMoveToWindow() {}

    // ------------------------------------------------------------ geometry
    [[nodiscard]] const NSRect &frame() const { return frame_; }
    virtual void setFrame(const NSRect &frame);
    void setFrameOrigin(NSPoint origin) { setFrame({origin, frame_.size}); }
    void setFrameSize(NSSize size) { setFrame({frame_.origin, size}); }
    [[nodiscard]] NSRect bounds() const { return {boundsOrigin_, frame_.size}; }
    virtual void setBoundsOrigin(NSPoint origin);
    [[nodiscard]] virtual bool isFlipped() const { return false; }
    // Where the view stands in its superview. This is its frame, but from right to left a subview that nothing lays out is
    // seen from the other side: its frame says how far its right edge is from the superview's right edge.
    [[nodiscard]] NSRect placeInSuperview() const;
    // False for a view that has placed its own subviews from right to left already.
    [[nodiscard]] virtual bool mirrorsSubviews() const { return true; }
    // The part of the bounds that no ancestor cuts off; hidden views have an empty one.
    [[nodiscard]] virtual NSRect visibleRect() const;
    // Between this view's bounds and another's; null stands for the window's content space (y up).
    [[nodiscard]] NSPoint convertPoint_fromView(NSPoint point, const std::shared_ptr<NSView> &view) const;
    [[nodiscard]] NSPoint convertPoint_toView(NSPoint point, const std::shared_ptr<NSView> &view) const;
    [[nodiscard]] NSRect convertRect_fromView(const NSRect &rect, const std::shared_ptr<NSView> &view) const;
    [[nodiscard]] NSRect convertRect_toView(const NSRect &rect, const std::shared_ptr<NSView> &view) const;
    // `point` in the superview's bounds. The topmost visible view below it; null where it lies outside or this is hidden.
    [[nodiscard]] virtual std::shared_ptr<NSView> hitTest(NSPoint point);
    // Scrolls the nearest scroll view so far that `rect` of this view shows. True when something moved.
    bool scrollRectToVisible(const NSRect &rect);
    void scrollPoint(NSPoint point);

    // ------------------------------------------------------------ visibility
    [[nodiscard]] bool isHidden() const { return isHidden_; }
    virtual void setHidden(bool hidden);
    [[nodiscard]] bool isHiddenOrHasHiddenAncestor() const;
    [[nodiscard]] double alphaValue() const { return alphaValue_; }
    void setAlphaValue(double alpha);
    [[nodiscard]] NSViewAnimator animator();
    // What animators did since it was last taken.
    [[nodiscard]] std::vector<AnimatorRecord> takeAnimatorRecords();

    // ------------------------------------------------------------ layout
    [[nodiscard]] unsigned autoresizingMask() const { return autoresizingMask_; }
    void setAutoresizingMask(unsigned mask) { autoresizingMask_ = mask; }
    [[nodiscard]] bool autoresizesSubviews() const { return autoresizesSubviews_; }
    void setAutoresizesSubviews(bool autoresizes) { autoresizesSubviews_ = autoresizes; }
    // Off: only constraints place the view, a change of the superview's size does not touch it otherwise.
    [[nodiscard]] bool translatesAutoresizingMaskIntoConstraints() const { return translatesMask_; }
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates);
    [[nodiscard]] const std::vector<std::shared_ptr<NSLayoutConstraint>> &constraints() const { return constraints_; }
    void addConstraint(const std::shared_ptr<NSLayoutConstraint> &constraint);
    void addConstraints(const std::vector<std::shared_ptr<NSLayoutConstraint>> &constraints);
    void removeConstraint(const std::shared_ptr<NSLayoutConstraint> &constraint);
    // Ties all four edges of `view`, a direct subview, to this one's.
    void pinEdgesOf(const std::shared_ptr<NSView> &view, double left = 0, double top = 0, double right = 0, double bottom = 0);
    // The natural size; NSViewNoIntrinsicMetric on an axis without one.
    [[nodiscard]] virtual NSSize intrinsicContentSize() const { return {NSViewNoIntrinsicMetric, NSViewNoIntrinsicMetric}; }
    [[nodiscard]] virtual NSSize fittingSize() const { return intrinsicContentSize(); }
    // Lays out whoever places this view.
    void invalidateIntrinsicContentSize();
    // How firmly a view keeps to its natural size in a stack: below 250 it takes what is left over.
    [[nodiscard]] double contentHuggingPriority() const { return hugging_; }
    void setContentHuggingPriority(double priority);
    // Places the subviews: autoresizing has been done, this solves the constraints; a subclass may place its own.
    virtual void layout();
    // Calls of layout below are put together into one at the end of `changes`.
    void layoutOnceAfter(const std::function<void()> &changes);
    [[nodiscard]] static NSUserInterfaceLayoutDirection userInterfaceLayoutDirection();

    // ------------------------------------------------------------ picture
    // `rect` is the part of the bounds to paint.
    virtual void drawRect(const NSRect &rect, Canvas &canvas);
    void setNeedsDisplay(bool needed = true);
    void setNeedsDisplayInRect(const NSRect &rect);
    // Set until a host has painted.
    [[nodiscard]] bool needsDisplay() const { return needsDisplay_; }
    // Paints this view and all below into a canvas whose origin is the view's upper left corner; clears needsDisplay.
    void display(Canvas &canvas);
    // This view's own picture alone: layer and drawRect, not the subviews.
    void displaySelf(Canvas &canvas);
    [[nodiscard]] bool wantsLayer() const { return layer_ != nullptr; }
    void setWantsLayer(bool wants);
    [[nodiscard]] const std::shared_ptr<CALayer> &layer() const { return layer_; }
    void setLayer(std::shared_ptr<CALayer> layer);

    // ------------------------------------------------------------ events
    [[nodiscard]] const std::vector<std::shared_ptr<NSTrackingArea>> &trackingAreas() const { return trackingAreas_; }
    void addTrackingArea(const std::shared_ptr<NSTrackingArea> &area);
    void removeTrackingArea(const std::shared_ptr<NSTrackingArea> &area);
    // Called when the frame changed; a subclass renews its areas.
    virtual void updateTrackingAreas() {}
    [[nodiscard]] virtual bool acceptsFirstMouse() const { return false; }
    [[nodiscard]] const std::shared_ptr<NSMenu> &menu() const { return menu_; }
    void setMenu(std::shared_ptr<NSMenu> menu);
    // The context menu for a right click at the event's place; null for none.
    [[nodiscard]] virtual std::shared_ptr<NSMenu> menuForEvent(NSEvent &) { return menu_; }
    // Shows menuForEvent through the presenter, and passes the event on where there is none.
    void rightMouseDown(NSEvent &event) override;
    bool performKeyEquivalent(NSEvent &event) override;
    [[nodiscard]] std::shared_ptr<NSView> nextKeyView() const { return nextKeyView_.lock(); }
    void setNextKeyView(const std::shared_ptr<NSView> &view) { nextKeyView_ = view; }

    // ------------------------------------------------------------ dumps
    // The tree, one line per view: class, #identifier, frame, content, flags; two blanks per level.
    [[nodiscard]] std::string toString() const;
    // What the line says beyond the frame: a text in quotes, a state.
    [[nodiscard]] virtual std::string describeContent() const { return {}; }
    HN_DECLARE_CLASS_TABLE

    void dealloc() override;

protected:
    [[nodiscard]] std::shared_ptr<NSResponder> defaultNextResponder() const override;
    // For subclasses: tells the observers and, with `display`, asks for a new picture.
    void noteChanged(std::string_view key, bool display = true);
    // After the frame changed, before the observers are told.
    virtual void frameDidChange(const NSRect & /*old*/) {}
    virtual void resizeSubviewsWithOldSize(NSSize old);
    // Called when an arranged or constrained subview changed its natural size.
    virtual void subviewDidChangeIntrinsicSize(NSView &) { layout(); }
    virtual void willRemoveSubview(NSView &) {}
    virtual void didAddSubview(NSView &) {}

private:
    friend class NSLayoutConstraint;
    friend class LayoutProblem;
    friend class NSWindow;
    friend class NSViewController;
    friend class NSViewAnimator;
    void setWindow(const std::shared_ptr<NSWindow> &window);
    void insertSubview(const std::shared_ptr<NSView> &view, std::size_t index);
    void detach(NSView &view);
    [[nodiscard]] NSPoint toWindow(NSPoint point) const;
    [[nodiscard]] NSPoint fromWindow(NSPoint point) const;
    [[nodiscard]] NSPoint toSuperview(NSPoint point) const;
    [[nodiscard]] NSPoint fromSuperview(NSPoint point) const;
    void solveConstraints();

    NSString identifier_, accessibilityName_, toolTip_;
    NSRect frame_;
    NSPoint boundsOrigin_;
    std::weak_ptr<NSView> superview_;
    std::weak_ptr<NSWindow> window_;
    std::weak_ptr<NSResponder> controller_;
    List subviews_;
    std::vector<std::shared_ptr<NSLayoutConstraint>> constraints_;
    std::vector<std::shared_ptr<NSTrackingArea>> trackingAreas_;
    std::vector<AnimatorRecord> animatorRecords_;
    std::shared_ptr<CALayer> layer_;
    std::shared_ptr<NSMenu> menu_;
    std::weak_ptr<NSView> nextKeyView_;
    std::int64_t tag_ = 0;
    double alphaValue_ = 1, hugging_ = 250;
    unsigned autoresizingMask_ = NSViewNotSizable;
    int layoutHeld_ = 0;
    bool isHidden_ = false, needsDisplay_ = true, translatesMask_ = true, autoresizesSubviews_ = true;
};

// Throws std::logic_error where the caller does not stand on the main thread.
void assertMain(const char *what);
