// The first shape of long work: a modal progress window, one worker with a blocking call of the device layer that reports
// its progress, a way to cancel, a closing text by counts, a reload. Each category fills in a plan; this is written once.
//
//     BatchPlan plan;
//     plan.windowTitle = localized("Export_musics");  plan.operationTitle = localized("Exporting_music");
//     plan.keys = results::exportMusic;               plan.total = count;
//     plan.opensFolder = folder;
//     plan.work = [=](const BatchRun::Ref &run) { files->exportDevcieFile_...(list, folder, nullptr, run->progressBlock()); };
//     BatchFlow::run(std::move(plan));
//
// Before it: dialogs::confirmDelete, isWritableTarget, hasRoomOnComputer, ConflictStep.
// Order     set-up, worker (device's room, then `work`), updates, finish, reload when the window has ended.
// Cells     cancel status (0 goes on, -1 stops), success count, reload flag: written and read on any thread.
// Threads   run: main, returns when the window has ended. `work`: a global queue. All other callbacks: main.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "HNManagerPlugin/Classes/PublicProgressWindow/ResultText.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/CFileManagerImpl.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindowController.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIProgressWindowController.h"
#include "toolkit/Property.h"

// What closing the window and pressing its cancel button do while work goes on. Where a question is asked, closing never
// closes by itself (but for questionThenClose).
enum class CancelForm {
    questionThenFinish,       // yes: status -1, and the result shows at once
    questionThenStop,         // yes: status -1; the layer's last call brings the finish
    questionThenCancelling,   // yes: status -1, the label says so; the layer's last call brings the finish
    questionThenClose,        // yes: status -1, and the title bar closes the window
    sessionThenFinish,        // as questionThenFinish; the question closes by itself when the device goes away
    closeAtOnce,              // no question: status -1, the window closes
    stopAtOnce,               // no question: status -1; the title bar closes the window, the button does not
};

// What a progress report does to the window once the status is -1.
enum class WhileCancelling {
    showsCancelling,   // the label says so, the bar makes a step, the button goes
    leavesLabels,
    goesOn,
};

class BatchRun;

struct BatchPlan {
    using Ref = std::shared_ptr<BatchRun>;

    // ------------------------------------------------------------ the window; texts, not keys
    NSString windowTitle;
    std::optional<NSString> waitText;   // absent: the main label is left as it is
    bool hidesCloseButton = false;
    bool keepsSpinner = false;          // off: the spinner is removed
    bool turnsRunLoop = false;          // newer toolkits draw the window before work begins
    bool borderButtonEnabled = true;    // off: not before the first report, or the end
    bool borderButtonHidden = false;
    bool enablesButtonOnProgress = false;
    CancelForm cancelForm = CancelForm::questionThenFinish;
    WhileCancelling whileCancelling = WhileCancelling::leavesLabels;
    bool logsSessionPasses = false;

    // ------------------------------------------------------------ the work
    // Bytes that the device must have room for; asked on the worker. Absent: no test.
    std::function<std::int64_t()> deviceBytesNeeded;
    std::function<void(const Ref &run)> work;

    // ------------------------------------------------------------ a report
    NSString operationTitle;   // "%@(%ld/%ld),  %@" of it, the numbers and the file's name
    std::function<NSString(const TransferProgress &)> mainText;   // instead of that
    std::optional<std::int64_t> totalBytes;                       // instead of what the transfer reports
    // The new success count; absent: what the report says.
    std::function<std::int64_t(std::int64_t old, const TransferProgress &, bool finished)> successOf;

    // ------------------------------------------------------------ the end
    ResultKeys keys{};
    std::int64_t total = 0;
    std::function<NSString(BatchRun &)> resultText;   // instead of the four keys
    NSString opensFolder;           // export: the colour button opens it; absent: no such button
    bool openClosesWindow = false;  // and closes the window first
    std::function<void(const Ref &run)> didFinish;   // after each finish; there may be two, see finish()
    // When the window has ended and the device is there, unless the run says otherwise.
    std::function<void()> reload;
};

class BatchRun : public std::enable_shared_from_this<BatchRun> {
public:
    using Ref = std::shared_ptr<BatchRun>;
    static constexpr std::int64_t kBusyTag = 5, kOpenTag = 10, kDoneTag = 15;

    Shared<std::int32_t> cancelStatus;
    Shared<std::int64_t> successCount;
    Shared<bool> reloads{true};

    explicit BatchRun(BatchPlan plan) : plan_(std::move(plan)) {}

    [[nodiscard]] const BatchPlan &plan() const { return plan_; }
    [[nodiscard]] const std::shared_ptr<RUIProgressWindowController> &window() const { return window_; }
    [[nodiscard]] bool isCancelled() const { return cancelStatus == -1; }

    // For the layer's calls, any thread: queues the update, gives the cancel status at once.
    std::int32_t note(const std::optional<TransferProgress> &progress, bool finished);
    [[nodiscard]] ProgressBlock progressBlock();
    // Any thread: runs it on the main queue, later.
    void onMain(std::function<void()> block);
    // Any thread. The end state; also after a cancel, so that a later last report may bring a second one.
    void finish();
    void finishLater(dispatch::Duration delay);
    // Any thread: closes the question where one is open, as a no.
    void closeQuestion();

private:
    friend class BatchFlow;
    void setUp(const std::shared_ptr<RUIProgressWindowController> &window);
    void startWorker();
    void update(const std::optional<TransferProgress> &progress, bool finished);
    void showProgress(const TransferProgress &progress);
    void showCancelling();
    // Asks by the form; true where the window may close.
    bool cancelByTitleBar();
    void cancelByButton();
    bool ask();
    void stopNow();
    void showEndState();
    void endButtonClicked(const NSButton &button);
    [[nodiscard]] NSString textOfResult();

    BatchPlan plan_;
    std::shared_ptr<RUIProgressWindowController> window_;
    Shared<std::shared_ptr<RUIDialogWindowController>> question_;
};

class BatchFlow {
public:
    // Returns when the window has ended; the run tells what came of it.
    static BatchRun::Ref run(BatchPlan plan);
};

// Raises a progress window's bar by 1 up to 95, step by step, beside a closed call that reports nothing.
class FillerBar {
public:
    // Begins on a global queue; goes on until `done` is set or the filler has gone.
    static std::shared_ptr<FillerBar> start(const std::shared_ptr<RUIProgressWindowController> &window, dispatch::Duration step);
    Shared<bool> done;
};

// What every flow does to a fresh window: the spinner comes off its view and turns; newer toolkits get a moment to draw.
void startSpinnerOutsideItsView(RUIProgressWindowController &window);
void letTheWindowDraw();
