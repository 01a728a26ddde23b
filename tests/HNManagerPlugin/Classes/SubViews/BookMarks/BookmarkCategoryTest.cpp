// The category with its view, on bookmarks in memory: what it shows, asks, and hands to the device.
#include <gtest/gtest.h>

#include "HNManagerPlugin/Classes/SubItemViewController/HNMbaseViewController.h"
#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/HNMBookMarkViewManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"
#include "tests/support/AnswerScript.h"
#include "tests/support/FakeDevice.h"
#include "tests/support/PluginWorld.h"
#include "tests/support/TempFolder.h"
#include "tests/support/fake/Bookmarks.h"
#include "toolkit/services/NSBundle.h"

namespace {

class BookmarkCategory : public testing::Test {
protected:
    BookmarkCategory() : device_(make<FakeBookmarks>()), fake_(contextWith(device_)) {}
    ~BookmarkCategory() override { close(); }
    void close() {
        if (window_)
            window_->close();
        outline_ = nullptr, manager_ = nullptr, model_ = nullptr, window_ = nullptr, controller_ = nullptr;
        world_.settle();
    }
    void open() {
        controller_ = alloc<HNMbaseViewController>();
        controller_->initWithNibName_bundle("HNMBookMarkViewController", NSBundle::bundleForClass());
        window_ = make<NSWindow>(NSRect(0, 0, 1000, 660));
        window_->setContentView(controller_->view());
        manager_ = std::dynamic_pointer_cast<HNMBookMarkViewManager>(controller_->viewManager.lock());
        model_ = manager_->bookViewModel.lock();
        outline_ = manager_->outlineView.lock();
        world_.settle();
        device_->log.take();
    }

    // 1 F(2 a, 3 G(4 b, 5 E()), 6 c), 7 top
    void openWithTree() {
        device_->folder("F");
        device_->bookmark("a", "http://a.org", "1");
        device_->folder("G", "1");
        device_->bookmark("b", "b.example", "3");
        device_->folder("E", "3");
        device_->bookmark("c", "http://c.org", "1");
        device_->bookmark("top", "javascript:alert(1)");
        open();
    }

    // Opens everything and selects the rows of these names.
    void select(std::initializer_list<const char *> names) {
        outline_->expandItem(nullptr, true);
        NSTreeNodes nodes;
        for (std::int64_t row = 0; row < outline_->numberOfRows(); ++row)
            for (const char *name : names)
                if (outline_->itemAtRow(row)->represented<HNBookMarkEntity>()->name == NSString(name))
                    nodes.push_back(outline_->itemAtRow(row));
        ASSERT_EQ(nodes.size(), names.size());
        model_->outlineTreeController->setSelectedNodes(nodes);
    }
    [[nodiscard]] std::string tree() const { return model_->outlineTreeController->toString(); }
    [[nodiscard]] std::string rightClick(std::initializer_list<const char *> names) {
        select(names);
        manager_->rightMouseDownAtRow(static_cast<std::int64_t>(outline_->selectedRowIndexes().firstIndex()));
        menu_ = std::dynamic_pointer_cast<RVBaseOutlineView>(outline_)->rightMouseMenu();
        std::string text;
        for (const auto &item : menu_->itemArray())
            text += (text.empty() ? "" : " ") + item->title.str() + (item->enabled ? "" : "(off)");
        return text;
    }
    void search(const char *text) {
        manager_->searchField.lock()->setStringValue(text);
        manager_->searchField.lock()->sendAction();
    }
    [[nodiscard]] std::string status() const { return manager_->tableRowInfoString.get().str(); }
    void perform(const char *selector, const Value &argument = {}) {
        manager_->perform(selector, {argument});
        world_.settle();
    }

