// The system log: lines for developers, without effect on behaviour. Any thread.
#pragma once

#include <functional>

#include "toolkit/NSString.h"

// Where the lines go; an empty sink drops them (the start).
void setLogSink(std::function<void(const NSString &line)> sink);
void writeLogLine(const NSString &line);

template <class... Arguments> void NSLog(const NSString &format, Arguments &&...arguments) {
    writeLogLine(NSString::stringWithFormat(format, std::forward<Arguments>(arguments)...));
}
