#include "host/window/QtLoopHost.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QTimerEvent>

namespace {

const auto kWake = static_cast<QEvent::Type>(QEvent::registerEventType());
const auto kNudge = static_cast<QEvent::Type>(QEvent::registerEventType());

}  // namespace

// Posted events alone would starve the window: those that are posted while others are delivered belong to the same
// round. They only carry the wake-up to this thread, a timer of 0 ms takes the turn.
void QtLoopHost::wake() {
    ++wakes_;
    if (!isPosted_.exchange(true))
        QCoreApplication::postEvent(this, new QEvent(kWake));
}

void QtLoopHost::nudge() { QCoreApplication::postEvent(this, new QEvent(kNudge)); }

void QtLoopHost::runUntil(const std::function<bool()> &stopped) {
    QEventLoop loop;
    while (!stopped())
        loop.processEvents(QEventLoop::WaitForMoreEvents);
}

bool QtLoopHost::event(QEvent *event) {
    if (event->type() == kWake) {
        isPosted_ = false;
        startTurn();
    } else if (event->type() == QEvent::Timer && static_cast<QTimerEvent *>(event)->timerId() == turnTimer_) {
        takeTurn();
    } else if (event->type() != kNudge) {
        return QObject::event(event);
    }
    return true;
}

void QtLoopHost::startTurn() {
    if (turnTimer_ == 0 && wakes_ > 0)
        turnTimer_ = startTimer(0);
}

// A timer does not fire inside its own event, so each turn has a new one: a block may run a modal loop.
void QtLoopHost::takeTurn() {
    killTimer(turnTimer_);
    turnTimer_ = 0;
    --wakes_;
    startTurn();
    dispatch::serveOne();
}
