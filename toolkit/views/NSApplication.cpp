#include "toolkit/views/NSApplication.h"

#include <algorithm>
#include <optional>

#include "toolkit/dispatch/Guard.h"
#include "toolkit/dispatch/MainLoop.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/services/NSLog.h"
#include "toolkit/views/NSSavePanel.h"
#include "toolkit/views/Presenter.h"

HN_CLASS_TABLE(NSApplication, NSResponder, .key("mainWindow", &NSApplication::mainWindow).key("keyWindow", &NSApplication::keyWindow)
                   .key("modalWindow", &NSApplication::modalWindow)
                   .selector("stopModal", &NSApplication::stopModal)
                   .selector("abortModal", &NSApplication::abortModal))

struct ModalRun {
    std::shared_ptr<NSWindow> window;
    std::optional<dispatch::LoopFrame> frame;
    std::int64_t code = kModalStopped;
    bool isTold = false, hasClosed = false;

    [[nodiscard]] bool isStopped() const { return isTold || hasClosed; }
    void stop() {
        if (frame)
            frame->stop();
    }
};

namespace {
std::shared_ptr<NSApplication> &shared() {
    static std::shared_ptr<NSApplication> application = make<NSApplication>();
    return application;
}
double toolkitVersion = 1561;
SystemVersion ownSystemVersion;
}  // namespace

std::shared_ptr<NSApplication> NSApplication::sharedApplication() { return shared(); }
std::shared_ptr<NSApplication> NSApp() { return NSApplication::sharedApplication(); }

void NSApplication::resetShared() {
    shared() = make<NSApplication>();
    toolkitVersion = 1561;
    ownSystemVersion = {};
}

double NSAppKitVersionNumber() { return toolkitVersion; }
void setAppKitVersionNumber(double version) { toolkitVersion = version; }
SystemVersion systemVersion() { return ownSystemVersion; }
void setSystemVersion(SystemVersion version) { ownSystemVersion = version; }

// ---------------------------------------------------------------- windows

namespace {
std::vector<std::shared_ptr<NSWindow>> living(const std::vector<std::weak_ptr<NSWindow>> &links) {
    std::vector<std::shared_ptr<NSWindow>> windows;
    for (const auto &link : links)
        if (auto window = link.lock())
            windows.push_back(std::move(window));
    return windows;
}

void forget(std::vector<std::weak_ptr<NSWindow>> &links, const NSWindow *window) {
    std::erase_if(links, [window](const auto &link) { return link.expired() || link.lock().get() == window; });
}
}  // namespace

std::vector<std::shared_ptr<NSWindow>> NSApplication::windows() const { return living(windows_); }
std::vector<std::shared_ptr<NSWindow>> NSApplication::orderedWindows() const { return living(ordered_); }

std::shared_ptr<NSWindow> NSApplication::mainWindow() const { return mainWindow_.lock(); }
std::shared_ptr<NSWindow> NSApplication::keyWindow() const { return keyWindow_.lock(); }

void NSApplication::addWindow(const std::shared_ptr<NSWindow> &window) {
    forget(windows_, window.get());
    windows_.push_back(window);
}

void NSApplication::windowDidOrderFront(const std::shared_ptr<NSWindow> &window, bool key) {
    forget(ordered_, window.get());
    ordered_.insert(ordered_.begin(), window);
    if (key)
        keyWindow_ = window;
    // A dialog that runs modally leaves the main window what it is.
    if (window->canBecomeMainWindow() && (mainWindow_.expired() || (key && !isModal(*window))))
        mainWindow_ = window;
}

void NSApplication::windowDidLeave(const NSWindow &window) {
    forget(ordered_, &window);
    const auto visible = orderedWindows();
    const auto isNamed = [&window](const std::weak_ptr<NSWindow> &link) { return link.expired() || link.lock().get() == &window; };
    if (isNamed(keyWindow_))
        keyWindow_ = visible.empty() ? nullptr : visible.front();
    if (isNamed(mainWindow_)) {
        const auto next = std::ranges::find_if(visible, [](const auto &other) { return other->canBecomeMainWindow(); });
        mainWindow_ = next == visible.end() ? nullptr : *next;
    }
}

void NSApplication::tellOpened(NSWindow &window, bool modal) {
    if (auto *panel = dynamic_cast<NSSavePanel *>(&window))
        Presenter::current()->panelDidOpen(*panel);
    else
        Presenter::current()->windowDidOpen(window, modal);
}

