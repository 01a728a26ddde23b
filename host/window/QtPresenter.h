// Shows the toolkit's windows, panels, menus and editors in native windows and keeps them in step.
//
// Use       make one, install it as Presenter and add it as ViewObserver (install() does both) before the first window.
// Panels    a test or a drop may answer the next one by files instead of a dialog: answerNextPanel.
// Threads   main.
#pragma once

#include <QPointer>

#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "toolkit/views/Presenter.h"
#include "toolkit/views/ViewObserver.h"

#include "host/window/PanelMirror.h"
#include "host/window/WindowMirror.h"

namespace host {

class QtPresenter final : public Presenter, public ViewObserver, public std::enable_shared_from_this<QtPresenter> {
public:
    [[nodiscard]] static std::shared_ptr<QtPresenter> install();
    ~QtPresenter() override;
    // Native windows go; the toolkit's stay.
    void uninstall();

    // Null where the window is not shown.
    [[nodiscard]] WindowMirror *mirrorOf(const NSWindow &window) const;
    [[nodiscard]] std::vector<WindowMirror *> mirrors() const;
    // The surface on which a view stands; null where it stands in no window on show.
    [[nodiscard]] ViewSurface *surfaceOf(NSView &view) const;
    // The dialog on top; null without one.
    [[nodiscard]] PanelMirror *openPanel() const;
    // The next panel takes these files as if a person had chosen them, without a dialog on show. Files that it refuses, or an
    // empty list, cancel it.
    void answerNextPanel(QStringList files) { panelAnswer_ = std::move(files); }
    void forgetPanelAnswer() { panelAnswer_.reset(); }
    // Called for each native window that was made, before it shows.
    std::function<void(WindowMirror &)> windowMade;

    void windowDidOpen(NSWindow &window, bool modal) override;
    void modalRunDidEnd(NSWindow &window) override;
    void windowDidClose(NSWindow &window) override;
    void panelDidOpen(NSSavePanel &panel) override;
    std::shared_ptr<NSMenuItem> popUpMenu(const std::shared_ptr<NSMenu> &menu, NSPoint point, const std::shared_ptr<NSView> &view) override;
    void editorDidOpen(NSTextField &field) override;

    void frameChanged(NSView &view) override;
    void subviewsChanged(NSView &view) override;
    void needsDisplay(NSView &view, const NSRect &rect) override;
    void propertyChanged(NSView &view, std::string_view key) override;
    void windowChanged(NSWindow &window, std::string_view key) override;

private:
    WindowMirror &mirrorFor(NSWindow &window);
    [[nodiscard]] WindowMirror *ownerFor(const NSWindow &window) const;
    [[nodiscard]] QWidget *topWidget() const;

    std::map<const NSWindow *, std::unique_ptr<WindowMirror, void (*)(WindowMirror *)>> mirrors_;
    std::map<const NSWindow *, QPointer<PanelMirror>> panels_;
    std::optional<QStringList> panelAnswer_;
};

}  // namespace host
