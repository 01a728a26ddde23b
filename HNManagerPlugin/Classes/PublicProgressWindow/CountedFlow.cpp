#include "HNManagerPlugin/Classes/PublicProgressWindow/CountedFlow.h"

#include "HNManagerPlugin/Classes/PublicProgressWindow/BatchFlow.h"
#include "HNManagerPlugin/Classes/PublicProgressWindow/Dialogs.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/views/NSApplication.h"

CountedRun::Ref CountedFlow::run(CountedPlan plan) {
    const auto run = std::make_shared<CountedRun>(std::move(plan));
    RUIProgressWindowController::showWindow([&run](const auto &window) { run->setUp(window); });
    return run;
}

void CountedRun::setUp(const std::shared_ptr<RUIProgressWindowController> &window) {
    window_ = window;
    startSpinnerOutsideItsView(*window);
    letTheWindowDraw();
    window->setWindowWillCloseBlock([self = shared_from_this()] {
        self->cancel = -1;
        return true;
    });
    window->setButtonDidClickBlock([self = shared_from_this()](const std::shared_ptr<NSButton> &button) { self->clicked(button); });
    window->borderButton()->setTag(kBusyTag);
    window->borderButton()->setTitle(localized("FileManager_Cancel"));
    window->borderButton()->setEnabled(plan_.borderButtonEnabled);
    window->colorButton()->setHidden(true);
    window->mainLabel()->setStringValue(plan_.waitText);
    window->subLabel()->setStringValue("");
    window->window()->setTitle(plan_.windowTitle);
    dispatch::async(dispatch::global(), [self = shared_from_this()] { self->work(); });
}

void CountedRun::clicked(const std::shared_ptr<NSButton> &button) {
    if (button != window_->borderButton() || button->tag() != kBusyTag)
        return;
    if (!plan_.asksBeforeCancel || dialogs::runCancelQuestion(dialogs::cancelQuestion()))
        cancel = -1;
}

void CountedRun::work() {
    if (plan_.start)
        plan_.start(shared_from_this());
    done_.wait();
    if (plan_.beforeResult)
        plan_.beforeResult();
    dispatch::after(kPauseBeforeResult, dispatch::main(), [self = shared_from_this()] { self->finish(); });
}

std::int32_t CountedRun::itemDone(std::int64_t index, std::int64_t total, bool itemSucceeded) {
    const bool stops = cancel == -1;
    if (stops) {
        done_.signal();
        if (!plan_.countsItemAfterCancel)
            return 1;
    }
    dispatch::async(dispatch::main(), [self = shared_from_this(), done = index + 1, total] {
        if (self->plan_.itemText)
            self->window_->mainLabel()->setStringValue(self->plan_.itemText(done, total));
        self->window_->progressIndicator()->setDoubleValue(percentOf(done, total));
    });
    (itemSucceeded ? succeeded : failed).update([](std::int64_t &count) { ++count; });
    if (index + 1 == total)
        done_.signal();
    return stops ? 1 : 0;
}

void CountedRun::finish() {
    const Ref self = shared_from_this();
    window_->setWindowWillCloseBlock({});
    if (!window_->isClosed())
        window_->setButtonDidClickBlock([self](const std::shared_ptr<NSButton> &) {
            self->window_->close();
            NSApp()->stopModal();
        });
    window_->loadingIndicator()->removeFromSuperview();
    window_->progressIndicator()->setDoubleValue(100);
    window_->subLabel()->setHidden(true);
    window_->borderButton()->setEnabled(true);
    window_->borderButton()->setTag(kDoneTag);
    window_->borderButton()->setKeyEquivalent("\r");
    window_->borderButton()->setTitle(localized("MessageDialog_Ok"));
    if (plan_.resultText)
        window_->mainLabel()->setStringValue(plan_.resultText(succeeded, failed));
    if (plan_.didFinish)
        plan_.didFinish(self);
}
