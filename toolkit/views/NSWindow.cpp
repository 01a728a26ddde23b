#include "toolkit/views/NSWindow.h"

#include <algorithm>

#include "toolkit/dispatch/Guard.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/services/NSNotificationCenter.h"
#include "toolkit/views/ClassKeys.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSComboBox.h"
#include "toolkit/views/NSWindowController.h"
#include "toolkit/views/Presenter.h"

HN_CLASS_TABLE(NSWindow, NSResponder, .key("title", keys::get(&NSWindow::title), keys::set(&NSWindow::setTitle))
                   .key("contentView", keys::get(&NSWindow::contentView), keys::set(&NSWindow::setContentView))
                   .key("isVisible", &NSWindow::isVisible)
                   .selector("performClose:", &NSWindow::performClose)
                   .selector("makeKeyAndOrderFront:", &NSWindow::makeKeyAndOrderFront)
                   .selector("close", &NSWindow::close))
HN_CLASS_TABLE(NSPanel, NSWindow)

namespace {
NSRect screenFrame(0, 0, 1440, 900);
}

void NSWindow::initWithContentRect_styleMask(const NSRect &contentRect, unsigned styleMask) {
    assertMain("NSWindow init");
    frame_ = contentRect;
    if (styleMask & NSTitledWindowMask)
        frame_.size.height += kTitleBarHeight;
    for (auto &button : buttons_)
        button = make<NSButton>();
    buttons_[NSWindowCloseButton]->connect(shared_from_this(), "performClose:");
    setStyleMask(styleMask);
    NSApplication::sharedApplication()->addWindow(selfOf(this));
    setContentView(make<NSView>());
}

void NSWindow::dealloc() {
    if (isVisible_) {
        isVisible_ = false;
        NSApplication::sharedApplication()->windowDidLeave(*this);
        Presenter::current()->windowDidClose(*this);
    }
    if (contentView_)
        contentView_->setWindow(nullptr);
    NSResponder::dealloc();
}

std::shared_ptr<NSResponder> NSWindow::defaultNextResponder() const {
    return std::static_pointer_cast<NSResponder>(controller_.lock());
}

void NSWindow::noteChanged(std::string_view key) {
    ViewObserver::tellAll([&](ViewObserver &observer) { observer.windowChanged(*this, key); });
}

void NSWindow::setTitle(NSString title) {
    assertMain("NSWindow setTitle:");
    title_ = std::move(title);
    noteChanged("title");
}

void NSWindow::setStyleMask(unsigned mask) {
    assertMain("NSWindow setStyleMask:");
    styleMask_ = mask;
    buttons_[NSWindowCloseButton]->setEnabled(mask & NSClosableWindowMask);
    buttons_[NSWindowMiniaturizeButton]->setEnabled(mask & NSMiniaturizableWindowMask);
    buttons_[NSWindowZoomButton]->setEnabled(mask & NSResizableWindowMask);
    placeContent();
    noteChanged("styleMask");
}

NSRect NSWindow::contentRect() const {
    const double bar = styleMask_ & NSTitledWindowMask ? kTitleBarHeight : 0;
    return {frame_.origin.x, frame_.origin.y, frame_.size.width, std::max(0.0, frame_.size.height - bar)};
}

void NSWindow::placeContent() {
    if (contentView_)
        contentView_->setFrame({{0, 0}, contentRect().size});
}

void NSWindow::setFrame(const NSRect &frame) {
    assertMain("NSWindow setFrame:");
    if (frame == frame_)
        return;
    const bool resized = frame.size != frame_.size;
    frame_ = frame;
    placeContent();
    noteChanged("frame");
    const auto delegate = this->delegate();
    if (resized && delegate)
        delegate->windowDidResize(*this);
}

void NSWindow::setContentSize(NSSize size) {
    const double bar = styleMask_ & NSTitledWindowMask ? kTitleBarHeight : 0;
    setFrame({frame_.origin, {size.width, size.height + bar}});
}

void NSWindow::setScreenFrame(const NSRect &frame) { screenFrame = frame; }

