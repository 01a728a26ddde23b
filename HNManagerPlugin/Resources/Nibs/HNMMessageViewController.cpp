// The message category: the filter by the user's own numbers and the search above, the threads at the left, the conversation
// of the selected one at the right, status line, export and refresh at the foot.
//
// Panels leave the foot free, so that a load can be begun anew at any time. There is no panel for messages kept in the cloud: a
// refresh shows such a panel, and nothing but its own retry button would take it away again.
#include "HNManagerPlugin/Classes/SubViews/Message/ViewManager/HNMMessageViewManager.h"
#include "HNManagerPlugin/Resources/Nibs/NibParts.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/views/NSImageView.h"
#include "toolkit/views/NSPopUpButton.h"

namespace {

using namespace nibParts;
using MessageManager = HNMMessageViewManager;

constexpr double kThreads = 400, kConversation = kWidth - kThreads, kHead = 53, kPicture = 40;

std::shared_ptr<NSColor> shade(double white) { return NSColor::colorWithCalibratedWhite_alpha(white, 1.0); }

// ---------------------------------------------------------------- above

std::shared_ptr<NSView> filterStrip(Nib &nib, const std::shared_ptr<MessageManager> &manager) {
    const auto strip = nib.make<NSStackView>(NSRect(0, 0, 330, 28));
    strip->setIdentifier("PhoneFilter");
    strip->setSpacing(8);
    strip->setAlignment(NSStackAlignment::center);
    const auto name = label("PhoneLabel");
    const auto combo = nib.make<NSComboBox>(NSRect(0, 0, 190, 28));
    combo->setIdentifier("PhoneCombo");
    combo->setAccessibilityName(localized("All_PhoneNumber"));
    combo->connect(manager, "switchPhoneNumberAction:");
    const auto apply = nib.make<RUIButton>(NSRect(0, 0, 72, 28));
    apply->setIdentifier("PhoneButton");
    apply->setTitle(localized("MessageView_SwitchPhone"));
    apply->connect(manager, "switchPhoneNumberAction:");
    for (const std::shared_ptr<NSView> &view : NSView::List{name, combo, apply})
        strip->addArrangedSubview(view);
    manager->multPhoneView = strip;
    manager->phoneLabel = name;
    manager->phoneComboBox = combo;
    manager->switchPhoneButton = apply;
    return strip;
}

std::shared_ptr<NSView> filterAndSearch(Nib &nib, const std::shared_ptr<MessageManager> &manager) {
    const auto bar = topBar(nib, "MessageBar");
    bar->addArrangedSubview(filterStrip(nib, manager));
    bar->addArrangedSubview(searchField(nib, manager, "searchField:"));
    return bar;
}

// ---------------------------------------------------------------- threads

// Picture, title and time in one line, the last message below them.
class ThreadCell : public NSTableCellView {
public:
    void initWithFrame(const NSRect &frame) override {
        NSTableCellView::initWithFrame(frame);
        constexpr double kInset = 2;   // below the title of the column
        const auto picture = make<NSImageView>(NSRect(kInset, 12, kPicture, kPicture));
        picture->setIdentifier("ThreadPicture");
        const auto name = label("ThreadName", 14);
        time_ = label("ThreadTime", 11);
        last_ = label("ThreadLast", 12);
        constexpr double kLeft = kInset + kPicture + 10, kTime = 122, kRight = 14;
        const double right = frame.size.width - kRight;
        name->setFrame({kLeft, 12, right - kTime - kLeft - 6, 20});
        name->setAutoresizingMask(NSViewWidthSizable);
        time_->setFrame({right - kTime, 14, kTime, 16});
        time_->setAutoresizingMask(NSViewMinXMargin);
        const bool isTurned = userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::rightToLeft;
        time_->setAlignment(isTurned ? NSTextAlignment::left : NSTextAlignment::right);
        time_->setTextColor(shade(0.5));
        last_->setFrame({kLeft, 34, right - kLeft, 18});
        last_->setAutoresizingMask(NSViewWidthSizable);
        last_->setTextColor(shade(0.4));
        for (const std::shared_ptr<NSView> &view : List{picture, name, time_, last_})
            addSubview(view);
        setImageView(picture);
        setTextField(name);
    }
    void setObjectValue(Value value) override {
        NSTableCellView::setObjectValue(value);
        const auto thread = std::dynamic_pointer_cast<HNMessageEntity>(value.object());
        if (!thread)
            return;
        imageView()->setImage(thread->contactPic);
        textField()->setStringValue(thread->contactName);
        time_->setStringValue(thread->messageTime);
        last_->setStringValue(thread->contents.stringByReplacingOccurrencesOfString_withString("\n", " "));
    }

private:
    std::shared_ptr<NSTextField> time_, last_;
};

std::shared_ptr<NSView> threadTable(Nib &nib, const std::shared_ptr<MessageManager> &manager,
                                    const std::shared_ptr<NSArrayController> &controller) {
    constexpr const char *kColumn = "messageContent";
    constexpr double kColumnWidth = kThreads - 40 - 20;   // beside the check box and the scroller
    const auto table = nib.make<RUIMenuTableView>();
    table->setIdentifier("MessageTable");
    table->setAccessibilityName(localized("MessageView_ListName"));
    const auto column = make<NSTableColumn>(NSString(kColumn));
    column->setWidth(kColumnWidth);
    column->setEditable(false);
    column->setSortDescriptorPrototype(NSSortDescriptor("messageTime", true));
    manager->headTitle_1.observe(showsIn(column, &NSTableColumn::setTitle));
    table->addTableColumn(column);
    table->registerMaker_forIdentifier([] { return make<ThreadCell>(NSRect(0, 0, kColumnWidth, MessageManager::kRowHeight)); }, kColumn);
    table->bindToArrayController(controller);
    const auto menu = make<NSMenu>();
    menuEntry(menu, manager, "exportMessage:", manager->menuCSVstr);
    menuEntry(menu, manager, "exportMessage2HTML:", manager->menuHtmlstr);
    table->setRowMenu(menu);
    manager->tableView = table;
    return scrolling(nib, table, kThreads);
}

// ---------------------------------------------------------------- conversation

std::shared_ptr<NSView> line(Nib &nib, const char *identifier) {
    auto made = nib.make<NSView>(NSRect(0, 0, 1, 1));
    made->setIdentifier(identifier);
    made->setWantsLayer(true);
    made->layer()->setBackgroundColor(shade(0.85));
    return made;
}

std::shared_ptr<NSView> conversation(Nib &nib, const std::shared_ptr<MessageManager> &manager, HNMMessageViewModel &model) {
    const auto content = nib.make<NSView>(NSRect(0, 0, kConversation, kList));
    content->setIdentifier("ConversationArea");
    const auto picture = nib.make<NSImageView>(NSRect(0, 0, 36, 36));
    picture->setIdentifier("OwnerPicture");
    const auto owner = label("OwnerName", 15);
    place(content, picture, {.left = 15, .top = 8, .width = 36, .height = 36});
    place(content, owner, {.left = 62, .top = 15, .right = 16, .height = 22});
    place(content, line(nib, "PaneEdge"), {.left = 0, .top = 0, .bottom = 0, .width = 1});
    place(content, line(nib, "HeadEdge"), {.left = 0, .top = kHead - 1, .right = 0, .height = 1});
    model.messageOwner.observe(showsIn<NSControl>(owner, &NSControl::setStringValue));
    model.selectMessageIcon.observe([weak = std::weak_ptr(picture)](const std::shared_ptr<NSImage> &image) {
        tell(weak, [&](NSImageView &view) { view.setImage(image); });
    });
    manager->messageContentView = content;
    return content;
}

// ---------------------------------------------------------------- foot

std::shared_ptr<NSView> exportButton(Nib &nib, const std::shared_ptr<MessageManager> &manager) {
    const auto button = nib.make<NSPopUpButton>(NSRect(0, 0, 110, 28));
    button->setIdentifier("ExportButton");
    button->setPullsDown(true);
    menuEntry(button->menu(), manager, "", manager->exportTitle)->hidden = true;   // what the button itself shows
    menuEntry(button->menu(), manager, "exportMessage:", manager->menuCSVstr);
    menuEntry(button->menu(), manager, "exportMessage2HTML:", manager->menuHtmlstr);
    manager->exportTitle.observe([weak = std::weak_ptr(button)](const NSString &) {
        tell(weak, [](NSPopUpButton &shown) { shown.invalidateIntrinsicContentSize(); });
    });
    enabledBy(manager->hasSelectedRow, button);
    return button;
}

std::shared_ptr<NSView> foot(Nib &nib, const std::shared_ptr<MessageManager> &manager) {
    const auto bar = nib.make<NSStackView>(NSRect(0, 0, kWidth, kBottomBar));
    bar->setIdentifier("BottomBar");
    bar->setSpacing(8);
    bar->setEdgeInsets({4, 16, 4, 16});
    bar->setAlignment(NSStackAlignment::center);
    const auto status = label("StatusLine");
    status->setContentHuggingPriority(200);
    bar->addArrangedSubview(status);
    bar->addArrangedSubview(exportButton(nib, manager));
    bar->addArrangedSubview(button(nib, manager, {"RefreshButton", &HNMbaseViewManager::refreshTitle, "refreshButtonClick:"}));
    manager->tableRowInfoString.observe(showsIn<NSControl>(status, &NSControl::setStringValue));
    manager->buttomView = bar;
    return bar;
}

// ---------------------------------------------------------------- all together

void build(Nib &nib) {
    const auto root = nib.make<NSView>(NSRect(0, 0, kWidth, kHeight));
    root->setIdentifier("MessageView");
    const auto area = nib.make<NSView>(NSRect(0, 0, kWidth, kHeight - kBottomBar));
    area->setIdentifier("MessageArea");
    const auto manager = nib.make<MessageManager>();
    const auto model = nib.make<HNMMessageViewModel>();
    const auto controller = nib.make<NSArrayController>();
    controller->setContent(model->contents);
    model->arrayController = controller;
    manager->messageViewModel = model;

    place(root, area, {.left = 0, .top = 0, .right = 0, .bottom = kBottomBar});
    place(area, filterAndSearch(nib, manager), {.left = 0, .top = 0, .right = 0, .height = kTopBar});
    place(area, threadTable(nib, manager, controller), {.left = 0, .top = kTopBar, .bottom = 0, .width = kThreads});
    place(area, conversation(nib, manager, *model), {.left = kThreads, .top = kTopBar, .right = 0, .bottom = 0});
    place(root, foot(nib, manager), {.left = 0, .right = 0, .bottom = 0, .height = kBottomBar});
    setView(nib, root, manager, model);
    manager->contentView = area;
}

const NibRegistry::Entry entry("HNMMessageViewController", build);

}   // namespace
