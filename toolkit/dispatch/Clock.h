// Waiting time and the calendar, as the whole toolkit sees them.
//
// A real clock passes by itself. A leaping clock stands still while anything can run; when nothing can, it goes on to
// the next due time at once, so no deliberate pause is waited out (command line, tests).
#pragma once

#include <chrono>
#include <memory>

namespace dispatch {

using Duration = std::chrono::nanoseconds;
using Time = std::chrono::sys_time<Duration>;

class Clock {
public:
    virtual ~Clock() = default;
    // Waiting time; never goes back. Any thread.
    [[nodiscard]] virtual Time now() const = 0;
    // The calendar's present moment (UTC).
    [[nodiscard]] virtual Time date() const = 0;
    [[nodiscard]] virtual bool leaps() const = 0;
    // Only of a leaping clock, and only forward.
    virtual void leapTo(Time) {}
};

// Passes by itself; the window's clock.
[[nodiscard]] std::shared_ptr<Clock> makeRealClock();
// Leaps over pauses; the calendar stays the machine's. The command line's clock.
[[nodiscard]] std::shared_ptr<Clock> makeLeapingClock();
// Leaps, and its calendar begins at `date` and moves with it. The tests' clock.
[[nodiscard]] std::shared_ptr<Clock> makeTestClock(Time date);

}  // namespace dispatch
