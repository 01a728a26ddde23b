#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewManager/HNMContactViewManager.h"

#include <cmath>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/TextMeasurer.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/services/NSNotificationCenter.h"

HN_CLASS_TABLE(HNMContactViewManager, HNTableViewManager,
               .key("contactViewModel", &HNMContactViewManager::contactViewModel)
                   .key("selectArrayController", &HNMContactViewManager::selectArrayController)
                   .key("detailTableView", &HNMContactViewManager::detailTableView)
                   .key("editEnabled", &HNMContactViewManager::editEnabled)
                   .key("editTitle", &HNMContactViewManager::editTitle)
                   .key("toVcardTitle", &HNMContactViewManager::toVcardTitle)
                   .key("toCSVTitle", &HNMContactViewManager::toCSVTitle)
                   .key("deviceDisconnected", &HNMContactViewManager::deviceDisconnected)
                   .key("dupcontactsArray",
                        [](NSObject &o) {
                            return Value(Value::List(static_cast<HNMContactViewManager &>(o).dupcontactsArray));
                        })
                   .selector("initContactManager", &HNMContactViewManager::initContactManager)
                   .selector("refreshContactFunc", &HNMContactViewManager::refreshContactFunc)
                   .selector("showSelectedContactInfoAtRow:", &HNMContactViewManager::showSelectedContactInfoAtRow)
                   .selector("onNewButton:", &HNMContactViewManager::onNewButton)
                   .selector("editMenuClick:", &HNMContactViewManager::editMenuClick)
                   .selector("onImportButton:", &HNMContactViewManager::onImportButton)
                   .selector("onDeleteButton:", &HNMContactViewManager::onDeleteButton)
                   .selector("onExportButton:", &HNMContactViewManager::onExportButton)
                   .selector("exportTovCardFile:", &HNMContactViewManager::exportTovCardFile)
                   .selector("exportToCSVFile:", &HNMContactViewManager::exportToCSVFile)
                   .selector("duplicateClick:", &HNMContactViewManager::duplicateClick)
                   .selector("deviceDisConnectNotify:", &HNMContactViewManager::deviceDisConnectNotify))

// ---------------------------------------------------------------- start

void HNMContactViewManager::viewDidLoad() {
    HNTableViewManager::viewDidLoad();
    deviceDisconnected = false;
    measuringFont_ = NSFont::fontWithName_size("Helvetica Neue", 13.0);
    initDisableiCloudImage();
    initContactManager();
    NSNotificationCenter::defaultCenter().addObserver_selector_name_object(
        selfOf(this), "deviceDisConnectNotify:", NMobileDeviceDisConnectionDidChangeNotification);
}

void HNMContactViewManager::deviceDisConnectNotify(const id &) { deviceDisconnected = true; }

void HNMContactViewManager::initDisableiCloudImage() {
    const auto picture = [](const char *name) {
        return NSBundle::bundleForClass()->pathForResource_ofType(name, "png");
    };
    disable_icloudImagePath_1 = picture("iCloud_Tap_iCloud");
    disable_icloudImagePath_2 = picture("iCloud_Tap_Contacts");
    disable_icloudImagePath_3 = picture("iCloud_Keep_on_My_iPhone");
    close_iCloud_title = localized("ContactView_icloud");
    close_iCloud_Step_1 = localized("ContactView_ContactiCloud_1");
    close_iCloud_Step_2 = localized("ContactView_ContactiCloud_2");
    close_iCloud_Step_3 = localized("ContactView_ContactiCloud_3");
}

void HNMContactViewManager::initTableHeadMultiLanguage() {
    headTitle_1 = localized("ContactView_Name");
    headTitle_2 = localized("ContactView_Phone_Number");
    headTitle_3 = localized("ContactView_Email");
}

void HNMContactViewManager::initButtonTitleMultiLanguage() {
    addTitle = localized("ContactView_button_NewContact");
    retryTitle = localized("FileManager_Retry");
    importTitle = localized("FileManager_Import");
    exportTitle = localized("FileManager_Export");
    de_DuplicateTitle = localized("ContactView_button_Duplicate");
    deleteTitle = localized("ContactView_button_Delete");
    refreshTitle = localized("FileManager_Refresh");
    editTitle = localized("ContactView_Menu_Edit");
    toVcardTitle = localized("ContactView_Menu_ToVcard");
    toCSVTitle = localized("ContactView_Menu_ToCSV");
}

// ---------------------------------------------------------------- loading

std::int64_t HNMContactViewManager::rowCount() const {
    const auto table = tableView.lock();
    return table ? table->numberOfRows() : 0;
}

void HNMContactViewManager::setTableHidden(bool hidden) {
    tell(tableView, [hidden](NSTableView &table) { table.setHidden(hidden); });
}

void HNMContactViewManager::hideTableWithoutRows() {
    if (rowCount() == 0)
        setTableHidden(true);
}

void HNMContactViewManager::showBottomBar(std::size_t selected) {
    showTotalRowInfo_withSelectedCount(static_cast<std::uint64_t>(rowCount()), selected);
}

bool HNMContactViewManager::showsCloudPanel() {
    const auto model = contactViewModel.lock();
    const bool inCloud = model && model->checkContactiCloudState() != 0;
    if (inCloud) {
        showDisableiCloudView(true);
        setTableHidden(true);
    }
    return inCloud;
}

void HNMContactViewManager::showTableAgain() {
    showDisableiCloudView(false);
    setTableHidden(false);
    tell(tableView, [](RUIMenuTableView &table) { table.setCanExtendSelection(true); });
}

