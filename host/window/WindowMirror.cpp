#include "host/window/WindowMirror.h"

#include <QCloseEvent>
#include <QMenuBar>
#include <QPointer>
#include <QScreen>
#include <QWindow>

#include <cmath>

#include "host/window/QtText.h"
#include "host/window/ViewSurface.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSWindow.h"

namespace host {

namespace {

// A dialog without a title would get that of the program file.
QString titleOf(const NSWindow &window) { return window.title().isEmpty() ? QObject::tr("Manager") : qtString(window.title()); }

}  // namespace

WindowMirror::WindowMirror(const std::shared_ptr<NSWindow> &window) : window_(window), surface_(new ViewSurface(window, this)) {
    setWindowFlags(flags());
    setWindowTitle(titleOf(*window));
    setObjectName(qtString(window->identifier()));
    takeFrame();
}

WindowMirror::~WindowMirror() = default;

Qt::WindowFlags WindowMirror::flags() const {
    const auto window = this->toolkitWindow();
    if (!window)
        return Qt::Window;
    const unsigned mask = window->styleMask();
    if (!(mask & NSTitledWindowMask))
        return Qt::Window | Qt::FramelessWindowHint;
    Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    const auto shows = [&](int number) {
        const auto button = window->standardWindowButton(number);
        return button && button->isEnabled() && !button->isHidden();
    };
    if (shows(NSWindowCloseButton))
        flags |= Qt::WindowCloseButtonHint;
    if (shows(NSWindowMiniaturizeButton))
        flags |= Qt::WindowMinimizeButtonHint;
    if (shows(NSWindowZoomButton))
        flags |= Qt::WindowMaximizeButtonHint;
    return flags;
}

void WindowMirror::setMenuBar(QMenuBar *bar) {
    menuBar_ = bar;
    bar->setParent(this);
    bar->show();
    takeFrame();
}

int WindowMirror::barHeight() const { return menuBar_ && !menuBar_->isNativeMenuBar() ? menuBar_->sizeHint().height() : 0; }

void WindowMirror::placeSurface() {
    const int bar = barHeight();
    if (menuBar_)
        menuBar_->setGeometry(0, 0, width(), bar);
    surface_->setGeometry(0, bar, width(), height() - bar);
}

void WindowMirror::limitSize() {
    const auto window = this->toolkitWindow();
    if (!window)
        return;
    if (window->styleMask() & NSResizableWindowMask) {
        setMinimumSize(static_cast<int>(window->minSize().width), static_cast<int>(window->minSize().height) + barHeight());
        setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    } else {
        setFixedSize(size());
    }
}

// The toolkit's frame, its y from the lower edge of the screen, becomes the native one.
void WindowMirror::takeFrame() {
    const auto window = this->toolkitWindow();
    if (!window || isTaking_)
        return;
    isTaking_ = true;
    const NSRect content = window->contentRect();
    setMinimumSize(0, 0);
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    resize(static_cast<int>(std::lround(content.size.width)), static_cast<int>(std::lround(content.size.height)) + barHeight());
    if (hasPlace_) {
        const QRect area = screen()->geometry();
        move(static_cast<int>(window->frame().minX()), area.height() - static_cast<int>(window->frame().maxY()));
    }
    placeSurface();
    limitSize();
    isTaking_ = false;
}

void WindowMirror::present(bool modal, WindowMirror *owner) {
    const auto window = this->toolkitWindow();
    if (!window)
        return;
    setModal(modal);
    if (!std::exchange(hasPlace_, true)) {
        const QRect area = screen()->availableGeometry();
        const QPoint middle = owner ? owner->geometry().center() : area.center();
        QPoint corner(middle.x() - width() / 2, middle.y() - height() / 2);
        corner.setX(std::clamp(corner.x(), area.left(), std::max(area.left(), area.right() - width())));
        corner.setY(std::clamp(corner.y(), area.top(), std::max(area.top(), area.bottom() - height())));
        isTaking_ = true;
        move(corner);
        isTaking_ = false;
    }
    surface_->syncParts();
    show();
    if (owner && windowHandle() && owner->windowHandle())
        windowHandle()->setTransientParent(owner->windowHandle());
    raise();
    activateWindow();
    surface_->setFocus();
    surface_->syncFocus();
}

// A native window takes a change of its modality only while it is hidden.
void WindowMirror::setModal(bool modal) {
    const auto wanted = modal ? Qt::ApplicationModal : Qt::NonModal;
    if (windowModality() == wanted)
        return;
    const bool wasVisible = isVisible();
    if (wasVisible)
        hide();
    setWindowModality(wanted);
    if (wasVisible)
        show();
}

void WindowMirror::windowChanged(std::string_view key) {
    const auto window = this->toolkitWindow();
    if (!window)
        return;
    if (key == "title") {
        setWindowTitle(titleOf(*window));
    } else if (key == "frame") {
        takeFrame();
    } else if (key == "styleMask") {
        titleBarChanged();
        takeFrame();
    }
    surface_->noteLayoutChanged();
}

void WindowMirror::titleBarChanged() {
    const Qt::WindowFlags wanted = flags();
    if (wanted == windowFlags())
        return;
    const bool wasVisible = isVisible();
    setWindowFlags(wanted);   // hides it
    if (wasVisible)
        show();
}

void WindowMirror::closeEvent(QCloseEvent *event) {
    event->ignore();
    const auto window = this->toolkitWindow();
    if (!window)
        return event->accept();
    // A title bar of a window outside the innermost modal run is dead, as its content is.
    const auto modal = NSApp()->modalWindow();
    if (!modal || modal == window || window->worksWhenModal())
        dispatch::guarded("a title bar", [&] { window->performClose(); });
}

void WindowMirror::resizeEvent(QResizeEvent *) {
    placeSurface();
    const auto window = this->toolkitWindow();
    if (!window || isTaking_)
        return;
    isTaking_ = true;
    const QSize size = surface_->size();
    dispatch::guarded("a new size", [&] { window->setContentSize({double(size.width()), double(size.height())}); });
    isTaking_ = false;
    surface_->noteLayoutChanged();
}

void WindowMirror::moveEvent(QMoveEvent *) {
    const auto window = this->toolkitWindow();
    if (!window || isTaking_ || !isVisible())
        return;
    isTaking_ = true;
    NSRect frame = window->frame();
    frame.origin = {double(pos().x()), screen()->geometry().height() - pos().y() - frame.size.height};
    window->setFrame(frame);
    isTaking_ = false;
}

void WindowMirror::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    const auto window = this->toolkitWindow();
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && window && window->isVisible()) {
        dispatch::guarded("a window in front", [&] { window->makeKeyWindow(); });
        surface_->syncFocus();
    }
    if (event->type() == QEvent::PaletteChange)
        surface_->noteThemeChanged();
}

}  // namespace host
