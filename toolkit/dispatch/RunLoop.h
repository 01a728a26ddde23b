// The run loop of a thread: timers and performs of that thread, run while it is served.
#pragma once

#include <functional>
#include <memory>

#include "toolkit/dispatch/Block.h"
#include "toolkit/dispatch/Clock.h"

namespace dispatch {
struct ThreadLoop;
}

class NSTimer;

class NSRunLoop {
public:
    // The calling thread's loop.
    [[nodiscard]] static NSRunLoop current();
    // Serves the loop for that long. On the main thread the main queue is served; under a leaping clock it ends when
    // the main queue is empty and nothing is left to run. A thread that is parked here does not count as running.
    void runFor(dispatch::Duration pause);
    // Runs `block` on this thread's loop the next time it is served. Any thread.
    void perform(dispatch::Block block);

private:
    friend class NSTimer;
    std::shared_ptr<dispatch::ThreadLoop> loop_;   // null: the main thread
};

// A timer on the run loop of the thread that makes it. It fires inside the guard; `invalidate` on any thread.
class NSTimer : public std::enable_shared_from_this<NSTimer> {
public:
    static std::shared_ptr<NSTimer> scheduled(dispatch::Duration interval, bool repeats, std::function<void()> fire);
    void invalidate();
    [[nodiscard]] bool isValid() const;

private:
    struct State;
    std::shared_ptr<State> state_;
    static void arm(const std::shared_ptr<State> &state);
};
