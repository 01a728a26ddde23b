// The second shape of long work: a closed call with a callback per item. The worker starts it and waits on a semaphore while
// the callback counts; half a second later, so that the last update arrives first, the same window turns into the result.
//
//     CountedPlan plan;
//     plan.start = [=](const CountedRun::Ref &run) {
//         contacts->deleteContactsOrGroups_callBack(list, [=](index, total, contact, succeeded, bool *stop) {
//             if (succeeded) deleted->addObject(contact);
//             *stop = run->itemDone(index, total, succeeded) == 1;
//         });
//     };
//     CountedFlow::run(std::move(plan));
//
// Last      the callback with index + 1 == total, the first one after a cancel, or `end` ends the wait; there is no time-out,
//           so the layer must make that call.
// Threads   run: main, returns when the window has ended. `start`: a global queue. itemDone: the layer's thread. Others: main.
#pragma once

#include <functional>
#include <memory>

#include "HNManagerPlugin/contracts/RVUIKit/RUIProgressWindowController.h"
#include "toolkit/Property.h"
#include "toolkit/dispatch/Queue.h"

class CountedRun;

struct CountedPlan {
    using Ref = std::shared_ptr<CountedRun>;

    NSString windowTitle, waitText;   // texts, not keys
    bool asksBeforeCancel = false;    // the button's click; the title bar stops and closes without a question
    bool borderButtonEnabled = true;  // off: disabled until the end
    bool countsItemAfterCancel = false;   // off: the item that meets the cancel is neither counted nor shown
    std::function<void(const Ref &run)> start;
    std::function<void()> beforeResult;   // worker, when the wait is over
    // The main label of an item; `done` counts from 1.
    std::function<NSString(std::int64_t done, std::int64_t total)> itemText;
    std::function<NSString(std::int64_t succeeded, std::int64_t failed)> resultText;
    std::function<void(const Ref &run)> didFinish;   // after the result shows
};

class CountedRun : public std::enable_shared_from_this<CountedRun> {
public:
    using Ref = std::shared_ptr<CountedRun>;
    static constexpr std::int64_t kBusyTag = 5, kDoneTag = 15;
    static constexpr dispatch::Duration kPauseBeforeResult = std::chrono::milliseconds(500);

    Shared<std::int32_t> cancel;   // 0, or -1 to stop
    Shared<std::int64_t> succeeded, failed;

    explicit CountedRun(CountedPlan plan) : plan_(std::move(plan)) {}
    // One item of the call; `index` from 0. Gives 1 where the layer shall stop, else 0.
    std::int32_t itemDone(std::int64_t index, std::int64_t total, bool itemSucceeded);
    // Ends the wait without an item, for calls that count by themselves. Any thread.
    void end() { done_.signal(); }
    [[nodiscard]] const std::shared_ptr<RUIProgressWindowController> &window() const { return window_; }

private:
    friend class CountedFlow;
    void setUp(const std::shared_ptr<RUIProgressWindowController> &window);
    void clicked(const std::shared_ptr<NSButton> &button);
    void work();
    void finish();

    CountedPlan plan_;
    std::shared_ptr<RUIProgressWindowController> window_;
    dispatch::Semaphore done_{0};
};

class CountedFlow {
public:
    static CountedRun::Ref run(CountedPlan plan);
};
