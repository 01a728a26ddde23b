#include "toolkit/views/NSView.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "toolkit/dispatch/Queue.h"
#include "toolkit/views/ClassKeys.h"
#include "toolkit/views/LayoutEngine.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSMenu.h"
#include "toolkit/views/NSScrollView.h"
#include "toolkit/views/NSWindow.h"

HN_CLASS_TABLE(NSView, NSResponder, .key("identifier", keys::get(&NSView::identifier), keys::set(&NSView::setIdentifier))
                   .key("accessibilityName", keys::get(&NSView::accessibilityName), keys::set(&NSView::setAccessibilityName))
                   .key("toolTip", keys::get(&NSView::toolTip), keys::set(&NSView::setToolTip))
                   .key("tag", keys::get(&NSView::tag), keys::set(&NSView::setTag))
                   .key("hidden", keys::get(&NSView::isHidden), keys::set(&NSView::setHidden))
                   .key("alphaValue", keys::get(&NSView::alphaValue), keys::set(&NSView::setAlphaValue))
                   .key("menu", keys::get(&NSView::menu), keys::set(&NSView::setMenu)))
HN_CLASS_TABLE(NSTrackingArea, NSObjectTable)

void assertMain(const char *what) {
    if (!dispatch::isMain())
        throw std::logic_error(std::string(what) + " off the main thread");
}

void NSTrackingArea::init(const NSRect &rect, const std::shared_ptr<NSResponder> &owner) {
    rect_ = rect;
    owner_ = owner;
}

void NSView::initWithFrame(const NSRect &frame) {
    assertMain("NSView initWithFrame:");
    frame_ = frame;
}

void NSView::dealloc() {
    for (const auto &view : subviews_) {
        view->superview_.reset();
        view->setWindow(nullptr);
    }
    NSResponder::dealloc();
}

void NSView::noteChanged(std::string_view key, bool display) {
    ViewObserver::tellAll([&](ViewObserver &observer) { observer.propertyChanged(*this, key); });
    if (display)
        setNeedsDisplay(true);
}

void NSView::setIdentifier(NSString identifier) {
    assertMain("NSView setIdentifier:");
    identifier_ = std::move(identifier);
    noteChanged("identifier", false);
}

void NSView::setAccessibilityName(NSString name) {
    assertMain("NSView setAccessibilityName:");
    accessibilityName_ = std::move(name);
    noteChanged("accessibilityName", false);
}

void NSView::setToolTip(NSString text) {
    assertMain("NSView setToolTip:");
    toolTip_ = std::move(text);
    noteChanged("toolTip", false);
}

void NSView::setMenu(std::shared_ptr<NSMenu> menu) {
    assertMain("NSView setMenu:");
    menu_ = std::move(menu);
    noteChanged("menu", false);
}

// ---------------------------------------------------------------- tree

std::shared_ptr<NSWindow> NSView::window() const { return window_.lock(); }

void NSView::setWindow(const std::shared_ptr<NSWindow> &window) {
    if (window_.lock() == window && (window || window_.expired()) && subviews_.empty())
        return;
    window_ = window;
    const List below = subviews_;
    for (const auto &view : below)
        view->setWindow(window);
    viewDidMoveToWindow();
}

void NSView::addSubview(const std::shared_ptr<NSView> &view) { insertSubview(view, subviews_.size()); }

void NSView::addSubview_below(const std::shared_ptr<NSView> &view, const std::shared_ptr<NSView> &sibling) {
    if (view && view != sibling && view->superview().get() == this)
        view->removeFromSuperview();
    const auto found = std::ranges::find(subviews_, sibling);
    insertSubview(view, sibling && found != subviews_.end() ? static_cast<std::size_t>(found - subviews_.begin()) : 0);
}

