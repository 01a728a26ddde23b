#include "HNManagerPlugin/Classes/SubViews/Message/MessageTableView/HNMessageDetailViewController.h"

#include <algorithm>


HN_CLASS_TABLE(HNMessageDetailViewController, RVTableController,
               .key("messageArray", &HNMessageDetailViewController::messageArray)
                   .key("arrayController", &HNMessageDetailViewController::arrayController))

namespace {

constexpr double kMeasured = 0.000006;   // heights below count as not measured

}   // namespace

void HNMessageDetailViewController::init() {
    RVTableController::init();
    messageArray = make<NSMutableArray>();
}

void HNMessageDetailViewController::initWithNibName_bundle(NSString nibName, std::shared_ptr<NSBundle> bundle) {
    RVTableController::initWithNibName_bundle(std::move(nibName), std::move(bundle));
    messageArray = make<NSMutableArray>();
}

void HNMessageDetailViewController::setupUI() {
    calculateTextTField = make<NSTextField>();
    calculateTextTField->setBordered(false);
    calculateTextTField->setHidden(true);
    calculateFont = NSFont::fontWithName_size("Helvetica Neue", 13.0);
}

void HNMessageDetailViewController::showMessages(const NSArray &messages) {
    const auto controller = arrayController.lock();
    const auto rearrange = [&] {
        if (controller)
            controller->rearrangeObjects();
    };
    if (!messageArray->isEmpty()) {
        messageArray->removeAllObjects();
        rearrange();
    }
    messageArray->addObjectsFromArray(messages);
    rearrange();
    tell(tableView, [](NSTableView &table) { table.scrollRowToVisible(table.numberOfRows() - 1); });
}

std::shared_ptr<HNDetailMessage> HNMessageDetailViewController::messageAtRow(std::int64_t row) const {
    return row < 0 ? nullptr : messageArray->at<HNDetailMessage>(static_cast<std::size_t>(row));
}

// ---------------------------------------------------------------- row views

namespace {

// By chat and direction. A sent row has no form of its own in a group.
struct RowViews {
    const char *text, *attachment, *bigPicture;
};
constexpr RowViews kSent{"sendMessageID", "MessageAttachment_Send", "MessageAttachment_Send_BigSize"};
constexpr RowViews kReceived{"receiveMessageID", "MessageAttachment_Rec", "MessageAttachment_Rec_BigSize"};
constexpr RowViews kReceivedInGroup{"receiveMessageGroupID", "MessageAttachmentGroup_Rec", "MessageAttachmentGroup_Rec_BigSize"};

const char *rowViewOf(const HNDetailMessage &message, bool isBig) {
    if (message.isTimeOnly)
        return "MessageTime";
    if (message.isFailedOnly)
        return "MessageNotDelivered";
    const RowViews &views = message.isSend ? kSent : message.isGroupCommunication ? kReceivedInGroup : kReceived;
    return !message.isAttachment ? views.text : isBig ? views.bigPicture : views.attachment;
}

}   // namespace

std::shared_ptr<NSView> HNMessageDetailViewController::tableView_viewForTableColumn_row(NSTableView &table,
                                                                                        const std::shared_ptr<NSTableColumn> &,
                                                                                        std::int64_t row) {
    const auto message = messageAtRow(row);
    if (!message)
        return nullptr;
    const bool isBig = message->isAttachment && isImageBigSize(message->attachmentIcon);
    if (isBig)
        message->attachmentIcon = fixImageBigSize(message->attachmentIcon);
    return table.makeViewWithIdentifier_owner(rowViewOf(*message, isBig), selfOf(this));
}

// ---------------------------------------------------------------- pictures

namespace {

constexpr std::int64_t kBigRatio = 3;
constexpr double kLongSide = 128, kShortSide = 32;

enum class Proportions { usual, wide, high };

Proportions proportionsOf(const std::shared_ptr<NSImage> &image) {
    const NSSize size = image ? image->size() : NSSize{};
    const auto width = static_cast<std::int64_t>(size.width), height = static_cast<std::int64_t>(size.height);
    if (width < 1 || height < 1)   // nothing that could be shown
        return Proportions::usual;
    return width / height >= kBigRatio ? Proportions::wide : height / width >= kBigRatio ? Proportions::high : Proportions::usual;
}

}   // namespace

bool HNMessageDetailViewController::isImageBigSize(const std::shared_ptr<NSImage> &image) {
    return proportionsOf(image) != Proportions::usual;
}

std::shared_ptr<NSImage> HNMessageDetailViewController::fixImageBigSize(const std::shared_ptr<NSImage> &image) {
    switch (proportionsOf(image)) {
    case Proportions::wide: return doFilter_withRect(image, {0, 0, kLongSide, kShortSide});
    case Proportions::high: return doFilter_withRect(image, {0, 0, kShortSide, kLongSide});
    case Proportions::usual: break;
    }
    return image;
}

std::shared_ptr<NSImage> HNMessageDetailViewController::doFilter_withRect(const std::shared_ptr<NSImage> &image, NSRect rect) {
    if (!image)
        return nullptr;
    const NSSize size = image->size();
    rect.size = {std::min(rect.size.width, size.width), std::min(rect.size.height, size.height)};
    // one that has been cropped already stays, so that showing a row again and again costs nothing
    const bool isWhole = rect.origin == NSPoint{} && rect.size == size;
    return isWhole || rect.size.width < 1 || rect.size.height < 1 ? image : image->cropped(rect);
}

// ---------------------------------------------------------------- heights

namespace {

// Points around the text; `p` is the picture's height.
double heightAroundText(const HNDetailMessage &message, bool isBig, double p) {
    constexpr double kFullPicture = 64;
    const bool isGroup = message.isGroupCommunication;
    if (!message.isAttachment)
        return isGroup && !message.isSend ? 65 : 35;
    if (isBig)
        return p + (isGroup ? 50 : 15);
    if (p >= kFullPicture)
        return isGroup ? 145 : 110;
    return p + (isGroup ? 80 : 45);
}

}   // namespace

double HNMessageDetailViewController::tableView_heightOfRow(NSTableView &table, std::int64_t row) {
    constexpr double kTimeRow = 50, kNotDeliveredRow = 25;
    const auto message = messageAtRow(row);
    if (!message)
        return table.rowHeight();
    if (message->textHeight >= kMeasured)
        return message->textHeight;
    if (message->isTimeOnly)
        return kTimeRow;
    if (message->isFailedOnly)
        return kNotDeliveredRow;
    const NSString &text = message->isAttachment ? message->attachmentFileName : message->content;
    const auto icon = message->isAttachment ? fixImageBigSize(message->attachmentIcon) : nullptr;
    const double height = getHeightByWidth_title_font(kTextWidth, text, calculateFont) +
                          heightAroundText(*message, message->isAttachment && isImageBigSize(message->attachmentIcon),
                                           icon ? icon->size().height : 0);
    message->textHeight = height;
    return height;
}

double HNMessageDetailViewController::getHeightByWidth_title_font(double width, const NSString &title, const std::shared_ptr<NSFont> &font) {
    if (title.isEmpty() || !calculateTextTField)
        return 0;
    calculateTextTField->setFont(font);
    calculateTextTField->setPreferredMaxLayoutWidth(width);
    calculateTextTField->setStringValue(title);
    return calculateTextTField->intrinsicContentSize().height;
}
