// Turns a picture file that browsers do not show (HEIC) into a JPEG file. A host installs who does it; without one nothing
// is converted.
//
// Errors    false: no file appears at `to`.
// Threads   any, one call after the other per caller; blocks.
#pragma once

#include <functional>

#include "toolkit/NSString.h"

class PictureConverter {
public:
    using Convert = std::function<bool(const NSString &from, const NSString &to)>;
    // Empty: none.
    static void install(Convert convert);
    static bool convert(const NSString &from, const NSString &to);
};
