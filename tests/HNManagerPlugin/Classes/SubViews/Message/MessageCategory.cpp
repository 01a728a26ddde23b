#include "tests/HNManagerPlugin/Classes/SubViews/Message/MessageCategory.h"

#include "toolkit/services/NSBundle.h"
#include "toolkit/services/UserFolders.h"

MessageCategory::MessageCategory() : device_(contextWith(book_)) {
    UserFolders folders;
    folders.applicationSupport = folder_;
    setUserFolders(folders);
    shared_->name = "shared";
    parse_->name = "parse";
    shared_->log = parse_->log = book_->log = log_;
    RKBackupAndRestoreTask::install([parse = parse_] { return parse; });
    RKBackupAndRestoreTask::setSharedInstance(shared_);
}

MessageCategory::~MessageCategory() {
    if (shared_->running)
        endBackup(nullptr, 111);
    if (window_)
        window_->close();
    manager_ = nullptr, model_ = nullptr, window_ = nullptr, controller_ = nullptr;
    advance(std::chrono::seconds(5));   // the last step of the simulated progress
    RKBackupAndRestoreTask::install({});
    setUserFolders({});
}

void MessageCategory::open() {
    controller_ = alloc<HNMbaseViewController>();
    controller_->initWithNibName_bundle("HNMMessageViewController", NSBundle::bundleForClass());
    window_ = make<NSWindow>(NSRect(0, 0, 1000, 660));
    window_->setContentView(controller_->view());
    manager_ = std::dynamic_pointer_cast<HNMMessageViewManager>(controller_->viewManager.lock());
    model_ = manager_->messageViewModel.lock();
    advance();
}

void MessageCategory::openWith(std::vector<std::shared_ptr<MessageBackupChat>> chats) {
    parse_->parsed.assign(chats.begin(), chats.end());
    open();
    endBackup("/backup", 0);
    log_->take();
}

void MessageCategory::advance(dispatch::Duration time) {
    dispatch::LoopFrame frame;
    dispatch::after(time, dispatch::main(), [&] { frame.stop(); });
    frame.run();
}

void MessageCategory::endBackup(NSString path, std::uint32_t result) {
    shared_->over(std::move(path), result);
    advance();
}

std::string MessageCategory::rows(const NSMutableArray &list) {
    std::string text;
    for (const id &object : list.snapshot()) {
        const auto &thread = dynamic_cast<const HNMessageEntity &>(*object);
        text += (text.empty() ? "" : "|") + thread.contactName.str() + " " + thread.messageTime.str();
    }
    return text;
}

std::string MessageCategory::panel() const {
    const auto view = manager_->noSearchField.lock();
    const auto parts = manager_->noSearchResultViewCtrl;
    if (!view || view->isHidden())
        return "";
    return !parts->hiddenNoSearchFieldInfo ? "no result" : parts->remindString.lock()->stringValue().str();
}

std::string MessageCategory::conversation() const {
    std::string text;
    for (const id &object : model_->messageTableController->messageArray->snapshot()) {
        const auto &row = dynamic_cast<const HNDetailMessage &>(*object);
        text += (text.empty() ? "" : "|") + (row.isTimeOnly ? std::string("time") : row.content.str());
    }
    return text;
}

void MessageCategory::search(const char *text) {
    tell(manager_->searchField, [&](NSTextField &box) {
        box.setStringValue(text);
        box.sendAction();
    });
    advance();
}

void MessageCategory::select(std::vector<std::size_t> rows) {
    NSMutableIndexSet indexes;
    for (const std::size_t row : rows)
        indexes.addIndex(row);
    manager_->tableView.lock()->selectRowIndexes_byExtendingSelection(indexes, false);
}
