#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/HNMBookMarkViewManager.h"

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/BookmarkFile.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/services/NSBundle.h"

HN_CLASS_TABLE(HNMBookMarkViewManager, HNOutlineViewManager,
               .key("bookViewModel", &HNMBookMarkViewManager::bookViewModel)
                   .key("hasBookmarkExport", &HNMBookMarkViewManager::hasBookmarkExport)
                   .key("menu_addBookmark", &HNMBookMarkViewManager::menu_addBookmark)
                   .key("menu_addfolder", &HNMBookMarkViewManager::menu_addfolder)
                   .selector("viewManagerReloadData", &HNMBookMarkViewManager::viewManagerReloadData)
                   .selector("disableIcloudClick:", &HNMBookMarkViewManager::disableIcloudClick)
                   .selector("onRefreshButton:", &HNMBookMarkViewManager::onRefreshButton)
                   .selector("searchBookMark:", &HNMBookMarkViewManager::searchBookMark)
                   .selector("outlineRowAction:", &HNMBookMarkViewManager::outlineRowAction)
                   .selector("addBookMarkMenuClick:", &HNMBookMarkViewManager::addBookMarkMenuClick)
                   .selector("addFolderMenuClick:", &HNMBookMarkViewManager::addFolderMenuClick)
                   .selector("EditBookMark", &HNMBookMarkViewManager::EditBookMark)
                   .selector("RenameFolder", &HNMBookMarkViewManager::RenameFolder)
                   .selector("moveBookMarksToFolder:", &HNMBookMarkViewManager::moveBookMarksToFolder)
                   .selector("VisitWebSite", &HNMBookMarkViewManager::VisitWebSite)
                   .selector("onExportButton:", &HNMBookMarkViewManager::onExportButton)
                   .selector("onDeleteButton:", &HNMBookMarkViewManager::onDeleteButton)
                   .selector("onImportButton:", &HNMBookMarkViewManager::onImportButton))

// ---------------------------------------------------------------- start

void HNMBookMarkViewManager::viewDidLoad() {
    HNOutlineViewManager::viewDidLoad();
    initDisableiCloudImage();
    rowMenu_ = make<NSMenu>();
    rowMenu_->setDelegate(selfOf(this));
    bookMarkViewLoadData();
}

void HNMBookMarkViewManager::initDisableiCloudImage() {
    const auto picture = [](const char *name) { return NSBundle::bundleForClass()->pathForResource_ofType(name, "png"); };
    disable_icloudImagePath_1 = picture("iCloud_Tap_iCloud");
    disable_icloudImagePath_2 = picture("iCloud_Tap_Safari");
    disable_icloudImagePath_3 = picture("iCloud_Keep_on_My_iPhone");
    close_iCloud_title = localized("BMView_icloud");
    close_iCloud_Step_1 = localized("BMView_SafariiCloud_1");
    close_iCloud_Step_2 = localized("BMView_SafariiCloud_2");
    close_iCloud_Step_3 = localized("BMView_SafariiCloud_3");
}

void HNMBookMarkViewManager::initTableHeadMultiLanguage() {
    headTitle_1 = localized("BookMarkViewTableHead_Name");
    headTitle_2 = localized("BookMarkViewTableHead_URL");
}

void HNMBookMarkViewManager::initButtonTitleMultiLanguage() {
    addTitle = localized("FileManager_Add");
    retryTitle = localized("FileManager_Retry");
    exportTitle = localized("FileManager_Export");
    deleteTitle = localized("FileManager_Delete");
    refreshTitle = localized("FileManager_Refresh");
    menu_addfolder = localized("BMMenuTitle_AddFolder");
    menu_addBookmark = localized("BMMenuTitle_AddBookMark");
}

// ---------------------------------------------------------------- loading

void HNMBookMarkViewManager::setOutlineHidden(bool hidden) {
    tell(outlineView, [hidden](NSOutlineView &outline) { outline.setHidden(hidden); });
}

