#include "HNManagerPlugin/Classes/SubViews/Message/ViewManager/HNMMessageViewManager.h"

#include <random>

#include "HNManagerPlugin/contracts/RVCoreHelper/RVProductWebLogHelper.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVLoger.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/services/NSNotificationCenter.h"

using namespace std::chrono_literals;

#define HN_KEY(name) .key(#name, &HNMMessageViewManager::name)
HN_CLASS_TABLE(HNMMessageViewManager, HNTableViewManager,
               HN_KEY(messageViewModel) HN_KEY(messageContentView) HN_KEY(multPhoneView) HN_KEY(phoneLabel)
                   HN_KEY(phoneComboBox) HN_KEY(switchPhoneButton) HN_KEY(stopBackupProgress) HN_KEY(currentProgress)
                       HN_KEY(realProgress) HN_KEY(menuCSVstr) HN_KEY(menuHtmlstr)
                           .selector("exportMessage:", &HNMMessageViewManager::exportMessage)
                           .selector("exportMessage2HTML:", &HNMMessageViewManager::exportMessage2HTML)
                           .selector("deviceConnectedChange:", &HNMMessageViewManager::deviceConnectedChange)
                           .selector("refreshButtonClick:", &HNMMessageViewManager::refreshButtonClick)
                           .selector("retryCheckFindMyPhone:", &HNMMessageViewManager::retryCheckFindMyPhone)
                           .selector("switchPhoneNumberAction:", &HNMMessageViewManager::switchPhoneNumberAction)
                           .selector("showFirstMessgeDetail", &HNMMessageViewManager::showFirstMessgeDetail))
#undef HN_KEY

// ---------------------------------------------------------------- start

void HNMMessageViewManager::viewDidLoad() {
    HNTableViewManager::viewDidLoad();
    loadingFinished = false;
    tell(tableView, [](RUIMenuTableView &table) { table.setCanExtendSelection(true); });
    NSNotificationCenter::defaultCenter().addObserver_selector_name_object(selfOf(this), "deviceConnectedChange:",
                                                                           NMobileDeviceDidSwitchChangeNotification);
    checkFindMyPhoneAndLoadData();
    showInitialFilter();
    tell(phoneComboBox, [this](NSComboBox &combo) {
        combo.setComboDelegate(selfOf(this));
        combo.setUsesDataSource(true);
        combo.setDataSource(selfOf(this));
    });
}

void HNMMessageViewManager::initTableHeadMultiLanguage() { headTitle_1 = localized("MessageView_messageContent"); }

void HNMMessageViewManager::initButtonTitleMultiLanguage() {
    retryTitle = localized("FileManager_Retry");
    exportTitle = localized("FileManager_Export");
    refreshTitle = localized("FileManager_Refresh");
    menuCSVstr = localized("Manager_Export_CSV");
    menuHtmlstr = localized("Manager_Export_HTML");
}

void HNMMessageViewManager::showInitialFilter() {
    tell(phoneLabel, [](NSTextField &label) { label.setStringValue(localized("Phone: ")); });
    tell(phoneComboBox, [](NSComboBox &combo) { combo.setStringValue(localized("All_PhoneNumber")); });
    tell(multPhoneView, [](NSView &strip) { strip.setHidden(true); });
}

void HNMMessageViewManager::checkFindMyPhoneAndLoadData() {
    loadMessageDetailView();
    initViewModelBackup();
    messageViewManagerLoadData();
}

void HNMMessageViewManager::loadMessageDetailView() {
    const auto model = messageViewModel.lock();
    const auto content = messageContentView.lock();
    if (!model || !content)
        return;
    constexpr double kLine = 1, kHead = 53;   // points at the left edge and at the top that the pane leaves free
    auto pane = alloc<HNMessageDetailViewController>();
    pane->initWithNibName_bundle("HNMessageDetailViewController", NSBundle::bundleForClass());
    model->messageTableController = pane;
    const auto view = pane->view();
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    content->addSubview(view);
    const auto tie = [&](NSLayoutAttribute edge, double constant) {
        content->addConstraint(NSLayoutConstraint::tie(view, edge, content, edge, constant));
    };
    tie(NSLayoutAttribute::left, kLine);
    tie(NSLayoutAttribute::right, 0);
    tie(NSLayoutAttribute::bottom, 0);
    tie(NSLayoutAttribute::top, kHead);
}

