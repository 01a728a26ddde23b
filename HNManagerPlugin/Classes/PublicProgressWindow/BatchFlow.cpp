#include "HNManagerPlugin/Classes/PublicProgressWindow/BatchFlow.h"

#include <cmath>

#include "HNManagerPlugin/Classes/PublicProgressWindow/Dialogs.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVLoger.h"
#include "toolkit/dispatch/RunLoop.h"
#include "toolkit/services/NSWorkspace.h"
#include "toolkit/views/NSApplication.h"

using namespace std::chrono_literals;

namespace {

constexpr double kLastToolkitThatDrawsAtOnce = 1504.76;
constexpr double kFillsUpTo = 95;

}  // namespace

BatchRun::Ref BatchFlow::run(BatchPlan plan) {
    const auto run = std::make_shared<BatchRun>(std::move(plan));
    RUIProgressWindowController::showWindow([&run](const auto &window) { run->setUp(window); });
    if (!MobileDeviceManager::defaultManager().isDeviceConnected())
        RVLog(">>> Device Disconnected");
    else if (run->reloads && run->plan_.reload)
        run->plan_.reload();
    return run;
}

// ---------------------------------------------------------------- set-up

void BatchRun::setUp(const std::shared_ptr<RUIProgressWindowController> &window) {
    window_ = window;
    if (plan_.keepsSpinner)
        startSpinnerOutsideItsView(*window);
    else
        window->loadingIndicator()->removeFromSuperview();
    window->colorButton()->setHidden(true);
    if (plan_.hidesCloseButton)
        window->window()->standardWindowButton(NSWindowCloseButton)->setHidden(true);
    window->borderButton()->setTag(kBusyTag);
    window->borderButton()->setTitle(localized("FileManager_Cancel"));
    window->borderButton()->setEnabled(plan_.borderButtonEnabled);
    window->borderButton()->setHidden(plan_.borderButtonHidden);
    if (plan_.waitText)
        window->mainLabel()->setStringValue(*plan_.waitText);
    window->subLabel()->setStringValue("");
    window->window()->setTitle(plan_.windowTitle);
    if (plan_.turnsRunLoop)
        letTheWindowDraw();
    // The window holds these blocks until it has closed, the run holds the window.
    window->setWindowWillCloseBlock([self = shared_from_this()] { return self->cancelByTitleBar(); });
    window->setButtonDidClickBlock([self = shared_from_this()](const std::shared_ptr<NSButton> &button) {
        if (button == self->window_->borderButton() && button->tag() == kBusyTag)
            self->cancelByButton();
    });
    startWorker();
}

void BatchRun::startWorker() {
    dispatch::async(dispatch::global(), [self = shared_from_this()] {
        if (self->plan_.deviceBytesNeeded && !dialogs::hasRoomOnDevice(self->plan_.deviceBytesNeeded())) {
            self->reloads = false;
            self->onMain([self] {
                dialogs::tellNoRoomOnDevice();
                self->window_->close();
            });
            return;
        }
        if (self->plan_.work)
            self->plan_.work(self);
    });
}

// ---------------------------------------------------------------- reports

void BatchRun::onMain(std::function<void()> block) {
    dispatch::async(dispatch::main(), std::move(block));
}

std::int32_t BatchRun::note(const std::optional<TransferProgress> &progress, bool finished) {
    onMain([self = shared_from_this(), progress, finished] { self->update(progress, finished); });
    return cancelStatus;
}

ProgressBlock BatchRun::progressBlock() {
    return [self = shared_from_this()](const TransferProgress &progress, bool finished) { return self->note(progress, finished); };
}

void BatchRun::update(const std::optional<TransferProgress> &progress, bool finished) {
    if (plan_.enablesButtonOnProgress)
        window_->borderButton()->setEnabled(true);
    if (progress && isCancelled() && plan_.whileCancelling == WhileCancelling::showsCancelling)
        showCancelling();
    else if (progress && !(isCancelled() && plan_.whileCancelling == WhileCancelling::leavesLabels))
        showProgress(*progress);
    if (progress)
        successCount = plan_.successOf ? plan_.successOf(successCount, *progress, finished) : progress->successCount;
    if (finished)
        showEndState();
}

void BatchRun::showProgress(const TransferProgress &progress) {
    const std::int64_t totalBytes = plan_.totalBytes.value_or(progress.totalSize);
    window_->mainLabel()->setStringValue(
        plan_.mainText ? plan_.mainText(progress)
                       : NSString::stringWithFormat("%@(%ld/%ld),  %@", plan_.operationTitle, progress.currentIndex, progress.totalCount,
                                                    progress.fileName.lastPathComponent()));
    window_->subLabel()->setStringValue(sizesText(progress.currentSize, totalBytes));
    window_->progressIndicator()->setDoubleValue(percentOf(progress.currentSize, totalBytes));
    if (plan_.keepsSpinner)
        window_->loadingIndicator()->startAnimation();
}