void HNMBookMarkViewManager::clearSelection() {
    if (const auto tree = treeController())
        tree->setSelectionIndexPaths({});
}

void HNMBookMarkViewManager::bookMarkViewLoadData() {
    const auto model = bookViewModel.lock();
    if (model && model->checkBookMarkicloud() != 0)
        return showDisableiCloudView(true);
    showDisableiCloudView(false);
    hnManagerLoadData_complete(localized("FileManager_NoBookMarks"), [self = weakOf(this)] {
        tell(self, [](HNMBookMarkViewManager &manager) { manager.bookMarksDidLoad(); });
    });
}

void HNMBookMarkViewManager::bookMarksDidLoad() {
    setRightMouseMenu(rowMenu_);
    const auto outline = outlineView.lock();
    if (outline)
        outline->scrollRowToVisible(0);
    hasBookmarkExport = outline && outline->numberOfRows() > 0;
    searchBookMark({});
    clearSelection();
    dispatch::async(dispatch::main(), [self = weakOf(this)] {
        tell(self, [](HNMBookMarkViewManager &manager) {
            const auto model = manager.bookViewModel.lock();
            if (model && model->contents)
                manager.setOutlineHidden(false);
        });
    });
}

void HNMBookMarkViewManager::viewManagerReloadData() {
    tell(bookViewModel, [](HNMBookMarkViewModel &model) { model.resetDataContents(); });
    bookMarkViewLoadData();
    tell(searchField, [](NSTextField &box) { box.setStringValue(""); });
}

void HNMBookMarkViewManager::searchBookMark(const id &sender) {
    HNOutlineViewManager::searchField_(sender);
    const auto model = bookViewModel.lock();
    const auto outline = outlineView.lock();
    if (model && outline && model->searchArray && !model->searchArray->isEmpty())
        outline->expandItem(nullptr, true);
    const auto noResult = noSearchField.lock();
    setOutlineHidden(noResult && !noResult->isHidden());
}

// ---------------------------------------------------------------- rows

HNMBookMarkViewManager::Node HNMBookMarkViewManager::firstSelected() const {
    return std::dynamic_pointer_cast<HNBookMarkEntity>(selectedObjects().firstObject());
}

void HNMBookMarkViewManager::selectedRowDidChange() {
    const auto model = bookViewModel.lock();
    const auto outline = outlineView.lock();
    if (!model || !outline)
        return;
    const bool hasRows = outline->numberOfSelectedRows() > 0;
    hasSelectedRow = hasRows;
    const auto total = static_cast<std::uint64_t>(model->allLeafNodeCount());
    const auto selected = static_cast<std::uint64_t>(model->calculateSelectedBookmarks());
    showTotalRowInfo_withSelectedCount(total, selected);
    if (selected == 0)
        tableRowInfoString = hasRows ? NSString("") : NSString::stringWithFormat(localized("Bottom_items_Format"), total);
}

void HNMBookMarkViewManager::outlineRowAction(const id &) {
    const auto outline = outlineView.lock();
    const auto item = outline ? outline->itemAtRow(outline->clickedRow()) : nullptr;
    if (!item)
        return;
    if (outline->isItemExpanded(item))
        outline->collapseItem(item);
    else
        outline->expandItem(item, true);
}

std::int64_t HNMBookMarkViewManager::expandedOutlineRowView_atRow(NSOutlineView &outline, std::int64_t row) {
    const Node first = firstSelected();
    if (!first || first->children()->isEmpty())
        return -1;
    const auto item = outline.itemAtRow(row);
    const bool closes = outline.isItemExpanded(item);
    if (closes)
        outline.collapseItem(item);
    else
        outline.expandItem(item);
    first->expandMarkIcon = NSImage::named(closes ? "NSTouchBarGoForwardTemplate" : "NSTouchBarGoDownTemplate");
    return closes ? 0 : 1;
}

