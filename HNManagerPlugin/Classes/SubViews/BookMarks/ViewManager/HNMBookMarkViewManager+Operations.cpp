// Adding, editing, moving, deleting, visiting and exporting bookmarks.
#include "HNManagerPlugin/Classes/PublicProgressWindow/CountedFlow.h"
#include "HNManagerPlugin/Classes/PublicProgressWindow/Dialogs.h"
#include "HNManagerPlugin/Classes/PublicProgressWindow/ResultText.h"
#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/HNCreateBookFolderWindow.h"
#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/HNCreateBookMarkWindow.h"
#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/HNMBookMarkViewManager.h"
#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/VisitAddress.h"
#include "HNManagerPlugin/contracts/RVCoreHelper/RVProductWebLogHelper.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVMFileManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"
#include "toolkit/services/NSFileManager.h"
#include "toolkit/services/NSWorkspace.h"
#include "toolkit/services/UserFolders.h"
#include "toolkit/views/NSApplication.h"

namespace {

constexpr const char *kFolderKey = "BookMarkExportPathKey";
constexpr ResultKeys kDeleteResult{"BMView_deleteResultAllSuccess", "BMView_mutil_deleteResultAllSuccess", "BMView_deleteResultAllFailed",
                                   "BMView_deleteResultAllFaileds"};

NSString orEmpty(const NSString &text) { return text.isNil() ? NSString("") : text; }

struct NameAndURL {
    NSString name, url;
};

// Absent unless the person saves.
std::optional<NameAndURL> askForBookmark(const char *titleKey, const NameAndURL &shown) {
    const auto input = make<HNCreateBookMarkWindow>();
    input->bookMarkName = shown.name;
    input->bookMarkURL = shown.url;
    input->window()->setTitle(localized(titleKey));
    if (NSApp()->runModalForWindow(input->window()) != 1)
        return std::nullopt;
    return NameAndURL{orEmpty(input->bookMarkName), orEmpty(input->bookMarkURL)};
}

std::optional<NSString> askForFolder(const char *titleKey, const NSString &shown) {
    const auto input = make<HNCreateBookFolderWindow>();
    input->folderName = shown;
    input->window()->setTitle(localized(titleKey));
    if (NSApp()->runModalForWindow(input->window()) != 1)
        return std::nullopt;
    return orEmpty(input->folderName);
}

}   // namespace

void HNMBookMarkViewManager::_GABookMarkImport() { JOIN_POINT(HNMBookMarkViewManager, "_GABookMarkImport"); }
void HNMBookMarkViewManager::_GABookMarkExport() { JOIN_POINT(HNMBookMarkViewManager, "_GABookMarkExport"); }
void HNMBookMarkViewManager::_GABookMarkDelete() { JOIN_POINT(HNMBookMarkViewManager, "_GABookMarkDelete"); }

// Nothing is read: a press is only counted.
void HNMBookMarkViewManager::onImportButton(const id &) { _GABookMarkImport(); }

// ---------------------------------------------------------------- result windows

struct HNMBookMarkViewManager::ResultTexts {
    const char *title, *success, *failed;
};

std::int64_t HNMBookMarkViewManager::openResultWindow(const ResultTexts &texts, bool success, bool opensFolder) {
    const char *icon = success ? "icon_ok" : "icon_exclamation";
    const NSString message = localized(success ? texts.success : texts.failed);
    if (opensFolder)
        return dialogs::run(localized(texts.title), message, icon, localized("FileManager_OK"), localized("FileManager_OpenFolder"),
                            RUIDialogWindowController::kRightIsOne);
    return dialogs::run(localized(texts.title), message, icon, "", localized("FileManager_OK"), RUIDialogWindowController::kOneButton);
}

void HNMBookMarkViewManager::openEditBookMarkResultWindow(bool success) {
    openResultWindow({"BMView_EditBOOkMarkDialogTitle", "BMView_EditBookMarkSuccess", "BMView_EditBookMarkFailed"}, success);
}

void HNMBookMarkViewManager::openRenameFolderWindow(bool success) {
    openResultWindow({"BMView_RenameFolderDialogTitle", "BMView_RenameFolderSuccess", "BMView_RenameFolderFailed"}, success);
}

// Success in all cases; whoever wants to know asks the list that is read afterwards.
void HNMBookMarkViewManager::openMoveBookmarkResultWindow() {
    openResultWindow({"BMView_MoveWindowTitle", "BMView_MoveSuccess", "BMView_MoveSuccess"}, true);
}

std::int64_t HNMBookMarkViewManager::openExportResultWindow_success(bool success) {
    return openResultWindow({"BMView_ExportWindowTitle", "BMView_ExportSuccess", "BMView_ExportFailed"}, success, true);
}

