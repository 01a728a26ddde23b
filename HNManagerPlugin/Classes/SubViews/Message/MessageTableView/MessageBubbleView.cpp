#include "HNManagerPlugin/Classes/SubViews/Message/MessageTableView/MessageBubbleView.h"

HN_CLASS_TABLE(MessageBubbleView, NSView, .key("isSent", &MessageBubbleView::isSent))

namespace {

constexpr double kRadius = 14.0, kWritersRadius = 4.0;   // of the corners; of the lower one on the writer's side

std::shared_ptr<NSColor> colorOf(bool isSent) {
    static const auto sent = NSColor::colorWithSRGBRed_green_blue_alpha(10 / 255.0, 132 / 255.0, 204 / 255.0, 1.0);
    static const auto received = NSColor::colorWithSRGBRed_green_blue_alpha(229 / 255.0, 231 / 255.0, 235 / 255.0, 1.0);
    return isSent ? sent : received;
}

}   // namespace

void MessageBubbleView::setSent(bool sent) {
    isSent_ = sent;
    setNeedsDisplay();
}

void MessageBubbleView::drawRect(const NSRect &, Canvas &canvas) {
    const bool isCornerRight = isSent_ == (userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::leftToRight);
    const NSRect all = bounds();
    const auto color = colorOf(isSent_);
    canvas.fillRoundedRect(all, kRadius, color);
    canvas.fillRoundedRect({isCornerRight ? all.maxX() - kRadius : 0, all.maxY() - kRadius, kRadius, kRadius}, kWritersRadius, color);
}
