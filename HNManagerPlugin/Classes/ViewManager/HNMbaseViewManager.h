// The controller half of a category: its panels and labels, the loading of its data, its status line and search box.
// No view controller: it stands in the nib beside the view model, and only borrows the name viewDidLoad for its start.
//
// Links     to views, model and panel parts are weak; the nib's owner keeps them.
// Threads   main, unless an operation says otherwise. Device reads and long operations run on the global queue; their
//           blocks hold the manager weakly and turn it strong for their run.
// Gate      while `loadingFinished` is false, search does nothing and category buttons that test it do nothing.
#pragma once

#include <functional>

#include "HNManagerPlugin/Classes/PublicProgressWindow/ProgressWindowHost.h"
#include "HNManagerPlugin/Classes/ViewManager/HNNoSearchResultViewController.h"
#include "HNManagerPlugin/Classes/ViewModel/HNMbaseViewModel.h"
#include "HNManagerPlugin/contracts/RVPluginProtocol/RVBasePluginObject.h"
#include "toolkit/Property.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSView.h"

class HNMbaseViewManager : public NSObject, public IPluginProtocol {
public:
    HN_DECLARE_CLASS_TABLE

    // ------------------------------------------------------------ outlets
    std::weak_ptr<NSView> currentView;   // the view now shown in contentView
    std::weak_ptr<NSView> buttomView;    // bottom bar
    std::weak_ptr<NSView> contentView;   // where panels are pinned
    std::weak_ptr<NSView> disable_iCloudView;
    std::weak_ptr<NSView> tableRowChangeView;   // notice bar
    std::weak_ptr<NSTextField> searchField;
    std::weak_ptr<HNMbaseViewModel> viewModel;
    std::weak_ptr<NSView> noSearchField;   // the view of noSearchResultViewCtrl

    // ------------------------------------------------------------ state
    std::shared_ptr<HNNoSearchResultViewController> noSearchResultViewCtrl;
    float layoutConstraintLeft = 0.0F;   // points; left inset of the panel
    bool closePWindow = false;           // spare, for categories
    Shared<bool> loadingFinished;
    Property<bool> hasSelectedRow;
    std::int64_t totalSize = 0;   // bytes, kept by categories
    Property<NSString> tableRowInfoString;
    Property<NSString> tableRowChangeStr;
    Property<NSString> disable_icloudImagePath_1, disable_icloudImagePath_2, disable_icloudImagePath_3;
    Property<NSString> close_iCloud_title, close_iCloud_Step_1, close_iCloud_Step_2, close_iCloud_Step_3;
    Property<NSString> headTitle_1, headTitle_2, headTitle_3, headTitle_4, headTitle_5;
    Property<NSString> addTitle, retryTitle, importTitle, exportTitle, deleteTitle, refreshTitle, uninstallTitle, de_DuplicateTitle;

    void dealloc() override;

    // ------------------------------------------------------------ what a category replaces, in the order of a start
    virtual void initViewModel(const std::shared_ptr<HNMbaseViewModel> &model);
    // Swaps the view inside contentView.
    virtual void showSelectedView(const std::shared_ptr<NSView> &view);
    // May be called again: the panel is then added anew with fresh constraints.
    virtual void addNoSearchFieldToSupview();
    virtual void addDisableiCloudView();
    virtual void showDisableiCloudView(bool shown);
    virtual void setNoSearchResultViewHidden(bool hidden);
    virtual void viewDidLoad();
    virtual void initDisableiCloudImage() {}
    virtual void initTableHeadMultiLanguage() {}
    virtual void initButtonTitleMultiLanguage() {}
    // The category's load: calls hnManagerLoadData_complete with its no-data text.
    virtual void viewManagerLoadData() {}

    // ------------------------------------------------------------ loading
    // Shows the loading panel, lets the model read in the background, then shows the list or the no-data panel and runs
    // `complete` (always, on the main queue). A reload while one runs is the caller's business to prevent.
    void hnManagerLoadData_complete(const NSString &noDataText, std::function<void()> complete);

    // ------------------------------------------------------------ panels
    void showLoadingAnimationView_hiddenView(const NSString &text, bool hidden);   // any thread
    void updateLoadingProgress(const NSString &text);
    void showNoDataView_hiddenView(const NSString &text, bool hidden);
    void showNoSearchResultView();

    // ------------------------------------------------------------ search
    void searchFieldByTextField();
    // The search box's action.
    virtual void searchField_(const id &sender);

    // ------------------------------------------------------------ status line; a total of 0 leaves it as it was
    void showTotalRowInfo(std::uint64_t total);
    void showTotalRowInfo_withSelectedCount(std::uint64_t total, std::uint64_t selected);
    void showTotalRowInfo_withSelectedCount_withSelectedFileSize(std::uint64_t total, std::uint64_t selected, std::int64_t sizeBytes);
    // Shows the notice bar for three seconds; calls overlap, the first one's end hides the last one's bar.
    void showTableRowChangeView_withFileType_operationString(std::int64_t count, const NSString &fileTypeKey, const NSString &operationKey);
    // "YYYYMMdd_HHmmss" of now, local, for names of exported files. The year is the week-based one; kept: files of
    // earlier exports sort by it.
    [[nodiscard]] NSString getCurrentTimes() const;

    // ------------------------------------------------------------ progress and result windows
    [[nodiscard]] ProgressWindowHost &progressWindows() { return progressWindows_; }

protected:
    void removeRotationAnimation();

private:
    struct PanelState;
    void showPanel(const PanelState &state, const NSString &text, bool hidden);
    void addRotationAnimation();
    void loadDidFinish(const NSString &noDataText);
    void pinPanel(const std::shared_ptr<NSView> &panel, double left);

    ProgressWindowHost progressWindows_;
};
