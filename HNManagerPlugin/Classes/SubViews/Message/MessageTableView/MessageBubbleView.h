// The rounded area behind a message, a little sharper at its lower corner on the side of whoever wrote it.
// Threads: main.
#pragma once

#include "toolkit/views/NSView.h"

class MessageBubbleView : public NSView {
public:
    HN_DECLARE_CLASS_TABLE

    // The trailing side is the user's, the leading one that of the others.
    void setSent(bool sent);
    [[nodiscard]] bool isSent() const { return isSent_; }
    void drawRect(const NSRect &rect, Canvas &canvas) override;
    [[nodiscard]] bool isFlipped() const override { return true; }

private:
    bool isSent_ = false;
};