void BatchRun::showCancelling() {
    window_->mainLabel()->setStringValue(localized("Import_photo_cancelling"));
    window_->subLabel()->setStringValue("");
    window_->progressIndicator()->incrementBy(1);
    window_->borderButton()->setHidden(true);
}

// ---------------------------------------------------------------- cancelling

bool BatchRun::cancelByTitleBar() {
    switch (plan_.cancelForm) {
    case CancelForm::closeAtOnce:
    case CancelForm::stopAtOnce:
        cancelStatus = -1;
        return true;
    case CancelForm::questionThenClose:
        if (!ask())
            return false;
        stopNow();
        return true;
    default:
        cancelByButton();
        return false;
    }
}

void BatchRun::cancelByButton() {
    if (plan_.cancelForm == CancelForm::closeAtOnce) {
        window_->close();
        cancelStatus = -1;
    } else if (plan_.cancelForm == CancelForm::stopAtOnce) {
        cancelStatus = -1;
    } else if (ask()) {
        stopNow();
    }
}

bool BatchRun::ask() {
    const auto question = dialogs::cancelQuestion();
    question_ = question;
    const bool yes = plan_.cancelForm == CancelForm::sessionThenFinish
                         ? dialogs::runCancelQuestionWhileConnected(question, plan_.logsSessionPasses)
                         : dialogs::runCancelQuestion(question);
    question_ = nullptr;
    return yes;
}

void BatchRun::stopNow() {
    if (plan_.cancelForm == CancelForm::questionThenCancelling) {
        window_->mainLabel()->setStringValue(localized("Import_photo_cancelling"));
        window_->subLabel()->setStringValue("");
    }
    cancelStatus = -1;
    if (plan_.cancelForm == CancelForm::questionThenFinish || plan_.cancelForm == CancelForm::sessionThenFinish)
        showEndState();
}

void BatchRun::closeQuestion() {
    if (const std::shared_ptr<RUIDialogWindowController> question = question_.get())
        question->close();
}

// ---------------------------------------------------------------- the end

void BatchRun::finish() {
    if (dispatch::isMain())
        showEndState();
    else
        onMain([self = shared_from_this()] { self->showEndState(); });
}

void BatchRun::finishLater(dispatch::Duration delay) {
    dispatch::after(delay, dispatch::main(), [self = shared_from_this()] { self->showEndState(); });
}

void BatchRun::showEndState() {
    // The block that runs now may be the one that is replaced.
    const Ref self = shared_from_this();
    window_->setWindowWillCloseBlock({});
    if (!window_->isClosed())
        window_->setButtonDidClickBlock([self](const std::shared_ptr<NSButton> &button) { self->endButtonClicked(*button); });
    window_->progressIndicator()->setDoubleValue(100);
    window_->loadingIndicator()->removeFromSuperview();
    window_->subLabel()->setHidden(true);
    window_->borderButton()->setTag(kDoneTag);
    window_->borderButton()->setKeyEquivalent("\r");
    window_->borderButton()->setTitle(localized("MessageDialog_Ok"));
    window_->borderButton()->setEnabled(true);
    window_->borderButton()->setHidden(false);
    if (!plan_.opensFolder.isNil()) {
        window_->colorButton()->setTag(kOpenTag);
        window_->colorButton()->setTitle(localized("BackupRestore_ExportOpenFolder"));
        window_->colorButton()->setHidden(successCount == 0);
    }
    window_->mainLabel()->setStringValue(textOfResult());
    if (plan_.didFinish)
        plan_.didFinish(self);
}

NSString BatchRun::textOfResult() {
    return plan_.resultText ? plan_.resultText(*this) : ::resultText(plan_.keys, successCount, plan_.total);
}

void BatchRun::endButtonClicked(const NSButton &button) {
    const bool opens = button.tag() == kOpenTag;
    if (!opens || plan_.openClosesWindow) {
        window_->close();
        NSApp()->stopModal();
    }
    if (opens)
        NSWorkspace::sharedWorkspace().openFile(plan_.opensFolder);
}

// ---------------------------------------------------------------- helpers

std::shared_ptr<FillerBar> FillerBar::start(const std::shared_ptr<RUIProgressWindowController> &window, dispatch::Duration step) {
    const auto filler = std::make_shared<FillerBar>();
    dispatch::async(dispatch::global(), [link = std::weak_ptr(filler), window = std::weak_ptr(window), step] {
        for (;;) {
            if (const auto filler = link.lock(); !filler || filler->done)
                return;
            dispatch::sleepFor(step);
            dispatch::async(dispatch::main(), [window] {
                tell(window, [](RUIProgressWindowController &shown) {
                    if (shown.progressIndicator()->doubleValue() < kFillsUpTo)
                        shown.progressIndicator()->incrementBy(1);
                });
            });
        }
    });
    return filler;
}

void startSpinnerOutsideItsView(RUIProgressWindowController &window) {
    window.loadingIndicator()->removeFromSuperview();
    window.loadingIndicator()->startAnimation();
}

void letTheWindowDraw() {
    if (std::floor(NSAppKitVersionNumber()) > kLastToolkitThatDrawsAtOnce)
        NSRunLoop::current().runFor(1ms);
}
