#include "toolkit/views/NSScrollView.h"

#include <algorithm>

#include "toolkit/services/NSNotificationCenter.h"
#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSClipView, NSView)
HN_CLASS_TABLE(NSScrollView, NSView,
               .key("hasVerticalScroller", keys::get(&NSScrollView::hasVerticalScroller), keys::set(&NSScrollView::setHasVerticalScroller)))

// ---------------------------------------------------------------- NSClipView

void NSClipView::setDocumentView(const std::shared_ptr<NSView> &view) {
    if (view == document_)
        return;
    if (document_)
        document_->removeFromSuperview();
    document_ = view;
    if (view)
        addSubview(view);
    // An unflipped document begins at its top, which is its upper end; from right to left a line begins at the right.
    const bool isTurned = userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::rightToLeft;
    scrollToPoint({view && isTurned ? view->frame().maxX() : 0, view && !view->isFlipped() ? view->frame().maxY() : 0});
    if (const auto told = visibleRectDidChange)
        told();
}

NSRect NSClipView::documentVisibleRect() const { return document_ ? convertRect_toView(bounds(), document_) : bounds(); }

NSPoint NSClipView::constrainedOffset(NSPoint offset) const {
    const NSRect document = document_ ? document_->frame() : NSRect();
    const auto within = [](double wanted, double low, double high) { return std::max(low, std::min(wanted, high)); };
    return {within(offset.x, document.minX(), document.maxX() - frame().size.width),
            within(offset.y, document.minY(), document.maxY() - frame().size.height)};
}

void NSClipView::scrollToPoint(NSPoint offset) { setBoundsOrigin(constrainedOffset(offset)); }

void NSClipView::setBoundsOrigin(NSPoint origin) {
    if (origin == bounds().origin)
        return;
    NSView::setBoundsOrigin(origin);
    if (const auto told = visibleRectDidChange)
        told();
    if (postsBounds_)
        NSNotificationCenter::defaultCenter().postNotificationName_object(NSViewBoundsDidChangeNotification, shared_from_this());
}

void NSClipView::frameDidChange(const NSRect &old) {
    if (old.size == frame().size)
        return;
    scrollToPoint(bounds().origin);
    if (const auto told = visibleRectDidChange)
        told();
}

// ---------------------------------------------------------------- NSScrollView

namespace {
double ownScrollerWidth = 0;
}

double NSScrollView::scrollerWidth() { return ownScrollerWidth; }
void NSScrollView::setScrollerWidth(double width) { ownScrollerWidth = width; }

void NSScrollView::initWithFrame(const NSRect &frame) {
    NSView::initWithFrame(frame);
    clip_ = make<NSClipView>();
    addSubview(clip_);
    tile();
}

void NSScrollView::setDocumentView(const std::shared_ptr<NSView> &view) {
    assertMain("NSScrollView setDocumentView:");
    clip_->setDocumentView(view);
}

void NSScrollView::setHeaderView(const std::shared_ptr<NSView> &view) {
    assertMain("NSScrollView setHeaderView:");
    if (view == header_)
        return;
    if (header_)
        header_->removeFromSuperview();
    header_ = view;
    if (header_)
        addSubview(header_);
    tile();
}

void NSScrollView::tile() {
    const double border = isBordered_ ? 1 : 0;
    const NSRect inside = NSRect({0, 0}, frame().size).insetBy(border, border);
    const double header = header_ ? header_->frame().size.height : 0;
    const double width = inside.size.width - (hasVertical_ ? ownScrollerWidth : 0);
    const double height = inside.size.height - header - (hasHorizontal_ ? ownScrollerWidth : 0);
    const bool isTurned = userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::rightToLeft;   // the scroller stands at the left
    const double left = isTurned ? inside.maxX() - width : inside.minX();
    // y counts up here: the header stands at the upper end.
    if (header_)
        header_->setFrame({left, inside.maxY() - header, width, header});
    clip_->setFrame({left, inside.maxY() - header - height, width, height});
}

void NSScrollView::layout() {
    NSView::layout();
    if (clip_)
        tile();
}

#define HN_SCROLL_SETTER(Setter, Type, field, keyName) \
    void NSScrollView::Setter(Type value) {            \
        assertMain("NSScrollView " #Setter);           \
        field = std::move(value);                      \
        noteChanged(keyName);                          \
        tile();                                        \
    }
HN_SCROLL_SETTER(setHasVerticalScroller, bool, hasVertical_, "hasVerticalScroller")
HN_SCROLL_SETTER(setHasHorizontalScroller, bool, hasHorizontal_, "hasHorizontalScroller")
HN_SCROLL_SETTER(setBordered, bool, isBordered_, "bordered")
HN_SCROLL_SETTER(setBackgroundColor, std::shared_ptr<NSColor>, backgroundColor_, "backgroundColor")
HN_SCROLL_SETTER(setDrawsBackground, bool, drawsBackground_, "drawsBackground")
#undef HN_SCROLL_SETTER

void NSScrollView::drawRect(const NSRect &, Canvas &canvas) {
    if (drawsBackground_)
        canvas.fillRect(bounds(), backgroundColor_);
    if (isBordered_)
        canvas.strokeRect(bounds(), NSColor::grayColor());
}

void NSScrollView::scrollWheel(NSEvent &event) {
    const NSPoint now = contentOffset();
    const double dy = clip_->isFlipped() ? -event.scrollingDeltaY : event.scrollingDeltaY;
    scrollToPoint({now.x - event.scrollingDeltaX, now.y + dy});
    if (contentOffset() == now)
        NSView::scrollWheel(event);
}