void NSWindow::center() {
    setFrame({{screenFrame.origin.x + (screenFrame.size.width - frame_.size.width) / 2,
               screenFrame.origin.y + (screenFrame.size.height - frame_.size.height) / 2},
              frame_.size});
}

void NSWindow::setContentView(const std::shared_ptr<NSView> &view) {
    assertMain("NSWindow setContentView:");
    if (view == contentView_)
        return;
    if (contentView_) {
        viewWillLeave(*contentView_);
        contentView_->setWindow(nullptr);
    }
    contentView_ = view;
    if (view) {
        view->removeFromSuperview();
        view->setWindow(selfOf(this));
        placeContent();
    }
    noteChanged("contentView");
}

void NSWindow::setBackgroundColor(std::shared_ptr<NSColor> color) {
    assertMain("NSWindow setBackgroundColor:");
    backgroundColor_ = std::move(color);
    noteChanged("backgroundColor");
}

std::shared_ptr<NSButton> NSWindow::standardWindowButton(int number) const {
    return number >= 0 && number < static_cast<int>(buttons_.size()) ? buttons_[static_cast<std::size_t>(number)] : nullptr;
}

// ---------------------------------------------------------------- showing

void NSWindow::orderFront() {
    assertMain("NSWindow orderFront:");
    const auto self = selfOf(this);
    const bool wasVisible = std::exchange(isVisible_, true);
    NSApplication::sharedApplication()->windowDidOrderFront(self, false);
    if (wasVisible)
        return;
    if (!std::exchange(wasShown_, true))
        if (const auto view = initialFirstResponder_.lock())
            makeFirstResponder(view);
    noteChanged("visible");
    NSApplication::tellOpened(*this, NSApplication::sharedApplication()->isModal(*this));
}

void NSWindow::orderOut() {
    assertMain("NSWindow orderOut:");
    if (!std::exchange(isVisible_, false))
        return;
    const auto self = selfOf(this);
    NSApplication::sharedApplication()->windowDidLeave(*this);
    noteChanged("visible");
    Presenter::current()->windowDidClose(*this);
}

void NSWindow::makeKeyWindow() {
    assertMain("NSWindow makeKeyWindow");
    const auto self = selfOf(this);
    const bool wasKey = isKeyWindow();
    NSApplication::sharedApplication()->windowDidOrderFront(self, true);
    if (wasKey)
        return;
    if (const auto delegate = this->delegate())
        dispatch::guarded("windowDidBecomeKey:", [&] { delegate->windowDidBecomeKey(*this); });
    NSNotificationCenter::defaultCenter().postNotificationName_object(NSWindowDidBecomeKeyNotification, self);
}

void NSWindow::makeKeyAndOrderFront() {
    orderFront();
    if (isVisible_)
        makeKeyWindow();
}

bool NSWindow::isKeyWindow() const { return NSApplication::sharedApplication()->keyWindow().get() == this; }

void NSWindow::performClose() {
    assertMain("NSWindow performClose:");
    const auto self = selfOf(this);
    const auto &button = buttons_[NSWindowCloseButton];
    if (!(styleMask_ & NSClosableWindowMask) || button->isHidden() || !button->isEnabled())
        return;
    const auto delegate = this->delegate();
    bool agreed = true;
    const bool answered = !delegate || dispatch::guarded("windowShouldClose:", [&] { agreed = delegate->windowShouldClose(*this); });
    if (agreed && answered)
        closedByPerson();
}

void NSWindow::close() {
    const auto self = selfOf(this);
    if (!dispatch::isMain()) {
        dispatch::async(dispatch::main(), [self] { self->close(); });
        return;
    }
    const auto application = NSApplication::sharedApplication();
    if (isClosing_ || (!isVisible_ && !application->isModal(*this)))
        return;
    isClosing_ = true;
    if (const auto delegate = this->delegate())
        dispatch::guarded("windowWillClose:", [&] { delegate->windowWillClose(*this); });
    NSNotificationCenter::defaultCenter().postNotificationName_object(NSWindowWillCloseNotification, self);
    isClosing_ = false;
    orderOut();
    application->endRunsOf(*this);
}

// ---------------------------------------------------------------- focus

