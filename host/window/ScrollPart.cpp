#include "host/window/ScrollPart.h"

#include <QScrollBar>

#include <cmath>

#include "host/window/Theme.h"
#include "host/window/ViewSurface.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/views/NSScrollView.h"

namespace host {

namespace {

constexpr int kStep = 40;   // points a click on the bar's arrow scrolls

// How far the document can go, and where it stands, from its upper left corner.
struct Travel {
    double range = 0, value = 0, page = 0;
};

Travel travelOf(const NSScrollView &view, bool vertical) {
    const auto document = view.documentView();
    if (!document)
        return {};
    const NSRect frame = document->frame(), clip = view.contentView()->bounds();
    if (!vertical)
        return {std::max(0.0, frame.size.width - clip.size.width), clip.minX() - frame.minX(), clip.size.width};
    const double range = std::max(0.0, frame.size.height - clip.size.height);
    const double fromTop = view.contentView()->isFlipped() ? clip.minY() - frame.minY() : frame.maxY() - clip.maxY();
    return {range, fromTop, clip.size.height};
}

// The end of the content moves on where the rows that come into sight are higher than was estimated.
void scrollToEnd(NSScrollView &view) {
    const auto clip = view.contentView();
    const auto document = view.documentView();
    for (double end = -1; document && clip->isFlipped() && document->frame().maxY() != end;) {
        end = document->frame().maxY();
        view.scrollToPoint({clip->bounds().minX(), end - clip->bounds().size.height});
    }
}

void follow(QScrollBar &bar, const Travel &travel) {
    bar.setRange(0, static_cast<int>(std::lround(travel.range)));
    bar.setPageStep(std::max(1, static_cast<int>(travel.page)));
    bar.setSingleStep(kStep);
    bar.setValue(static_cast<int>(std::lround(travel.value)));
}

// Slim and without arrows, told apart from its ground in both themes.
QString styleSheet() {
    const QString handle = Theme::current().palette().color(QPalette::PlaceholderText).name();
    return QStringLiteral("QScrollBar { background: transparent; border: none; margin: 0; }"
                          "QScrollBar::handle { background: %1; border-radius: 3px; margin: 4px; min-height: 28px; min-width: 28px; }"
                          "QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }"
                          "QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }").arg(handle);
}

}  // namespace

std::unique_ptr<NativePart> ScrollPart::make(ViewSurface &surface, const std::shared_ptr<NSView> &view) {
    return std::make_unique<ScrollPart>(surface, std::dynamic_pointer_cast<NSScrollView>(view));
}

ScrollPart::ScrollPart(ViewSurface &surface, const std::shared_ptr<NSScrollView> &view)
    : view_(view), vertical_(new QScrollBar(Qt::Vertical, &surface)), horizontal_(new QScrollBar(Qt::Horizontal, &surface)) {
    for (QScrollBar *bar : {vertical_, horizontal_}) {
        bar->setLayoutDirection(Qt::LeftToRight);   // offsets count from the left, whatever the layout
        bar->setFocusPolicy(Qt::NoFocus);
        bar->setCursor(Qt::ArrowCursor);
        bar->setStyleSheet(styleSheet());
        bar->hide();
    }
    vertical_->setAccessibleName(QObject::tr("Vertical scroll bar"));
    horizontal_->setAccessibleName(QObject::tr("Horizontal scroll bar"));
    QObject::connect(vertical_, &QScrollBar::valueChanged, vertical_, [this](int value) { pulled(true, value); });
    QObject::connect(horizontal_, &QScrollBar::valueChanged, horizontal_, [this](int value) { pulled(false, value); });
}

ScrollPart::~ScrollPart() {
    // A pull may be what takes the view away: then this runs inside the bar's own signal.
    for (QScrollBar *bar : {vertical_, horizontal_}) {
        bar->disconnect();
        bar->hide();
        bar->deleteLater();
    }
}

void ScrollPart::place(const QRectF &rect, const QRectF &visible) {
    const auto view = view_.lock();
    if (!view)
        return;
    isFollowing_ = true;
    const NSRect &clip = view->contentView()->frame();
    const QRectF inner(rect.left() + clip.minX(), rect.top() + view->frame().size.height - clip.maxY(), clip.size.width, clip.size.height);
    const Travel down = travelOf(*view, true), along = travelOf(*view, false);
    follow(*vertical_, down);
    follow(*horizontal_, along);
    // Beside the clip where the view left room, else over its edge; at the end of the line.
    const double border = view->isBordered() ? 1 : 0;
    const bool isTurned = NSView::userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::rightToLeft;
    const double left = isTurned ? rect.left() + border : rect.right() - border - kWidth;
    if (view->hasVerticalScroller() && down.range >= 1)
        placeWidget(*vertical_, {left, inner.top(), kWidth, inner.height()}, visible);
    else
        vertical_->hide();
    if (view->hasHorizontalScroller() && along.range >= 1)
        placeWidget(*horizontal_, {inner.left(), rect.bottom() - border - kWidth, inner.width(), kWidth}, visible);
    else
        horizontal_->hide();
    isFollowing_ = false;
}

void ScrollPart::pulled(bool vertical, int value) {
    const auto view = view_.lock();
    if (!view || isFollowing_)
        return;
    const NSRect frame = view->documentView() ? view->documentView()->frame() : NSRect();
    const NSRect clip = view->contentView()->bounds();
    NSPoint offset = clip.origin;
    if (!vertical)
        offset.x = frame.minX() + value;
    else if (view->contentView()->isFlipped())
        offset.y = frame.minY() + value;
    else
        offset.y = frame.maxY() - value - clip.size.height;
    const bool isEnd = vertical && value == vertical_->maximum();
    dispatch::guarded("a scroll bar", [&] {
        view->scrollToPoint(offset);
        if (isEnd)
            scrollToEnd(*view);
    });
}

}  // namespace host
