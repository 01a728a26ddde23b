// Lets Qt's event loop serve the toolkit's main queue: one block a turn of the event loop, so that native events and
// blocks take turns, in nested modal loops too.
// Threads: made and run on the main thread; wake and nudge on any.
#pragma once

#include <QObject>

#include <atomic>

#include "toolkit/dispatch/MainLoop.h"

class QtLoopHost final : public QObject, public dispatch::LoopHost {
public:
    void wake() override;
    void runUntil(const std::function<bool()> &stopped) override;
    void nudge() override;

protected:
    bool event(QEvent *event) override;

private:
    void startTurn();
    void takeTurn();

    std::atomic<int> wakes_ = 0;
    std::atomic<bool> isPosted_ = false;
    int turnTimer_ = 0;
};
