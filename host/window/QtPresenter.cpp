#include "host/window/QtPresenter.h"

#include <QApplication>
#include <QCursor>

#include "host/window/ForeignFiles.h"
#include "host/window/Notices.h"
#include "host/window/PopUpMenu.h"
#include "host/window/QtText.h"
#include "host/window/ViewSurface.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSSavePanel.h"
#include "toolkit/views/NSTextField.h"

namespace host {

namespace {

// What closes a native window may be an event of its own.
void endLater(WindowMirror *mirror) {
    mirror->hide();
    mirror->deleteLater();
}

}  // namespace

std::shared_ptr<QtPresenter> QtPresenter::install() {
    const auto presenter = std::make_shared<QtPresenter>();
    Presenter::install(presenter);
    ViewObserver::add(presenter);
    return presenter;
}

QtPresenter::~QtPresenter() = default;

void QtPresenter::uninstall() {
    ViewObserver::remove(shared_from_this());
    Presenter::install(nullptr);
    mirrors_.clear();
    for (const auto &[window, panel] : panels_)
        delete panel;
    panels_.clear();
}

// ---------------------------------------------------------------- looking up

WindowMirror *QtPresenter::mirrorOf(const NSWindow &window) const {
    const auto found = mirrors_.find(&window);
    return found == mirrors_.end() ? nullptr : found->second.get();
}

std::vector<WindowMirror *> QtPresenter::mirrors() const {
    std::vector<WindowMirror *> all;
    for (const auto &[window, mirror] : mirrors_)
        all.push_back(mirror.get());
    return all;
}

ViewSurface *QtPresenter::surfaceOf(NSView &view) const {
    const auto window = view.window();
    WindowMirror *mirror = window ? mirrorOf(*window) : nullptr;
    return mirror ? &mirror->surface() : nullptr;
}

PanelMirror *QtPresenter::openPanel() const {
    for (const auto &[window, panel] : panels_)
        if (panel)
            return panel;
    return nullptr;
}

WindowMirror &QtPresenter::mirrorFor(NSWindow &window) {
    if (WindowMirror *mirror = mirrorOf(window))
        return *mirror;
    auto *mirror = new WindowMirror(std::static_pointer_cast<NSWindow>(window.shared_from_this()));
    mirrors_.emplace(&window, std::unique_ptr<WindowMirror, void (*)(WindowMirror *)>(mirror, endLater));
    if (windowMade)
        windowMade(*mirror);
    return *mirror;
}

// A dialog stands above the window that was in front before it.
WindowMirror *QtPresenter::ownerFor(const NSWindow &window) const {
    for (const auto &other : NSApp()->orderedWindows())
        if (other.get() != &window)
            if (WindowMirror *mirror = mirrorOf(*other); mirror && mirror->isVisible())
                return mirror;
    return nullptr;
}

QWidget *QtPresenter::topWidget() const {
    QWidget *active = QApplication::activeWindow();
    if (active && active->windowType() != Qt::Popup)   // a menu goes, and takes what it owns along
        return active;
    for (const auto &window : NSApp()->orderedWindows())
        if (WindowMirror *mirror = mirrorOf(*window))
            return mirror;
    return nullptr;
}

// ---------------------------------------------------------------- presenting

void QtPresenter::windowDidOpen(NSWindow &window, bool modal) {
    mirrorFor(window).present(modal, ownerFor(window));
    noteWindowOpens();
}

void QtPresenter::modalRunDidEnd(NSWindow &window) {
    if (const auto panel = panels_.find(&window); panel != panels_.end()) {
        if (panel->second)
            panel->second->deleteLater();
        panels_.erase(panel);
    }
    if (WindowMirror *mirror = mirrorOf(window))
        mirror->setModal(NSApp()->isModal(window));
    noteWindowEnded();
}

void QtPresenter::windowDidClose(NSWindow &window) {
    if (const auto panel = panels_.find(&window); panel != panels_.end() && panel->second)
        panel->second->hide();
    mirrors_.erase(&window);
    // A notice that opened before the window has to be read now: it blocks the others, so the keyboard belongs to it.
    QMetaObject::invokeMethod(qApp, [] {
        if (QWidget *notice = QApplication::activeModalWidget(); notice && !notice->isActiveWindow())
            notice->activateWindow();
    }, Qt::QueuedConnection);
    noteWindowEnded();
}

void QtPresenter::panelDidOpen(NSSavePanel &panel) {
    const auto held = std::static_pointer_cast<NSSavePanel>(panel.shared_from_this());
    if (const auto files = std::exchange(panelAnswer_, std::nullopt)) {
        // Never inside this call: the run has not begun yet.
        dispatch::async(dispatch::main(), [held, files = *files, owner = QPointer<QWidget>(topWidget())] {
            std::vector<NSString> paths;
            for (const QString &file : files)
                paths.push_back(toolkitString(file));
            paths = handedOver(*held, paths, owner);
            if (paths.empty() || !held->choose(paths))
                held->cancel();
        });
        return;
    }
    auto *dialog = new PanelMirror(held, topWidget());
    panels_[&panel] = dialog;
    dialog->show();
}

std::shared_ptr<NSMenuItem> QtPresenter::popUpMenu(const std::shared_ptr<NSMenu> &menu, NSPoint point, const std::shared_ptr<NSView> &view) {
    ViewSurface *surface = view ? surfaceOf(*view) : nullptr;
    const QPoint place = surface ? surface->mapToGlobal(surface->rectOf(*view, {point, {0, 0}}).topLeft().toPoint()) : QCursor::pos();
    return popUp(menu, place, surface ? surface : topWidget());
}

void QtPresenter::editorDidOpen(NSTextField &field) {
    const auto window = field.window();
    if (!window)
        return;
    window->makeFirstResponder(std::static_pointer_cast<NSResponder>(field.shared_from_this()));
    if (ViewSurface *surface = surfaceOf(field))
        surface->syncParts();
}

// ---------------------------------------------------------------- following

void QtPresenter::frameChanged(NSView &view) {
    if (ViewSurface *surface = surfaceOf(view))
        surface->noteLayoutChanged();
}

void QtPresenter::subviewsChanged(NSView &view) { frameChanged(view); }

void QtPresenter::needsDisplay(NSView &view, const NSRect &rect) {
    if (ViewSurface *surface = surfaceOf(view))
        surface->noteNeedsDisplay(view, rect);
}

void QtPresenter::propertyChanged(NSView &view, std::string_view key) {
    if (ViewSurface *surface = surfaceOf(view)) {
        surface->notePropertyChanged(view, key);
        return;
    }
    for (const auto &[window, mirror] : mirrors_)
        for (const int number : {NSWindowCloseButton, NSWindowMiniaturizeButton, NSWindowZoomButton})
            if (window->standardWindowButton(number).get() == &view)
                return mirror->titleBarChanged();
}

void QtPresenter::windowChanged(NSWindow &window, std::string_view key) {
    if (WindowMirror *mirror = mirrorOf(window))
        mirror->windowChanged(key);
}

}  // namespace host
