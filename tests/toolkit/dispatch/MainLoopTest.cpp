#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>

#include "tests/support/EventLog.h"
#include "tests/support/MainQueueOrder.h"
#include "tests/support/TestWorld.h"
#include "toolkit/NSObject.h"
#include "toolkit/Property.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/dispatch/MainLoop.h"
#include "toolkit/dispatch/OperationQueue.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/dispatch/RunLoop.h"
#include "toolkit/dispatch/Synchronized.h"

using namespace std::chrono_literals;
using dispatch::async;
using dispatch::global;
using dispatch::main;

namespace {

class DispatchThreads : public testing::Test {
protected:
    TestWorld world;
    EventLog log;
};

void serveUntil(const std::function<bool()> &finished) { dispatch::loopHost()->runUntil(finished); }

}  // namespace

TEST_F(DispatchThreads, theMainQueueKeepsItsOrderInNestedLoops) {
    EXPECT_EQ(playMainQueueOrder(serveUntil), kMainQueueOrder) << "headless";
    dispatch::reset(dispatch::makeLeapingClock());
    EXPECT_EQ(playMainQueueOrder(serveUntil), kMainQueueOrder) << "on the command line";
    dispatch::reset(dispatch::makeRealClock());
    EXPECT_EQ(playMainQueueOrder(serveUntil), kMainQueueOrder) << "in real time";
}

TEST_F(DispatchThreads, timeLeapsOnlyWhenNobodyCanRun) {
    dispatch::after(500ms, main(), [&] { log.add("half a second"); });
    dispatch::after(500ms, main(), [&] { log.add("queued second, due second"); });
    dispatch::after(100ms, global(), [&] {
        log.add("worker");
        dispatch::sleepFor(1h);
        async(main(), [&] { log.add("an hour later"); });
    });
    async(main(), [&] {
        log.add("now");
        dispatch::sleepFor(200ms);   // the main thread's own pause moves the clock, and the worker with it
        log.add("pause over");
    });
    world.settle();
    EXPECT_EQ(log.take(), "now\nworker\npause over\nhalf a second\nqueued second, due second\nan hour later");
    EXPECT_EQ(world.elapsed(), 1h + 100ms);
}

TEST_F(DispatchThreads, aPauseOfNothingWaitsForAnotherThreadsStep) {
    std::atomic<bool> busy = true;
    std::atomic<int> turns = 0;
    async(global(), [&] {
        while (busy) {
            ++turns;
            dispatch::sleepFor(0s);
        }
    });
    dispatch::after(3s, global(), [&] { busy = false; });
    world.settle();
    EXPECT_FALSE(busy);
    EXPECT_LT(turns, 10);   // it waited and did not spin
}

TEST_F(DispatchThreads, aSemaphoreCountsAndLimits) {
    dispatch::Semaphore semaphore(1);
    semaphore.wait();
    log.add(semaphore.waitFor(2s) ? "had" : "limit");
    dispatch::after(1s, global(), [&] { semaphore.signal(); });
    semaphore.wait();
    log.add("signalled");
    EXPECT_EQ(log.take(), "limit\nsignalled");
    EXPECT_EQ(world.elapsed(), 3s);
}

TEST_F(DispatchThreads, aForgottenWaitIsReleasedAndNamed) {
    std::atomic<bool> wentOn = false;
    async(global(), [&] {
        dispatch::Semaphore(0).wait();
        wentOn = true;
    });
    world.settle();
    world.expectWaiting({"a semaphore"});
    EXPECT_EQ(dispatch::waitingThreads(), std::vector<std::string>{"a semaphore"});
    EXPECT_FALSE(wentOn);
}

TEST_F(DispatchThreads, aSerialQueueKeepsOrderAndAWideOneItsWidth) {
    const auto serial = dispatch::Queue::serial("one");
    for (int i = 0; i < 50; ++i)
        async(serial, [this, i] { log.add(std::to_string(i)); });
    dispatch::sync(serial, [&] {
        dispatch::sync(serial, [&] { log.add("inline"); });
    });
    const std::string order = log.take();
    EXPECT_TRUE(order.starts_with("0\n1\n2\n")) << order;
    EXPECT_TRUE(order.ends_with("48\n49\ninline")) << order;

    NSOperationQueue wide("wide", 3);
    std::atomic<int> now = 0, most = 0, done = 0;
    std::vector<dispatch::Block> blocks;
    for (int i = 0; i < 20; ++i)
        blocks.emplace_back([&] {
            const int mine = ++now;
            for (int seen = most; mine > seen && !most.compare_exchange_weak(seen, mine);) {
            }
            dispatch::sleepFor(1s);
            --now;
            ++done;
        });
    wide.addOperations_waitUntilFinished(std::move(blocks), true);
    EXPECT_EQ(done, 20);
    EXPECT_EQ(most, 3);
}

