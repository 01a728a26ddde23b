#include "host/window/QtCanvas.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QTextLayout>

#include <cmath>

#include "host/window/PictureCache.h"
#include "host/window/QtText.h"
#include "toolkit/views/NSView.h"

namespace host {

namespace {

QRectF qtRect(const NSRect &rect) { return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height}; }
QPointF qtPoint(NSPoint point) { return {point.x, point.y}; }

QPolygonF polygonOf(const std::vector<NSPoint> &points) {
    QPolygonF polygon;
    for (const NSPoint point : points)
        polygon << qtPoint(point);
    return polygon;
}

// A text is drawn a little over its rectangle's edge rather than cut: other fonts are a pixel or two higher.
constexpr double kOverhang = 3;

Qt::Alignment sideOf(NSTextAlignment alignment) {
    switch (alignment) {
    case NSTextAlignment::right:
        return Qt::AlignRight | Qt::AlignAbsolute;
    case NSTextAlignment::center:
        return Qt::AlignHCenter;
    case NSTextAlignment::justified:
        return Qt::AlignJustify;
    case NSTextAlignment::natural:
        return NSView::userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::rightToLeft ? Qt::AlignRight | Qt::AlignAbsolute
                                                                                                    : Qt::AlignLeft | Qt::AlignAbsolute;
    default:
        return Qt::AlignLeft | Qt::AlignAbsolute;
    }
}

// Text attributes count code points, Qt's layouts UTF-16 units.
QList<QTextLayout::FormatRange> formatsOf(const NSAttributedString &text, const Theme &theme) {
    QList<QTextLayout::FormatRange> formats;
    int at = 0;
    for (const TextRun &run : text.runs()) {
        QTextLayout::FormatRange range;
        range.start = at;
        range.length = static_cast<int>(qtString(text.string().substringWithRange(run.range)).size());
        at += range.length;
        if (run.attributes.font)
            range.format.setFont(qtFont(run.attributes.font));
        if (run.attributes.color)
            range.format.setForeground(theme.text(*run.attributes.color));
        range.format.setFontUnderline(run.attributes.underline);
        formats.push_back(range);
    }
    return formats;
}

// Where a single line begins: in the middle of a place for one line, at the top of one for several.
double topOf(double line, double place) { return place < 2 * line ? (place - line) / 2 : 0; }

}  // namespace

void QtCanvas::onSave() { painter_.save(); }
void QtCanvas::onRestore() { painter_.restore(); }
void QtCanvas::onAlpha(double alpha) { painter_.setOpacity(painter_.opacity() * alpha); }

void QtCanvas::onClip(const NSRect &rect, double radius) {
    if (radius <= 0) {
        painter_.setClipRect(qtRect(rect), Qt::IntersectClip);
        return;
    }
    QPainterPath path;
    path.addRoundedRect(qtRect(rect), radius, radius);
    painter_.setClipPath(path, Qt::IntersectClip);
}

void QtCanvas::onFill(const NSRect &rect, double radius, const NSColor &color) {
    const QColor filled = theme_.fill(color);
    if (radius <= 0) {
        painter_.fillRect(qtRect(rect), filled);
        return;
    }
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(filled);
    painter_.drawRoundedRect(qtRect(rect), radius, radius);
}

void QtCanvas::onStroke(const NSRect &rect, double radius, const NSColor &color, double lineWidth) {
    // Whole inside the rectangle: half of an edge line would be cut off by the view's clip.
    const double inset = lineWidth / 2;
    const QRectF edge = qtRect(rect).adjusted(inset, inset, -inset, -inset);
    painter_.setPen(QPen(theme_.fill(color), lineWidth));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRoundedRect(edge, radius, radius);
}

void QtCanvas::onPolygon(const std::vector<NSPoint> &points, const NSColor &color, std::optional<double> lineWidth) {
    painter_.setPen(lineWidth ? QPen(theme_.fill(color), *lineWidth) : QPen(Qt::NoPen));
    painter_.setBrush(lineWidth ? QBrush(Qt::NoBrush) : QBrush(theme_.fill(color)));
    painter_.drawPolygon(polygonOf(points));
}