void NSView::insertSubview(const std::shared_ptr<NSView> &view, std::size_t index) {
    assertMain("NSView addSubview:");
    if (!view || isDescendantOf(*view))
        return;
    const auto self = selfOf(this);
    view->viewWillMoveToSuperview(self);
    if (view->superview())
        view->removeFromSuperview();
    view->superview_ = self;
    subviews_.insert(subviews_.begin() + static_cast<std::ptrdiff_t>(std::min(index, subviews_.size())), view);
    view->setWindow(window());
    view->viewDidMoveToSuperview();
    didAddSubview(*view);
    ViewObserver::tellAll([&](ViewObserver &observer) { observer.subviewsChanged(*this); });
    layout();
    setNeedsDisplay(true);
}

void NSView::detach(NSView &view) {
    for (NSView *above = this; above; above = above->superview_.lock().get()) {
        const auto kept = above->constraints_;
        for (const auto &constraint : kept) {
            const auto first = constraint->firstItem(), second = constraint->secondItem();
            if ((first && first->isDescendantOf(view)) || (second && second->isDescendantOf(view))) {
                constraint->owner_.reset();
                std::erase(above->constraints_, constraint);
            }
        }
    }
}

void NSView::removeFromSuperview() {
    assertMain("NSView removeFromSuperview");
    const auto above = superview();
    if (!above)
        return;
    const auto self = selfOf(this);   // the superview may hold the last link
    if (const auto window = this->window())
        window->viewWillLeave(*this);
    above->willRemoveSubview(*this);
    above->detach(*this);
    std::erase(above->subviews_, self);
    superview_.reset();
    setWindow(nullptr);
    viewDidMoveToSuperview();
    ViewObserver::tellAll([&](ViewObserver &observer) { observer.subviewsChanged(*above); });
    above->layout();
    above->setNeedsDisplay(true);
}

void NSView::replaceSubview_with(const std::shared_ptr<NSView> &old, const std::shared_ptr<NSView> &by) {
    const auto found = std::ranges::find(subviews_, old);
    if (found == subviews_.end() || old == by)
        return;
    const auto index = static_cast<std::size_t>(found - subviews_.begin());
    old->removeFromSuperview();
    insertSubview(by, index);
}

bool NSView::isDescendantOf(const NSView &ancestor) const {
    for (const NSView *view = this; view; view = view->superview_.lock().get())
        if (view == &ancestor)
            return true;
    return false;
}

std::shared_ptr<NSView> NSView::ancestorSharedWithView(const std::shared_ptr<NSView> &other) {
    for (auto view = selfOf(this); view && other; view = view->superview())
        if (other->isDescendantOf(*view))
            return view;
    return nullptr;
}

void NSView::walk(const std::function<bool(NSView &)> &visit) {
    List open{selfOf(this)};
    while (!open.empty()) {
        const auto view = open.back();
        open.pop_back();
        if (!visit(*view))
            return;
        open.insert(open.end(), view->subviews_.rbegin(), view->subviews_.rend());
    }
}

std::shared_ptr<NSView> NSView::viewWithIdentifier(const NSString &identifier) {
    std::shared_ptr<NSView> found;
    walk([&](NSView &view) {
        if (view.identifier_ == identifier && !identifier.isNil())
            found = selfOf(&view);
        return !found;
    });
    return found;
}

std::shared_ptr<NSView> NSView::viewWithTag(std::int64_t tag) {
    std::shared_ptr<NSView> found;
    walk([&](NSView &view) {
        if (view.tag() == tag)
            found = selfOf(&view);
        return !found;
    });
    return found;
}

std::shared_ptr<NSResponder> NSView::defaultNextResponder() const {
    if (const auto controller = controller_.lock())
        return controller;
    if (const auto above = superview())
        return above;
    return std::static_pointer_cast<NSResponder>(window());
}

// ---------------------------------------------------------------- geometry

namespace {
double finiteOr0(double value) { return std::isfinite(value) ? value : 0; }
}  // namespace

void NSView::setFrame(const NSRect &wanted) {
    assertMain("NSView setFrame:");
    const NSRect frame(finiteOr0(wanted.origin.x), finiteOr0(wanted.origin.y), std::max(0.0, finiteOr0(wanted.size.width)),
                       std::max(0.0, finiteOr0(wanted.size.height)));
    if (frame == frame_)
        return;
    const NSRect old = std::exchange(frame_, frame);
    frameDidChange(old);
    if (old.size != frame.size) {
        layoutOnceAfter([&] { resizeSubviewsWithOldSize(old.size); });
        setNeedsDisplay(true);
    }
    updateTrackingAreas();
    ViewObserver::tellAll([&](ViewObserver &observer) { observer.frameChanged(*this); });
    const auto above = superview();
    if (above && !above->constraints_.empty())
        above->layout();
}

