// The scroll bars of a scroll view. The view's offset is the truth: the bars follow it, and a person's pull goes through
// scrollToPoint. Threads: main.
#pragma once

#include "host/window/NativePart.h"

class NSScrollView;
class QScrollBar;

namespace host {

class ScrollPart final : public NativePart {
public:
    static constexpr int kWidth = 14;   // over the edge of the content, as views leave no room for it
    [[nodiscard]] static std::unique_ptr<NativePart> make(ViewSurface &surface, const std::shared_ptr<NSView> &view);
    ScrollPart(ViewSurface &surface, const std::shared_ptr<NSScrollView> &view);
    ~ScrollPart() override;

    void place(const QRectF &rect, const QRectF &visible) override;

private:
    void pulled(bool vertical, int value);
    std::weak_ptr<NSScrollView> view_;
    QScrollBar *vertical_, *horizontal_;
    bool isFollowing_ = false;
};

}  // namespace host
