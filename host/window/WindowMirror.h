// A native window that follows one window of the toolkit: title, frame, close button, modality, content.
//
// Person   resizing and moving go into the toolkit's frame; the title bar's close button is performClose, so that the
//          window closes only where the toolkit closes it.
// Threads  main.
#pragma once

#include <QWidget>

#include <memory>
#include <string_view>

class NSButton;
class NSWindow;
class QMenuBar;

namespace host {

class ViewSurface;

class WindowMirror : public QWidget {
public:
    explicit WindowMirror(const std::shared_ptr<NSWindow> &window);
    ~WindowMirror() override;

    [[nodiscard]] std::shared_ptr<NSWindow> toolkitWindow() const { return window_.lock(); }
    [[nodiscard]] ViewSurface &surface() const { return *surface_; }
    // Above the content; owned from then on.
    void setMenuBar(QMenuBar *bar);
    // Shows the window above `owner` (null for a window of its own).
    void present(bool modal, WindowMirror *owner);
    void setModal(bool modal);

    void windowChanged(std::string_view key);
    // One of the title bar's buttons was hidden or disabled.
    void titleBarChanged();

protected:
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] Qt::WindowFlags flags() const;
    [[nodiscard]] int barHeight() const;
    void placeSurface();
    void takeFrame();
    void limitSize();

    std::weak_ptr<NSWindow> window_;
    ViewSurface *surface_;
    QMenuBar *menuBar_ = nullptr;
    bool isTaking_ = false, hasPlace_ = false;
};

}  // namespace host
