// The state behind queues, loops and clocks: who can run, what waits, what is due. Internal to the toolkit.
//
// One mutex guards all of it. `running` counts the blocks that are ready or run on pool threads and do not wait; who
// wakes a waiter counts it as running at once, so the world is never taken for settled in between.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "toolkit/dispatch/Block.h"
#include "toolkit/dispatch/Clock.h"
#include "toolkit/dispatch/MainLoop.h"
#include "toolkit/dispatch/Queue.h"

namespace dispatch {

// Ends the body of a thread whose wait was released at the end of its world. Nobody but the worker catches it.
struct ThreadReleased {};

struct Waiter {
    explicit Waiter(std::string reason) : what(std::move(reason)) {}
    std::condition_variable changed;
    bool woken = false, timedOut = false, released = false;
    bool isMainThread = false, counts = false;
    std::string what;
};

struct Lane {
    std::string name;
    int width = 1;
    int active = 0;
    std::deque<Block> blocks;
};

struct Semaphore::State {
    int value = 0;
    std::deque<std::shared_ptr<Waiter>> queue;
};

struct LoopFrame::State {
    bool stopped = false;
};

class Runtime {
public:
    using Lock = std::unique_lock<std::mutex>;
    using TimerKey = std::pair<Time, std::uint64_t>;
    enum class MainState { running, inLoop, blocked };

    static Runtime &shared();

    // All below: with the mutex held, unless told otherwise.
    void enqueueMain(Block block);
    void enqueueGlobal(Block block);
    void enqueueLane(const std::shared_ptr<Lane> &lane, Block block);
    void enqueue(const Queue &queue, Block block);

    TimerKey addTimer(Time due, std::function<void()> action);
    void cancelTimer(const TimerKey &key);
    // Leaps to the next due time and runs what is due then first. False where nothing is due.
    bool fireNextDue();

    // Parks the calling thread; throws ThreadReleased where the world ended meanwhile. False when `due` came first.
    bool park(Lock &lock, const std::shared_ptr<Waiter> &waiter, std::optional<Time> due);
    void wake(Waiter &waiter, bool timedOut = false);
    void madeStep();
    // To be asked after anything that may have left nobody running.
    void checkSettled();
    void wakeMain();
    [[nodiscard]] bool settled() const { return running == 0 && mainQueue.empty(); }

    std::mutex mutex;
    std::condition_variable mainChanged;
    std::deque<Block> mainQueue;
    std::size_t wakes = 0;         // wake-ups that the headless host has not taken yet
    bool nudged = false;
    std::uint64_t served = 0;      // blocks that the main queue has given
    std::uint64_t steps = 0;
    MainState mainState = MainState::running;
    std::vector<std::shared_ptr<LoopFrame::State>> frames;
    std::shared_ptr<LoopHost> host;
    SettledHandlers handlers;

    std::map<TimerKey, std::function<void()>> timers;
    // Actions that have run. What they own may speak to the runtime as it goes, so they end without the mutex.
    std::vector<std::function<void()>> spent;
    void endSpent(Lock &lock);
    std::uint64_t timerNumber = 0;
    std::condition_variable timersChanged;
    bool timerThreadRuns = false;

    std::deque<Block> ready;
    std::condition_variable readyChanged;
    std::size_t idleThreads = 0;
    std::size_t threads = 0;
    std::size_t running = 0;
    std::condition_variable runningChanged;
    std::set<std::shared_ptr<Waiter>> waiters;
    std::vector<std::shared_ptr<Waiter>> yielders;

    std::shared_ptr<Clock> clock = makeRealClock();
    bool shuttingDown = false;

private:
    Runtime() = default;
    void startThread();
    void workerBody();
    void timerBody();
    [[noreturn]] void hang(const char *what);
};

}  // namespace dispatch