void NSView::setBoundsOrigin(NSPoint origin) {
    assertMain("NSView setBoundsOrigin:");
    if (boundsOrigin_ == origin)
        return;
    boundsOrigin_ = origin;
    noteChanged("boundsOrigin");
}

namespace {
struct Side {
    double start, size;
};
// How a subview follows when its superview's extent goes from `old` to `now`; the flexible parts share the difference by
// their lengths.
Side resized(Side side, double old, double now, bool minFlexes, bool sizeFlexes, bool maxFlexes) {
    const double delta = now - old;
    const int flexible = minFlexes + sizeFlexes + maxFlexes;
    if (flexible == 0 || delta == 0)
        return side;
    const double minPart = minFlexes ? side.start : 0, sizePart = sizeFlexes ? side.size : 0,
                 maxPart = maxFlexes ? old - side.start - side.size : 0;
    const double total = minPart + sizePart + maxPart;
    const bool shares = total > 0 && minPart >= 0 && maxPart >= 0;
    const double start = side.start + (minFlexes ? (shares ? delta * minPart / total : delta / flexible) : 0);
    const double size = side.size + (sizeFlexes ? (shares ? delta * sizePart / total : delta / flexible) : 0);
    return {start, std::max(0.0, size)};
}
}  // namespace

void NSView::resizeSubviewsWithOldSize(NSSize old) {
    if (!autoresizesSubviews_)
        return;
    const List below = subviews_;
    for (const auto &view : below) {
        const unsigned mask = view->autoresizingMask_;
        if (!view->translatesMask_ || mask == NSViewNotSizable)
            continue;
        const NSRect &f = view->frame_;
        const Side x = resized({f.origin.x, f.size.width}, old.width, frame_.size.width, mask & NSViewMinXMargin,
                               mask & NSViewWidthSizable, mask & NSViewMaxXMargin);
        const Side y = resized({f.origin.y, f.size.height}, old.height, frame_.size.height, mask & NSViewMinYMargin,
                               mask & NSViewHeightSizable, mask & NSViewMaxYMargin);
        view->setFrame({x.start, y.start, x.size, y.size});
    }
}

NSRect NSView::placeInSuperview() const {
    if (!translatesMask_ || userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::leftToRight)
        return frame_;
    const auto above = superview_.lock();
    if (!above || !above->mirrorsSubviews())
        return frame_;
    const NSRect around = above->bounds();
    return {around.minX() + around.maxX() - frame_.maxX(), frame_.minY(), frame_.size.width, frame_.size.height};
}

NSPoint NSView::toSuperview(NSPoint point) const {
    const auto above = superview_.lock();
    const NSRect place = placeInSuperview();
    const double x = place.minX() + point.x - boundsOrigin_.x, down = point.y - boundsOrigin_.y;
    const bool sameSense = isFlipped() == (above && above->isFlipped());
    return {x, sameSense ? place.minY() + down : place.maxY() - down};
}

NSPoint NSView::fromSuperview(NSPoint point) const {
    const auto above = superview_.lock();
    const NSRect place = placeInSuperview();
    const bool sameSense = isFlipped() == (above && above->isFlipped());
    return {point.x - place.minX() + boundsOrigin_.x,
            (sameSense ? point.y - place.minY() : place.maxY() - point.y) + boundsOrigin_.y};
}

NSPoint NSView::toWindow(NSPoint point) const {
    for (const NSView *view = this; view; view = view->superview_.lock().get())
        point = view->toSuperview(point);
    return point;
}

NSPoint NSView::fromWindow(NSPoint point) const {
    std::vector<const NSView *> way;
    for (const NSView *view = this; view; view = view->superview_.lock().get())
        way.push_back(view);
    for (auto view = way.rbegin(); view != way.rend(); ++view)
        point = (*view)->fromSuperview(point);
    return point;
}