TEST_F(DispatchThreads, hundredsOfWaitingBlocksStillLetTheNextOneRun) {
    dispatch::Semaphore gate(0);
    std::atomic<int> through = 0;
    for (int i = 0; i < 300; ++i)
        async(global(), [&] {
            gate.wait();
            ++through;
        });
    async(global(), [&] {
        for (int i = 0; i < 300; ++i)
            gate.signal();
    });
    world.settle();
    EXPECT_EQ(through, 300);
}

TEST_F(DispatchThreads, syncIsRefusedAtShutDownAndNeverHangs) {
    std::atomic<int> answer = -1;
    async(global(), [&] { answer = dispatch::sync(main(), [] { FAIL() << "ran after the shut-down"; }) ? 1 : 0; });
    while (dispatch::waitingMainBlocks() == 0)
        std::this_thread::yield();
    dispatch::shutDown();
    while (answer < 0)
        std::this_thread::yield();
    EXPECT_EQ(answer, 0);
    EXPECT_FALSE(dispatch::sync(dispatch::Queue::serial("late"), [] {}));
}

TEST_F(DispatchThreads, theGuardCatchesWhatEscapesAndTheRestGoesOn) {
    async(main(), [] { throw std::runtime_error("main"); });
    async(global(), [] { throw std::runtime_error("worker"); });
    dispatch::after(1s, main(), [] { throw 7; });
    dispatch::after(2s, main(), [&] { log.add("alive"); });
    world.settle();
    EXPECT_EQ(log.take(), "alive");
    auto failures = world.takeFailures();
    std::ranges::sort(failures);
    EXPECT_EQ(failures, (std::vector<std::string>{"a background block: worker", "a main-queue block: an unknown failure",
                                                  "a main-queue block: main"}));
}

TEST_F(DispatchThreads, timersFireOnTheThreadThatMadeThem) {
    auto mainTimer = NSTimer::scheduled(1s, true, [&] { log.add(dispatch::isMain() ? "main tick" : "wrong thread"); });
    async(global(), [&] {
        int ticks = 0;
        auto timer = NSTimer::scheduled(700ms, true, [&] { log.add("worker tick " + std::to_string(++ticks)); });
        NSRunLoop::current().runFor(1500ms);
        timer->invalidate();
        NSRunLoop::current().runFor(5s);
        log.add("worker done");
    });
    dispatch::after(2500ms, main(), [&] { mainTimer->invalidate(); });
    world.settle();
    EXPECT_EQ(log.take(), "worker tick 1\nmain tick\nworker tick 2\nmain tick\nworker done");
}

TEST_F(DispatchThreads, aPropertyTellsTheMainThreadTheLatestValueOnce) {
    Property<int> property(1);
    property.observe([&](int value) { log.add((dispatch::isMain() ? "" : "wrong thread ") + std::to_string(value)); });
    property = 2;
    dispatch::Semaphore bothSet(0);
    async(global(), [&] {
        property = 3;
        property = 4;
        bothSet.signal();
    });
    bothSet.wait();   // the main thread serves nothing in between
    world.settle();
    EXPECT_EQ(log.take(), "1\n2\n4");
}

// ---------------------------------------------------------------- objects

namespace {

class Noisy : public NSObject {
public:
    explicit Noisy(EventLog *log = nullptr) : log_(log) {}
    ~Noisy() override { log_->add("destructor"); }
    void dealloc() override { log_->add(dispatch::isMain() ? "base dealloc on main" : "base dealloc elsewhere"); }

protected:
    EventLog *log_;
};

class Noisier : public Noisy {
public:
    using Noisy::Noisy;
    void dealloc() override {
        log_->add("own dealloc");
        Noisy::dealloc();
    }
};

}  // namespace

TEST_F(DispatchThreads, objectsEndOnTheMainThreadSubclassFirst) {
    async(global(), [object = alloc<Noisier>(&log)]() mutable { object = nullptr; });
    world.settle();
    EXPECT_EQ(log.take(), "own dealloc\nbase dealloc on main\ndestructor");
}

TEST(DroppedBlockThreads, aBlockThatIsDroppedEndsWhatItOwns) {
    EventLog log;
    {
        TestWorld world;
        dispatch::after(1h, main(), [object = alloc<Noisier>(&log)] {});
        async(main(), [object = alloc<Noisier>(&log)] {});
    }
    EXPECT_EQ(log.take(), "own dealloc\nbase dealloc on main\ndestructor\nown dealloc\nbase dealloc on main\ndestructor");
}

TEST_F(DispatchThreads, synchronizedHoldsOthersOutAndItsOwnThreadIn) {
    int object = 0, count = 0;
    for (int i = 0; i < 8; ++i)
        async(global(), [&] {
            for (int n = 0; n < 1000; ++n) {
                const dispatch::Synchronized once(&object);
                const dispatch::Synchronized again(&object);
                ++count;
            }
        });
    world.settle();
    EXPECT_EQ(count, 8000);
}
