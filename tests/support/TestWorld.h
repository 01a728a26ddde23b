// One test's world: a test clock, the headless loop, a fresh application, and nothing left over from the test before.
//
// At its end every thread that still waits is released and named; a test that leaves one on purpose says so with
// `expectWaiting`.
#pragma once

#include <exception>
#include <mutex>
#include <string>
#include <vector>

#include "toolkit/dispatch/Clock.h"
#include "toolkit/dispatch/MainLoop.h"
#include "toolkit/dispatch/Queue.h"

class TestWorld {
public:
    // 2024-03-05 10:20:30 UTC, a Tuesday, unless told.
    explicit TestWorld(dispatch::Time date = dispatch::Time(std::chrono::seconds(1'709'634'030)));
    ~TestWorld();
    TestWorld(const TestWorld &) = delete;
    TestWorld &operator=(const TestWorld &) = delete;

    // Serves the main queue until nothing can happen any more, due times included.
    void settle() { dispatch::settle(); }
    // Waiting time since the world began.
    [[nodiscard]] dispatch::Duration elapsed() const { return dispatch::now() - start_; }
    // What the guard caught, in order ("action onImportButton:: reason").
    [[nodiscard]] std::vector<std::string> takeFailures();
    [[nodiscard]] std::exception_ptr lastFailure() const { return lastFailure_; }
    void expectWaiting(std::vector<std::string> names) { expectedWaiting_ = std::move(names); }

private:
    dispatch::Time start_;
    std::vector<std::string> failures_;
    std::exception_ptr lastFailure_;
    std::vector<std::string> expectedWaiting_;
    std::mutex mutex_;
};
