// A small window that says what is going on and holds the interface meanwhile: a modal session without a loop of its own.
// No buttons, no bar, no way out for a person.
//
// Owners   whoever asked for it; the session ends with close(), or with the controller.
// Threads  showWindowWithMessage_onMainQueue: with the flag any thread, it waits for the main queue; without it main.
//          close: any thread, it hops.
#pragma once

#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSWindowController.h"

class RUIBreadcrumbWindowController : public NSWindowController {
public:
    // Null where the program is shutting down.
    [[nodiscard]] static std::shared_ptr<RUIBreadcrumbWindowController> showWindowWithMessage_onMainQueue(const NSString &message,
                                                                                                        bool onMainQueue);
    [[nodiscard]] const std::shared_ptr<NSTextField> &messageLabel() const { return messageLabel_; }
    void close() override;
    void dealloc() override;
    HN_DECLARE_CLASS_TABLE

private:
    void show(const NSString &message);
    void end();
    std::shared_ptr<NSTextField> messageLabel_;
    NSModalSession session_;
};