NSPoint NSView::convertPoint_fromView(NSPoint point, const std::shared_ptr<NSView> &view) const {
    return fromWindow(view ? view->toWindow(point) : point);
}

NSPoint NSView::convertPoint_toView(NSPoint point, const std::shared_ptr<NSView> &view) const {
    const NSPoint inWindow = toWindow(point);
    return view ? view->fromWindow(inWindow) : inWindow;
}

namespace {
NSRect spanned(NSPoint a, NSPoint b) { return {std::min(a.x, b.x), std::min(a.y, b.y), std::abs(a.x - b.x), std::abs(a.y - b.y)}; }
}  // namespace

NSRect NSView::convertRect_fromView(const NSRect &rect, const std::shared_ptr<NSView> &view) const {
    return spanned(convertPoint_fromView(rect.origin, view), convertPoint_fromView({rect.maxX(), rect.maxY()}, view));
}

NSRect NSView::convertRect_toView(const NSRect &rect, const std::shared_ptr<NSView> &view) const {
    return spanned(convertPoint_toView(rect.origin, view), convertPoint_toView({rect.maxX(), rect.maxY()}, view));
}

NSRect NSView::visibleRect() const {
    NSRect visible = bounds();
    for (const NSView *view = this; view && !visible.isEmpty(); view = view->superview_.lock().get()) {
        if (view->isHidden_)
            return {};
        const auto above = view->superview_.lock();
        if (!above)
            break;
        const NSRect cut = convertRect_fromView(above->bounds(), above);
        visible = visible.intersection(cut);
    }
    return visible;
}

std::shared_ptr<NSView> NSView::hitTest(NSPoint point) {
    if (isHidden_ || !placeInSuperview().contains(point))
        return nullptr;
    const NSPoint inside = fromSuperview(point);
    const List below = subviews_;
    for (auto view = below.rbegin(); view != below.rend(); ++view)
        if (auto hit = (*view)->hitTest(inside))
            return hit;
    return selfOf(this);
}

bool NSView::scrollRectToVisible(const NSRect &rect) {
    for (auto above = superview(); above; above = above->superview()) {
        const auto clip = std::dynamic_pointer_cast<NSClipView>(above);
        if (!clip || !clip->documentView())
            continue;
        const NSRect wanted = clip->convertRect_fromView(rect, selfOf(this)), shown = clip->bounds();
        const auto moved = [](double start, double end, double from, double to) {
            if (start < from || end - start > to - from)
                return start;
            return end > to ? from + end - to : from;
        };
        const NSPoint offset{moved(wanted.minX(), wanted.maxX(), shown.minX(), shown.maxX()),
                             moved(wanted.minY(), wanted.maxY(), shown.minY(), shown.maxY())};
        const NSPoint before = shown.origin;
        clip->scrollToPoint(offset);
        return clip->bounds().origin != before;
    }
    return false;
}

void NSView::scrollPoint(NSPoint point) {
    for (auto above = superview(); above; above = above->superview())
        if (const auto clip = std::dynamic_pointer_cast<NSClipView>(above)) {
            clip->scrollToPoint(clip->convertPoint_fromView(point, selfOf(this)));
            return;
        }
}

// ---------------------------------------------------------------- visibility

void NSView::setHidden(bool hidden) {
    if (!dispatch::isMain()) {
        dispatch::async(dispatch::main(), [self = selfOf(this), hidden] { self->setHidden(hidden); });
        return;
    }
    if (isHidden_ == hidden)
        return;
    isHidden_ = hidden;
    noteChanged("hidden");
    if (const auto above = superview())
        above->subviewDidChangeIntrinsicSize(*this);
}

bool NSView::isHiddenOrHasHiddenAncestor() const {
    for (const NSView *view = this; view; view = view->superview_.lock().get())
        if (view->isHidden_)
            return true;
    return false;
}

void NSView::setAlphaValue(double alpha) {
    assertMain("NSView setAlphaValue:");
    alphaValue_ = std::clamp(alpha, 0.0, 1.0);
    noteChanged("alphaValue");
}

