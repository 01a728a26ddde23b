#include "tests/support/TestWorld.h"

#include <gtest/gtest.h>

#include "toolkit/dispatch/Guard.h"
#include "toolkit/views/NSApplication.h"

TestWorld::TestWorld(dispatch::Time date) {
    dispatch::reset(dispatch::makeTestClock(date));
    dispatch::setLoopHost(dispatch::makeHeadlessHost());
    dispatch::setFailureSink([this](const char *what, std::exception_ptr failure) {
        const std::scoped_lock lock(mutex_);
        failures_.push_back(std::string(what) + ": " + dispatch::reasonOf(failure));
        lastFailure_ = failure;
    });
    NSApplication::resetShared();
    start_ = dispatch::now();
}

TestWorld::~TestWorld() {
    NSApplication::resetShared();
    EXPECT_EQ(dispatch::reset(dispatch::makeRealClock()), expectedWaiting_) << "threads that still waited at the end of the test";
    dispatch::setFailureSink({});
    for (const std::string &failure : failures_)
        ADD_FAILURE() << "escaped and not asked for: " << failure;
}

std::vector<std::string> TestWorld::takeFailures() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(failures_, {});
}
