// The contact category: table, detail panel, cloud panel, and the buttons' operations.
//
// Panel    while contacts are kept in the cloud a panel with three steps stands in the table's place and nothing is read;
//          its retry button runs initContactManager again.
// Detail   follows the selected row; after a load, a sort and a search it shows row 0.
// Threads  main. Device work of an operation runs on the global queue behind a modal progress window.
#pragma once

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/HNMContactViewModel.h"
#include "HNManagerPlugin/Classes/ViewManager/TableView/HNTableViewManager.h"

class CountedRun;

class HNMContactViewManager : public HNTableViewManager {
public:
    HN_DECLARE_CLASS_TABLE
    static constexpr double kRowHeight = 52.0;

    std::weak_ptr<HNMContactViewModel> contactViewModel;   // nib outlet
    std::weak_ptr<NSArrayController> selectArrayController;   // nib outlet; drives the detail table
    std::weak_ptr<NSTableView> detailTableView;   // nib outlet
    Property<bool> editEnabled;   // of the menu's edit entry: one row is selected
    Property<NSString> editTitle, toVcardTitle, toCSVTitle;   // of the menu's entries
    NSArray dupcontactsArray;   // of DupContactGroupModel: the last search's groups
    bool deviceDisconnected = false;

    void viewDidLoad() override;
    void initDisableiCloudImage() override;
    void initTableHeadMultiLanguage() override;
    void initButtonTitleMultiLanguage() override;
    void viewManagerLoadData() override { initContactManager(); }
    void RowSelectedChange() override;
    void searchField_(const id &sender) override;

    // The start, and the retry button.
    void initContactManager();
    // After every change of the device's contacts: reads all anew.
    void refreshContactFunc();
    // Ignores rows that do not exist, the largest 64-bit number (no row) included.
    void showSelectedContactInfoAtRow(std::int64_t row);
    void deSelectAllContactGroup();

    // The editor; what it saves goes to the device in the background. An edit passes no groups and tells nothing.
    void onNewButton(const id &sender);
    void editMenuClick(const id &sender);
    void openAddNewContactResultWindow(bool success);
    void onImportButton(const id &sender);
    // Deletes the rows that are selected at the click; reads nothing anew.
    void onDeleteButton(const id &sender);
    // The question before; 1 goes on.
    [[nodiscard]] std::int64_t openDeleteDialog();
    // Shows the two entries below under the export button.
    void onExportButton(const id &sender);
    // The selected rows, to a file that the person names. The first writes on the main thread and tells how many were asked
    // for; the second writes in the background and tells how many the device layer wrote.
    void exportTovCardFile(const id &sender);
    void exportToCSVFile(const id &sender);
    void openExportResultWindow_Count(const NSString &path, std::int64_t count);
    // Searches in the background behind a message, then startDuplicate.
    void duplicateClick(const id &sender);
    // Shows the groups in the merge window and merges what the person left ticked. Returns before the merges are done.
    void startDuplicate();
    void deviceDisConnectNotify(const id &notification);

    void tableViewSelectionDidChange(NSTableView &table) override;
    void tableView_sortDescriptorsDidChange(NSTableView &table, const NSSortDescriptors &old) override;
    double tableView_heightOfRow(NSTableView &table, std::int64_t row) override;

protected:
    // The report points of an import.
    virtual void _GALogContactImport();
    virtual void _GALogImportCSV();
    virtual void _GALogImportCard();
    virtual void _GALogContactDelete();

private:
    [[nodiscard]] bool showsCloudPanel();
    void showTableAgain();
    void load(void (HNMContactViewManager::*didLoad)());
    void firstLoadDidEnd();
    void refreshDidEnd();
    void setTableHidden(bool hidden);
    [[nodiscard]] std::int64_t rowCount() const;
    void showBottomBar(std::size_t selected);
    void hideTableWithoutRows();
    [[nodiscard]] double heightOfInfo(const NSString &info) const;

    [[nodiscard]] static NSString importFolder();
    void reportImportOf(const NSString &path);
    void importContacts(const ContactList &contacts);
    [[nodiscard]] NSArray selectedRows() const;
    // The contact that was saved, and the groups that were ticked; null for none.
    [[nodiscard]] std::pair<std::shared_ptr<ZpContactDataInfo>, ContactGroupList>
    runEditor(const std::shared_ptr<ZpContactDataInfo> &contact);
    [[nodiscard]] NSString chooseExportFile(const NSString &type) const;
    void deleteContacts(const ContactList &contacts);
    void removeDeleted(const NSArray &deleted);
    void merge(const ContactList &survivors, const HNMPublicProgressWindow &progress);   // the worker's
    void showMerged(std::int64_t index, std::int64_t total);
    // Keys of the window's texts; see ProgressWindowHost for what the types mean.
    struct ResultWindow {
        const char *title, *icon, *leftButton, *rightButton;
        std::int64_t type;
    };
    [[nodiscard]] std::int64_t openWindow(const ResultWindow &window, const NSString &contents);

    std::shared_ptr<NSFont> measuringFont_;
};