    PluginWorld world_;
    EventLog log_;
    AnswerScript answers_{&log_};
    std::shared_ptr<FakeBookmarks> device_;
    FakeDevice fake_;
    std::shared_ptr<HNMbaseViewController> controller_;
    std::shared_ptr<NSWindow> window_;
    std::shared_ptr<HNMBookMarkViewManager> manager_;
    std::shared_ptr<HNMBookMarkViewModel> model_;
    std::shared_ptr<NSOutlineView> outline_;
    std::shared_ptr<NSMenu> menu_;
};

// ---------------------------------------------------------------- list and search

TEST_F(BookmarkCategory, sortsTheTopLevelAlone) {
    device_->bookmark("z", "u");
    device_->folder("f");
    device_->bookmark("y", "u", "2");
    device_->bookmark("b", "u", "2");
    open();
    EXPECT_EQ(tree(), "(f (y b) z) selection");
    EXPECT_TRUE(manager_->hasBookmarkExport);
    EXPECT_FALSE(outline_->isHidden());
    EXPECT_EQ(model_->allNodeCount(), 4);
    EXPECT_EQ(model_->allLeafNodeCount(), 3);
}

TEST_F(BookmarkCategory, inTheCloudNothingIsReadUntilRetry) {
    device_->cloud = 1;
    device_->bookmark("a", "u");
    open();
    EXPECT_FALSE(manager_->disable_iCloudView.lock()->isHidden());
    EXPECT_EQ(tree(), "() selection");
    device_->cloud = 0;
    perform("disableIcloudClick:");
    EXPECT_TRUE(manager_->disable_iCloudView.lock()->isHidden());
    EXPECT_EQ(tree(), "(a) selection");
}

TEST_F(BookmarkCategory, refreshingTwiceAtOnceShowsEachRowOnce) {
    openWithTree();
    manager_->viewManagerReloadData();
    manager_->viewManagerReloadData();
    world_.settle();
    EXPECT_EQ(tree(), "(F (a G (b E) c) top) selection");
}

TEST_F(BookmarkCategory, searchShowsHitsInTheirFoldersAndTheWholeTreeComesBack) {
    openWithTree();
    search(" B.EXAMPLE ");
    EXPECT_EQ(tree(), "(F (G (b))) selection 0");
    EXPECT_EQ(outline_->numberOfRows(), 3);
    search("");
    EXPECT_EQ(tree(), "(F (a G (b E) c) top) selection 0");
}

TEST_F(BookmarkCategory, afterASearchWithoutAHitTheHitsBeforeItStayUntilARefresh) {
    openWithTree();
    search("b.example");
    search("javascript");   // of the top level only names count
    EXPECT_EQ(tree(), "(F (G (b))) selection 0");
    EXPECT_TRUE(outline_->isHidden());
    search("");
    EXPECT_EQ(tree(), "(F (G (b))) selection 0");
    EXPECT_FALSE(outline_->isHidden());
    perform("onRefreshButton:");
    EXPECT_EQ(tree(), "(F (a G (b E) c) top) selection");
}

TEST_F(BookmarkCategory, theBottomBarCountsBookmarksEachOnce) {
    world_.setTexts({{"Bottom_items_Format", "%li all"}, {"Bottom_item_Format_Select", "1 of them"}, {"Bottom_items_Format_Select", "%li of them"}});
    openWithTree();
    EXPECT_EQ(status(), "4 all");
    select({"F", "b"});
    EXPECT_EQ(status(), "3 of them");
    select({"top"});
    EXPECT_EQ(status(), "1 of them");
    select({"E"});
    EXPECT_EQ(status(), "");
}

TEST_F(BookmarkCategory, aClickOpensAFolderWithAllBelowAndClosesIt) {
    openWithTree();
    ASSERT_EQ(outline_->numberOfRows(), 2);
    outline_->expandItem(nullptr, true);
    EXPECT_EQ(outline_->numberOfRows(), 7);
    select({"F"});
    EXPECT_EQ(manager_->expandedOutlineRowView_atRow(*outline_, 0), 0);
    EXPECT_EQ(outline_->numberOfRows(), 2);
    EXPECT_EQ(manager_->expandedOutlineRowView_atRow(*outline_, 0), 1);
    select({"E"});
    EXPECT_EQ(manager_->expandedOutlineRowView_atRow(*outline_, 4), -1);
}

// ---------------------------------------------------------------- menus

TEST_F(BookmarkCategory, menusFollowTheSelection) {
    openWithTree();
    EXPECT_EQ(rightClick({"F"}), "BMMenuTitle_Add BMMenuTitle_Rename BMMenuTitle_Delete");
    EXPECT_EQ(menu_->itemAtIndex(0)->submenu()->toString(), "BMMenuTitle_AddBookMark\nBMMenuTitle_AddFolder\n");
    EXPECT_EQ(rightClick({"F", "G"}), "BMMenuTitle_Add BMMenuTitle_Rename(off) BMMenuTitle_Delete");
    EXPECT_EQ(rightClick({"a"}), "BMMenuTitle_Edit BMMenuTitle_MoveToFolder BMMenuTitle_Delete BMMenuTitle_VisitWeb");
    EXPECT_EQ(menu_->itemAtIndex(1)->submenu()->toString(), "F\n  G\n    E\n");
    EXPECT_EQ(rightClick({"a", "top"}), "BMMenuTitle_Edit(off) BMMenuTitle_MoveToFolder BMMenuTitle_Delete BMMenuTitle_VisitWeb(off)");
    EXPECT_EQ(rightClick({"F", "top"}), "BMMenuTitle_Delete BMMenuTitle_Refresh");
    const std::string before = rightClick({"top"});
    for (const std::int64_t noRow : {std::int64_t{-1}, std::numeric_limits<std::int64_t>::max()})
        manager_->rightMouseDownAtRow(noRow);
    EXPECT_EQ(menu_->numberOfItems(), 4u) << before;
    select({"F", "top"});
    manager_->rightMouseDownAtRow(1);   // outside the selection: that row alone
    EXPECT_EQ(tree(), "(F (a G (b E) c) top) selection 0.0");
}

// ---------------------------------------------------------------- add and edit

TEST_F(BookmarkCategory, addsToEachSelectedFolderAndBesideEachSelectedBookmark) {
    openWithTree();
    select({"G", "top"});
    answers_.at("BMMenuTitle_AddBookMark").type("nameTextField", "new").type("URLTextField", " any text ").press("FileManager_Save");
    answers_.at("BMView_EditBookMarkSuccess").press("FileManager_OK");
    perform("addBookMarkMenuClick:");
    EXPECT_EQ(device_->log.take(), "bookmark 'new' ' any text ' in ''\nbookmark 'new' ' any text ' in '3'\nread");
    EXPECT_EQ(tree(), "(F (a G (b E new) c) new top) selection");
}

TEST_F(BookmarkCategory, withoutSelectionAFolderIsAddedAtTheTopLevel) {
    openWithTree();
    device_->refuses = true;
    answers_.at("BMMenuTitle_AddFolder").type("folderTextField", "new").press("FileManager_Save");
    answers_.at("BMView_RenameFolderFailed").press("FileManager_OK");
    perform("addFolderMenuClick:");
    EXPECT_EQ(device_->log.take(), "folder 'new' in ''");   // and nothing is read anew
}

TEST_F(BookmarkCategory, savingNeedsMoreThanBlanksInBothFields) {
    open();
    auto &window = answers_.at("BMMenuTitle_AddBookMark");
    window.type("nameTextField", "x").type("URLTextField", " \t").press("FileManager_Save");
    answers_.at("BMMenuTitle_AddBookMark").press("FileManager_Cancel");
    perform("addBookMarkMenuClick:");
    EXPECT_EQ(answers_.takeFailures().size(), 1u);   // Save cannot be pressed
    EXPECT_EQ(device_->log.take(), "");
}

TEST_F(BookmarkCategory, aFailedEditKeepsTheNewNameOnShowUntilARefresh) {
    openWithTree();
    select({"a"});
    device_->refuses = true;
    answers_.at("BMView_EditBookMark").type("nameTextField", "A \"<1>\"").press("FileManager_Save");
    answers_.at("BMView_EditBookMarkFailed").press("FileManager_OK");
    perform("EditBookMark");
    EXPECT_EQ(device_->log.take(), "edit 2 'A \"<1>\"' 'http://a.org'");
    EXPECT_EQ(tree(), "(F (A \"<1>\" G (b E) c) top) selection 0.0");
    device_->refuses = false;
    perform("onRefreshButton:");
    EXPECT_EQ(tree(), "(F (a G (b E) c) top) selection");
    select({"G"});
    device_->log.take();
    answers_.at("BMView_RenameFolder").type("folderTextField", "H").press("FileManager_Save");
    answers_.at("BMView_RenameFolderSuccess").press("FileManager_OK");
    perform("RenameFolder");
    EXPECT_EQ(device_->log.take(), "rename 3 'H' ''\nread");   // and says nothing of a folder
    EXPECT_EQ(tree(), "(F (a H (b E) c) top) selection");
}

// ---------------------------------------------------------------- move, visit

TEST_F(BookmarkCategory, movesTheSelectionToTheFolderOfTheMenu) {
    openWithTree();
    (void)rightClick({"a", "top"});
    const auto target = menu_->itemAtIndex(1)->submenu()->itemAtIndex(0)->submenu()->itemAtIndex(0);
    answers_.at("BMView_MoveSuccess").press("FileManager_OK");
    perform("moveBookMarksToFolder:", Value(target));
    EXPECT_EQ(device_->log.take(), "move 2 7 to 3\nread");
    EXPECT_EQ(tree(), "(F (G (b E a top) c)) selection");
}

TEST_F(BookmarkCategory, closingTheWindowStopsAMoveAndSuccessIsToldAllTheSame) {
    openWithTree();
    device_->secondsPerItem = 1;
    (void)rightClick({"a", "c", "top"});
    const auto target = menu_->itemAtIndex(1)->submenu()->itemAtIndex(0)->submenu()->itemAtIndex(0);
    answers_.at("BMView_MoveWaiting").closeByTitleBar();
    answers_.at("BMView_MoveSuccess").press("FileManager_OK");
    perform("moveBookMarksToFolder:", Value(target));
    EXPECT_EQ(device_->log.take(), "move 2 6 7 to 3\nstopped after 1\nread");
}

TEST_F(BookmarkCategory, visitsWithoutAsking) {
    openWithTree();
    logWorkspaceTo(log_);
    for (const char *name : {"a", "b", "top"}) {
        select({name});
        perform("VisitWebSite");
    }
    EXPECT_EQ(log_.take(), "browses http://a.org\nbrowses http://b.example\nbrowses http://javascript:alert(1)");
}

// ---------------------------------------------------------------- delete

TEST_F(BookmarkCategory, deletingAFolderPassesItsBookmarksAndFoldersButNoEmptyOne) {
    world_.setTexts({{"BMView_deleteBookmark&Folder", "%ld folders, %ld bookmarks?"}, {"BMView_mutil_deleteResultAllSuccess", "%ld gone"}});
    openWithTree();
    select({"F"});
    answers_.at("1 folders, 3 bookmarks?").press("FileManager_Delete");
    answers_.at("5 gone").press("MessageDialog_Ok");
    perform("onDeleteButton:");
    EXPECT_EQ(device_->log.take(), "delete 1 2 3 4 6");
    EXPECT_EQ(tree(), "(top) selection");
    EXPECT_EQ(model_->contents->count(), 2u);   // renewed by the next load only
}

TEST_F(BookmarkCategory, deletingTellsSuccessBeforeFailure) {
    world_.setTexts({{"BMView_deleteBookmark", "%@?"}, {"BMView_deleteBookmarks", "%ld?"}, {"BMView_deleteResultAllFaileds", "%ld stay"}});
    openWithTree();
    select({"a"});
    answers_.at("a?").press("FileManager_Cancel");
    perform("onDeleteButton:");
    EXPECT_EQ(device_->log.take(), "");
    select({"a", "b", "c"});
    device_->kept = {"4", "6"};
    answers_.at("3?").press("FileManager_Delete");
    answers_.at("BMView_deleteResultAllSuccess\n2 stay").press("MessageDialog_Ok");
    perform("onDeleteButton:");
    EXPECT_EQ(device_->log.take(), "delete 2 4 6");
}

TEST_F(BookmarkCategory, theBudgetOfBookmarksEndsADeleteBeforeAnEmptyFolder) {
    openWithTree();
    select({"E", "top"});
    EXPECT_EQ(model_->keysToDelete(outline_->selectedRowIndexes(), 1), (CBookmarkManagerImpl::Keys{{"5", "5"}, {"7", "7"}}));
    select({"a", "E"});
    EXPECT_EQ(model_->keysToDelete(outline_->selectedRowIndexes(), 1), (CBookmarkManagerImpl::Keys{{"2", "2"}}));
    select({"E"});
    EXPECT_EQ(model_->keysToDelete(outline_->selectedRowIndexes(), 1), (CBookmarkManagerImpl::Keys{{"5", "5"}}));
}

// ---------------------------------------------------------------- export

class BookmarkExport : public BookmarkCategory {
protected:
    [[nodiscard]] std::string exported() {
        answers_.savePanel().choose({path_}, true);
        answers_.at("BMView_ExportSuccess").press("FileManager_OK");
        perform("onExportButton:");
        return readFile(path_.str());
    }
    TempFolder folder_;
    NSString path_{(folder_.path() / "out.html").string()};
};

constexpr const char *kHead =
    "<!DOCTYPE NETSCAPE-Bookmark-file-1>\n<HTML><META HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; "
    "charset=UTF-8\"><Title>bookmark</Title><H1>bookmark</H1>";

TEST_F(BookmarkExport, withoutBookmarksTheNoDataPanelShowsAndTheFileIsHeadAndTail) {
    open();
    EXPECT_FALSE(manager_->hasBookmarkExport);
    EXPECT_FALSE(manager_->noSearchField.lock()->isHidden());
    EXPECT_EQ(exported(), std::string(kHead) + "\n</HTML>");
}

TEST_F(BookmarkExport, writesTheWholeTreeWhateverIsSelectedOrSearchedFor) {
    openWithTree();
    select({"b"});
    const std::string whole = exported();
    EXPECT_EQ(whole, std::string(kHead) + "\n<DT><H3 FOLDED>F</H3>\n<DL><p>\n<DT><A HREF=\"http://a.org\">a</A>"
                                          "\n<DT><H3 FOLDED>G</H3>\n<DL><p>\n<DT><A HREF=\"b.example\">b</A>"
                                          "\n<DT><H3 FOLDED>E</H3>\n<DL><p>\n</DL><p>\n</DL><p>"
                                          "\n<DT><A HREF=\"http://c.org\">c</A>\n</DL><p>"
                                          "\n<DT><A HREF=\"javascript:alert(1)\">top</A>\n</HTML>");
    search("b.example");
    ASSERT_EQ(tree(), "(F (G (b))) selection 0");
    EXPECT_EQ(exported(), whole);
}

TEST_F(BookmarkExport, theFolderOpensOnRequestAndIsWhereTheNextPanelStarts) {
    openWithTree();
    logWorkspaceTo(log_);
    answers_.savePanel().choose({path_}, true);
    answers_.at("BMView_ExportSuccess").press("FileManager_OpenFolder");
    perform("onExportButton:");
    EXPECT_NE(log_.take().find("opens " + folder_.path().string()), std::string::npos);
    EXPECT_EQ(RVProductConfig::valueForKey("BookMarkExportPathKey"), NSString(folder_.path().string()));
}

TEST_F(BookmarkExport, theModelAddsASecondDocumentBehindTheFirst) {
    open();
    model_->exportSelectedBookMark_exportCount(path_, 0);
    model_->exportSelectedBookMark_exportCount(path_, 0);
    EXPECT_TRUE(model_->isFileWhole);
    model_->exportSelectedBookMark_exportCount("/dev/full", 0);
    EXPECT_FALSE(model_->isFileWhole);
    EXPECT_FALSE(model_->fileFailure.isEmpty());
    EXPECT_EQ(readFile(path_.str()).size(), 2 * (std::string(kHead).size() + 8));
}

// ---------------------------------------------------------------- hostile devices

TEST_F(BookmarkExport, tenThousandLevelsAreOpenedSearchedAndWritten) {
    constexpr std::int64_t kLevels = 10'000;
    for (std::int64_t i = 0; i < kLevels; ++i)
        device_->folder("level", i == 0 ? NSString() : NSString(std::to_string(i)));
    device_->bookmark("leaf", "http://leaf", NSString(std::to_string(kLevels)));
    open();
    outline_->expandItem(nullptr, true);
    ASSERT_EQ(outline_->numberOfRows(), kLevels + 1);
    manager_->rightMouseDownAtRow(kLevels);
    std::int64_t depth = 0;
    for (auto menu = std::dynamic_pointer_cast<RVBaseOutlineView>(outline_)->rightMouseMenu()->itemAtIndex(1)->submenu(); menu;
         menu = menu->itemAtIndex(0)->submenu())
        ++depth;
    EXPECT_EQ(depth, kLevels);
    EXPECT_EQ(model_->calculateSelectedBookmarks(), 1);
    model_->outlineTreeController->setSelectionIndexPath({0});
    EXPECT_EQ(model_->keysToDelete(outline_->selectedRowIndexes(), 1).size(), static_cast<std::size_t>(kLevels) + 1);
    search("LEAF");
    EXPECT_EQ(outline_->numberOfRows(), kLevels + 1);
    const std::string html = exported();
    std::string ends;
    for (std::int64_t i = 0; i < kLevels; ++i)
        ends += "\n</DL><p>";
    EXPECT_TRUE(html.ends_with("\n<DT><A HREF=\"http://leaf\">leaf</A>" + ends + "\n</HTML>"));
    perform("outlineRowAction:");
    perform("onRefreshButton:");
}

TEST_F(BookmarkExport, ringsOrphansDoubleKeysAndOddTextsDoNotDisturb) {
    device_->folder("F & <b>");                               // 1
    device_->folder("self", "2");                             // 2
    device_->folder("ring a", "4");                           // 3
    device_->folder("ring b", "3");                           // 4
    device_->bookmark("orphan", "u", "99");                   // 5
    device_->bookmark("\"</A><b>\n%s\xEF\xBF\xBD", "'\"\n", "1");   // 6
    device_->bookmark("twin", "u", "1")->pKey = "6";
    device_->bookmark(nullptr, nullptr, "1")->pKey = nullptr;
    open();
    outline_->expandItem(nullptr, true);
    EXPECT_EQ(outline_->numberOfRows(), 4);
    EXPECT_EQ(model_->allLeafNodeCount(), 3);
    for (const char *text : {"ring", "orphan", "self"})
        EXPECT_FALSE(model_->searchFileByString(text)) << text;
    EXPECT_TRUE(model_->searchFileByString("TWIN"));
    EXPECT_TRUE(model_->searchFileByString("</a>"));
    EXPECT_TRUE(model_->searchFileByString(""));
    EXPECT_EQ(exported(), std::string(kHead) + "\n<DT><H3 FOLDED>F & <b></H3>\n<DL><p>\n<DT><A HREF=\"'\"\n\">\"</A><b>\n%s\xEF\xBF\xBD</A>"
                                               "\n<DT><A HREF=\"u\">twin</A>\n<DT><A HREF=\"\"></A>\n</DL><p>\n</HTML>");
}

// ---------------------------------------------------------------- life

TEST_F(BookmarkCategory, theTreeEndsWithItsView) {
    openWithTree();
    std::weak_ptr<NSObject> entity = model_->contents->firstObject();
    close();
    EXPECT_TRUE(entity.expired());
}

}   // namespace
