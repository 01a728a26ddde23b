// What a controller tells about its rows.
#pragma once

#include "toolkit/lists/NSIndexSet.h"

struct ListChange {
    enum class Kind {
        inserted,     // `indexes` count after the change: a row put before row 0 of three is {0}, appended it is {3}
        removed,      // `indexes` count before the change: the last of three rows is {2}
        rearranged,   // any row may have come, gone or moved; `indexes` is empty
    };
    Kind kind = Kind::rearranged;
    NSIndexSet indexes;
};
