// The message category: the list of threads, the conversation of the selected one beside it, the filter by the user's own
// numbers, export and refresh.
//
// Load      starts by itself. The loading panel shows a simulated percentage until the backup's own passes it. Refresh starts
//           another load at any time.
// Threads   main, unless told otherwise.
#pragma once

#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/HNMMessageViewModel.h"
#include "HNManagerPlugin/Classes/ViewManager/TableView/HNTableViewManager.h"
#include "toolkit/views/NSComboBox.h"

class HNMMessageViewManager : public HNTableViewManager, public NSComboBoxDelegate, public NSComboBoxDataSource {
public:
    HN_DECLARE_CLASS_TABLE
    static constexpr double kRowHeight = 64.0;

    // nib outlets
    std::weak_ptr<HNMMessageViewModel> messageViewModel;
    std::weak_ptr<NSView> messageContentView;   // where the conversation is mounted
    std::weak_ptr<NSView> multPhoneView;   // the filter; hidden until loading ends
    std::weak_ptr<NSTextField> phoneLabel;
    std::weak_ptr<NSComboBox> phoneComboBox;
    std::weak_ptr<NSButton> switchPhoneButton;

    Shared<bool> stopBackupProgress;   // ends the simulated progress
    Shared<double> currentProgress, realProgress;   // percent: simulated, and the backup's last
    Property<NSString> menuCSVstr, menuHtmlstr;   // of the export menu's entries

    void viewDidLoad() override;
    void initTableHeadMultiLanguage() override;
    void initButtonTitleMultiLanguage() override;
    void viewManagerLoadData() override { messageViewManagerLoadData(); }
    void RowSelectedChange() override;
    void searchField_(const id &sender) override;

    // Checks nothing; kept: hosts know the name.
    void checkFindMyPhoneAndLoadData();
    // Makes a conversation pane and mounts it; an earlier one's view stays below it.
    void loadMessageDetailView();
    void initViewModelBackup();
    void messageViewManagerLoadData();
    void deviceConnectedChange(const id &notification);
    void refreshButtonClick(const id &sender);
    void retryCheckFindMyPhone(const id &sender);

    // Of the selected threads: to a table, and to a web page in a folder of its own.
    void exportMessage(const id &sender);
    void exportMessage2HTML(const id &sender);
    // The table at `path` from UTF-8 to GB18030. Any thread.
    static void changeMessageFileCodeToGB(const NSString &path);

    void showFirstMessgeDetail();
    // Of the row selected last.
    void showMessageContent();
    // Shows the threads of the number that the combo says.
    void switchPhoneNumberAction(const id &sender);
    std::int64_t numberOfItemsInComboBox(NSComboBox &combo) override;
    NSString comboBox_objectValueForItemAtIndex(NSComboBox &combo, std::int64_t index) override;

    double tableView_heightOfRow(NSTableView &, std::int64_t) override { return kRowHeight; }

protected:
    // 32 bits; the pace of the simulated progress.
    [[nodiscard]] virtual std::uint32_t randomNumber();

private:
    struct ExportKind;
    void exportAs(const ExportKind &kind);
    [[nodiscard]] NSString chooseExportTarget(const ExportKind &kind) const;
    void runExport(const ExportKind &kind, const NSString &target);
    void showInitialFilter();
    void loadDidEnd();   // any thread
    void showLoaded();
    void showRealProgress(double percent);   // any thread
    void runSimulatedProgress();
    bool simulateStep();   // any thread; false: the loop is over
    void showSimulatedProgress();
    void showDetailOf(std::int64_t row);

    Shared<bool> loadEnded_;   // may be so before reloadData has returned
};
