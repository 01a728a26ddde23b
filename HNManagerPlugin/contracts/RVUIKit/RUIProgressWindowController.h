// The modal window of every long operation: two text lines, a bar, a spinner, two buttons, perhaps a link line.
//
//     RUIProgressWindowController::showWindow([&](const auto &window) { ... set it up, send the worker off ... });
//
// Tags     a convention of the flows: the border button has 5 while work goes on and 15 when it is done, the colour button
//          10 where it opens a folder. The window is done when the border button is enabled with tag 15.
// Blocks   WillClose: a person wants to close the window (title bar, Escape); true closes. Without a block it closes.
//          ButtonDidClick: one of the two buttons, as the sender. WindowDidLoad: once, when the window is made.
//          A block may replace itself and the others while it runs.
// End      when the window has closed the blocks are dropped, and labels, bars and buttons are replaced by ones that nobody
//          sees: a worker that is late changes nothing.
// Threads  main; close may be called on any thread.
#pragma once

#include <functional>

#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUILinkTextField.h"
#include "toolkit/views/NSProgressIndicator.h"
#include "toolkit/views/NSWindowController.h"

class RUIProgressWindowController : public NSWindowController, public NSWindowDelegate {
public:
    using WillCloseBlock = std::function<bool()>;
    using ButtonBlock = std::function<void(const std::shared_ptr<NSButton> &button)>;
    using WindowBlock = std::function<void(const std::shared_ptr<RUIProgressWindowController> &window)>;

    // Makes a window, shows it, runs `setUp`, then runs it modally. Returns when that run has ended, by closing or by
    // stopModal; the window is closed then.
    static void showWindow(const WindowBlock &setUp);
    // A stand-alone one: make<RUIProgressWindowController>(), the load block, then window()->makeKeyAndOrderFront().
    using NSWindowController::init;
    using NSWindowController::showWindow;

    [[nodiscard]] const std::shared_ptr<NSTextField> &mainLabel() const { return controls_.mainLabel; }
    [[nodiscard]] const std::shared_ptr<NSTextField> &subLabel() const { return controls_.subLabel; }
    [[nodiscard]] const std::shared_ptr<NSProgressIndicator> &progressIndicator() const { return controls_.progressIndicator; }
    [[nodiscard]] const std::shared_ptr<NSProgressIndicator> &loadingIndicator() const { return controls_.loadingIndicator; }
    [[nodiscard]] const std::shared_ptr<RUIButton> &borderButton() const { return controls_.borderButton; }
    [[nodiscard]] const std::shared_ptr<RUIButton> &colorButton() const { return controls_.colorButton; }
    // Hidden until it is given a link.
    [[nodiscard]] const std::shared_ptr<RUILinkTextField> &linkLabel() const { return controls_.linkLabel; }

    void setWindowWillCloseBlock(WillCloseBlock block) { willClose_ = std::move(block); }
    void setButtonDidClickBlock(ButtonBlock block) { buttonDidClick_ = std::move(block); }
    void setWindowDidLoadBlock(WindowBlock block) { windowDidLoad_ = std::move(block); }
    [[nodiscard]] const WillCloseBlock &windowWillCloseBlock() const { return willClose_; }
    [[nodiscard]] const ButtonBlock &buttonDidClickBlock() const { return buttonDidClick_; }

    [[nodiscard]] bool isClosed() const { return isClosed_; }
    // What the main label says, or said when the window closed.
    [[nodiscard]] NSString mainText() const { return isClosed_ ? lastMainText_ : mainLabel()->stringValue(); }

    void windowDidLoad() override;
    bool windowShouldClose(NSWindow &window) override;
    void windowWillClose(NSWindow &window) override;
    void onButtonClick(const id &sender);
    void dealloc() override;
    HN_DECLARE_CLASS_TABLE

private:
    friend struct ProgressWindowNib;
    struct Controls {
        Controls();
        std::shared_ptr<NSTextField> mainLabel, subLabel;
        std::shared_ptr<NSProgressIndicator> progressIndicator, loadingIndicator;
        std::shared_ptr<RUIButton> borderButton, colorButton;
        std::shared_ptr<RUILinkTextField> linkLabel;
    };
    void forgetBlocks();

    Controls controls_;
    WillCloseBlock willClose_;
    ButtonBlock buttonDidClick_;
    WindowBlock windowDidLoad_;
    NSString lastMainText_;
    bool isClosed_ = false;
};
