#include "toolkit/dispatch/RunLoop.h"

#include <atomic>
#include <deque>

#include "toolkit/dispatch/Guard.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/dispatch/Runtime.h"

namespace dispatch {

struct ThreadLoop {
    std::deque<Block> blocks;
    std::shared_ptr<Waiter> waiter;
};

namespace {

// With the runtime's mutex held.
void performOn(Runtime &runtime, const std::shared_ptr<ThreadLoop> &loop, Block block) {
    if (!loop)
        return runtime.enqueueMain(std::move(block));
    loop->blocks.push_back(std::move(block));
    if (loop->waiter)
        runtime.wake(*loop->waiter);
}

void serveMainFor(Duration pause) {
    Runtime &runtime = Runtime::shared();
    if (clock()->leaps()) {
        while (serveOne()) {
        }
        return;
    }
    LoopFrame frame;
    Runtime::TimerKey timer;
    {
        const Runtime::Lock lock(runtime.mutex);
        // stop() takes the mutex that an action holds, so the main queue carries it
        timer = runtime.addTimer(runtime.clock->now() + pause,
                                 [&frame, &runtime] { runtime.enqueueMain([&frame] { frame.stop(); }); });
    }
    frame.run();
    const Runtime::Lock lock(runtime.mutex);
    runtime.cancelTimer(timer);
}

}  // namespace

}  // namespace dispatch

NSRunLoop NSRunLoop::current() {
    thread_local std::shared_ptr<dispatch::ThreadLoop> loopHere;
    NSRunLoop loop;
    if (!dispatch::isMain()) {
        if (!loopHere)
            loopHere = std::make_shared<dispatch::ThreadLoop>();
        loop.loop_ = loopHere;
    }
    return loop;
}

void NSRunLoop::perform(dispatch::Block block) {
    auto &runtime = dispatch::Runtime::shared();
    const dispatch::Runtime::Lock lock(runtime.mutex);
    dispatch::performOn(runtime, loop_, std::move(block));
}

void NSRunLoop::runFor(dispatch::Duration pause) {
    using namespace dispatch;
    if (!loop_)
        return serveMainFor(pause);
    Runtime &runtime = Runtime::shared();
    Runtime::Lock lock(runtime.mutex);
    const Time end = runtime.clock->now() + pause;
    while (runtime.clock->now() < end) {
        if (loop_->blocks.empty()) {
            loop_->waiter = std::make_shared<Waiter>("a run loop");
            runtime.park(lock, loop_->waiter, end);
            loop_->waiter = nullptr;
            continue;
        }
        Block block = std::move(loop_->blocks.front());
        loop_->blocks.pop_front();
        lock.unlock();
        guarded("a run loop's block", [&] { block(); });
        block = {};
        lock.lock();
    }
}

// ---------------------------------------------------------------- timers

struct NSTimer::State {
    dispatch::Duration interval;
    bool repeats = false;
    std::function<void()> fire;
    std::shared_ptr<dispatch::ThreadLoop> loop;
    std::atomic<bool> valid{true};
};

std::shared_ptr<NSTimer> NSTimer::scheduled(dispatch::Duration interval, bool repeats, std::function<void()> fire) {
    auto timer = std::make_shared<NSTimer>();
    timer->state_ = std::make_shared<State>();
    timer->state_->interval = std::max<dispatch::Duration>(interval, std::chrono::microseconds(100));
    timer->state_->repeats = repeats;
    timer->state_->fire = std::move(fire);
    timer->state_->loop = NSRunLoop::current().loop_;
    arm(timer->state_);
    return timer;
}

void NSTimer::arm(const std::shared_ptr<State> &state) {
    auto &runtime = dispatch::Runtime::shared();
    const dispatch::Runtime::Lock lock(runtime.mutex);
    runtime.addTimer(runtime.clock->now() + state->interval, [&runtime, state] {
        if (!state->valid)
            return;
        dispatch::performOn(runtime, state->loop, [state] {
            if (!state->valid)
                return;
            if (state->repeats)
                arm(state);
            else
                state->valid = false;
            dispatch::guarded("a timer", state->fire);
        });
    });
}

void NSTimer::invalidate() { state_->valid = false; }
bool NSTimer::isValid() const { return state_->valid; }
