// A window: its content, its focus, its events, its end.
//
// Frame     in screen points, y up. The content view takes the frame without the title bar (22 points where titled).
// Showing   orderFront makes it visible and tells the presenter; the toolkit holds windows weakly, whoever made it owns it.
// Closing   performClose is the title bar's button: asks windowShouldClose, then closes. close() asks nobody: the delegate's
//           windowWillClose, then NSWindowWillCloseNotification, then it is invisible and the run that stands on it ends
//           (-1000 where nobody gave a code). A window that is neither visible nor run modally has nothing to close.
// Threads   main; close may be called on any thread, it hops.
#pragma once

#include <array>
#include <memory>

#include "toolkit/views/NSButton.h"
#include "toolkit/views/NSView.h"

class NSWindowController;

inline constexpr const char *NSWindowWillCloseNotification = "NSWindowWillCloseNotification";
inline constexpr const char *NSWindowDidBecomeKeyNotification = "NSWindowDidBecomeKeyNotification";

constexpr unsigned NSBorderlessWindowMask = 0, NSTitledWindowMask = 1, NSClosableWindowMask = 2, NSMiniaturizableWindowMask = 4,
                   NSResizableWindowMask = 8;
// Numbers of standardWindowButton.
constexpr int NSWindowCloseButton = 0, NSWindowMiniaturizeButton = 1, NSWindowZoomButton = 2;

// All optional.
class NSWindowDelegate {
public:
    virtual ~NSWindowDelegate() = default;
    virtual bool windowShouldClose(NSWindow &) { return true; }
    virtual void windowWillClose(NSWindow &) {}
    virtual void windowDidBecomeKey(NSWindow &) {}
    virtual void windowDidResize(NSWindow &) {}
};

class NSWindow : public NSResponder {
public:
    void init() override { initWithContentRect_styleMask({0, 0, 480, 320}, kUsualStyle); }
    void init(const NSRect &contentRect, unsigned styleMask = kUsualStyle) { initWithContentRect_styleMask(contentRect, styleMask); }
    virtual void initWithContentRect_styleMask(const NSRect &contentRect, unsigned styleMask);
    void dealloc() override;

    static constexpr unsigned kUsualStyle = NSTitledWindowMask | NSClosableWindowMask;
    static constexpr double kTitleBarHeight = 22;

    [[nodiscard]] const NSString &title() const { return title_; }
    void setTitle(NSString title);
    [[nodiscard]] const NSString &identifier() const { return identifier_; }
    void setIdentifier(NSString identifier) { identifier_ = std::move(identifier); }
    [[nodiscard]] unsigned styleMask() const { return styleMask_; }
    void setStyleMask(unsigned mask);
    [[nodiscard]] const NSRect &frame() const { return frame_; }
    void setFrame(const NSRect &frame);
    void setFrame_display(const NSRect &frame, bool /*display*/) { setFrame(frame); }
    void setFrame_display_animate(const NSRect &frame, bool /*display*/, bool /*animate*/) { setFrame(frame); }
    void setContentSize(NSSize size);
    [[nodiscard]] NSRect contentRect() const;
    [[nodiscard]] NSSize minSize() const { return minSize_; }
    void setMinSize(NSSize size) { minSize_ = size; }
    // To the middle of the screen (a screen of 1440 by 900 unless the host sets another).
    void center();
    static void setScreenFrame(const NSRect &frame);

    [[nodiscard]] const std::shared_ptr<NSView> &contentView() const { return contentView_; }
    void setContentView(const std::shared_ptr<NSView> &view);
    [[nodiscard]] const std::shared_ptr<NSColor> &backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(std::shared_ptr<NSColor> color);
    // 0 close, 1 miniaturize, 2 zoom; null for other numbers. Hiding or disabling one is told to hosts as the button's own
    // property; the close button's click is performClose.
    [[nodiscard]] std::shared_ptr<NSButton> standardWindowButton(int number) const;

