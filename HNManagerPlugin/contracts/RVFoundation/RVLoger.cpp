#include "HNManagerPlugin/contracts/RVFoundation/RVLoger.h"

#include "toolkit/services/NSLog.h"

void RVLoger::log_withInfoFile_func_line(const NSString &text, const char *file, const char *function, int line) {
    NSLog("%@:%d %@: %@", NSString(file).lastPathComponent(), line, function, text);
}
