// A row of the conversation pane: a bubble with a text, or a picture with its file's name, the sender's name above it in a
// group; or a caption in the middle.
//
// Place     the bubble stands at the trailing edge for a sent message, at the leading edge for a received one, both mirrored
//           from right to left; it is as wide as its content, text wraps at HNMessageDetailViewController::kTextWidth.
// Value     a HNDetailMessage. Threads: main.
#pragma once

#include "HNManagerPlugin/Classes/SubViews/Message/MessageTableView/MessageBubbleView.h"
#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/HNDetailMessage.h"
#include "toolkit/tables/NSTableCellView.h"
#include "toolkit/views/NSImageView.h"

class MessageCellView : public NSTableCellView {
public:
    HN_DECLARE_CLASS_TABLE
    enum class Content { text, attachment, bigPicture, timeCaption, failureCaption };
    struct Form {
        Content content = Content::text;
        bool isSent = false;
        bool hasSender = false;
    };

    void initWithFrame(const NSRect &frame) override;
    // Once, before the first value.
    void setForm(const Form &form);
    void setObjectValue(Value value) override;
    void layout() override;

private:
    void show(const HNDetailMessage &message);
    void layoutBubble();
    void layoutCaption();
    [[nodiscard]] bool isCaption() const { return form_.content >= Content::timeCaption; }
    [[nodiscard]] bool hasBubble() const { return form_.content == Content::text || form_.content == Content::attachment; }

    Form form_;
    std::shared_ptr<MessageBubbleView> bubble_;
    std::shared_ptr<NSTextField> sender_;
    NSSize text_, picture_;   // of what is shown
};
