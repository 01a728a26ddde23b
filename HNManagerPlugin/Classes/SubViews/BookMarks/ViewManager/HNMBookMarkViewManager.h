// The bookmark category: the outline, its context menus, the cloud panel, and the buttons' operations.
//
// Panel    while bookmarks are kept in the cloud a panel with three steps stands in the outline's place and nothing is
//          read; its retry button loads again.
// Menus    made anew for each right click, by what is selected then. An entry that does nothing stands greyed.
// Threads  main. Adding, editing and exporting block it while the device works; moving and deleting run on the global
//          queue behind a modal window.
#pragma once

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/HNMBookMarkViewModel.h"
#include "HNManagerPlugin/Classes/ViewManager/OutlineView/HNOutlineViewManager.h"

class HNMBookMarkViewManager : public HNOutlineViewManager, public NSMenuDelegate {
public:
    HN_DECLARE_CLASS_TABLE
    static constexpr double kRowHeight = 40.0;

    std::weak_ptr<HNMBookMarkViewModel> bookViewModel;   // nib outlet
    Property<bool> hasBookmarkExport;                    // of the export button: there are rows
    Property<NSString> menu_addBookmark, menu_addfolder;   // entries of the add button
    std::shared_ptr<NSMutableArray> bookmarkHTMLObj;     // spare

    void viewDidLoad() override;
    void initDisableiCloudImage() override;
    void initTableHeadMultiLanguage() override;
    void initButtonTitleMultiLanguage() override;
    void viewManagerLoadData() override { bookMarkViewLoadData(); }
    void selectedRowDidChange() override;
    void searchField_(const id &sender) override { searchBookMark(sender); }

    // ------------------------------------------------------------ loading and searching
    void bookMarkViewLoadData();
    // Reads the device anew; ends a search.
    void viewManagerReloadData();
    void disableIcloudClick(const id &) { viewManagerReloadData(); }
    void onRefreshButton(const id &) { viewManagerReloadData(); }
    void searchBookMark(const id &sender);

    // ------------------------------------------------------------ rows
    // Opens the clicked row with all below it, or closes it.
    void outlineRowAction(const id &sender);
    // Of the first selected object's row: 0 closed, 1 opened, -1 where it has no children.
    std::int64_t expandedOutlineRowView_atRow(NSOutlineView &outline, std::int64_t row);
    void menuNeedsUpdate(NSMenu &menu) override;
    // Makes the menu of a right click on a row; none for a row below 0 or the largest 64-bit number.
    void rightMouseDownAtRow(std::int64_t row);
    void rightMouseDownAtFolder(bool single);
    void rightMouseDownAtBookMark(bool single);
    void rightMouseDownOtherSection();

    // ------------------------------------------------------------ operations
    void addBookMarkMenuClick(const id &sender);
    void addFolderMenuClick(const id &sender);
    void EditBookMark();
    void RenameFolder();
    // `item` holds the target's tree node.
    void moveBookMarksToFolder(const std::shared_ptr<NSMenuItem> &item);
    void VisitWebSite();
    void onExportButton(const id &sender);
    void onDeleteButton(const id &sender);
    void onImportButton(const id &sender);

    // ------------------------------------------------------------ what a line of a bookmark file holds; absent where nothing
    [[nodiscard]] NSString getImportHTMLBookmarkFolderName(const NSString &line) const;
    [[nodiscard]] NSString getImportHTMLBookmarkURL(const NSString &line) const;
    [[nodiscard]] NSString getImportHTMLBookmarkName(const NSString &line) const;

    // Total, selected bookmarks, selected folders.
    void getDidSelectObjectCountBlock(const std::function<void(std::int64_t total, std::int64_t bookmarks, std::int64_t folders)> &block) const;
    // Spare: the progress window tells the result of a delete.
    void openDeleteBookmarkResultWindow_failed(std::int64_t succeeded, std::int64_t failed);

protected:
    // The report points.
    virtual void _GABookMarkImport();
    virtual void _GABookMarkExport();
    virtual void _GABookMarkDelete();

private:
    struct ResultTexts;
    using Node = bookmarks::Node;

    void bookMarksDidLoad();
    void setOutlineHidden(bool hidden);
    void clearSelection();
    [[nodiscard]] Node firstSelected() const;
    std::shared_ptr<NSMenuItem> addEntry(const std::shared_ptr<NSMenu> &menu, const char *titleKey, const char *action);

    std::int64_t openResultWindow(const ResultTexts &texts, bool success, bool opensFolder = false);
    void openEditBookMarkResultWindow(bool success);
    void openRenameFolderWindow(bool success);
    std::int64_t openExportResultWindow_success(bool success);
    void openMoveBookmarkResultWindow();
    void tellEdited(bool success, void (HNMBookMarkViewManager::*tellResult)(bool));
    bool openDeleteBookMarkWindowDialog();
    void deleteDidFinish();
    void showMoveProgress(std::int64_t index, std::int64_t total, bool *stop);
    void moveSelectionTo(const Node &target);
    void moveDidFinish();

    std::shared_ptr<NSMenu> rowMenu_;
};
