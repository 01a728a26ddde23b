#include "host/window/ControlPainter.h"

#include <QPainter>

#include <cmath>
#include <functional>
#include <typeindex>
#include <unordered_map>

#include "host/window/PictureCache.h"
#include "host/window/QtText.h"
#include "toolkit/tables/NSTableView.h"
#include "toolkit/views/NSButton.h"
#include "toolkit/views/NSComboBox.h"
#include "toolkit/views/NSPopUpButton.h"
#include "toolkit/views/NSProgressIndicator.h"
#include "toolkit/views/NSScrollView.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSTextView.h"

namespace host {

namespace {

constexpr double kRadius = 4, kBox = 15, kGap = 6, kInset = 6, kDisabled = 0.45;
constexpr int kTurnDegrees = 30;

bool isRightToLeft() { return NSView::userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::rightToLeft; }
Qt::Alignment leadingSide() { return Qt::AlignAbsolute | (isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft); }
// A part of `area` that leaves room at the line's beginning and end.
QRectF withMargins(const QRectF &area, double leading, double trailing) {
    return isRightToLeft() ? area.adjusted(trailing, 0, -leading, 0) : area.adjusted(leading, 0, -trailing, 0);
}

QRectF areaOf(const NSView &view) { return {0, 0, view.frame().size.width, view.frame().size.height}; }

void paintFace(QPainter &painter, const QRectF &area, const QColor &face, const QColor &edge) {
    painter.setPen(QPen(edge, 1));
    painter.setBrush(face);
    painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
}

void paintFocus(QPainter &painter, const QRectF &area) {
    painter.setPen(QPen(Theme::current().accent(), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(area.adjusted(1, 1, -1, -1), kRadius, kRadius);
    painter.setPen(QPen(Theme::current().window(), 1));   // parts the ring from a face of its own colour
    painter.drawRoundedRect(area.adjusted(2.5, 2.5, -2.5, -2.5), kRadius, kRadius);
}

// At the end of the line.
void paintChevron(QPainter &painter, const QRectF &area) {
    constexpr double kFromEdge = 13;
    const QPointF middle(isRightToLeft() ? area.left() + kFromEdge : area.right() - kFromEdge, area.center().y());
    painter.setPen(QPen(Theme::current().plainText(), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF{middle + QPointF(-4, -2), middle + QPointF(0, 2), middle + QPointF(4, -2)});
}

QFont fontOf(const NSControl &control) { return qtFont(control.font()); }

QColor textColorOf(const NSControl &control) {
    return control.textColor() ? Theme::current().text(*control.textColor()) : Theme::current().plainText();
}

// ---------------------------------------------------------------- buttons

QString titleOf(const NSButton &button) {
    return qtString(button.attributedTitle() ? button.attributedTitle()->string() : button.title());
}

// Picture and title side by side (or one above the other), in the middle of the area or at its leading edge.
void paintContent(const NSButton &button, QPainter &painter, const QRectF &area, const QColor &text, bool centred) {
    const bool isOn = button.alternateImage() && (button.state() == NSOnState || button.isHighlighted());
    const auto image = button.imagePosition() == NSCellImagePosition::noImage ? nullptr
                       : isOn                                                ? button.alternateImage()
                                                                             : button.image();
    const QString title = button.imagePosition() == NSCellImagePosition::imageOnly ? QString() : titleOf(button);
    const bool isStacked = button.imagePosition() == NSCellImagePosition::imageAbove || button.imagePosition() == NSCellImagePosition::imageBelow;
    const QFontMetricsF metrics(painter.font());
    QSizeF picture = image ? QSizeF(image->size().width, image->size().height) : QSizeF();
    if (picture.width() > area.width() || picture.height() > area.height())
        picture.scale(area.size(), Qt::KeepAspectRatio);
    const double gap = image && !title.isEmpty() ? kGap : 0;
    const double textWidth = std::min(metrics.horizontalAdvance(title), std::max(0.0, area.width() - (isStacked ? 0 : picture.width() + gap)));
    const double width = isStacked ? std::max(picture.width(), textWidth) : picture.width() + gap + textWidth;
    const double left = area.left() + (centred ? (area.width() - width) / 2 : 0);
    QRectF place(QPointF(left, area.center().y() - picture.height() / 2), picture);
    QRectF words(left + picture.width() + gap, area.top(), textWidth + 1, area.height());
    if (isStacked) {
        const double top = area.center().y() - (picture.height() + metrics.height()) / 2;
        place.moveTo(area.center().x() - picture.width() / 2, top);
        words = QRectF(area.left(), place.bottom(), area.width(), metrics.height());
    } else if ((button.imagePosition() == NSCellImagePosition::imageRight) != isRightToLeft()) {
        words.moveLeft(left);
        place.moveLeft(left + textWidth + gap);
    }
    if (image)
        painter.drawPixmap(place, PictureCache::shared().pixmap(image, image->crop(), {place.width(), place.height()}, painter.device()->devicePixelRatioF()), {});
    painter.setPen(text);
    painter.drawText(words, Qt::AlignVCenter | (isStacked ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignAbsolute,
                     metrics.elidedText(title, Qt::ElideRight, words.width()));
}

void paintMark(QPainter &painter, const QRectF &box, const NSButton &button) {
    const Theme &theme = Theme::current();
    const bool isRound = button.buttonType() == NSButtonType::radio;
    const bool isOff = button.state() == NSOffState;
    painter.setPen(QPen(isOff ? theme.line() : theme.accent(), 1));
    painter.setBrush(isOff ? theme.control() : theme.accent());
    painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), isRound ? kBox / 2 : 3, isRound ? kBox / 2 : 3);
    if (isOff)
        return;
    painter.setPen(QPen(theme.palette().color(QPalette::HighlightedText), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(painter.pen().color());
    const auto at = [&](double x, double y) { return box.topLeft() + QPointF(x * box.width(), y * box.height()); };
    if (isRound) {
        painter.setPen(Qt::NoPen);
        painter.drawEllipse(box.center(), 3, 3);
    } else if (button.state() == NSMixedState) {
        painter.drawLine(at(0.27, 0.5), at(0.73, 0.5));
    } else {
        painter.setBrush(Qt::NoBrush);
        painter.drawPolyline(QPolygonF{at(0.24, 0.53), at(0.43, 0.71), at(0.77, 0.31)});
    }
}

void paintButton(NSView &view, QtCanvas &canvas, const ControlState &state) {
    const auto &button = static_cast<const NSButton &>(view);
    const Theme &theme = Theme::current();
    QPainter &painter = canvas.painter();
    const QRectF area = areaOf(view);
    painter.setFont(fontOf(button));
    if (!button.isEnabled())
        painter.setOpacity(painter.opacity() * kDisabled);
    const bool isBox = button.buttonType() == NSButtonType::switchButton || button.buttonType() == NSButtonType::radio;
    if (isBox && !button.image()) {
        const double edge = std::min({kBox, area.width(), area.height()});
        const bool isAlone = titleOf(button).isEmpty() || button.imagePosition() == NSCellImagePosition::imageOnly;
        const double left = isAlone ? (area.width() - edge) / 2 : isRightToLeft() ? area.width() - edge : 0;
        const QRectF box(left, (area.height() - edge) / 2, edge, edge);
        paintMark(painter, box, button);
        if (!isAlone) {
            const QRectF words = withMargins(area, edge + kGap, 0);
            painter.setPen(textColorOf(button));
            painter.drawText(words, Qt::AlignVCenter | leadingSide(),
                             QFontMetricsF(painter.font()).elidedText(titleOf(button), Qt::ElideRight, words.width()));
        }
    } else if (button.isBordered()) {
        const bool isDefault = button.keyEquivalent() == NSString("\r");
        QColor face = isDefault ? theme.accent() : theme.control();
        if (button.isHighlighted() || button.state() == NSOnState)
            face = theme.kind() == ThemeKind::light ? face.darker(112) : face.lighter(125);
        paintFace(painter, area, face, isDefault ? face : theme.line());
        const QColor text = isDefault ? theme.palette().color(QPalette::HighlightedText) : textColorOf(button);
        paintContent(button, painter, area.adjusted(kInset, 1, -kInset, -1), text, true);
    } else {
        if (button.isHighlighted())
            painter.setOpacity(painter.opacity() * 0.7);
        const QColor text = button.attributedTitle() && !button.attributedTitle()->runs().empty() && button.attributedTitle()->runs().front().attributes.color
                                ? theme.text(*button.attributedTitle()->runs().front().attributes.color)
                                : textColorOf(button);
        paintContent(button, painter, area, text, true);
    }
    if (state.hasFocus)
        paintFocus(painter, area);
}

void paintPopUp(NSView &view, QtCanvas &canvas, const ControlState &state) {
    const auto &button = static_cast<const NSPopUpButton &>(view);
    QPainter &painter = canvas.painter();
    const QRectF area = areaOf(view);
    if (!button.isEnabled())
        painter.setOpacity(painter.opacity() * kDisabled);
    if (button.isBordered())
        paintFace(painter, area, Theme::current().control(), Theme::current().line());
    const NSString title = button.pullsDown() && button.numberOfItems() > 0 ? button.itemArray().front()->title : button.titleOfSelectedItem();
    painter.setFont(fontOf(button));
    painter.setPen(textColorOf(button));
    const QRectF words = withMargins(area, kInset, kInset + 16);
    painter.drawText(words, Qt::AlignVCenter | leadingSide(),
                     QFontMetricsF(painter.font()).elidedText(qtString(title), Qt::ElideRight, words.width()));
    paintChevron(painter, area);
    if (state.hasFocus)
        paintFocus(painter, area);
}

// ---------------------------------------------------------------- texts

void paintTextField(NSView &view, QtCanvas &canvas, const ControlState &state) {
    const auto &field = static_cast<const NSTextField &>(view);
    const bool isCombo = dynamic_cast<const NSComboBox *>(&field);
    if (!isCombo && (!field.isEditable() || !field.isBordered())) {
        if (!state.isBeingEdited)
            view.displaySelf(canvas);
        return;
    }
    QPainter &painter = canvas.painter();
    const QRectF area = areaOf(view);
    const Theme &theme = Theme::current();
    if (!field.isEnabled())
        painter.setOpacity(painter.opacity() * kDisabled);
    paintFace(painter, area, field.backgroundColor() ? theme.fill(*field.backgroundColor()) : theme.ground(), theme.line());
    if (!state.isBeingEdited) {
        const bool isEmpty = field.stringValue().isEmpty();
        QString text = qtString(isEmpty ? field.placeholderString() : field.stringValue());
        if (field.isSecure() && !isEmpty)
            text.fill(QChar(0x2022));
        painter.setFont(fontOf(field));
        painter.setPen(isEmpty ? theme.palette().color(QPalette::PlaceholderText) : textColorOf(field));
        const QRectF words = withMargins(area.adjusted(0, 2, 0, -2), kInset, isCombo ? kInset + 16 : kInset);
        const bool isParagraph = area.height() > 2 * QFontMetricsF(painter.font()).height() + 4;
        if (isParagraph)
            painter.drawText(words, Qt::TextWordWrap | Qt::AlignTop | leadingSide(), text);
        else
            painter.drawText(words, Qt::AlignVCenter | leadingSide(),
                             QFontMetricsF(painter.font()).elidedText(text, Qt::ElideRight, words.width()));
    }
    if (isCombo)
        paintChevron(painter, area);
    if (state.hasFocus)
        paintFocus(painter, area);
}

// ---------------------------------------------------------------- progress

void paintTurned(NSView &view, QtCanvas &canvas, const ControlState &state) {
    QPainter &painter = canvas.painter();
    const QPointF middle = areaOf(view).center();
    painter.translate(middle);
    painter.rotate(state.turn * kTurnDegrees);
    painter.translate(-middle);
    view.displaySelf(canvas);
}

void paintProgress(NSView &view, QtCanvas &canvas, const ControlState &state) {
    const auto &progress = static_cast<const NSProgressIndicator &>(view);
    if (progress.isSpinning())
        return turnsByItself(view) ? paintTurned(view, canvas, state) : view.displaySelf(canvas);
    QPainter &painter = canvas.painter();
    const Theme &theme = Theme::current();
    QRectF track = areaOf(view);
    const double height = std::min(track.height(), 8.0);
    track = QRectF(0, (track.height() - height) / 2, track.width(), height);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.line());
    painter.drawRoundedRect(track, height / 2, height / 2);
    const double range = progress.maxValue() - progress.minValue();
    const double part = range > 0 ? (progress.doubleValue() - progress.minValue()) / range : 0;
    QRectF bar(track.topLeft(), QSizeF(track.width() * part, height));
    if (progress.isIndeterminate())
        bar = QRectF(track.left() + track.width() * (state.turn % 12) / 16.0, track.top(), track.width() / 4, height);
    painter.setBrush(theme.accent());
    painter.drawRoundedRect(bar, height / 2, height / 2);
}

// ---------------------------------------------------------------- table headers

void paintHeader(NSView &view, QtCanvas &canvas, const ControlState &) {
    QPainter &painter = canvas.painter();
    const QRectF area = areaOf(view);
    const Theme &theme = Theme::current();
    painter.fillRect(area, theme.window());
    view.displaySelf(canvas);
    painter.fillRect(QRectF(area.left(), area.bottom() - 1, area.width(), 1), theme.line());
    const auto &header = static_cast<const NSTableHeaderView &>(view);
    const auto table = header.tableView();
    for (std::int64_t column = 0; table && column + 1 < table->numberOfColumns(); ++column) {
        const NSRect place = header.headerRectOfColumn(column);
        const double end = (isRightToLeft() ? place.minX() + 1 : place.maxX()) - header.bounds().minX();
        painter.fillRect(QRectF(end - 1, area.top() + 5, 1, area.height() - 10), theme.line());
    }
}

// A list under a header is a sheet of its own; what scrolls elsewhere lies on the window.
void paintScroll(NSView &view, QtCanvas &canvas, const ControlState &) {
    const auto &scroll = static_cast<const NSScrollView &>(view);
    if (scroll.drawsBackground() && !scroll.backgroundColor() && scroll.headerView())
        canvas.painter().fillRect(areaOf(view), Theme::current().ground());
    view.displaySelf(canvas);
}

// ---------------------------------------------------------------- by class

using Painter = void (*)(NSView &, QtCanvas &, const ControlState &);

// Exact classes: a subclass may paint itself, and does so through drawRect.
const std::unordered_map<std::type_index, Painter> kPainters = {
    {typeid(NSButton), paintButton},       {typeid(NSPopUpButton), paintPopUp},         {typeid(NSTextField), paintTextField},
    {typeid(NSSecureTextField), paintTextField}, {typeid(NSComboBox), paintTextField},  {typeid(NSProgressIndicator), paintProgress},
    {typeid(NSTableHeaderView), paintHeader},    {typeid(NSScrollView), paintScroll},
};

bool layerTurns(const NSView &view) {
    if (!view.layer())
        return false;
    for (const NSString &key : view.layer()->animationKeys())
        if (const auto animation = view.layer()->animationForKey(key); animation && animation->keyPath.hasPrefix("transform.rotation"))
            return true;
    return false;
}

// A list shows the keyboard by its selection, a text by its caret.
bool showsFocus(const NSView &view) {
    return !dynamic_cast<const NSTableView *>(&view) && !dynamic_cast<const NSTextField *>(&view) && !dynamic_cast<const NSTextView *>(&view);
}

}  // namespace

bool turnsByItself(NSView &view) {
    if (const auto *progress = dynamic_cast<const NSProgressIndicator *>(&view))
        return progress->isAnimating() && (progress->isSpinning() || progress->isIndeterminate());
    return layerTurns(view);
}

void paintView(NSView &view, QtCanvas &canvas, const ControlState &state) {
    const auto painter = kPainters.find(typeid(view));
    if (painter == kPainters.end()) {
        turnsByItself(view) ? paintTurned(view, canvas, state) : view.displaySelf(canvas);
        if (state.hasFocus && showsFocus(view))
            paintFocus(canvas.painter(), areaOf(view));
        return;
    }
    canvas.painter().save();
    view.setNeedsDisplay(false);
    painter->second(view, canvas, state);
    canvas.painter().restore();
}

}  // namespace host