void HNMBookMarkViewManager::openDeleteBookmarkResultWindow_failed(std::int64_t succeeded, std::int64_t failed) {
    dialogs::run(localized("BMView_DeleteWindowTitle"), resultText(results::deleteBookmarks, succeeded, succeeded + failed),
                 failed == 0 ? "icon_ok" : "icon_exclamation", "", localized("FileManager_OK"), RUIDialogWindowController::kOneButton);
}

void HNMBookMarkViewManager::tellEdited(bool success, void (HNMBookMarkViewManager::*tellResult)(bool)) {
    (this->*tellResult)(success);
    if (success)
        viewManagerReloadData();
}

// ---------------------------------------------------------------- add and edit
// Adding tells its result in the windows of editing; kept: there are no texts of its own.

void HNMBookMarkViewManager::addBookMarkMenuClick(const id &) {
    JOIN_POINT(HNMBookMarkViewManager, "addBookMarkMenuClick:");
    const auto model = bookViewModel.lock();
    const auto input = askForBookmark("BMMenuTitle_AddBookMark", {});
    if (model && input)
        tellEdited(model->addNewBookMark_URL(input->name, input->url), &HNMBookMarkViewManager::openEditBookMarkResultWindow);
}

void HNMBookMarkViewManager::addFolderMenuClick(const id &) {
    JOIN_POINT(HNMBookMarkViewManager, "addFolderMenuClick:");
    const auto model = bookViewModel.lock();
    const auto name = askForFolder("BMMenuTitle_AddFolder", {});
    if (model && name)
        tellEdited(model->addNewBookMarkFolder(*name), &HNMBookMarkViewManager::openRenameFolderWindow);
}

// The row takes the new texts before the device is asked and keeps them where it refuses, until the next load.
void HNMBookMarkViewManager::EditBookMark() {
    const auto model = bookViewModel.lock();
    const Node entity = firstSelected();
    if (!model || !entity)
        return;
    const auto input = askForBookmark("BMView_EditBookMark", {entity->name, entity->url});
    if (!input)
        return;
    entity->name = input->name;
    entity->url = input->url;
    tell(outlineView, [](NSOutlineView &outline) { outline.reloadItem(nullptr, true); });
    tellEdited(model->editBookMark(), &HNMBookMarkViewManager::openEditBookMarkResultWindow);
}

void HNMBookMarkViewManager::RenameFolder() {
    const auto model = bookViewModel.lock();
    const Node entity = firstSelected();
    if (!model || !entity)
        return;
    const auto name = askForFolder("BMView_RenameFolder", entity->name);
    if (!name)
        return;
    entity->name = *name;
    tell(outlineView, [](NSOutlineView &outline) { outline.reloadItem(nullptr, true); });
    tellEdited(model->editBookMarkFolder(), &HNMBookMarkViewManager::openRenameFolderWindow);
}

// ---------------------------------------------------------------- move

void HNMBookMarkViewManager::moveBookMarksToFolder(const std::shared_ptr<NSMenuItem> &item) {
    const auto node = item ? std::dynamic_pointer_cast<NSTreeNode>(item->representedObject.object()) : nullptr;
    const Node target = node ? node->represented<HNBookMarkEntity>() : nullptr;
    if (target)
        dispatch::async(dispatch::global(), [link = weakOf(this), target] {
            if (const auto self = link.lock())
                self->moveSelectionTo(target);
        });
}

void HNMBookMarkViewManager::moveSelectionTo(const Node &target) {
    const auto self = selfOf(this);
    dispatch::performOnMainThread(
        [self] {
            auto &host = self->progressWindows();
            host.showProgressWindow(
                host.progressWindowString_upText_downText(localized("BMView_MoveWindowTitle"), localized("BMView_MoveWaiting"), ""));
        },
        false);
    if (const auto model = bookViewModel.lock())
        model->moveBookMarkToParentKeyNode_callBack(
            target, [self](std::int64_t index, std::int64_t, std::int64_t total, std::int64_t, bool *stop) {
                self->showMoveProgress(index, total, stop);
            });
    dispatch::async(dispatch::main(), [self] { self->moveDidFinish(); });
}

void HNMBookMarkViewManager::showMoveProgress(std::int64_t index, std::int64_t total, bool *stop) {
    dispatch::sync(dispatch::main(), [&] {
        const auto &window = progressWindows().pProressWindow;
        if (window && window->isClosed)
            *stop = true;
        if (const auto delegate = progressWindows().pDelegate.lock())
            delegate->setProgressDialogInfo_DownTextField_progressValue(
                make<NSAttributedString>(localized("BMView_MoveWaiting")), nullptr, percentOf(index + 1, total));
    });
}

void HNMBookMarkViewManager::moveDidFinish() {
    progressWindows().closeProgressWindow();
    openMoveBookmarkResultWindow();
    viewManagerReloadData();
}

// ---------------------------------------------------------------- visit

void HNMBookMarkViewManager::VisitWebSite() {
    if (const Node first = firstSelected())
        NSWorkspace::sharedWorkspace().openURL(bookmarks::addressToOpen(first->url));
}

