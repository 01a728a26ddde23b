#include "HNManagerPlugin/Classes/SubViews/Message/MessageTableView/MessageBubbleView.h"

HN_CLASS_TABLE(MessageBubbleView, NSView, .key("isSent", &MessageBubbleView::isSent))

namespace {

constexpr double kRadius = 14.0;

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
    const bool isTailRight = isSent_ == (userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::leftToRight);
    const NSRect all = bounds();
    const auto color = colorOf(isSent_);
    canvas.fillRoundedRect({isTailRight ? 0 : kTail, 0, all.size.width - kTail, all.size.height}, kRadius, color);
    const double tip = isTailRight ? all.maxX() : 0, root = isTailRight ? all.maxX() - kTail - kRadius : kTail + kRadius;
    canvas.fillPolygon({{tip, all.maxY()}, {root, all.maxY()}, {isTailRight ? all.maxX() - kTail : kTail, all.maxY() - kRadius}}, color);
}