NSViewAnimator NSView::animator() { return NSViewAnimator(selfOf(this)); }

std::vector<AnimatorRecord> NSView::takeAnimatorRecords() { return std::exchange(animatorRecords_, {}); }

void NSViewAnimator::setFrame(const NSRect &frame) {
    const NSRect before = view_->frame();
    view_->setFrame(frame);
    view_->animatorRecords_.push_back({"frame", before, view_->frame(), 0, 0});
}

void NSViewAnimator::setFrameOrigin(NSPoint origin) { setFrame({origin, view_->frame().size}); }

void NSViewAnimator::setAlphaValue(double alpha) {
    const double before = view_->alphaValue();
    view_->setAlphaValue(alpha);
    view_->animatorRecords_.push_back({"alphaValue", {}, {}, before, view_->alphaValue()});
}

void NSViewAnimator::setHidden(bool hidden) {
    const bool before = view_->isHidden();
    view_->setHidden(hidden);
    view_->animatorRecords_.push_back({"hidden", {}, {}, double(before), double(hidden)});
}

// ---------------------------------------------------------------- layout

void NSView::setTranslatesAutoresizingMaskIntoConstraints(bool translates) {
    assertMain("NSView setTranslatesAutoresizingMaskIntoConstraints:");
    translatesMask_ = translates;
    if (const auto above = superview())
        above->layout();
}

void NSView::addConstraint(const std::shared_ptr<NSLayoutConstraint> &constraint) {
    assertMain("NSView addConstraint:");
    if (!constraint || std::ranges::find(constraints_, constraint) != constraints_.end())
        return;
    if (const auto owner = constraint->owner_.lock())
        owner->removeConstraint(constraint);
    constraints_.push_back(constraint);
    constraint->owner_ = selfOf(this);
    layout();
    for (const auto &item : {constraint->firstItem(), constraint->secondItem()})
        if (const auto above = item ? item->superview() : nullptr; above && above.get() != this)
            above->layout();
}

void NSView::addConstraints(const std::vector<std::shared_ptr<NSLayoutConstraint>> &constraints) {
    layoutOnceAfter([&] {
        for (const auto &constraint : constraints)
            addConstraint(constraint);
    });
}

void NSView::removeConstraint(const std::shared_ptr<NSLayoutConstraint> &constraint) {
    assertMain("NSView removeConstraint:");
    if (!std::erase(constraints_, constraint))
        return;
    constraint->owner_.reset();
    layout();
    if (const auto item = constraint->firstItem())
        if (const auto above = item->superview(); above && above.get() != this)
            above->layout();
}

void NSView::pinEdgesOf(const std::shared_ptr<NSView> &view, double left, double top, double right, double bottom) {
    const auto self = selfOf(this);
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    addConstraints({NSLayoutConstraint::tie(view, NSLayoutAttribute::left, self, NSLayoutAttribute::left, left),
                    NSLayoutConstraint::tie(view, NSLayoutAttribute::right, self, NSLayoutAttribute::right, -right),
                    NSLayoutConstraint::tie(view, NSLayoutAttribute::top, self, NSLayoutAttribute::top, top),
                    NSLayoutConstraint::tie(view, NSLayoutAttribute::bottom, self, NSLayoutAttribute::bottom, -bottom)});
}

void NSView::invalidateIntrinsicContentSize() {
    if (const auto above = superview())
        above->subviewDidChangeIntrinsicSize(*this);
}

void NSView::setContentHuggingPriority(double priority) {
    hugging_ = priority;
    invalidateIntrinsicContentSize();
}

void NSView::layout() {
    if (layoutHeld_ > 0)
        return;
    ++layoutHeld_;
    solveConstraints();
    --layoutHeld_;
}

void NSView::layoutOnceAfter(const std::function<void()> &changes) {
    ++layoutHeld_;
    changes();
    --layoutHeld_;
    layout();
}

void NSView::solveConstraints() { LayoutEngine::solve(*this); }

NSUserInterfaceLayoutDirection NSView::userInterfaceLayoutDirection() {
    return NSApplication::sharedApplication()->userInterfaceLayoutDirection();
}

