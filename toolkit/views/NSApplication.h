// The one application object: its windows, its modal runs, its actions.
//
// Runs      runModalForWindow and modal sessions nest as one stack. stopModal and its kin end the innermost run: they do
//           nothing where none runs or that one has been told to stop. Closing a window ends every run on it with -1000; a
//           stopModalWithCode that comes after the close and before the run returns still gives the code (dialogs close
//           first and send their code then).
// Codes     kModalStopped (-1000) stopModal and all ways out that are no button, kModalAborted (-1001) abortModal,
//           kModalContinues (-1002) a session that goes on.
// Threads   main; stopModal, stopModalWithCode and abortModal may be called on any thread, they hop.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "toolkit/views/NSWindow.h"

constexpr std::int64_t kModalStopped = -1000, kModalAborted = -1001, kModalContinues = -1002;

struct ModalRun;
// Ends with endModalSession.
using NSModalSession = std::shared_ptr<ModalRun>;

class NSApplication : public NSResponder {
public:
    [[nodiscard]] static std::shared_ptr<NSApplication> sharedApplication();
    // For the start of a test: no windows, no runs, the usual direction and versions.
    static void resetShared();

    // All living windows in the order of making, and the visible ones, front first.
    [[nodiscard]] std::vector<std::shared_ptr<NSWindow>> windows() const;
    [[nodiscard]] std::vector<std::shared_ptr<NSWindow>> orderedWindows() const;
    // The visible window that was made main last; null without one.
    [[nodiscard]] std::shared_ptr<NSWindow> mainWindow() const;
    [[nodiscard]] std::shared_ptr<NSWindow> keyWindow() const;
    void setMainWindow(const std::shared_ptr<NSWindow> &window) { mainWindow_ = window; }
    // What is being handled; null outside.
    [[nodiscard]] const std::shared_ptr<NSEvent> &currentEvent() const { return currentEvent_; }

    // ------------------------------------------------------------ modal runs
    // Shows the window where it is not visible, returns when the run has ended; the window stays as the flow left it.
    std::int64_t runModalForWindow(const std::shared_ptr<NSWindow> &window);
    void stopModal() { stopModalWithCode(kModalStopped); }
    void stopModalWithCode(std::int64_t code);
    void abortModal() { stopModalWithCode(kModalAborted); }
    // Of the innermost run; null outside.
    [[nodiscard]] std::shared_ptr<NSWindow> modalWindow() const;
    [[nodiscard]] std::size_t modalDepth() const { return runs_.size(); }
    [[nodiscard]] NSModalSession beginModalSessionForWindow(const std::shared_ptr<NSWindow> &window);
    // Waits up to 50 ms for one event or block; kModalContinues while the session goes on, else its code, again and again.
    std::int64_t runModalSession(const NSModalSession &session);
    void endModalSession(const NSModalSession &session);
    // True while a run on the window goes on.
    [[nodiscard]] bool isModal(const NSWindow &window) const;

    // ------------------------------------------------------------ actions
    // Inside the guard. A null target: the key window's first responder and its chain, then the application's delegate.
    // False where nobody responds.
    bool sendAction_to_from(const std::string &action, const std::shared_ptr<NSObject> &target, const std::shared_ptr<NSObject> &sender);
    void setDelegate(const std::shared_ptr<NSObject> &delegate) { delegate_ = delegate; }

    [[nodiscard]] NSUserInterfaceLayoutDirection userInterfaceLayoutDirection() const { return direction_; }
    // Lays out all windows anew.
    void setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirection direction);
    HN_DECLARE_CLASS_TABLE

private:
    friend class NSWindow;
    friend class NSSavePanel;
    void addWindow(const std::shared_ptr<NSWindow> &window);
    void windowDidOrderFront(const std::shared_ptr<NSWindow> &window, bool key);
    void windowDidLeave(const NSWindow &window);
    // Ends the runs on a window that has closed.
    void endRunsOf(const NSWindow &window);
    // The topmost run on the window that has not been told to stop.
    void stopRunOf(const NSWindow &window, std::int64_t code);
    static void tellOpened(NSWindow &window, bool modal);
    std::shared_ptr<ModalRun> push(const std::shared_ptr<NSWindow> &window);
    void pop(const std::shared_ptr<ModalRun> &run);

    std::vector<std::weak_ptr<NSWindow>> windows_, ordered_;
    std::weak_ptr<NSWindow> mainWindow_, keyWindow_;
    std::vector<std::shared_ptr<ModalRun>> runs_;
    std::shared_ptr<NSEvent> currentEvent_;
    std::weak_ptr<NSObject> delegate_;
    NSUserInterfaceLayoutDirection direction_ = NSUserInterfaceLayoutDirection::leftToRight;
};

[[nodiscard]] std::shared_ptr<NSApplication> NSApp();

// 1561 unless a test sets another.
[[nodiscard]] double NSAppKitVersionNumber();
void setAppKitVersionNumber(double version);
struct SystemVersion {
    int major = 10, minor = 14;
    auto operator<=>(const SystemVersion &) const = default;
};
// 10.14 unless a test sets another.
[[nodiscard]] SystemVersion systemVersion();
void setSystemVersion(SystemVersion version);