void QtCanvas::onLine(NSPoint from, NSPoint to, const NSColor &color, double lineWidth) {
    painter_.setPen(QPen(theme_.stroke(color), lineWidth, Qt::SolidLine, Qt::RoundCap));
    painter_.drawLine(qtPoint(from), qtPoint(to));
}

void QtCanvas::onImage(const std::shared_ptr<NSImage> &image, const NSRect &rect, std::optional<NSRect> crop, double alpha) {
    const QPixmap pixmap = PictureCache::shared().pixmap(image, crop, rect.size, painter_.device()->devicePixelRatioF());
    if (pixmap.isNull())
        return;
    const double before = painter_.opacity();
    painter_.setOpacity(before * alpha);
    painter_.drawPixmap(qtRect(rect), pixmap, QRectF(pixmap.rect()));
    painter_.setOpacity(before);
}

void QtCanvas::onText(const NSString &text, const std::shared_ptr<NSAttributedString> &attributed, const NSRect &rect,
                      const TextStyle &style) {
    const QString whole = qtString(text);
    const QRectF area = qtRect(rect);
    painter_.setFont(qtFont(style.font));
    // By its own first letter, not by the program's direction: a phone number stays as it is.
    painter_.setLayoutDirection(whole.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    painter_.setPen(style.color ? theme_.text(*style.color) : theme_.plainText());
    const double line = QFontMetricsF(painter_.font()).height();
    const bool hasOneLine = !whole.contains(u'\n') && (style.lineBreak != LineBreak::wrap || area.height() < 2 * line);
    if (hasOneLine && !attributed)
        paintLine(whole, area, style);
    else
        paintParagraph(whole, attributed, area, style);
}

void QtCanvas::paintLine(const QString &text, const QRectF &rect, const TextStyle &style) {
    const QFontMetricsF metrics(painter_.font());
    const auto elide = style.lineBreak == LineBreak::truncateMiddle ? Qt::ElideMiddle : Qt::ElideRight;
    QString shown = text;
    double width = metrics.horizontalAdvance(shown);
    if (width > rect.width() + 0.5 && style.lineBreak != LineBreak::clip) {
        shown = metrics.elidedText(text, elide, rect.width());
        width = metrics.horizontalAdvance(shown);
    }
    const Qt::Alignment side = sideOf(style.alignment);
    const double free = rect.width() - width;
    const double x = rect.x() + (side & Qt::AlignRight ? free : side & Qt::AlignHCenter ? free / 2 : 0);
    const double top = rect.y() + topOf(metrics.height(), rect.height());
    painter_.drawText(QPointF(x, top + metrics.ascent()), shown);
}

void QtCanvas::paintParagraph(const QString &text, const std::shared_ptr<NSAttributedString> &attributed, const QRectF &rect,
                              const TextStyle &style) {
    QString whole = text;
    whole.replace(u'\n', QChar::LineSeparator);
    QTextLayout layout(whole, painter_.font(), painter_.device());
    if (attributed)
        layout.setFormats(formatsOf(*attributed, theme_));
    QTextOption option(sideOf(style.alignment));
    option.setTextDirection(painter_.layoutDirection());
    option.setWrapMode(style.lineBreak == LineBreak::wrap ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::ManualWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    double height = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(rect.width());
        line.setPosition({0, height});
        height += std::ceil(line.height());
    }
    layout.endLayout();
    painter_.save();
    if (height > rect.height() + kOverhang)
        painter_.setClipRect(rect.adjusted(0, 0, 0, kOverhang), Qt::IntersectClip);
    const double top = layout.lineCount() == 1 ? topOf(height, rect.height()) : 0;
    layout.draw(&painter_, rect.topLeft() + QPointF(0, top));
    painter_.restore();
}

}  // namespace host
