// The rounded area behind a message, with a small tail at its lower corner on the side of whoever wrote it.
// Threads: main.
#pragma once

#include "toolkit/views/NSView.h"

class MessageBubbleView : public NSView {
public:
    HN_DECLARE_CLASS_TABLE
    static constexpr double kTail = 5.0;   // points on the writer's side of the frame that the tail takes

    // At the leading side for a received message, at the trailing side for a sent one.
    void setSent(bool sent);
    [[nodiscard]] bool isSent() const { return isSent_; }
    void drawRect(const NSRect &rect, Canvas &canvas) override;
    [[nodiscard]] bool isFlipped() const override { return true; }

private:
    bool isSent_ = false;
};
