// The general mirror: paints the view tree of one window and hands a person's raw events to it. Views that take native
// input have a native part lying over their place.
//
// Truth     frames, focus and hit tests are the toolkit's. Changes come through noteChanged..., never by looking for them;
//           several in one turn of the event loop are taken up once, before the next picture.
// Space     the surface's upper left corner is that of the window's content view.
// Threads   main.
#pragma once

#include <QBasicTimer>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <map>
#include <memory>

#include "host/window/NativePart.h"
#include "host/window/Theme.h"
#include "toolkit/views/NSEvent.h"

class NSTextField;
class NSWindow;

namespace host {

class QtCanvas;

class ViewSurface : public QWidget {
public:
    ViewSurface(const std::shared_ptr<NSWindow> &window, QWidget *parent);
    ~ViewSurface() override;

    [[nodiscard]] std::shared_ptr<NSWindow> window() const { return window_.lock(); }
    // Of the view's bounds, or a part of them; not cut by ancestors.
    [[nodiscard]] QRectF rectOf(NSView &view, const NSRect &rect) const;
    [[nodiscard]] QRectF rectOf(NSView &view) const { return rectOf(view, view.bounds()); }
    // Topmost visible view there; null outside.
    [[nodiscard]] std::shared_ptr<NSView> viewAt(const QPointF &point) const;
    // Null where the view has none now.
    [[nodiscard]] NativePart *partOf(const NSView &view) const;

    // ------------------------------------------------------------ told by the presenter
    void noteNeedsDisplay(NSView &view, const NSRect &rect);
    // Frames, membership, visibility, focus.
    void noteLayoutChanged();
    void notePropertyChanged(NSView &view, std::string_view key);
    // Native parts are made anew: they got their colours when they were made.
    void noteThemeChanged();
    // Gives the keyboard to whatever the window's first responder asks for.
    void syncFocus();
    // At once, instead of in the next turn.
    void syncParts();

    void sendKey(const QKeyEvent &event);
    // A person changed the text of a field, after the field's delegate was told.
    std::function<void(NSTextField &field)> typed;
    // The Esc key in a field; true where it was more than the field's own command.
    std::function<bool(NSTextField &field)> escaped;
    // Files dropped on a view that takes them; true where somebody took them.
    std::function<bool(const std::shared_ptr<NSView> &view, const QStringList &files)> filesDropped;
    // Asked while files hover: whether a drop there would do something.
    std::function<bool(const std::shared_ptr<NSView> &view, const QStringList &files)> takesFiles;
    // Paints the tree, native parts left out: for pictures of what is not on a screen.
    void paintTree(QtCanvas &canvas, const QRectF &part);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    bool focusNextPrevChild(bool) override { return false; }

private:
    struct Part {
        std::weak_ptr<NSView> view;
        std::unique_ptr<NativePart> part;
    };
    struct Walk;
    [[nodiscard]] NSPoint inWindow(const QPointF &point) const;
    void send(const std::shared_ptr<NSEvent> &event);
    void press(const QMouseEvent &event, int clickCount);
    bool pressedOnComboArrow(const QPointF &point);
    bool opensComboList(const QKeyEvent &event);
    void trackMouse();
    void chooseCursor(const QPointF &point);
    void paint(NSView &view, const QPointF &corner, QtCanvas &canvas, const QRectF &part);
    [[nodiscard]] bool isCovered(const NSView &view, const QRectF &visible) const;
    void walkParts(const std::shared_ptr<NSView> &view, const QPointF &corner, const QRectF &clip, Walk &walk);

    std::weak_ptr<NSWindow> window_;
    std::map<const NSView *, Part> parts_;
    ThemeKind partsTheme_ = Theme::current().kind();
    QBasicTimer turnTimer_;
    std::vector<std::weak_ptr<NSView>> turning_;
    QPointF mouse_;
    int turn_ = 0;
    bool isSyncDue_ = false, isSyncing_ = false, isMouseInside_ = false, isTrackDue_ = false;
};

}  // namespace host