// ---------------------------------------------------------------- export

void HNMBookMarkViewManager::onExportButton(const id &) {
    _GABookMarkExport();
    const auto model = bookViewModel.lock();
    const NSString last = RVProductConfig::valueForKey(kFolderKey);
    const NSString start = last.isEmpty() ? NSString::stringWithFormat("%@/Documents", userFolders().home) : last;
    const NSString name = NSString::stringWithFormat("Bookmarks_%@", getCurrentTimes());
    // The path goes on as the panel gave it, which sees to the extension itself.
    const NSString path = RVMFileManager::savePanelWithDirectory_defaultName_andFileType(start, name, "html");
    if (path.isEmpty() || !model)
        return;
    const NSString folder = path.stringByDeletingLastPathComponent();
    if (!dialogs::isWritableTarget(folder))
        return;
    RVProductConfig::setValue_forKey(folder, kFolderKey);
    // While a search is on, the outline counts the hits alone; the file holds the whole tree all the same.
    model->exportSelectedBookMark_exportCount(path, std::max(model->allLeafNodeCount(), model->countOfWholeTree()));
    if (openExportResultWindow_success(NSFileManager::fileExistsAtPath(path)) == 1)
        NSWorkspace::sharedWorkspace().openFile(folder);
}

// ---------------------------------------------------------------- delete

void HNMBookMarkViewManager::getDidSelectObjectCountBlock(
    const std::function<void(std::int64_t total, std::int64_t bookmarks, std::int64_t folders)> &block) const {
    std::int64_t bookmarks = 0, folders = 0;
    for (const Node &object : bookmarks::nodesOf(selectedObjects()))
        ++(object->isLeaf() ? bookmarks : folders);
    block(bookmarks + folders, bookmarks, folders);
}

bool HNMBookMarkViewManager::openDeleteBookMarkWindowDialog() {
    const auto model = bookViewModel.lock();
    NSString message;
    getDidSelectObjectCountBlock([&](std::int64_t, std::int64_t bookmarks, std::int64_t folders) {
        if (folders > 0)
            message = NSString::stringWithFormat(localized("BMView_deleteBookmark&Folder"), folders,
                                                 model ? model->calculateSelectedBookmarks() : 0);
        else if (bookmarks == 1)
            message = NSString::stringWithFormat(localized("BMView_deleteBookmark"), firstSelected()->name);
        else
            message = NSString::stringWithFormat(localized("BMView_deleteBookmarks"), bookmarks);
    });
    return dialogs::run(localized("BMView_DeleteWindowTitle"), message, "icon_help", localized("FileManager_Cancel"),
                        localized("FileManager_Delete"), RUIDialogWindowController::kRightIsOne) == 1;
}

void HNMBookMarkViewManager::onDeleteButton(const id &) {
    _GABookMarkDelete();
    const auto model = bookViewModel.lock();
    const auto outline = outlineView.lock();
    if (!model || !outline || !openDeleteBookMarkWindowDialog())
        return;
    const NSIndexSet rows = outline->selectedRowIndexes();
    std::int64_t count = model->calculateSelectedBookmarks();
    if (count == 0)
        count = static_cast<std::int64_t>(rows.count());
    CountedPlan plan;
    plan.windowTitle = localized("BMView_DeleteWindowTitle");
    plan.waitText = localized("BMView_deletingBookmarks");
    plan.borderButtonEnabled = false;
    plan.countsItemAfterCancel = true;
    plan.start = [model, rows, count](const CountedRun::Ref &run) {
        model->deleteSelectedBookMarks_delectCount_callBack(
            rows, count, [run](std::int64_t index, std::int64_t total, bool success, bool *stop) {
                if (run->itemDone(index, total, success) == 1)
                    *stop = true;
            });
    };
    plan.itemText = [](std::int64_t, std::int64_t) { return localized("BMView_deletingBookmarks"); };
    plan.resultText = [](std::int64_t succeeded, std::int64_t failed) {
        return resultText(kDeleteResult, succeeded, succeeded + failed);
    };
    plan.didFinish = [self = weakOf(this)](const CountedRun::Ref &) {
        tell(self, [](HNMBookMarkViewManager &manager) { manager.deleteDidFinish(); });
    };
    CountedFlow::run(std::move(plan));
}

// The rows go from what is on show; `contents` is only renewed by the next load.
void HNMBookMarkViewManager::deleteDidFinish() {
    const auto model = bookViewModel.lock();
    if (!model)
        return;
    if (model->checkBookMarkicloud() != 0)
        return showDisableiCloudView(true);
    showDisableiCloudView(false);
    const auto &tree = model->outlineTreeController;
    tree->removeObjectsAtArrangedObjectIndexPaths(tree->selectionIndexPaths());
    tree->setSelectionIndexPaths({});
}
