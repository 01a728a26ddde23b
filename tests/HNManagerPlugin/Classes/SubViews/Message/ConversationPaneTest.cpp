// Rows of a conversation: their forms, heights and pictures.
#include <gtest/gtest.h>

#include "HNManagerPlugin/Classes/SubViews/Message/MessageTableView/HNMessageDetailViewController.h"
#include "HNManagerPlugin/Classes/SubViews/Message/MessageTableView/MessageCellView.h"
#include "tests/support/PluginWorld.h"
#include "toolkit/views/NSWindow.h"

namespace {

// A picture of that size: the head of a PNG.
std::shared_ptr<NSImage> picture(unsigned width, unsigned height) {
    std::string bytes("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
    for (const unsigned side : {width, height})
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes += static_cast<char>(side >> shift & 0xFFU);
    bytes += std::string(9, '\0');
    return NSImage::withData(std::make_shared<const NSData>(bytes));
}

std::string sizeOf(const std::shared_ptr<NSImage> &image) {
    if (!image)
        return "none";
    return std::to_string(static_cast<int>(image->size().width)) + "x" + std::to_string(static_cast<int>(image->size().height));
}

class Pane : public testing::Test {
protected:
    Pane() {
        pane_ = alloc<HNMessageDetailViewController>();
        pane_->initWithNibName_bundle("HNMessageDetailViewController", nullptr);
        window_ = make<NSWindow>(NSRect(0, 0, 620, 500));
        window_->setContentView(pane_->view());
        table_ = pane_->tableView.lock();
    }
    ~Pane() override {
        window_->close();
        table_ = nullptr, window_ = nullptr, pane_ = nullptr;
        world_.settle();
    }
    void show(const std::shared_ptr<HNDetailMessage> &row) { pane_->showMessages({row}); }
    [[nodiscard]] double height(const std::shared_ptr<HNDetailMessage> &row) {
        show(row);
        return pane_->tableView_heightOfRow(*table_, 0);
    }
    [[nodiscard]] std::shared_ptr<MessageCellView> cell(const std::shared_ptr<HNDetailMessage> &row) {
        show(row);
        return std::dynamic_pointer_cast<MessageCellView>(table_->viewAtColumn_row_makeIfNecessary(0, 0, true));
    }

    PluginWorld world_;
    std::shared_ptr<HNMessageDetailViewController> pane_;
    std::shared_ptr<NSWindow> window_;
    std::shared_ptr<NSTableView> table_;
};

std::shared_ptr<HNDetailMessage> rowOf(bool isSend, bool isGroup, bool isAttachment, std::shared_ptr<NSImage> icon = nullptr) {
    auto row = make<HNDetailMessage>();
    row->isSend = isSend;
    row->isGroupCommunication = isGroup;
    row->isAttachment = isAttachment;
    row->attachmentIcon = std::move(icon);
    row->content = row->attachmentFileName = "";
    return row;
}

// ---------------------------------------------------------------- forms and heights

TEST_F(Pane, eachRowHasItsFormAndHeight) {
    const struct {
        const char *name;
        bool isSend, isGroup, isAttachment;
        unsigned width, height;   // of the picture; 0 for none
        const char *identifier;
        double heightOfRow;   // with an empty text
    } rows[] = {{"sent", true, false, false, 0, 0, "sendMessageID", 35},
                {"sentInGroup", true, true, false, 0, 0, "sendMessageID", 35},
                {"received", false, false, false, 0, 0, "receiveMessageID", 35},
                {"receivedInGroup", false, true, false, 0, 0, "receiveMessageGroupID", 65},
                {"sentPicture", true, false, true, 100, 80, "MessageAttachment_Send", 110},
                {"sentPictureOf64", true, false, true, 64, 64, "MessageAttachment_Send", 110},
                {"sentPictureOf63", true, false, true, 63, 63, "MessageAttachment_Send", 108},
                {"sentWithoutPicture", true, false, true, 0, 0, "MessageAttachment_Send", 45},
                {"sentWide", true, false, true, 300, 100, "MessageAttachment_Send_BigSize", 47},
                {"sentHigh", true, false, true, 100, 300, "MessageAttachment_Send_BigSize", 143},
                {"sentPictureInGroup", true, true, true, 100, 80, "MessageAttachment_Send", 145},
                {"sentWideInGroup", true, true, true, 300, 100, "MessageAttachment_Send_BigSize", 82},
                {"receivedPicture", false, false, true, 299, 100, "MessageAttachment_Rec", 110},
                {"receivedWide", false, false, true, 128, 30, "MessageAttachment_Rec_BigSize", 45},
                {"receivedPictureInGroup", false, true, true, 100, 80, "MessageAttachmentGroup_Rec", 145},
                {"receivedSmallPictureInGroup", false, true, true, 20, 20, "MessageAttachmentGroup_Rec", 100},
                {"receivedHighInGroup", false, true, true, 10, 90, "MessageAttachmentGroup_Rec_BigSize", 140}};
    for (const auto &one : rows) {
        const auto row = rowOf(one.isSend, one.isGroup, one.isAttachment, one.width > 0 ? picture(one.width, one.height) : nullptr);
        EXPECT_EQ(height(row), one.heightOfRow) << one.name;
        EXPECT_EQ(cell(row)->identifier(), one.identifier) << one.name;
    }
}

TEST_F(Pane, captionsHaveFixedHeightsThatAreNotKept) {
    const auto time = rowOf(true, true, false), failed = rowOf(false, false, false);
    time->isTimeOnly = time->isFailedOnly = true;   // the time wins
    failed->isFailedOnly = true;
    EXPECT_EQ(height(time), 50);
    EXPECT_EQ(cell(time)->identifier(), "MessageTime");
    EXPECT_EQ(height(failed), 25);
    EXPECT_EQ(cell(failed)->identifier(), "MessageNotDelivered");
    EXPECT_EQ(time->textHeight, 0);
    EXPECT_EQ(failed->textHeight, 0);
}

TEST_F(Pane, textsWrapAndAreMeasuredOnce) {
    const auto row = rowOf(true, false, false);
    row->content = "one line";
    EXPECT_EQ(height(row), 35 + 17);
    EXPECT_EQ(row->textHeight, 52);
    row->content = "a much longer text that would take more lines if it were measured again";
    EXPECT_EQ(height(row), 52);
    row->textHeight = 0.000005;   // as good as not measured
    EXPECT_EQ(height(row), 35 + 3 * 17);
}

TEST_F(Pane, anAttachmentIsMeasuredByItsFileName) {
    const auto row = rowOf(true, false, true);
    row->content = "a caption\nof\nmany\nlines";
    row->attachmentFileName = "a.pdf";
    EXPECT_EQ(height(row), 45 + 17);
}

// ---------------------------------------------------------------- pictures

TEST(Crops, cutTheCornerOfExtremePictures) {
    using Controller = HNMessageDetailViewController;
    const struct {
        unsigned width, height;
        bool isBig;
        const char *fixed;
    } rows[] = {{300, 100, true, "128x32"}, {299, 100, false, "299x100"}, {100, 300, true, "32x128"}, {100, 299, false, "100x299"},
                {128, 30, true, "128x30"}, {100, 30, true, "100x30"}, {20, 1000, true, "20x128"}, {3, 1, true, "3x1"}, {2, 1, false, "2x1"}};
    for (const auto &[width, height, isBig, expected] : rows) {
        const auto image = picture(width, height), fixed = Controller::fixImageBigSize(image);
        EXPECT_EQ(Controller::isImageBigSize(image), isBig) << expected;
        EXPECT_EQ(sizeOf(fixed), expected);
        if (fixed != image) {
            EXPECT_EQ(fixed->crop()->origin, NSPoint()) << expected;
        }
        EXPECT_EQ(Controller::fixImageBigSize(fixed), fixed) << expected << ": once is enough";
    }
}

TEST(Crops, nothingStaysNothing) {
    EXPECT_FALSE(HNMessageDetailViewController::isImageBigSize(nullptr));
    EXPECT_EQ(HNMessageDetailViewController::fixImageBigSize(nullptr), nullptr);
    EXPECT_EQ(HNMessageDetailViewController::doFilter_withRect(nullptr, {0, 0, 9, 9}), nullptr);
    const auto broken = NSImage::withData(std::make_shared<const NSData>("no picture"));
    EXPECT_FALSE(HNMessageDetailViewController::isImageBigSize(broken));
    EXPECT_EQ(HNMessageDetailViewController::fixImageBigSize(broken), broken);
}

TEST_F(Pane, theViewOfABigPictureShowsItsCorner) {
    const auto row = rowOf(false, false, true, picture(900, 100));
    const auto shown = cell(row);
    EXPECT_EQ(sizeOf(row->attachmentIcon), "128x32");
    EXPECT_EQ(shown->imageView()->image(), row->attachmentIcon);
    EXPECT_EQ(shown->imageView()->frame().size, NSSize(128, 32));
}

// ---------------------------------------------------------------- place of a bubble

TEST_F(Pane, bubblesStandAtTheSideOfWhoeverWrote) {
    const auto sent = rowOf(true, false, false), received = rowOf(false, true, false);
    sent->content = received->content = "hello";
    received->personName = "Ann";
    const auto bubble = [&](const std::shared_ptr<HNDetailMessage> &row) {
        const auto shown = cell(row);
        const auto view = shown->subviews().front();
        EXPECT_TRUE(view->isKindOf<MessageBubbleView>());
        const NSRect text = shown->textField()->frame();
        EXPECT_GE(text.minX(), view->frame().minX());
        EXPECT_LE(text.maxX(), view->frame().maxX());
        EXPECT_LE(view->frame().maxY(), shown->bounds().size.height);
        EXPECT_EQ(shown->viewWithIdentifier("MessageSender")->isHidden(), row->isSend);
        return view->frame();
    };
    const double width = table_->frame().size.width;
    EXPECT_EQ(bubble(sent).maxX(), width - 16);
    EXPECT_EQ(bubble(received).minX(), 16);
}

TEST_F(Pane, aLongThreadMakesViewsForWhatShowsAlone) {
    NSArray::Items rows;
    for (int i = 0; i < 100'000; ++i) {
        rows.push_back(rowOf(i % 2 == 0, false, false));
        std::static_pointer_cast<HNDetailMessage>(rows.back())->content = "message " + std::to_string(i);
    }
    pane_->showMessages(NSArray(rows));
    EXPECT_LT(table_->numberOfRowViews(), 30U);
    const NSRect last = table_->rectOfRow(99'999);
    EXPECT_GE(table_->viewport().maxY(), last.maxY());
    const auto measured = std::ranges::count_if(rows, [](const id &row) { return static_cast<HNDetailMessage &>(*row).textHeight > 0; });
    EXPECT_LT(measured, 100);
}

}   // namespace