    template <class T> void setDelegate(const std::shared_ptr<T> &delegate) { delegate_ = std::shared_ptr<NSWindowDelegate>(delegate); }
    void setDelegate(std::nullptr_t) { delegate_.reset(); }
    [[nodiscard]] std::shared_ptr<NSWindowDelegate> delegate() const { return delegate_.lock(); }
    [[nodiscard]] std::shared_ptr<NSWindowController> windowController() const { return controller_.lock(); }
    void setWindowController(const std::shared_ptr<NSWindowController> &controller) { controller_ = controller; }

    // ------------------------------------------------------------ showing
    [[nodiscard]] bool isVisible() const { return isVisible_; }
    // As isVisible unless a host or a test says otherwise.
    [[nodiscard]] bool isOnActiveSpace() const { return isVisible_ && isOnActiveSpace_; }
    void setOnActiveSpace(bool on) { isOnActiveSpace_ = on; }
    void orderFront();
    void orderOut();
    void makeKeyAndOrderFront();
    void makeKeyWindow();
    [[nodiscard]] bool isKeyWindow() const;
    [[nodiscard]] virtual bool canBecomeMainWindow() const { return (styleMask_ & NSTitledWindowMask) != 0; }
    // What the title bar's close button and Escape do. Nothing where the close button is hidden or disabled or the window
    // is not closable.
    void performClose();
    virtual void close();

    // ------------------------------------------------------------ focus and events
    [[nodiscard]] std::shared_ptr<NSResponder> firstResponder() const;
    // Null gives the focus to the window itself. False where the old one refuses to give it up or the new one to take it.
    bool makeFirstResponder(const std::shared_ptr<NSResponder> &responder);
    void selectNextKeyView();
    void selectPreviousKeyView();
    // The view that gets the focus when the window first shows.
    void setInitialFirstResponder(const std::shared_ptr<NSView> &view) { initialFirstResponder_ = view; }
    // Routes an event of a person: mouse to the view hit (drags and the release to the view pressed), moves through the
    // tracking areas, keys to the first responder. Events for a window outside the innermost modal run are dropped.
    void sendEvent(const std::shared_ptr<NSEvent> &event);
    [[nodiscard]] bool worksWhenModal() const { return worksWhenModal_; }
    void setWorksWhenModal(bool works) { worksWhenModal_ = works; }
    // Return and Escape for default buttons, Tab for the focus, Escape for a modal window.
    void keyDown(NSEvent &event) override;
    [[nodiscard]] NSPoint mouseLocationOutsideOfEventStream() const { return mouseLocation_; }

    // Title, frame, state and the view tree.
    [[nodiscard]] std::string toString() const;
    HN_DECLARE_CLASS_TABLE

protected:
    [[nodiscard]] std::shared_ptr<NSResponder> defaultNextResponder() const override;
    // The way out of a modal run by the title bar; a panel answers "cancel".
    virtual void closedByPerson() { close(); }

private:
    friend class NSView;
    friend class NSApplication;
    void noteChanged(std::string_view key);
    void placeContent();
    void viewWillLeave(NSView &view);
    void sendMouse(NSEvent &event);
    void sendMoved(NSEvent &event);
    void crossTrackingAreas(NSEvent &event);
    [[nodiscard]] std::vector<std::shared_ptr<NSView>> keyViews() const;
    void moveFocus(int step);

    NSString title_, identifier_;
    NSRect frame_;
    NSSize minSize_;
    unsigned styleMask_ = kUsualStyle;
    std::shared_ptr<NSView> contentView_;
    std::shared_ptr<NSColor> backgroundColor_;
    std::array<std::shared_ptr<NSButton>, 3> buttons_;
    std::weak_ptr<NSWindowDelegate> delegate_;
    std::weak_ptr<NSWindowController> controller_;
    std::weak_ptr<NSResponder> firstResponder_;
    std::weak_ptr<NSView> initialFirstResponder_, pressedView_, rightPressedView_;
    NSPoint mouseLocation_;
    bool isVisible_ = false, isOnActiveSpace_ = true, isClosing_ = false, worksWhenModal_ = false, wasShown_ = false;
};

class NSPanel : public NSWindow {
public:
    [[nodiscard]] bool canBecomeMainWindow() const override { return false; }
    HN_DECLARE_CLASS_TABLE
};
