// The product's log, with the place in the source. No effect on behaviour. Any thread.
#pragma once

#include "toolkit/NSString.h"

class RVLoger {
public:
    static void log_withInfoFile_func_line(const NSString &text, const char *file, const char *function, int line);
};

#define RVLog(text) RVLoger::log_withInfoFile_func_line((text), __FILE__, __func__, __LINE__)
