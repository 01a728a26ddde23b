#include "toolkit/dispatch/Clock.h"

#include <atomic>

namespace dispatch {

namespace {

Time wallTime() { return std::chrono::time_point_cast<Duration>(std::chrono::system_clock::now()); }

class RealClock final : public Clock {
public:
    Time now() const override {
        return wallStart_ + std::chrono::duration_cast<Duration>(std::chrono::steady_clock::now() - steadyStart_);
    }
    Time date() const override { return wallTime(); }
    bool leaps() const override { return false; }

private:
    const Time wallStart_ = wallTime();
    const std::chrono::steady_clock::time_point steadyStart_ = std::chrono::steady_clock::now();
};

class LeapingClock final : public Clock {
public:
    LeapingClock(Time start, bool ownCalendar) : now_(start.time_since_epoch().count()), ownCalendar_(ownCalendar) {}
    Time now() const override { return Time(Duration(now_.load())); }
    Time date() const override { return ownCalendar_ ? now() : wallTime(); }
    bool leaps() const override { return true; }
    void leapTo(Time time) override {
        if (time > now())
            now_ = time.time_since_epoch().count();
    }

private:
    std::atomic<Duration::rep> now_;
    const bool ownCalendar_;
};

}  // namespace

std::shared_ptr<Clock> makeRealClock() { return std::make_shared<RealClock>(); }
std::shared_ptr<Clock> makeLeapingClock() { return std::make_shared<LeapingClock>(wallTime(), false); }
std::shared_ptr<Clock> makeTestClock(Time date) { return std::make_shared<LeapingClock>(date, true); }

}  // namespace dispatch
