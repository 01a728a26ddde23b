#include "toolkit/views/NSWindowController.h"

#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSWindowController, NSResponder, .key("window", [](NSObject &o) { return Value(static_cast<NSWindowController &>(o).window()); })
                   .selector("showWindow:", &NSWindowController::showWindow)
                   .selector("close", &NSWindowController::close))

void NSWindowController::dealloc() {
    if (window_)
        window_->close();
    NSResponder::dealloc();
}

void NSWindowController::setWindow(const std::shared_ptr<NSWindow> &window) {
    assertMain("NSWindowController setWindow:");
    window_ = window;
    isLoaded_ = isLoaded_ || window;
    if (window)
        window->setWindowController(selfOf(this));
}

std::shared_ptr<NSWindow> NSWindowController::window() {
    if (!isLoaded_)
        loadWindow();
    return window_;
}

void NSWindowController::loadWindow() {
    assertMain("NSWindowController window");
    isLoaded_ = true;
    const auto self = selfOf(this);
    windowWillLoad();
    Nib nib(nibName_.isEmpty() ? className() : nibName_, self);
    const bool isKnown = NibRegistry::build(nib);
    auto window = nib.window();
    if (!window) {
        window = make<NSWindow>();
        window->setContentView(isKnown && nib.view() ? nib.view() : NibRegistry::missingView(nib.name()));
    }
    topLevelObjects_ = nib.objects();
    setWindow(window);
    NibRegistry::awaken(nib, self);
    windowDidLoad();
}

void NSWindowController::showWindow(const id &) {
    if (const auto shown = window())
        shown->makeKeyAndOrderFront();
}

void NSWindowController::close() {
    if (window_)
        window_->close();
}
