#include "HNManagerPlugin/Classes/SubViews/Message/MessageTableView/MessageCellView.h"

#include <algorithm>
#include <cmath>

#include "HNManagerPlugin/Classes/SubViews/Message/MessageTableView/HNMessageDetailViewController.h"
#include "toolkit/TextMeasurer.h"

HN_CLASS_TABLE(MessageCellView, NSTableCellView)

namespace {

constexpr double kFontSize = 13, kSenderSize = 11;
constexpr double kEdge = 16;   // from the pane's edge to the bubble
constexpr double kPadX = 12, kPadY = 8;   // from the bubble's edge to its content
constexpr double kTop = 7;   // above the bubble
constexpr double kSender = 18;   // for the sender's name above the bubble
constexpr double kPicture = 64, kPictureGap = 6;

std::shared_ptr<NSColor> shade(double white) { return NSColor::colorWithCalibratedWhite_alpha(white, 1.0); }

std::shared_ptr<NSTextField> lineOf(const char *identifier, double size) {
    auto line = NSTextField::labelWithString("");
    line->setIdentifier(identifier);
    line->setFont(NSFont::fontWithName_size("Helvetica Neue", size));
    return line;
}

// A picture keeps its proportions; a big one has been cropped to its size already.
NSSize shownSize(const std::shared_ptr<NSImage> &image, bool isBig) {
    const NSSize size = image ? image->size() : NSSize{};
    if (size.width < 1 || size.height < 1)
        return {};
    const double scale = isBig ? 1.0 : std::min(1.0, kPicture / size.height);
    return {std::round(size.width * scale), std::round(size.height * scale)};
}

}   // namespace

void MessageCellView::initWithFrame(const NSRect &frame) {
    NSTableCellView::initWithFrame(frame);
    bubble_ = make<MessageBubbleView>();
    sender_ = lineOf("MessageSender", kSenderSize);
    sender_->setLineBreakMode(LineBreak::truncateTail);
    sender_->setTextColor(shade(0.45));
    const auto picture = make<NSImageView>();
    picture->setIdentifier("MessagePicture");
    picture->setImageScaling(NSImageScaling::proportionallyUpOrDown);
    const auto text = lineOf("MessageText", kFontSize);
    for (const std::shared_ptr<NSView> &view : List{bubble_, sender_, picture, text})
        addSubview(view);
    setImageView(picture);
    setTextField(text);
}

void MessageCellView::setForm(const Form &form) {
    form_ = form;
    bubble_->setSent(form.isSent);
    bubble_->setHidden(!hasBubble());
    sender_->setHidden(!form.hasSender);
    imageView()->setHidden(form.content != Content::attachment && form.content != Content::bigPicture);
    if (isCaption()) {
        textField()->setAlignment(NSTextAlignment::center);
        textField()->setFont(NSFont::fontWithName_size("Helvetica Neue", kSenderSize));
        textField()->setTextColor(form.content == Content::timeCaption ? shade(0.5) : NSColor::redColor());
    } else {
        textField()->setTextColor(hasBubble() && form.isSent ? NSColor::whiteColor() : shade(hasBubble() ? 0.1 : 0.45));
    }
}

void MessageCellView::setObjectValue(Value value) {
    const auto message = std::dynamic_pointer_cast<HNDetailMessage>(value.object());
    NSTableCellView::setObjectValue(std::move(value));
    if (message)
        show(*message);
}

void MessageCellView::show(const HNDetailMessage &message) {
    const bool isAttachment = form_.content == Content::attachment || form_.content == Content::bigPicture;
    const NSString &text = form_.content == Content::timeCaption ? message.date
                         : isAttachment                          ? message.attachmentFileName
                                                                 : message.content;
    textField()->setStringValue(text);
    text_ = text.isEmpty() ? NSSize{}
                           : TextMeasurer::current()->boundingRect(text, textField()->font(), HNMessageDetailViewController::kTextWidth);
    sender_->setStringValue(message.personName);
    picture_ = isAttachment ? shownSize(message.attachmentIcon, form_.content == Content::bigPicture) : NSSize{};
    imageView()->setImage(isAttachment ? message.attachmentIcon : nullptr);
    layout();
}

void MessageCellView::layout() {
    NSTableCellView::layout();
    if (!textField())
        return;
    if (isCaption())
        layoutCaption();
    else
        layoutBubble();
}

void MessageCellView::layoutCaption() {
    const double height = std::ceil(text_.height);
    const double top = form_.content == Content::timeCaption ? std::max(0.0, (bounds().size.height - height) / 2) : 2;
    textField()->setFrame({kEdge, top, std::max(0.0, bounds().size.width - 2 * kEdge), height});
}

// From the top: sender, picture, text; all beside the edge of whoever wrote it.
void MessageCellView::layoutBubble() {
    const double padX = hasBubble() ? kPadX : 0, padY = hasBubble() ? kPadY : 0;
    const double textWidth = text_.width > 0 ? std::ceil(text_.width) + 1 : 0;   // measured widths may lose a fraction
    const double inside = std::max(textWidth, picture_.width);
    const double width = inside + 2 * padX;
    const double gap = picture_.height > 0 && text_.height > 0 ? kPictureGap : 0;
    const double height = picture_.height + (hasBubble() ? gap : 0) + std::ceil(text_.height) + 2 * padY;
    const double left = form_.isSent ? bounds().size.width - kEdge - width : kEdge;
    const double top = hasBubble() ? kTop + (form_.hasSender ? kSender : 0) : 3 + (form_.hasSender ? kSender : 0);
    const double contentLeft = left + padX;
    const double freeWidth = std::max(0.0, bounds().size.width - 2 * kEdge);

    sender_->setFrame({kEdge + padX, top - kSender + 1, std::max(0.0, freeWidth - 2 * padX), kSender - 3});
    bubble_->setFrame({left, top, width, height});
    const double pictureLeft = form_.isSent && !hasBubble() ? contentLeft + inside - picture_.width : contentLeft;
    imageView()->setFrame({pictureLeft, top + padY, picture_.width, picture_.height});
    const double textTop = top + padY + picture_.height + (hasBubble() ? gap : 0);
    const double textLeft = form_.isSent && !hasBubble() ? contentLeft + inside - textWidth : contentLeft;
    textField()->setFrame({textLeft, textTop, textWidth, std::ceil(text_.height)});
}
