#include "HNManagerPlugin/contracts/RVUIKit/RUIBreadcrumbWindowController.h"

#include "HNManagerPlugin/contracts/RVUIKit/RUIWindow.h"
#include "toolkit/dispatch/Queue.h"

HN_CLASS_TABLE(RUIBreadcrumbWindowController, NSWindowController)

std::shared_ptr<RUIBreadcrumbWindowController> RUIBreadcrumbWindowController::showWindowWithMessage_onMainQueue(const NSString &message,
                                                                                                              bool onMainQueue) {
    std::shared_ptr<RUIBreadcrumbWindowController> shown;
    const auto show = [&] {
        shown = make<RUIBreadcrumbWindowController>();
        shown->show(message);
    };
    if (onMainQueue)
        dispatch::sync(dispatch::main(), show);
    else
        show();
    return shown;
}

void RUIBreadcrumbWindowController::show(const NSString &message) {
    const auto window = make<RUIWindow>(NSRect(0, 0, 320, 80), NSTitledWindowMask);
    messageLabel_ = NSTextField::labelWithString(message);
    messageLabel_->setFrame({20, 20, 280, 40});
    messageLabel_->setIdentifier("message");
    window->contentView()->addSubview(messageLabel_);
    window->center();
    setWindow(window);
    window->setWindowController(std::static_pointer_cast<NSWindowController>(shared_from_this()));
    session_ = NSApp()->beginModalSessionForWindow(window);
}

void RUIBreadcrumbWindowController::close() {
    if (dispatch::isMain())
        return end();
    dispatch::async(dispatch::main(), [self = selfOf(this)] { self->end(); });
}

void RUIBreadcrumbWindowController::end() {
    if (const NSModalSession session = std::exchange(session_, nullptr)) {
        NSWindowController::close();
        NSApp()->endModalSession(session);
    }
}

void RUIBreadcrumbWindowController::dealloc() {
    end();
    NSWindowController::dealloc();
}
