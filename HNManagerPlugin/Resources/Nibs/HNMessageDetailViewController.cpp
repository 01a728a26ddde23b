// The conversation pane: one column of bubbles and captions, a prototype for each form of a row.
#include "HNManagerPlugin/Classes/SubViews/Message/MessageTableView/HNMessageDetailViewController.h"

#include "HNManagerPlugin/Classes/SubViews/Message/MessageTableView/MessageCellView.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/views/NSScrollView.h"

namespace {

constexpr double kWidth = 600, kHeight = 511, kUsualRow = 51;   // a message of one line

using Content = MessageCellView::Content;
struct RowForm {
    const char *identifier;
    MessageCellView::Form form;
};
constexpr RowForm kForms[] = {
    {"MessageTime", {Content::timeCaption, false, false}},
    {"MessageNotDelivered", {Content::failureCaption, false, false}},
    {"sendMessageID", {Content::text, true, false}},
    {"MessageAttachment_Send", {Content::attachment, true, false}},
    {"MessageAttachment_Send_BigSize", {Content::bigPicture, true, false}},
    {"receiveMessageID", {Content::text, false, false}},
    {"MessageAttachment_Rec", {Content::attachment, false, false}},
    {"MessageAttachment_Rec_BigSize", {Content::bigPicture, false, false}},
    {"receiveMessageGroupID", {Content::text, false, true}},
    {"MessageAttachmentGroup_Rec", {Content::attachment, false, true}},
    {"MessageAttachmentGroup_Rec_BigSize", {Content::bigPicture, false, true}},
};

std::shared_ptr<NSTableView> conversationTable(Nib &nib) {
    auto table = nib.make<NSTableView>();
    table->setIdentifier("ConversationTable");
    table->setAccessibilityName(localized("MessageView_DetailName"));
    table->setHeaderView(nullptr);
    table->setIntercellSpacing({0, 0});
    table->setRowHeight(kUsualRow);
    table->setBackgroundColor(NSColor::whiteColor());
    auto column = make<NSTableColumn>(NSString("message"));
    column->setWidth(kWidth);
    column->setEditable(false);
    table->addTableColumn(column);
    for (const RowForm &row : kForms)
        table->registerMaker_forIdentifier(
            [&row] {
                auto cell = make<MessageCellView>(NSRect(0, 0, kWidth, kUsualRow));
                cell->setForm(row.form);
                return cell;
            },
            row.identifier);
    return table;
}

void build(Nib &nib) {
    const auto owner = nib.owner<HNMessageDetailViewController>();
    const auto controller = nib.make<NSArrayController>();
    const auto table = conversationTable(nib);
    const auto scroll = nib.make<NSScrollView>(NSRect(0, 0, kWidth, kHeight));
    scroll->setIdentifier("ConversationView");
    scroll->setDocumentView(table);
    scroll->setHasVerticalScroller(true);
    nib.setView(scroll);
    if (!owner)
        return;
    controller->setContent(owner->messageArray);
    table->bindToArrayController(controller);
    owner->arrayController = controller;
    owner->tableView = table;
}

const NibRegistry::Entry entry("HNMessageDetailViewController", build);

}   // namespace
