// One page of the full-size preview. The preview asks for `picture` and, while that is null, has it fetched.
#pragma once

#include <functional>

#include "toolkit/NSImage.h"
#include "toolkit/NSObject.h"

class LZPageItem : public NSObject {
public:
    // Null while there is none. Main thread.
    [[nodiscard]] virtual std::shared_ptr<NSImage> picture() { return nullptr; }
    // Calls `complete` once, with whether there is a picture now: at once, on the calling thread, where there is one
    // already; else on the main queue, later.
    virtual void fetchPhotoWithCompletionHandle(std::function<void(bool)> complete) {
        if (complete)
            complete(false);
    }
    HN_DECLARE_CLASS_TABLE
};
