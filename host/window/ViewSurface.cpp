#include "host/window/ViewSurface.h"

#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QHelpEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QUrl>
#include <QWheelEvent>

#include <set>

#include "host/window/ComboList.h"
#include "host/window/ControlPainter.h"
#include "host/window/KeyCodes.h"
#include "host/window/QtText.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/views/NSComboBox.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSWindow.h"

namespace host {

namespace {

const auto kSync = static_cast<QEvent::Type>(QEvent::registerEventType());
constexpr int kTurnMilliseconds = 80;
constexpr double kWheelStep = 60;   // points a notch of the wheel scrolls

// Upper left corner of a subview, seen from its superview's.
QPointF cornerIn(const NSView &above, const NSView &view) {
    const NSRect frame = view.placeInSuperview(), bounds = above.bounds();
    return {frame.minX() - bounds.minX(), above.isFlipped() ? frame.minY() - bounds.minY() : bounds.maxY() - frame.maxY()};
}

QStringList filesOf(const QMimeData *data) {
    QStringList files;
    for (const QUrl &url : data->urls())
        if (url.isLocalFile())
            files << url.toLocalFile();
    return files;
}

}  // namespace

ViewSurface::ViewSurface(const std::shared_ptr<NSWindow> &window, QWidget *parent) : QWidget(parent), window_(window) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setLayoutDirection(Qt::LeftToRight);   // the toolkit has mirrored the frames already
}

ViewSurface::~ViewSurface() = default;

// ---------------------------------------------------------------- geometry

NSPoint ViewSurface::inWindow(const QPointF &point) const {
    const auto window = this->window();
    const double height = window && window->contentView() ? window->contentView()->frame().size.height : QWidget::height();
    return {point.x(), height - point.y()};
}

QRectF ViewSurface::rectOf(NSView &view, const NSRect &rect) const {
    const auto window = this->window();
    if (!window || !window->contentView())
        return {};
    const NSRect inWindow = view.convertRect_toView(rect, nullptr);
    return {inWindow.minX(), window->contentView()->frame().size.height - inWindow.maxY(), inWindow.size.width, inWindow.size.height};
}

std::shared_ptr<NSView> ViewSurface::viewAt(const QPointF &point) const {
    const auto window = this->window();
    return window && window->contentView() ? window->contentView()->hitTest(inWindow(point)) : nullptr;
}

NativePart *ViewSurface::partOf(const NSView &view) const {
    const auto found = parts_.find(&view);
    return found == parts_.end() ? nullptr : found->second.part.get();
}

// ---------------------------------------------------------------- changes

void ViewSurface::noteNeedsDisplay(NSView &view, const NSRect &rect) {
    if (view.isHidden())
        return;
    update(rectOf(view, rect).toAlignedRect().adjusted(-1, -1, 1, 1));
}

void ViewSurface::noteLayoutChanged() {
    update();
    if (!std::exchange(isSyncDue_, true))
        QCoreApplication::postEvent(this, new QEvent(kSync), Qt::HighEventPriority);
}

void ViewSurface::notePropertyChanged(NSView &view, std::string_view key) {
    if (NativePart *part = partOf(view))
        part->viewChanged(key);
    noteLayoutChanged();
}

void ViewSurface::noteThemeChanged() {
    if (std::exchange(partsTheme_, Theme::current().kind()) != Theme::current().kind())
        parts_.clear();
    noteLayoutChanged();
}

struct ViewSurface::Walk {
    std::set<const NSView *> met;
    std::vector<std::weak_ptr<NSView>> turning;
};

// A native part would shine through what lies over its view.
bool ViewSurface::isCovered(const NSView &view, const QRectF &visible) const {
    const auto hit = viewAt(visible.center());
    return hit && !hit->isDescendantOf(view);
}

void ViewSurface::walkParts(const std::shared_ptr<NSView> &view, const QPointF &corner, const QRectF &clip, Walk &walk) {
    if (view->isHidden())
        return;
    const QRectF rect(corner, QSizeF(view->frame().size.width, view->frame().size.height));
    const QRectF visible = rect & clip;
    if (visible.isEmpty())
        return;
    if (turnsByItself(*view))
        walk.turning.push_back(view);
    if (const NativeKind *kind = nativeKindOf(*view); kind && kind->isWanted(*view) && !isCovered(*view, visible)) {
        walk.met.insert(view.get());
        Part &part = parts_[view.get()];
        if (!part.part || part.view.lock() != view)
            part = {view, kind->make(*this, view)};
        part.part->place(rect, visible);
    }
    const NSView::List below = view->subviews();
    for (const auto &subview : below)
        walkParts(subview, corner + cornerIn(*view, *subview), visible, walk);
}

void ViewSurface::syncParts() {
    const auto window = this->window();
    isSyncDue_ = false;
    if (isSyncing_ || !window || !window->contentView())
        return;
    isSyncing_ = true;
    Walk walk;
    walkParts(window->contentView(), {0, 0}, QRectF(rect()), walk);
    std::erase_if(parts_, [&](const auto &entry) { return !walk.met.contains(entry.first); });
    turning_ = std::move(walk.turning);
    if (turning_.empty())
        turnTimer_.stop();
    else if (!turnTimer_.isActive())
        turnTimer_.start(kTurnMilliseconds, this);
    isSyncing_ = false;
    syncFocus();
    if (std::exchange(isTrackDue_, false))
        trackMouse();
}

