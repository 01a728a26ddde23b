// One test's window world: a fresh toolkit on Qt's loop and its real clock, the presenter installed, a fixed font and theme.
//
// Waiting   `until` serves events and blocks until the condition holds; a condition that never comes fails after a minute
//           instead of hanging. Pictures go to screenshots/ in the build folder.
#pragma once

#include <gtest/gtest.h>

#include <QWidget>

#include <functional>
#include <memory>
#include <string>

#include "host/window/QtLoopHost.h"
#include "host/window/QtPresenter.h"
#include "host/window/Theme.h"
#include "toolkit/views/NSView.h"
#include "toolkit/views/NSWindow.h"

namespace host {
class ViewSurface;
}

class WindowWorld {
public:
    explicit WindowWorld(host::ThemeKind theme = host::ThemeKind::light);
    ~WindowWorld();

    [[nodiscard]] host::QtPresenter &presenter() { return *presenter_; }
    // False (and a failure) where it did not come about.
    bool until(const std::function<bool()> &condition, const char *what = "the condition");
    // Acts once as soon as the condition holds while some loop, a modal one too, is about to wait: a person who sits there.
    void once(std::function<bool()> condition, std::function<void()> act);
    // Serves what is waiting now: events, main-queue blocks and what they bring along at once.
    void serve();
    // Shows the window and waits for its first picture.
    host::ViewSurface &show(const std::shared_ptr<NSWindow> &window);
    [[nodiscard]] host::ViewSurface &surfaceOf(NSView &view);

    // A person's: where the middle of the view (or of a part of it) stands on its surface.
    void click(NSView &view, Qt::KeyboardModifiers modifiers = {});
    void clickAt(NSView &view, NSPoint pointInView, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton);
    void doubleClickAt(NSView &view, NSPoint pointInView);
    void moveMouse(NSView &view, NSPoint pointInView);
    void wheel(NSView &view, int notches);
    // To the widget that has the keyboard.
    void type(const QString &text);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});

    // Written as NAME.png; gives the picture.
    QImage picture(QWidget &widget, const std::string &name);

private:
    std::shared_ptr<QtLoopHost> loop_ = std::make_shared<QtLoopHost>();
    std::shared_ptr<host::QtPresenter> presenter_;
};
