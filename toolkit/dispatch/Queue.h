// Queues of blocks: the main one, the global ones, named serial ones; pauses, delays, semaphores.
//
// Main     one FIFO for blocks, performs and due timers; a host serves it, see MainLoop.
// Global   a ready block always gets a thread; threads that wait do not count (at most 512 threads, then the program
//          ends with a message, since a flow would hang).
// Blocks   run inside the guard: what escapes is told to the host and ends that block alone.
// Threads  every operation may be called on any thread.
#pragma once

#include <memory>
#include <string>

#include "toolkit/dispatch/Block.h"
#include "toolkit/dispatch/Clock.h"

namespace dispatch {

struct Lane;   // a serial or bounded queue's state

class Queue {
public:
    enum class Kind { main, global, lane };
    // A serial queue of its own under this name (names are for logs; two queues may share one).
    [[nodiscard]] static Queue serial(std::string name) { return bounded(std::move(name), 1); }
    // At most `width` blocks at a time.
    [[nodiscard]] static Queue bounded(std::string name, int width);

    Kind kind = Kind::global;
    std::shared_ptr<Lane> lane;
};

[[nodiscard]] Queue main();
[[nodiscard]] Queue global();

void async(const Queue &queue, Block block);
// Waits until the block has run; inline where the caller stands on that queue already. False, without running the
// block, where the program is shutting down.
bool sync(const Queue &queue, Block block);
void after(Duration delay, const Queue &queue, Block block);

[[nodiscard]] bool isMain();
// Declares the calling thread to be the main thread; the first caller of isMain() otherwise.
void adoptMainThread();

// Puts the calling thread to sleep. 0 waits until another thread has made a step.
void sleepFor(Duration pause);
[[nodiscard]] Time now();
[[nodiscard]] Time date();

// performSelectorOnMainThread:withObject:waitUntilDone:
void performOnMainThread(Block block, bool waitUntilDone);
// performSelector:withObject:afterDelay: of the main thread.
void performAfterDelay(Duration delay, Block block);

class Semaphore {
public:
    explicit Semaphore(int value);
    void wait();
    // False when `timeout` passed first.
    bool waitFor(Duration timeout);
    void signal();

    struct State;

private:
    std::shared_ptr<State> state_;
};

}  // namespace dispatch