// ---------------------------------------------------------------- load

void HNMMessageViewManager::initViewModelBackup() {
    const auto model = messageViewModel.lock();
    if (!model)
        return;
    model->backupProgress_ = [self = weakOf(this)](double percent) {
        tell(self, [percent](HNMMessageViewManager &manager) { manager.showRealProgress(percent); });
    };
    model->backupFinished = [self = weakOf(this)] { tell(self, [](HNMMessageViewManager &manager) { manager.loadDidEnd(); }); };
}

void HNMMessageViewManager::messageViewManagerLoadData() {
    const auto model = messageViewModel.lock();
    if (!model)
        return;
    if (!model->startSyncBackUp()) {
        loadingFinished = true;
        showNoDataView_hiddenView(localized("FileManager_NoMessages"), false);
        return;
    }
    showLoadingAnimationView_hiddenView(localized("MessageView_messageLoad"), false);
    loadEnded_ = false;
    model->reloadData();
    stopBackupProgress = loadEnded_.get();   // a backup that failed at once shall not leave the loading panel behind
    currentProgress = 0;
    realProgress = 0;
    runSimulatedProgress();
}

void HNMMessageViewManager::loadDidEnd() {
    loadEnded_ = true;
    loadingFinished = true;
    stopBackupProgress = true;
    if (dispatch::isMain())
        return showLoaded();
    dispatch::async(dispatch::main(), [self = weakOf(this)] { tell(self, [](HNMMessageViewManager &manager) { manager.showLoaded(); }); });
}

void HNMMessageViewManager::showLoaded() {
    tell(multPhoneView, [](NSView &strip) { strip.setHidden(false); });
    tell(phoneComboBox, [](NSComboBox &combo) { combo.reloadData(); });
    const std::size_t count = contentsCount();
    if (count == 0)
        return showNoDataView_hiddenView(localized("FileManager_NoMessages"), false);
    setNoSearchResultViewHidden(true);
    showFirstMessgeDetail();
    showTotalRowInfo_withSelectedCount(count, 0);
    searchFieldByTextField();
}

void HNMMessageViewManager::deviceConnectedChange(const id &) { RKBackupAndRestoreTask::sharedInstance()->stopBackup(); }

void HNMMessageViewManager::refreshButtonClick(const id &) {
    JOIN_POINT(HNMMessageViewManager, "refreshButtonClick:");
    showInitialFilter();
    tell(messageViewModel, [](HNMMessageViewModel &model) { model.forgetThreads(); });
    loadingFinished = false;
    showDisableiCloudView(true);
    checkFindMyPhoneAndLoadData();
}

void HNMMessageViewManager::retryCheckFindMyPhone(const id &) {
    const auto model = messageViewModel.lock();
    if (!model || model->checkMessageFindeMyPhoneicloud() != 0)
        return;
    showDisableiCloudView(false);
    initViewModelBackup();
    messageViewManagerLoadData();
}

// ---------------------------------------------------------------- progress

namespace {

NSString progressText(double percent) {
    return NSString::stringWithFormat("%@ %.2f%%", localized("MessageView_messageLoad"), percent);
}

}   // namespace

std::uint32_t HNMMessageViewManager::randomNumber() {
    static thread_local std::mt19937 generator(std::random_device{}());
    return generator();
}

// A backup says nothing at first. The first real value that passes the simulated one ends this for good.
void HNMMessageViewManager::runSimulatedProgress() {
    dispatch::async(dispatch::global(), [self = weakOf(this)] {
        const auto step = [&] {
            bool goesOn = false;
            tell(self, [&](HNMMessageViewManager &manager) { goesOn = manager.simulateStep(); });
            return goesOn;
        };
        while (step())
            dispatch::sleepFor(2s);
    });
}