// ---------------------------------------------------------------- picture

void NSView::drawRect(const NSRect &, Canvas &) {}

void NSView::setNeedsDisplay(bool needed) {
    if (needed)
        setNeedsDisplayInRect(bounds());
    else
        needsDisplay_ = false;
}

void NSView::setNeedsDisplayInRect(const NSRect &rect) {
    needsDisplay_ = true;
    ViewObserver::tellAll([&](ViewObserver &observer) { observer.needsDisplay(*this, rect); });
}

void NSView::displaySelf(Canvas &canvas) {
    needsDisplay_ = false;
    canvas.saveState();
    canvas.enterSpace(isFlipped(), frame_.size.height);
    canvas.translate(-boundsOrigin_.x, -boundsOrigin_.y);
    if (layer_)
        layer_->renderBackground(canvas, bounds());
    drawRect(bounds(), canvas);
    if (layer_)
        layer_->renderSublayersAndBorder(canvas, bounds());
    canvas.restoreState();
}

void NSView::display(Canvas &canvas) {
    if (isHidden_ || alphaValue_ <= 0)
        return;
    canvas.saveState();
    if (alphaValue_ < 1)
        canvas.setAlpha(alphaValue_);
    canvas.clipToRect({{0, 0}, frame_.size});
    displaySelf(canvas);
    const List below = subviews_;
    for (const auto &view : below) {
        const NSRect f = view->placeInSuperview();
        const double top = isFlipped() ? f.minY() - boundsOrigin_.y : frame_.size.height - (f.maxY() - boundsOrigin_.y);
        canvas.saveState();
        canvas.translate(f.minX() - boundsOrigin_.x, top);
        view->display(canvas);
        canvas.restoreState();
    }
    canvas.restoreState();
}

void NSView::setWantsLayer(bool wants) {
    if (wants == wantsLayer())
        return;
    setLayer(wants ? make<CALayer>() : nullptr);
}

void NSView::setLayer(std::shared_ptr<CALayer> layer) {
    assertMain("NSView setLayer:");
    if (layer_)
        layer_->view_.reset();
    layer_ = std::move(layer);
    if (layer_)
        layer_->view_ = selfOf(this);
    setNeedsDisplay(true);
}

// ---------------------------------------------------------------- events

void NSView::addTrackingArea(const std::shared_ptr<NSTrackingArea> &area) {
    assertMain("NSView addTrackingArea:");
    if (area && std::ranges::find(trackingAreas_, area) == trackingAreas_.end())
        trackingAreas_.push_back(area);
}

void NSView::removeTrackingArea(const std::shared_ptr<NSTrackingArea> &area) {
    assertMain("NSView removeTrackingArea:");
    std::erase(trackingAreas_, area);
}

void NSView::rightMouseDown(NSEvent &event) {
    const auto menu = menuForEvent(event);
    if (menu)
        NSMenu::popUpContextMenu_withEvent_forView(menu, event, selfOf(this));
    else
        NSResponder::rightMouseDown(event);
}

bool NSView::performKeyEquivalent(NSEvent &event) {
    if (isHidden_)
        return false;
    const List below = subviews_;
    return std::ranges::any_of(below, [&](const auto &view) { return view->performKeyEquivalent(event); });
}

// ---------------------------------------------------------------- dumps

std::string NSView::toString() const {
    struct Open {
        const NSView *view;
        std::size_t depth;
    };
    std::vector<Open> open{{this, 0}};
    std::string text;
    while (!open.empty()) {
        const auto [view, depth] = open.back();
        open.pop_back();
        text += std::string(2 * depth, ' ') + view->className().str();
        if (!view->identifier_.isEmpty())
            text += " #" + view->identifier_.str();
        text += " " + describe(view->frame_);
        if (const std::string content = view->describeContent(); !content.empty())
            text += " " + content;
        text += view->isHidden_ ? " hidden\n" : "\n";
        for (auto below = view->subviews_.rbegin(); below != view->subviews_.rend(); ++below)
            open.push_back({below->get(), depth + 1});
    }
    return text;
}
