#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include "host/window/QtLoopHost.h"
#include "tests/support/EventLog.h"
#include "tests/support/MainQueueOrder.h"
#include "toolkit/dispatch/MainLoop.h"
#include "toolkit/dispatch/Queue.h"

namespace {

class QtLoopHostThreads : public testing::Test {
protected:
    void SetUp() override {
        dispatch::reset(dispatch::makeRealClock());
        dispatch::setLoopHost(host_);
    }
    void TearDown() override {
        dispatch::setLoopHost(nullptr);
        dispatch::reset(dispatch::makeRealClock());
    }
    std::shared_ptr<QtLoopHost> host_ = std::make_shared<QtLoopHost>();
};

}  // namespace

TEST_F(QtLoopHostThreads, keepsTheMainQueuesOrderInNestedLoopsOnABareWindow) {
    QWidget window;
    window.show();
    EXPECT_EQ(playMainQueueOrder([this](const std::function<bool()> &finished) { host_->runUntil(finished); }), kMainQueueOrder);
}

TEST_F(QtLoopHostThreads, nativeEventsTakeTurnsWithAFullMainQueue) {
    QWidget window;
    window.show();
    bool timerCame = false;
    int blocks = 0;
    // a block that queues the next one for ever: the window must not starve
    std::function<void()> again = [&] {
        if (++blocks == 1)
            QTimer::singleShot(0, &window, [&] { timerCame = true; });
        if (!timerCame)
            dispatch::async(dispatch::main(), [&] { again(); });
    };
    dispatch::async(dispatch::main(), [&] { again(); });
    host_->runUntil([&] { return timerCame; });
    EXPECT_GT(blocks, 0);
}

TEST_F(QtLoopHostThreads, aModalLoopServesQtsOwnTimersAndEndsFromAWorker) {
    QWidget window;
    window.show();
    EventLog log;
    bool done = false;
    dispatch::async(dispatch::main(), [&] {
        dispatch::LoopFrame frame;
        QTimer::singleShot(0, &window, [&] {
            log.add("native timer");
            dispatch::async(dispatch::global(), [&] { frame.stop(); });
        });
        frame.run();
        log.add("ended");
        done = true;
    });
    host_->runUntil([&] { return done; });
    EXPECT_EQ(log.take(), "native timer\nended");
}