void NSApplication::setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirection direction) {
    assertMain("NSApplication setUserInterfaceLayoutDirection:");
    direction_ = direction;
    for (const auto &window : windows())
        if (window->contentView())
            window->contentView()->walk([](NSView &view) {
                view.layout();
                view.setNeedsDisplay(true);
                return true;
            });
}

// ---------------------------------------------------------------- modal runs

std::shared_ptr<ModalRun> NSApplication::push(const std::shared_ptr<NSWindow> &window) {
    const auto run = std::make_shared<ModalRun>();
    run->window = window;
    run->frame.emplace();
    runs_.push_back(run);
    if (!window->isVisible()) {
        window->makeKeyAndOrderFront();
    } else {
        window->makeKeyWindow();
        tellOpened(*window, true);
    }
    return run;
}

void NSApplication::pop(const std::shared_ptr<ModalRun> &run) {
    if (!std::erase(runs_, run))
        return;
    run->frame.reset();
    Presenter::current()->modalRunDidEnd(*run->window);
}

std::int64_t NSApplication::runModalForWindow(const std::shared_ptr<NSWindow> &window) {
    assertMain("NSApplication runModalForWindow:");
    if (!window)
        return kModalStopped;
    const auto run = push(window);
    run->frame->run();
    pop(run);
    return run->code;
}

void NSApplication::stopModalWithCode(std::int64_t code) {
    if (!dispatch::isMain()) {
        dispatch::async(dispatch::main(), [self = selfOf(this), code] { self->stopModalWithCode(code); });
        return;
    }
    if (runs_.empty() || runs_.back()->isTold)
        return;
    const auto run = runs_.back();
    run->isTold = true;
    run->code = code;
    run->stop();
}

void NSApplication::stopRunOf(const NSWindow &window, std::int64_t code) {
    for (auto run = runs_.rbegin(); run != runs_.rend(); ++run)
        if ((*run)->window.get() == &window && !(*run)->isTold) {
            (*run)->isTold = true;
            (*run)->code = code;
            return (*run)->stop();
        }
}

void NSApplication::endRunsOf(const NSWindow &window) {
    for (const auto &run : runs_)
        if (run->window.get() == &window && !run->isStopped()) {
            run->hasClosed = true;
            run->stop();
        }
}

std::shared_ptr<NSWindow> NSApplication::modalWindow() const { return runs_.empty() ? nullptr : runs_.back()->window; }

bool NSApplication::isModal(const NSWindow &window) const {
    return std::ranges::any_of(runs_, [&](const auto &run) { return run->window.get() == &window && !run->isStopped(); });
}

NSModalSession NSApplication::beginModalSessionForWindow(const std::shared_ptr<NSWindow> &window) {
    assertMain("NSApplication beginModalSessionForWindow:");
    return window ? push(window) : nullptr;
}

std::int64_t NSApplication::runModalSession(const NSModalSession &session) {
    assertMain("NSApplication runModalSession:");
    if (!session)
        return kModalStopped;
    const auto run = session;
    if (!run->isStopped() && run->frame)
        run->frame->runOnce(std::chrono::milliseconds(50));
    return run->isStopped() || !run->frame ? run->code : kModalContinues;
}

void NSApplication::endModalSession(const NSModalSession &session) {
    assertMain("NSApplication endModalSession:");
    if (session)
        pop(session);
}

// ---------------------------------------------------------------- actions

bool NSApplication::sendAction_to_from(const std::string &action, const std::shared_ptr<NSObject> &target,
                                       const std::shared_ptr<NSObject> &sender) {
    assertMain("NSApplication sendAction:to:from:");
    std::shared_ptr<NSObject> receiver = target;
    if (!receiver) {
        const auto key = keyWindow();
        std::shared_ptr<NSResponder> responder = key ? key->firstResponder() : nullptr;
        while (responder && !responder->respondsToSelector(action))
            responder = responder->nextResponder();
        receiver = responder ? std::static_pointer_cast<NSObject>(responder) : delegate_.lock();
    }
    if (!receiver || !receiver->respondsToSelector(action)) {
        NSLog("No receiver for the action %@", NSString(action));
        return false;
    }
    const std::string what = "the action " + action;
    dispatch::guarded(what.c_str(), [&] { receiver->perform(action, {Value(sender)}); });
    return true;
}