// ---------------------------------------------------------------- context menus

void HNMBookMarkViewManager::menuNeedsUpdate(NSMenu &menu) {
    menu.removeAllItems();
    const auto outline = outlineView.lock();
    if (outline && &menu == rowMenu_.get())
        rightMouseDownAtRow(outline->clickedRow());
}

void HNMBookMarkViewManager::rightMouseDownAtRow(std::int64_t row) {
    const auto outline = outlineView.lock();
    const auto model = bookViewModel.lock();
    if (!outline || !model || row < 0 || row == static_cast<std::int64_t>(NSNotFound))
        return;
    if (!outline->isRowSelected(row))
        outline->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(static_cast<std::size_t>(row)), false);
    rowMenu_->removeAllItems();
    const NSArray selection = model->selectedObjects();
    if (selection.count() == 1) {
        const Node only = firstSelected();
        only && only->isLeaf() ? rightMouseDownAtBookMark(true) : rightMouseDownAtFolder(true);
    } else if (model->allSelectObjectsIsFolder()) {
        rightMouseDownAtFolder(false);
    } else if (model->allSelectObjectsIsBookMark()) {
        rightMouseDownAtBookMark(false);
    } else {
        rightMouseDownOtherSection();
    }
}

std::shared_ptr<NSMenuItem> HNMBookMarkViewManager::addEntry(const std::shared_ptr<NSMenu> &menu, const char *titleKey,
                                                             const char *action) {
    auto item = make<NSMenuItem>(localized(titleKey), action);
    item->target = selfOf(this);
    item->enabled = !item->action.empty();
    menu->addItem(item);
    return item;
}

void HNMBookMarkViewManager::rightMouseDownAtFolder(bool single) {
    const auto add = addEntry(rowMenu_, "BMMenuTitle_Add", "");
    const auto kinds = make<NSMenu>();
    addEntry(kinds, "BMMenuTitle_AddBookMark", "addBookMarkMenuClick:");
    addEntry(kinds, "BMMenuTitle_AddFolder", "addFolderMenuClick:");
    add->setSubmenu(kinds);
    add->enabled = true;
    addEntry(rowMenu_, "BMMenuTitle_Rename", single ? "RenameFolder" : "");
    addEntry(rowMenu_, "BMMenuTitle_Delete", "onDeleteButton:");
}

void HNMBookMarkViewManager::rightMouseDownAtBookMark(bool single) {
    addEntry(rowMenu_, "BMMenuTitle_Edit", single ? "EditBookMark" : "");
    const auto move = addEntry(rowMenu_, "BMMenuTitle_MoveToFolder", "");
    if (const auto model = bookViewModel.lock())
        recursionSetFolderMenuWith_childrenArray_menuTitleKeyPath_menuAction(move, model->treeControllerRootNode()->childNodes(), "name",
                                                                             "moveBookMarksToFolder:");
    move->enabled = move->hasSubmenu();
    addEntry(rowMenu_, "BMMenuTitle_Delete", "onDeleteButton:");
    addEntry(rowMenu_, "BMMenuTitle_VisitWeb", single ? "VisitWebSite" : "");
}

void HNMBookMarkViewManager::rightMouseDownOtherSection() {
    addEntry(rowMenu_, "BMMenuTitle_Delete", "onDeleteButton:");
    addEntry(rowMenu_, "BMMenuTitle_Refresh", "onRefreshButton:");
}

// ---------------------------------------------------------------- lines of a bookmark file

NSString HNMBookMarkViewManager::getImportHTMLBookmarkFolderName(const NSString &line) const { return bookmarks::folderNameOfLine(line); }
NSString HNMBookMarkViewManager::getImportHTMLBookmarkURL(const NSString &line) const { return bookmarks::urlOfLine(line); }
NSString HNMBookMarkViewManager::getImportHTMLBookmarkName(const NSString &line) const { return bookmarks::nameOfLine(line); }