std::shared_ptr<NSResponder> NSWindow::firstResponder() const {
    const auto responder = firstResponder_.lock();
    return responder ? responder : std::const_pointer_cast<NSResponder>(std::static_pointer_cast<const NSResponder>(shared_from_this()));
}

bool NSWindow::makeFirstResponder(const std::shared_ptr<NSResponder> &responder) {
    assertMain("NSWindow makeFirstResponder:");
    const auto old = firstResponder_.lock();
    if (responder == old || (!old && responder.get() == this))
        return true;
    if (old && !old->resignFirstResponder())
        return false;
    firstResponder_.reset();
    const bool taken = !responder || responder.get() == this || responder->becomeFirstResponder();
    if (taken && responder.get() != this)
        firstResponder_ = responder;
    noteChanged("firstResponder");
    return taken;
}

void NSWindow::viewWillLeave(NSView &view) {
    const auto focus = std::dynamic_pointer_cast<NSView>(firstResponder_.lock());
    if (focus && focus->isDescendantOf(view) && !makeFirstResponder(nullptr))
        firstResponder_.reset();
}

namespace {

// A text that can only be selected is for the mouse. What stands in the rows of a list where several can be chosen is
// reached by choosing rows: rows come and go while the focus moves, and it would never get out of the list.
bool isKeyStop(const NSView &view) {
    if (const auto *text = dynamic_cast<const NSTextField *>(&view); text && !dynamic_cast<const NSComboBox *>(text))
        return text->isEditable();
    for (auto above = view.superview(); above; above = above->superview())
        if (above->valueForKey("allowsMultipleSelection").boolValue())
            return false;
    return true;
}

}  // namespace

std::vector<std::shared_ptr<NSView>> NSWindow::keyViews() const {
    std::vector<std::shared_ptr<NSView>> found;
    if (contentView_)
        contentView_->walk([&](NSView &view) {
            if (isKeyStop(view) && view.acceptsFirstResponder() && !view.isHiddenOrHasHiddenAncestor())
                found.push_back(selfOf(&view));
            return true;
        });
    return found;
}

void NSWindow::moveFocus(int step) {
    const auto views = keyViews();
    if (views.empty())
        return;
    const auto now = std::dynamic_pointer_cast<NSView>(firstResponder_.lock());
    const auto told = now && step > 0 ? now->nextKeyView() : nullptr;
    if (told && std::ranges::find(views, told) != views.end()) {
        makeFirstResponder(told);
        return;
    }
    const auto count = static_cast<std::ptrdiff_t>(views.size());
    const auto at = std::ranges::find(views, now) - views.begin();
    const std::ptrdiff_t next = at == count ? (step > 0 ? 0 : count - 1) : (at + step + count) % count;
    makeFirstResponder(views[static_cast<std::size_t>(next)]);
}

void NSWindow::selectNextKeyView() { moveFocus(1); }
void NSWindow::selectPreviousKeyView() { moveFocus(-1); }

// ---------------------------------------------------------------- events

void NSWindow::sendEvent(const std::shared_ptr<NSEvent> &event) {
    assertMain("NSWindow sendEvent:");
    const auto application = NSApplication::sharedApplication();
    const auto modal = application->modalWindow();
    if (!event || (modal && modal.get() != this && !worksWhenModal_))
        return;
    const auto self = selfOf(this);
    event->window = self;
    const auto before = std::exchange(application->currentEvent_, event);
    dispatch::guarded("an event", [&] {
        if (event->type == NSEventType::mouseMoved)
            sendMoved(*event);
        else if (event->isMouse() || event->type == NSEventType::scrollWheel)
            sendMouse(*event);
        else if (event->type == NSEventType::keyDown) {
            const bool isCommand = event->has(NSEventModifierFlagCommand);
            if (!(isCommand && contentView_ && contentView_->performKeyEquivalent(*event)))
                firstResponder()->keyDown(*event);
        } else if (event->type == NSEventType::keyUp)
            firstResponder()->keyUp(*event);
        else if (event->type == NSEventType::flagsChanged)
            firstResponder()->flagsChanged(*event);
        else if (event->type == NSEventType::mouseExited)
            crossTrackingAreas(*event);
    });
    application->currentEvent_ = before;
}