bool HNMMessageViewManager::simulateStep() {
    if (stopBackupProgress || realProgress > currentProgress)
        return false;
    currentProgress.update([this](double &percent) { percent += (randomNumber() % 99 + 1) / 1000.0; });
    dispatch::async(dispatch::main(), [self = weakOf(this)] {
        tell(self, [](HNMMessageViewManager &manager) { manager.showSimulatedProgress(); });
    });
    return true;
}

void HNMMessageViewManager::showSimulatedProgress() {
    constexpr double kLastOnShow = 5.0;
    // a step that comes as the load ends shall not cover the list
    if (currentProgress < kLastOnShow && !stopBackupProgress)
        showLoadingAnimationView_hiddenView(progressText(currentProgress), false);
}

void HNMMessageViewManager::showRealProgress(double percent) {
    realProgress = percent;
    if (currentProgress > percent)
        return;
    dispatch::async(dispatch::main(), [self = weakOf(this), text = progressText(percent)] {
        tell(self, [&](HNMMessageViewManager &manager) { manager.updateLoadingProgress(text); });
    });
}

// ---------------------------------------------------------------- rows

void HNMMessageViewManager::showDetailOf(std::int64_t row) {
    const auto model = messageViewModel.lock();
    const auto thread = model ? model->contents->at<HNMessageEntity>(static_cast<std::size_t>(row)) : nullptr;
    if (!thread)
        return;
    model->messageOwner = thread->contactName;
    model->selectMessageIcon = thread->contactPic;
    model->loadMessageAtRow(row);
}

void HNMMessageViewManager::showFirstMessgeDetail() {
    const auto table = tableView.lock();
    if (table && table->numberOfRows() > 0)
        showDetailOf(0);
}

void HNMMessageViewManager::showMessageContent() {
    const auto table = tableView.lock();
    if (table && table->selectedRow() >= 0)
        showDetailOf(table->selectedRow());
}

void HNMMessageViewManager::RowSelectedChange() {
    const auto table = tableView.lock();
    if (!table)
        return;
    hasSelectedRow = table->numberOfSelectedRows() > 0;
    showTotalRowInfo_withSelectedCount(contentsCount(), static_cast<std::uint64_t>(table->numberOfSelectedRows()));
    showMessageContent();
    tell(messageViewModel, [](HNMMessageViewModel &model) { model.searchSelectedChanged(); });
}

void HNMMessageViewManager::searchField_(const id &sender) {
    if (!loadingFinished)
        return;
    HNTableViewManager::searchField_(sender);
    updateHeadCheckBoxState();
    showFirstMessgeDetail();
}

// ---------------------------------------------------------------- the user's own numbers

std::int64_t HNMMessageViewManager::numberOfItemsInComboBox(NSComboBox &) {
    const auto model = messageViewModel.lock();
    return (model ? static_cast<std::int64_t>(model->phoneNumbers.get().size()) : 0) + 1;
}

NSString HNMMessageViewManager::comboBox_objectValueForItemAtIndex(NSComboBox &, std::int64_t index) {
    const auto model = messageViewModel.lock();
    const std::vector<NSString> numbers = model ? model->phoneNumbers.get() : std::vector<NSString>();
    if (index < 0 || numbers.empty() || index > static_cast<std::int64_t>(numbers.size()))
        return "";
    return index == 0 ? localized("All_PhoneNumber") : numbers[static_cast<std::size_t>(index - 1)];
}

void HNMMessageViewManager::switchPhoneNumberAction(const id &) {
    const auto combo = phoneComboBox.lock();
    const NSString number = combo ? combo->stringValue() : NSString();
    RVLog(NSString::stringWithFormat(">>> Seleted PhoneNumber: %@", number));
    tell(messageViewModel, [&](HNMMessageViewModel &model) { model.setFilterPhoneNumber(number); });
}
