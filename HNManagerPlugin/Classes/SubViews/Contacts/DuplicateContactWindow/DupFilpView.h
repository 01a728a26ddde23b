// A view whose y grows downwards. Threads: main.
#pragma once

#include "toolkit/views/NSView.h"

class DupFilpView : public NSView {
public:
    HN_DECLARE_CLASS_TABLE
    [[nodiscard]] bool isFlipped() const override { return true; }
};