void NSWindow::sendMouse(NSEvent &event) {
    mouseLocation_ = event.locationInWindow;
    const auto hit = contentView_ ? contentView_->hitTest(event.locationInWindow) : nullptr;
    switch (event.type) {
    case NSEventType::leftMouseDown:
        pressedView_ = hit;
        if (!hit)
            return;
        if (isVisible_)
            makeKeyWindow();
        if (hit->acceptsFirstResponder())
            makeFirstResponder(hit);
        return hit->mouseDown(event);
    case NSEventType::leftMouseDragged:
        return tell(pressedView_, [&](NSView &view) { view.mouseDragged(event); });
    case NSEventType::leftMouseUp:
        return tell(std::exchange(pressedView_, {}), [&](NSView &view) { view.mouseUp(event); });
    case NSEventType::rightMouseDown:
        rightPressedView_ = hit;
        return hit ? hit->rightMouseDown(event) : void();
    case NSEventType::rightMouseDragged:
        return tell(rightPressedView_, [&](NSView &view) { view.rightMouseDragged(event); });
    case NSEventType::rightMouseUp:
        return tell(std::exchange(rightPressedView_, {}), [&](NSView &view) { view.rightMouseUp(event); });
    default:
        return hit ? hit->scrollWheel(event) : void();
    }
}

void NSWindow::sendMoved(NSEvent &event) {
    mouseLocation_ = event.locationInWindow;
    crossTrackingAreas(event);
    if (const auto hit = contentView_ ? contentView_->hitTest(event.locationInWindow) : nullptr)
        hit->mouseMoved(event);
}

// Those left are told before those entered.
void NSWindow::crossTrackingAreas(NSEvent &event) {
    std::vector<std::shared_ptr<NSTrackingArea>> left, entered;
    if (!contentView_)
        return;
    const bool isOutside = event.type == NSEventType::mouseExited;
    contentView_->walk([&](NSView &view) {
        if (view.trackingAreas_.empty())
            return true;
        const NSRect visible = view.visibleRect();
        const NSPoint point = view.convertPoint_fromView(event.locationInWindow, nullptr);
        for (const auto &area : view.trackingAreas_) {
            const bool isInside = !isOutside && visible.contains(point) && (area->rect_.isEmpty() || area->rect_.contains(point));
            if (isInside != area->isInside_)
                (isInside ? entered : left).push_back(area);
        }
        return true;
    });
    const auto tellOwner = [&](const std::shared_ptr<NSTrackingArea> &area, NSEventType type) {
        area->isInside_ = type == NSEventType::mouseEntered;
        const auto owner = area->owner();
        if (!owner)
            return;
        const auto crossing = NSEvent::mouse(type, event.locationInWindow, 0, event.modifierFlags);
        crossing->window = event.window;
        crossing->trackingArea = area;
        if (area->isInside_)
            owner->mouseEntered(*crossing);
        else
            owner->mouseExited(*crossing);
    };
    for (const auto &area : left)
        tellOwner(area, NSEventType::mouseExited);
    for (const auto &area : entered)
        tellOwner(area, NSEventType::mouseEntered);
}

void NSWindow::keyDown(NSEvent &event) {
    const bool isReturn = event.keyCode == keycode::returnKey || event.keyCode == keycode::enter;
    if (isReturn && event.characters.isEmpty())
        event.characters = NSString("\r");
    if (event.keyCode == keycode::escape && event.characters.isEmpty())
        event.characters = NSString("\x1b");
    if (contentView_ && contentView_->performKeyEquivalent(event))
        return;
    if (event.keyCode == keycode::tab)
        moveFocus(event.has(NSEventModifierFlagShift) ? -1 : 1);
    else if (event.keyCode == keycode::escape && NSApplication::sharedApplication()->isModal(*this))
        performClose();
    else
        NSResponder::keyDown(event);
}

std::string NSWindow::toString() const {
    std::string text = className().str() + " \"" + title_.str() + "\" " + describe(frame_) + (isVisible_ ? "" : " hidden") +
                       (buttons_[NSWindowCloseButton]->isHidden() ? " no close button\n" : "\n");
    return text + (contentView_ ? contentView_->toString() : "");
}
