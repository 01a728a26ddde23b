// Usage events on their way to the host's web log, and the table of hooks that sends them.
//
// Hooks    an event is sent immediately before the body of the named operation, each time it is entered, whatever comes
//          of it. A hook attached twice sends twice.
// Threads  sends return at once and may come from any thread; hooks run on the thread of the hooked operation.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "toolkit/NSString.h"

class RVProductWebLogHelper {
public:
    [[nodiscard]] static RVProductWebLogHelper &shareInstance();
    // `result` absent where the event has no third field.
    void asyncSendGALog_andSubEvent_withResult(const NSString &event, const NSString &subEvent, const NSString &result);
    // Where the events go; an empty sink drops them (the start).
    void setSink(std::function<void(const NSString &event, const NSString &subEvent, const NSString &result)> sink);

private:
    RVProductWebLogHelper() = default;
    struct State;
    static State &state();
};

// Class-wide hooks before operations, found by class name and selector.
class AspectHooks {
public:
    // Attaches a block that runs before the operation's own body (option 2).
    static void aspect_hookSelector_withOptions_usingBlock(std::string_view className, std::string_view selector, int options,
                                                           std::function<void()> block);
    // The one line at the entry of a reported operation.
    static void enter(std::string_view className, std::string_view selector);
    // Takes all hooks off; for the end of a test.
    static void reset();
};

#define JOIN_POINT(Class, selector) AspectHooks::enter(#Class, selector)
