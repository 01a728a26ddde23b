#include "toolkit/dispatch/MainLoop.h"

#include <algorithm>

#include "toolkit/dispatch/Guard.h"
#include "toolkit/dispatch/Runtime.h"

namespace dispatch {

void setLoopHost(std::shared_ptr<LoopHost> host) {
    Runtime &runtime = Runtime::shared();
    const Runtime::Lock lock(runtime.mutex);
    runtime.host = std::move(host);
    runtime.wakes = 0;
    for (std::size_t i = 0; i < runtime.mainQueue.size(); ++i)
        runtime.wakeMain();
}

std::shared_ptr<LoopHost> loopHost() {
    Runtime &runtime = Runtime::shared();
    const Runtime::Lock lock(runtime.mutex);
    return runtime.host;
}

void setSettledHandlers(SettledHandlers handlers) {
    Runtime &runtime = Runtime::shared();
    const Runtime::Lock lock(runtime.mutex);
    runtime.handlers = std::move(handlers);
}

bool serveOne() {
    Runtime &runtime = Runtime::shared();
    Block block;
    {
        const Runtime::Lock lock(runtime.mutex);
        const bool toldToStop = !runtime.frames.empty() && runtime.frames.back()->stopped;
        if (toldToStop || runtime.mainQueue.empty())
            return false;
        block = std::move(runtime.mainQueue.front());
        runtime.mainQueue.pop_front();
        ++runtime.served;
    }
    guarded("a main-queue block", [&] { block(); });
    block = {};
    const Runtime::Lock lock(runtime.mutex);
    runtime.madeStep();
    return true;
}

std::size_t waitingMainBlocks() {
    Runtime &runtime = Runtime::shared();
    const Runtime::Lock lock(runtime.mutex);
    return runtime.mainQueue.size();
}

// ---------------------------------------------------------------- LoopFrame

namespace {

// Wake-ups that an inner loop used up or turned away are made good here.
void wakeForWaitingBlocks(Runtime &runtime) {
    for (std::size_t i = 0; i < runtime.mainQueue.size(); ++i)
        runtime.wakeMain();
}

void nudge(Runtime &runtime) {
    runtime.nudged = true;
    runtime.mainChanged.notify_all();
    if (runtime.host)
        runtime.host->nudge();
}

std::vector<LoopFrame *> &openFrames() {
    static std::vector<LoopFrame *> frames;   // main thread only
    return frames;
}

}  // namespace

LoopFrame::LoopFrame() : state_(std::make_shared<State>()) {
    Runtime &runtime = Runtime::shared();
    const Runtime::Lock lock(runtime.mutex);
    runtime.frames.push_back(state_);
    openFrames().push_back(this);
    wakeForWaitingBlocks(runtime);
}

LoopFrame::~LoopFrame() {
    Runtime &runtime = Runtime::shared();
    const Runtime::Lock lock(runtime.mutex);
    std::erase(runtime.frames, state_);
    std::erase(openFrames(), this);
    wakeForWaitingBlocks(runtime);
}

void LoopFrame::stop() {
    Runtime &runtime = Runtime::shared();
    const Runtime::Lock lock(runtime.mutex);
    state_->stopped = true;
    nudge(runtime);
}

bool LoopFrame::stopped() const {
    const Runtime::Lock lock(Runtime::shared().mutex);
    return state_->stopped;
}

LoopFrame *LoopFrame::innermost() { return openFrames().empty() ? nullptr : openFrames().back(); }
std::size_t LoopFrame::depth() { return openFrames().size(); }

void LoopFrame::run() {
    if (const auto host = loopHost())
        host->runUntil([this] { return stopped(); });
}

void LoopFrame::runOnce(Duration pause) {
    Runtime &runtime = Runtime::shared();
    const auto host = loopHost();
    if (!host)
        return;
    auto timedOut = std::make_shared<bool>(false);
    std::uint64_t servedBefore;
    Runtime::TimerKey timer;
    {
        const Runtime::Lock lock(runtime.mutex);
        servedBefore = runtime.served;
        timer = runtime.addTimer(runtime.clock->now() + pause, [&runtime, timedOut] {
            *timedOut = true;
            nudge(runtime);
        });
    }
    host->runUntil([&] {
        const Runtime::Lock lock(runtime.mutex);
        return state_->stopped || *timedOut || runtime.served != servedBefore;
    });
    const Runtime::Lock lock(runtime.mutex);
    runtime.cancelTimer(timer);
}

// ---------------------------------------------------------------- the headless host

namespace {

class HeadlessHost final : public LoopHost {
public:
    void wake() override {}    // the runtime counts the wake-ups and rouses the main thread itself
    void nudge() override {}

    void runUntil(const std::function<bool()> &stopped) override {
        while (!stopped())
            if (!turn())
                return;
    }

private:
    // False when nothing more can ever come.
    static bool turn() {
        Runtime &runtime = Runtime::shared();
        Runtime::Lock lock(runtime.mutex);
        if (runtime.wakes > 0) {
            --runtime.wakes;
            lock.unlock();
            serveOne();
            return true;
        }
        if (std::exchange(runtime.nudged, false))
            return true;
        if (runtime.clock->leaps() && runtime.running == 0)
            return whenSettled(runtime, lock);
        runtime.mainState = Runtime::MainState::inLoop;
        runtime.mainChanged.wait(lock);
        runtime.mainState = Runtime::MainState::running;
        return true;
    }

    static bool whenSettled(Runtime &runtime, Runtime::Lock &lock) {
        const SettledHandlers handlers = runtime.handlers;
        lock.unlock();
        if (handlers.act && handlers.act())
            return true;
        lock.lock();
        if (runtime.running > 0 || runtime.wakes > 0 || runtime.nudged)
            return true;
        if (runtime.fireNextDue()) {
            runtime.endSpent(lock);
            return true;
        }
        const bool nested = !runtime.frames.empty();
        lock.unlock();
        return nested && handlers.over && handlers.over();
    }
};

}  // namespace

std::shared_ptr<LoopHost> makeHeadlessHost() { return std::make_shared<HeadlessHost>(); }

void settle() {
    if (const auto host = loopHost())
        host->runUntil([] { return false; });
}

}  // namespace dispatch
