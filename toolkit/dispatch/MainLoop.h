// The main queue and the loops that serve it.
//
// A host only wakes the toolkit: one wake-up takes at most one block, popped before it runs, and none once the innermost
// modal loop has been told to stop. Entering and leaving a modal loop wakes once per waiting block, so that a nested
// loop also takes blocks queued before it began, and the outer one goes on with what is left.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/dispatch/Clock.h"

namespace dispatch {

// What a host's event loop offers. One is installed at a time.
class LoopHost {
public:
    virtual ~LoopHost() = default;
    // Any thread: calls serveOne() once, soon, on the main thread, in whatever loop runs there then.
    virtual void wake() = 0;
    // Main thread: serves events and wake-ups until `stopped` is true, or until nothing more can ever come (a host
    // that can tell). Asks `stopped` anew after each event and after each `nudge`.
    virtual void runUntil(const std::function<bool()> &stopped) = 0;
    // Any thread: makes the running loop ask `stopped` again.
    virtual void nudge() = 0;
};

void setLoopHost(std::shared_ptr<LoopHost> host);
[[nodiscard]] std::shared_ptr<LoopHost> loopHost();

// Pops one block of the main queue and runs it inside the guard. False where none was taken.
bool serveOne();
[[nodiscard]] std::size_t waitingMainBlocks();

// A modal loop on the main thread. Frames nest; `stop` may be called on any thread.
class LoopFrame {
public:
    LoopFrame();
    ~LoopFrame();
    LoopFrame(const LoopFrame &) = delete;
    LoopFrame &operator=(const LoopFrame &) = delete;

    // Serves the main queue until stopped.
    void run();
    // Serves until stopped or until `pause` has passed or one block or event was served.
    void runOnce(Duration pause);
    void stop();
    [[nodiscard]] bool stopped() const;
    // The innermost frame that runs or stands open; null outside.
    [[nodiscard]] static LoopFrame *innermost();
    [[nodiscard]] static std::size_t depth();

    struct State;

private:
    std::shared_ptr<State> state_;
};

// What a leaping clock's world does when it is settled: main queue empty, every worker idle or waiting.
// `act` lets somebody answer an open question; true when it did something. `over` is called when nothing is left to
// wait for and a modal loop is still open; true when it ended that loop.
struct SettledHandlers {
    std::function<bool()> act;
    std::function<bool()> over;
};
void setSettledHandlers(SettledHandlers handlers);

// A host without any native events: the command line and the tests. With a leaping clock it follows the settled rule;
// with a real clock it waits for real time.
[[nodiscard]] std::shared_ptr<LoopHost> makeHeadlessHost();

// For the start of a program or a test: forgets all queues, threads and timers and takes this clock. Nobody may be
// running. Threads that still wait are released (their bodies end) and their names given back.
std::vector<std::string> reset(std::shared_ptr<Clock> clock);
[[nodiscard]] std::shared_ptr<Clock> clock();
// No block is taken any more and every later sync is refused.
void shutDown();

// For reports and tests: the threads that wait, and on what.
[[nodiscard]] std::vector<std::string> waitingThreads();
// True when the main queue is empty and every worker is idle or waits.
[[nodiscard]] bool isSettled();
// Serves the main queue until the world is settled with no due time left (leaping clocks only). Main thread.
void settle();

}  // namespace dispatch
