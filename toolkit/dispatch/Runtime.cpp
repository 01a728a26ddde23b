#include "toolkit/dispatch/Runtime.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "toolkit/dispatch/Guard.h"

namespace dispatch {

namespace {

constexpr std::size_t kMostThreads = 512;

thread_local bool isPoolThread = false;

std::thread::id &mainThread() {
    static std::thread::id thread = std::this_thread::get_id();
    return thread;
}
// The library is loaded by the main thread.
const std::thread::id kLoadingThread = mainThread();

}  // namespace

bool isMain() { return std::this_thread::get_id() == mainThread(); }
void adoptMainThread() { mainThread() = std::this_thread::get_id(); }

Runtime &Runtime::shared() {
    static auto *runtime = new Runtime;   // never ends: pool threads may outlive main()
    return *runtime;
}

// ---------------------------------------------------------------- queues

void Runtime::wakeMain() {
    ++wakes;
    mainChanged.notify_all();
    if (host)
        host->wake();
}

void Runtime::enqueueMain(Block block) {
    mainQueue.push_back(std::move(block));
    wakeMain();
}

void Runtime::enqueueGlobal(Block block) {
    ready.push_back(std::move(block));
    ++running;
    if (ready.size() > idleThreads)
        startThread();
    readyChanged.notify_one();
}

void Runtime::enqueueLane(const std::shared_ptr<Lane> &lane, Block block) {
    lane->blocks.push_back(std::move(block));
    if (lane->active >= lane->width)
        return;
    ++lane->active;
    enqueueGlobal([this, lane] {
        for (;;) {
            Block next;
            {
                const Lock lock(mutex);
                if (lane->blocks.empty()) {
                    --lane->active;
                    return;
                }
                next = std::move(lane->blocks.front());
                lane->blocks.pop_front();
            }
            guarded(lane->name.c_str(), [&] { next(); });
            next = {};
            const Lock lock(mutex);
            madeStep();
        }
    });
}

void Runtime::enqueue(const Queue &queue, Block block) {
    switch (queue.kind) {
    case Queue::Kind::main: return enqueueMain(std::move(block));
    case Queue::Kind::global: return enqueueGlobal(std::move(block));
    case Queue::Kind::lane: return enqueueLane(queue.lane, std::move(block));
    }
}

// ---------------------------------------------------------------- threads

void Runtime::startThread() {
    if (threads >= kMostThreads)
        hang("512 threads are in use and a block waits for one more");
    ++threads;
    std::thread([this] { workerBody(); }).detach();
}

void Runtime::workerBody() {
    isPoolThread = true;
    Lock lock(mutex);
    for (;;) {
        while (ready.empty()) {
            ++idleThreads;
            readyChanged.wait(lock);
            --idleThreads;
        }
        Block block = std::move(ready.front());
        ready.pop_front();
        lock.unlock();
        try {
            guarded("a background block", [&] { block(); });
        } catch (const ThreadReleased &) {
            // its world has ended
        }
        block = {};   // what it owned goes while it still counts as running
        lock.lock();
        endSpent(lock);
        --running;
        madeStep();
        runningChanged.notify_all();
        checkSettled();
    }
}

void Runtime::hang(const char *what) {
    std::fprintf(stderr, "dispatch: %s\n", what);
    for (const auto &waiter : waiters)
        std::fprintf(stderr, "  waits: %s%s\n", waiter->what.c_str(), waiter->isMainThread ? " (main thread)" : "");
    std::abort();
}

// ---------------------------------------------------------------- time

Runtime::TimerKey Runtime::addTimer(Time due, std::function<void()> action) {
    const TimerKey key{due, ++timerNumber};
    timers.emplace(key, std::move(action));
    if (!clock->leaps()) {
        if (!std::exchange(timerThreadRuns, true))
            std::thread([this] { timerBody(); }).detach();
        timersChanged.notify_all();
    } else {
        mainChanged.notify_all();
    }
    return key;
}

bool Runtime::fireNextDue() {
    if (timers.empty())
        return false;
    auto next = timers.extract(timers.begin());
    clock->leapTo(next.key().first);
    madeStep();
    next.mapped()();
    spent.push_back(std::move(next.mapped()));
    return true;
}

void Runtime::cancelTimer(const TimerKey &key) {
    if (auto timer = timers.extract(key))
        spent.push_back(std::move(timer.mapped()));
}

void Runtime::endSpent(Lock &lock) {
    auto ended = std::exchange(spent, {});
    lock.unlock();
    ended.clear();
    lock.lock();
}

// A real clock's due times. Under a leaping clock this thread sleeps.
void Runtime::timerBody() {
    Lock lock(mutex);
    for (;;) {
        if (clock->leaps() || timers.empty()) {
            timersChanged.wait(lock);
            continue;
        }
        const Duration ahead = timers.begin()->first.first - clock->now();
        if (ahead > Duration::zero())
            timersChanged.wait_for(lock, ahead);
        else if (fireNextDue())
            endSpent(lock);
    }
}

// ---------------------------------------------------------------- waiting

bool Runtime::park(Lock &lock, const std::shared_ptr<Waiter> &waiter, std::optional<Time> due) {
    if (shuttingDown && !isMain())
        throw ThreadReleased();
    waiter->isMainThread = isMain();
    waiter->counts = isPoolThread;
    waiters.insert(waiter);
    std::optional<TimerKey> timer;
    if (due)
        timer = addTimer(*due, [this, waiter] { wake(*waiter, true); });
    if (waiter->isMainThread)
        mainState = MainState::blocked;
    else if (waiter->counts)
        --running;
    runningChanged.notify_all();
    checkSettled();
    while (!waiter->woken)
        waiter->changed.wait(lock);
    if (timer)
        cancelTimer(*timer);
    waiters.erase(waiter);
    if (waiter->released)
        throw ThreadReleased();
    return !waiter->timedOut;
}

void Runtime::wake(Waiter &waiter, bool timedOut) {
    if (waiter.woken)
        return;
    waiter.woken = true;
    waiter.timedOut = timedOut;
    if (waiter.isMainThread)
        mainState = MainState::running;
    else if (waiter.counts)
        ++running;
    waiter.changed.notify_all();
}

void Runtime::madeStep() {
    ++steps;
    for (const auto &waiter : std::exchange(yielders, {}))
        wake(*waiter);
}

void Runtime::checkSettled() {
    if (running != 0)
        return;
    if (mainState == MainState::inLoop)
        mainChanged.notify_all();
    while (running == 0 && mainState == MainState::blocked && clock->leaps())
        if (!fireNextDue())
            hang("every thread waits and nothing is due");
}

// ---------------------------------------------------------------- Queue.h

Queue Queue::bounded(std::string name, int width) {
    auto lane = std::make_shared<Lane>();
    lane->name = std::move(name);
    lane->width = std::max(1, width);
    return {Kind::lane, std::move(lane)};
}

Queue main() { return {Queue::Kind::main, nullptr}; }
Queue global() { return {Queue::Kind::global, nullptr}; }

void async(const Queue &queue, Block block) {
    Runtime &runtime = Runtime::shared();
    const Runtime::Lock lock(runtime.mutex);
    if (!runtime.shuttingDown)
        runtime.enqueue(queue, std::move(block));
}

namespace {

thread_local std::vector<const Lane *> lanesHere;

// Signals when the block has run, and also when it was dropped unrun.
struct Completion {
    Semaphore done{0};
    bool ran = false;
};

}  // namespace

bool sync(const Queue &queue, Block block) {
    const bool inlineHere = (queue.kind == Queue::Kind::main && isMain()) || queue.kind == Queue::Kind::global ||
                            (queue.lane && std::ranges::find(lanesHere, queue.lane.get()) != lanesHere.end());
    if (inlineHere) {
        block();
        return true;
    }
    auto completion = std::make_shared<Completion>();
    struct Signal {
        std::shared_ptr<Completion> completion;
        Block block;
        const Lane *lane = nullptr;
        Signal(std::shared_ptr<Completion> c, Block b, const Lane *l) : completion(std::move(c)), block(std::move(b)), lane(l) {}
        Signal(Signal &&) = default;
        ~Signal() {
            if (!completion)
                return;
            block = {};
            completion->done.signal();
        }
        void operator()() {
            completion->ran = true;
            if (lane)
                lanesHere.push_back(lane);
            guarded("a synchronous block", [&] { block(); });
            if (lane)
                lanesHere.pop_back();
        }
    };
    {
        Runtime &runtime = Runtime::shared();
        const Runtime::Lock lock(runtime.mutex);
        if (runtime.shuttingDown)
            return false;
        runtime.enqueue(queue, Signal(completion, std::move(block), queue.lane.get()));
    }
    completion->done.wait();
    return completion->ran;
}

void after(Duration delay, const Queue &queue, Block block) {
    Runtime &runtime = Runtime::shared();
    const Runtime::Lock lock(runtime.mutex);
    if (runtime.shuttingDown)
        return;
    auto held = std::make_shared<Block>(std::move(block));
    runtime.addTimer(runtime.clock->now() + std::max(delay, Duration::zero()),
                     [&runtime, queue, held] { runtime.enqueue(queue, std::move(*held)); });
}

void sleepFor(Duration pause) {
    Runtime &runtime = Runtime::shared();
    Runtime::Lock lock(runtime.mutex);
    if (pause > Duration::zero()) {
        runtime.park(lock, std::make_shared<Waiter>("a pause"), runtime.clock->now() + pause);
        return;
    }
    if (!runtime.clock->leaps()) {
        lock.unlock();
        std::this_thread::sleep_for(std::chrono::microseconds(200));
        return;
    }
    auto waiter = std::make_shared<Waiter>("another thread's step");
    runtime.yielders.push_back(waiter);
    runtime.park(lock, waiter, std::nullopt);
}

Time now() { return clock()->now(); }
Time date() { return clock()->date(); }

void performOnMainThread(Block block, bool waitUntilDone) {
    if (waitUntilDone)
        sync(main(), std::move(block));
    else
        async(main(), std::move(block));
}

void performAfterDelay(Duration delay, Block block) { after(delay, main(), std::move(block)); }

// ---------------------------------------------------------------- Semaphore

Semaphore::Semaphore(int value) : state_(std::make_shared<State>()) { state_->value = value; }

void Semaphore::wait() {
    Runtime &runtime = Runtime::shared();
    Runtime::Lock lock(runtime.mutex);
    const auto state = state_;
    if (state->value > 0) {
        --state->value;
        return;
    }
    auto waiter = std::make_shared<Waiter>("a semaphore");
    state->queue.push_back(waiter);
    runtime.park(lock, waiter, std::nullopt);
}

bool Semaphore::waitFor(Duration timeout) {
    Runtime &runtime = Runtime::shared();
    Runtime::Lock lock(runtime.mutex);
    const auto state = state_;
    if (state->value > 0) {
        --state->value;
        return true;
    }
    auto waiter = std::make_shared<Waiter>("a semaphore with a limit");
    state->queue.push_back(waiter);
    const bool signalled = runtime.park(lock, waiter, runtime.clock->now() + timeout);
    if (!signalled)
        std::erase(state->queue, waiter);
    return signalled;
}

void Semaphore::signal() {
    Runtime &runtime = Runtime::shared();
    const Runtime::Lock lock(runtime.mutex);
    runtime.madeStep();
    while (!state_->queue.empty()) {
        const auto waiter = state_->queue.front();
        state_->queue.pop_front();
        if (waiter->woken)
            continue;   // its limit passed first, or its world has ended
        runtime.wake(*waiter);
        return;
    }
    ++state_->value;
}

// ---------------------------------------------------------------- world

std::shared_ptr<Clock> clock() {
    Runtime &runtime = Runtime::shared();
    const Runtime::Lock lock(runtime.mutex);
    return runtime.clock;
}

std::vector<std::string> waitingThreads() {
    Runtime &runtime = Runtime::shared();
    const Runtime::Lock lock(runtime.mutex);
    std::vector<std::string> names;
    for (const auto &waiter : runtime.waiters)
        names.push_back(waiter->what);
    return names;
}

bool isSettled() {
    Runtime &runtime = Runtime::shared();
    const Runtime::Lock lock(runtime.mutex);
    return runtime.settled();
}

void shutDown() {
    Runtime &runtime = Runtime::shared();
    Runtime::Lock lock(runtime.mutex);
    runtime.shuttingDown = true;
    auto dropped = std::exchange(runtime.mainQueue, {});
    lock.unlock();
    dropped.clear();   // a sync that waits for one of these is refused by it
}

std::vector<std::string> reset(std::shared_ptr<Clock> clock) {
    Runtime &runtime = Runtime::shared();
    Runtime::Lock lock(runtime.mutex);
    std::vector<std::string> released;
    runtime.shuttingDown = true;   // what ends now starts nothing new
    while (!runtime.waiters.empty() || runtime.running > 0) {
        for (const auto &waiter : runtime.waiters)
            if (!waiter->woken && !waiter->isMainThread) {
                released.push_back(waiter->what);
                waiter->released = true;
                runtime.wake(*waiter);
            }
        runtime.runningChanged.wait_for(lock, std::chrono::milliseconds(20));
    }
    while (!runtime.mainQueue.empty() || !runtime.timers.empty() || !runtime.ready.empty()) {
        auto blocks = std::exchange(runtime.mainQueue, {});
        auto timers = std::exchange(runtime.timers, {});
        auto ready = std::exchange(runtime.ready, {});
        runtime.endSpent(lock);
        lock.unlock();   // what the blocks own may speak to the runtime as it goes
        blocks.clear();
        timers.clear();
        ready.clear();
        lock.lock();
    }
    runtime.wakes = 0;
    runtime.nudged = false;
    runtime.frames.clear();
    runtime.yielders.clear();
    runtime.handlers = {};
    runtime.clock = std::move(clock);
    runtime.shuttingDown = false;
    runtime.timersChanged.notify_all();
    return released;
}

}  // namespace dispatch
