// The old file at a path that a person chose to replace: moved aside before the flow writes, brought back over whatever
// the flow left there, unless a whole new file was written.
//
// Life      SetAsideFile::hold(path) moves it; settle(path, whole) decides. What nobody settled is settled when the same
//           path is held again or the program ends: a file that stands at the path then counts as whole, unless failed(path)
//           or cancelled was told before.
// Place     beside the file, ".<name>.replaced-<process>-<n>", so that moving never copies. A crash leaves it there.
// Errors    a file that cannot be moved stays where it is: hold gives false, the flow writes over it as it may.
// Threads   any.
#pragma once

#include <functional>

#include "toolkit/NSString.h"

class SetAsideFile {
public:
    // False where no file stands there or it cannot be moved.
    static bool hold(const NSString &path);
    [[nodiscard]] static bool isHeld(const NSString &path);
    // The writer of `path` failed or was cancelled: what stands there is no whole file.
    static void failed(const NSString &path);
    // Hears of each failed path, held or not, on the thread that told it. Empty: nobody.
    static void setFailureListener(std::function<void(const NSString &path)> listener);
    // The end of the flow. `whole`: a whole new file was written; else, or where failed was told, or where nothing stands at
    // the path, the old one comes back. False where bringing back failed (the old file then still lies beside).
    static bool settle(const NSString &path, bool whole);
    static bool settleAll();
};