void ViewSurface::syncFocus() {
    const auto window = this->window();
    if (!window || !isActiveWindow())
        return;
    const auto view = std::dynamic_pointer_cast<NSView>(window->firstResponder());
    NativePart *part = view ? partOf(*view) : nullptr;
    QWidget *wanted = part && part->focusWidget() ? part->focusWidget() : this;
    if (!wanted->hasFocus())
        wanted->setFocus(Qt::OtherFocusReason);
}

void ViewSurface::timerEvent(QTimerEvent *event) {
    if (event->timerId() != turnTimer_.timerId())
        return QWidget::timerEvent(event);
    ++turn_;
    for (const auto &link : turning_)
        if (const auto view = link.lock())
            noteNeedsDisplay(*view, view->bounds());
}

// ---------------------------------------------------------------- picture

void ViewSurface::paintEvent(QPaintEvent *event) {
    if (isSyncDue_)
        syncParts();
    QPainter painter(this);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    const auto window = this->window();
    const Theme &theme = Theme::current();
    painter.fillRect(event->rect(), window && window->backgroundColor() ? theme.fill(*window->backgroundColor()) : theme.window());
    QtCanvas canvas(painter, theme);
    paintTree(canvas, event->rect());
}

void ViewSurface::paintTree(QtCanvas &canvas, const QRectF &part) {
    const auto window = this->window();
    if (window && window->contentView())
        paint(*window->contentView(), {0, 0}, canvas, part);
}

void ViewSurface::paint(NSView &view, const QPointF &corner, QtCanvas &canvas, const QRectF &part) {
    const QRectF rect(corner, QSizeF(view.frame().size.width, view.frame().size.height));
    const QRectF visible = rect & part;
    if (view.isHidden() || view.alphaValue() <= 0 || visible.isEmpty())
        return;
    QPainter &painter = canvas.painter();
    painter.save();
    painter.setClipRect(visible, Qt::IntersectClip);
    if (view.alphaValue() < 1)
        painter.setOpacity(painter.opacity() * view.alphaValue());
    painter.save();
    painter.translate(corner);
    const auto window = this->window();
    ControlState state;
    const bool isFirst = window && window->firstResponder().get() == &view;
    state.isBeingEdited = isFirst && partOf(view);
    state.hasFocus = isFirst && isActiveWindow();
    state.turn = turn_;
    dispatch::guarded("a picture", [&] { paintView(view, canvas, state); });
    painter.restore();
    const NSView::List below = view.subviews();
    for (const auto &subview : below)
        paint(*subview, corner + cornerIn(view, *subview), canvas, visible);
    painter.restore();
}

// ---------------------------------------------------------------- events

void ViewSurface::send(const std::shared_ptr<NSEvent> &event) {
    if (const auto window = this->window())
        window->sendEvent(event);
}

// The list of a combo box opens by Down, where nothing can be typed by the space bar, too.
bool ViewSurface::opensComboList(const QKeyEvent &event) {
    const auto combo = window() ? std::dynamic_pointer_cast<NSComboBox>(window()->firstResponder()) : nullptr;
    const bool isAsked = event.key() == Qt::Key_Down || (event.key() == Qt::Key_Space && combo && !combo->isEditable());
    if (!combo || !isAsked || event.type() != QEvent::KeyPress || !combo->isEnabled())
        return false;
    popUpComboList(*this, combo, rectOf(*combo));
    return true;
}

void ViewSurface::sendKey(const QKeyEvent &event) {
    if (!opensComboList(event))
        send(keyEventOf(event));
}

namespace {

NSEventType typeFor(Qt::MouseButton button, NSEventType left, NSEventType right) { return button == Qt::RightButton ? right : left; }

}  // namespace

bool ViewSurface::pressedOnComboArrow(const QPointF &point) {
    constexpr double kArrow = 24;
    const auto combo = std::dynamic_pointer_cast<NSComboBox>(viewAt(point));
    if (!combo || !combo->isEnabled())
        return false;
    const QRectF rect = rectOf(*combo);
    const bool isTurned = NSView::userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::rightToLeft;
    if (combo->isEditable() && (isTurned ? point.x() >= rect.left() + kArrow : point.x() < rect.right() - kArrow))
        return false;
    popUpComboList(*this, combo, rect);
    return true;
}

void ViewSurface::press(const QMouseEvent &event, int clickCount) {
    if (event.button() != Qt::LeftButton && event.button() != Qt::RightButton)
        return;
    if (event.button() == Qt::LeftButton && pressedOnComboArrow(event.position()))
        return;
    const QPointer<ViewSurface> self(this);   // a press may close the window
    const auto before = window() ? window()->firstResponder() : nullptr;
    send(NSEvent::mouse(typeFor(event.button(), NSEventType::leftMouseDown, NSEventType::rightMouseDown), inWindow(event.position()),
                        clickCount, modifiersOf(event.modifiers())));
    if (!self)
        return;
    syncParts();
    const auto focus = window() ? window()->firstResponder() : nullptr;
    if (const auto view = std::dynamic_pointer_cast<NSView>(focus); view && focus != before)
        if (NativePart *part = partOf(*view))
            part->clickedAt(event.position());
}