void HNMContactViewManager::load(void (HNMContactViewManager::*didLoad)()) {
    hnManagerLoadData_complete(localized("FileManager_NoContacts"), [self = weakOf(this), didLoad] {
        tell(self, [didLoad](HNMContactViewManager &manager) { (manager.*didLoad)(); });
    });
}

void HNMContactViewManager::initContactManager() {
    if (showsCloudPanel())
        return;
    showTableAgain();
    load(&HNMContactViewManager::firstLoadDidEnd);
}

void HNMContactViewManager::firstLoadDidEnd() {
    hideTableWithoutRows();
    showSelectedContactInfoAtRow(0);
    showBottomBar(0);
}

void HNMContactViewManager::refreshContactFunc() {
    tell(searchField, [](NSTextField &box) { box.setStringValue(""); });
    resetDataContents();
    tell(contactViewModel, [](HNMContactViewModel &model) { model.globalArray->removeAllObjects(); });
    if (showsCloudPanel()) {
        loadingFinished = false;
        return;
    }
    showTableAgain();
    load(&HNMContactViewManager::refreshDidEnd);
}

void HNMContactViewManager::refreshDidEnd() {
    updateHeadCheckBoxState();
    showSelectedContactInfoAtRow(0);
    showBottomBar(0);
    searchFieldByTextField();
    hideTableWithoutRows();
}

// ---------------------------------------------------------------- rows

void HNMContactViewManager::showSelectedContactInfoAtRow(std::int64_t row) {
    if (row == rowCount() || row < 0 || row == static_cast<std::int64_t>(NSNotFound))
        return;
    tell(contactViewModel, [row](HNMContactViewModel &model) { model.showSelectRowContactDetailInfo(row); });
    tell(selectArrayController, [](NSArrayController &controller) { controller.rearrangeObjects(); });
}

// The detail table has this manager as its delegate too.
void HNMContactViewManager::tableViewSelectionDidChange(NSTableView &table) {
    if (&table == tableView.lock().get())
        RowSelectedChange();
}

void HNMContactViewManager::RowSelectedChange() {
    HNTableViewManager::RowSelectedChange();
    const auto controller = arrayController();
    const std::size_t selected = controller ? controller->selectionIndexes().count() : 0;
    editEnabled = selected == 1;
    showBottomBar(selected);
    const auto table = tableView.lock();
    showSelectedContactInfoAtRow(table ? table->selectedRow() : -1);
    tell(contactViewModel, [](HNMContactViewModel &model) { model.searchSelectedChanged(); });
}

void HNMContactViewManager::tableView_sortDescriptorsDidChange(NSTableView &table, const NSSortDescriptors &old) {
    HNTableViewManager::tableView_sortDescriptorsDidChange(table, old);
    tell(contactViewModel, [](HNMContactViewModel &model) { model.moveSpecialCharactersToBack(); });
    if (const auto controller = arrayController())
        controller->rearrangeObjects();
    showSelectedContactInfoAtRow(0);
}

void HNMContactViewManager::searchField_(const id &sender) {
    HNTableViewManager::searchField_(sender);
    updateHeadCheckBoxState();
    if (rowCount() > 0)
        showSelectedContactInfoAtRow(0);
    const auto noResult = noSearchField.lock();
    setTableHidden(noResult && !noResult->isHidden());
}

NSArray HNMContactViewManager::selectedRows() const {
    const auto controller = arrayController();
    return controller ? controller->selectedObjects() : NSArray();
}

std::int64_t HNMContactViewManager::openWindow(const ResultWindow &window, const NSString &contents) {
    const auto parts = make<NSMutableDictionary>();
    const auto text = [](const char *key) { return key ? localized(key) : NSString(); };
    parts->setObject_forKey(contents, "Contents");
    parts->setObject_forKey(text(window.title), "Title");
    parts->setObject_forKey(text(window.leftButton), "leftButtonTitle");
    parts->setObject_forKey(text(window.rightButton), "rightButtonTitle");
    parts->setObject_forKey(NSString(window.icon), "iconName");
    return progressWindows().openOperationResultWindowContents_type(parts, window.type);
}

void HNMContactViewManager::deSelectAllContactGroup() {
    const auto model = contactViewModel.lock();
    if (!model)
        return;
    for (const id &group : model->contactGroup->snapshot())
        if (const auto info = std::dynamic_pointer_cast<ContactGroupInfo>(group))
            info->isSelected = false;
}

// ---------------------------------------------------------------- heights

double HNMContactViewManager::tableView_heightOfRow(NSTableView &table, std::int64_t row) {
    if (&table != detailTableView.lock().get())
        return kRowHeight;
    constexpr double kAroundInfo = 50.0;
    const auto info = std::dynamic_pointer_cast<HNContactInfo>(table.objectAtRow(row));
    return kAroundInfo + (info ? heightOfInfo(info->info) : 0.0);
}

// Paragraph by paragraph; a paragraph's own lines stand apart by the line spacing. (The spacing between paragraphs has
// no part in it: each is measured alone.)
double HNMContactViewManager::heightOfInfo(const NSString &info) const {
    constexpr double kWidth = 337.0, kLineSpacing = 5.5, kPerParagraph = 1.0;
    if (info.isEmpty())
        return 0.0;
    const auto measurer = TextMeasurer::current();
    const double lineHeight = measurer->boundingRect("", measuringFont_, 0).height;
    double height = 0.0;
    for (const NSString &paragraph : info.componentsSeparatedByString("\n")) {
        const double bare = measurer->boundingRect(paragraph, measuringFont_, kWidth).height;
        const double lines = lineHeight > 0 ? std::max(1.0, std::round(bare / lineHeight)) : 1.0;
        height += std::ceil(bare + (lines - 1) * kLineSpacing) + kPerParagraph;
    }
    return height;
}
