// A view on a part of a larger one: the clip view's bounds origin is the offset.
//
// Space     the clip view is flipped as its document is. Offsets are kept inside the document, 0 where it is smaller.
// Notices   a moved clip view posts NSViewBoundsDidChangeNotification where postsBoundsChangedNotifications is on, and
//           always calls the document's ancestors' observers with boundsOrigin.
// Threads   main.
#pragma once

#include "toolkit/views/NSView.h"

inline constexpr const char *NSViewBoundsDidChangeNotification = "NSViewBoundsDidChangeNotification";

class NSClipView : public NSView {
public:
    [[nodiscard]] const std::shared_ptr<NSView> &documentView() const { return document_; }
    void setDocumentView(const std::shared_ptr<NSView> &view);
    [[nodiscard]] NSRect documentVisibleRect() const;
    // `offset` in the document's space, cut to what it has.
    void scrollToPoint(NSPoint offset);
    [[nodiscard]] NSPoint constrainedOffset(NSPoint offset) const;
    [[nodiscard]] bool postsBoundsChangedNotifications() const { return postsBounds_; }
    void setPostsBoundsChangedNotifications(bool posts) { postsBounds_ = posts; }
    // Told after each move and each change of the clip's size; a document that tiles listens. Held until replaced.
    std::function<void()> visibleRectDidChange;

    [[nodiscard]] bool isFlipped() const override { return document_ && document_->isFlipped(); }
    [[nodiscard]] bool mirrorsSubviews() const override { return false; }
    void setBoundsOrigin(NSPoint origin) override;
    HN_DECLARE_CLASS_TABLE

protected:
    void frameDidChange(const NSRect &old) override;
    void subviewDidChangeIntrinsicSize(NSView &) override {}

private:
    std::shared_ptr<NSView> document_;
    bool postsBounds_ = false;
};

class NSScrollView : public NSView {
public:
    void initWithFrame(const NSRect &frame) override;
    [[nodiscard]] const std::shared_ptr<NSClipView> &contentView() const { return clip_; }
    [[nodiscard]] std::shared_ptr<NSView> documentView() const { return clip_->documentView(); }
    void setDocumentView(const std::shared_ptr<NSView> &view);
    [[nodiscard]] NSRect documentVisibleRect() const { return clip_->documentVisibleRect(); }
    // Offset of the visible part in the document.
    [[nodiscard]] NSPoint contentOffset() const { return clip_->bounds().origin; }
    void scrollToPoint(NSPoint offset) { clip_->scrollToPoint(offset); }
    // The view that stays above the clip, such as a table's header; null for none. Its height is its frame's.
    [[nodiscard]] const std::shared_ptr<NSView> &headerView() const { return header_; }
    void setHeaderView(const std::shared_ptr<NSView> &view);
    // Places clip and header.
    void tile();

    [[nodiscard]] bool hasVerticalScroller() const { return hasVertical_; }
    void setHasVerticalScroller(bool has);
    [[nodiscard]] bool hasHorizontalScroller() const { return hasHorizontal_; }
    void setHasHorizontalScroller(bool has);
    [[nodiscard]] bool isBordered() const { return isBordered_; }
    void setBordered(bool bordered);
    [[nodiscard]] const std::shared_ptr<NSColor> &backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(std::shared_ptr<NSColor> color);
    [[nodiscard]] bool drawsBackground() const { return drawsBackground_; }
    void setDrawsBackground(bool draws);
    // Width of a vertical scroller that overlays nothing; 0 headless, hosts may set it before views are made.
    [[nodiscard]] static double scrollerWidth();
    static void setScrollerWidth(double width);

    void layout() override;
    [[nodiscard]] bool mirrorsSubviews() const override { return false; }
    void drawRect(const NSRect &rect, Canvas &canvas) override;
    void scrollWheel(NSEvent &event) override;
    HN_DECLARE_CLASS_TABLE

private:
    std::shared_ptr<NSClipView> clip_;
    std::shared_ptr<NSView> header_;
    std::shared_ptr<NSColor> backgroundColor_;
    bool hasVertical_ = true, hasHorizontal_ = false, isBordered_ = false, drawsBackground_ = true;
};