void ViewSurface::mousePressEvent(QMouseEvent *event) { press(*event, 1); }
void ViewSurface::mouseDoubleClickEvent(QMouseEvent *event) { press(*event, 2); }

void ViewSurface::mouseMoveEvent(QMouseEvent *event) {
    mouse_ = event->position();
    isMouseInside_ = true;
    NSEventType type = NSEventType::mouseMoved;
    if (event->buttons() & Qt::LeftButton)
        type = NSEventType::leftMouseDragged;
    else if (event->buttons() & Qt::RightButton)
        type = NSEventType::rightMouseDragged;
    send(NSEvent::mouse(type, inWindow(mouse_), 0, modifiersOf(event->modifiers())));
    chooseCursor(mouse_);
}

void ViewSurface::mouseReleaseEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton && event->button() != Qt::RightButton)
        return;
    send(NSEvent::mouse(typeFor(event->button(), NSEventType::leftMouseUp, NSEventType::rightMouseUp), inWindow(event->position()), 1,
                        modifiersOf(event->modifiers())));
}

void ViewSurface::leaveEvent(QEvent *) {
    isMouseInside_ = false;
    send(NSEvent::mouse(NSEventType::mouseExited, inWindow(mouse_), 0));
}

// What lies under a resting mouse changed: views come and go as the content scrolls.
void ViewSurface::trackMouse() {
    if (isMouseInside_)
        send(NSEvent::mouse(NSEventType::mouseMoved, inWindow(mouse_), 0));
}

void ViewSurface::wheelEvent(QWheelEvent *event) {
    const auto scroll = NSEvent::mouse(NSEventType::scrollWheel, inWindow(event->position()), 0, modifiersOf(event->modifiers()));
    QPointF distance = event->pixelDelta();
    if (distance.isNull())
        distance = QPointF(event->angleDelta()) * kWheelStep / 120;
    scroll->scrollingDeltaX = distance.x();
    scroll->scrollingDeltaY = distance.y();
    const QPointer<ViewSurface> self(this);
    send(scroll);
    if (!self)
        return;
    isTrackDue_ = true;
    noteLayoutChanged();
}

void ViewSurface::keyPressEvent(QKeyEvent *event) {
    const QPointer<ViewSurface> self(this);
    const auto before = window() ? window()->firstResponder() : nullptr;
    sendKey(*event);
    // A view that swallows all keys shall not hold the keyboard for ever.
    const bool isTab = event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab;
    if (!isTab || !self || !window() || window()->firstResponder() != before)
        return;
    event->key() == Qt::Key_Tab ? window()->selectNextKeyView() : window()->selectPreviousKeyView();
    noteLayoutChanged();
}
void ViewSurface::keyReleaseEvent(QKeyEvent *event) { sendKey(*event); }

void ViewSurface::focusInEvent(QFocusEvent *) {
    update();
    noteLayoutChanged();
}
void ViewSurface::focusOutEvent(QFocusEvent *) { update(); }

void ViewSurface::chooseCursor(const QPointF &point) {
    const auto field = std::dynamic_pointer_cast<NSTextField>(viewAt(point));
    if (field && field->hasAttributedValue() && !field->attributedStringValue()->linkRuns().empty())
        setCursor(Qt::PointingHandCursor);
    else if (field && field->isEditable() && field->isEnabled())
        setCursor(Qt::IBeamCursor);
    else
        unsetCursor();
}

bool ViewSurface::event(QEvent *event) {
    if (event->type() == kSync) {
        syncParts();
        return true;
    }
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        for (auto view = viewAt(help->pos()); view; view = view->superview())
            if (!view->toolTip().isEmpty()) {
                QToolTip::showText(help->globalPos(), qtString(view->toolTip()), this, rectOf(*view).toAlignedRect());
                return true;
            }
        QToolTip::hideText();
        return true;
    }
    return QWidget::event(event);
}

// ---------------------------------------------------------------- drops

void ViewSurface::dragEnterEvent(QDragEnterEvent *event) {
    if (filesDropped && event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void ViewSurface::dragMoveEvent(QDragMoveEvent *event) {
    const QStringList files = filesOf(event->mimeData());
    event->setAccepted(!files.isEmpty() && takesFiles && takesFiles(viewAt(event->position()), files));
}

// The other program waits for the end of this call, which therefore does not run the flow of the drop.
void ViewSurface::dropEvent(QDropEvent *event) {
    const QStringList files = filesOf(event->mimeData());
    const auto view = viewAt(event->position());
    if (files.isEmpty() || !filesDropped || !takesFiles || !takesFiles(view, files))
        return;
    event->acceptProposedAction();
    QMetaObject::invokeMethod(this, [this, view, files] { dispatch::guarded("a drop", [&] { filesDropped(view, files); }); }, Qt::QueuedConnection);
}

}  // namespace host
