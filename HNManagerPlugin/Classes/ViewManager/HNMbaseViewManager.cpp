#include "HNManagerPlugin/Classes/ViewManager/HNMbaseViewManager.h"

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVFoundation/NSStringFormats.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/services/NSDateFormatter.h"
#include "toolkit/services/NSLog.h"
#include "toolkit/views/NSApplication.h"

using namespace std::chrono_literals;

namespace {

constexpr double kBarHeight = 60;   // points at the top that panels leave free: buttons and search box
constexpr const char *kRotation = "RotationAnimation";

}  // namespace

#define HN_KEY(name) .key(#name, &HNMbaseViewManager::name)
HN_CLASS_TABLE(HNMbaseViewManager, NSObjectTable,
               HN_KEY(currentView) HN_KEY(buttomView) HN_KEY(contentView) HN_KEY(disable_iCloudView) HN_KEY(tableRowChangeView)
               HN_KEY(searchField) HN_KEY(viewModel) HN_KEY(noSearchField) HN_KEY(noSearchResultViewCtrl)
               HN_KEY(layoutConstraintLeft) HN_KEY(closePWindow) HN_KEY(loadingFinished) HN_KEY(hasSelectedRow) HN_KEY(totalSize)
               HN_KEY(tableRowInfoString) HN_KEY(tableRowChangeStr) HN_KEY(disable_icloudImagePath_1)
               HN_KEY(disable_icloudImagePath_2) HN_KEY(disable_icloudImagePath_3) HN_KEY(close_iCloud_title)
               HN_KEY(close_iCloud_Step_1) HN_KEY(close_iCloud_Step_2) HN_KEY(close_iCloud_Step_3) HN_KEY(headTitle_1)
               HN_KEY(headTitle_2) HN_KEY(headTitle_3) HN_KEY(headTitle_4) HN_KEY(headTitle_5) HN_KEY(addTitle) HN_KEY(retryTitle)
               HN_KEY(importTitle) HN_KEY(exportTitle) HN_KEY(deleteTitle) HN_KEY(refreshTitle) HN_KEY(uninstallTitle)
               HN_KEY(de_DuplicateTitle)
               .selector("searchField:", &HNMbaseViewManager::searchField_)
               .selector("viewManagerLoadData", &HNMbaseViewManager::viewManagerLoadData))
#undef HN_KEY

// ---------------------------------------------------------------- start

void HNMbaseViewManager::initViewModel(const std::shared_ptr<HNMbaseViewModel> &model) {
    viewModel = model;
    tell(tableRowChangeView, [](NSView &bar) { bar.setHidden(true); });
    viewDidLoad();
    tell(buttomView, [](NSView &bar) {
        bar.setWantsLayer(true);
        bar.layer()->setBorderWidth(1.0);
        const double grey = 240.0 / 255.0;
        bar.layer()->setBorderColor(NSColor::colorWithSRGBRed_green_blue_alpha(grey, grey, grey, grey));
    });
}

void HNMbaseViewManager::viewDidLoad() {
    layoutConstraintLeft = 0.0F;
    tell(tableRowChangeView, [](NSView &bar) { bar.setHidden(true); });
    addNoSearchFieldToSupview();
    addDisableiCloudView();
    setNoSearchResultViewHidden(true);
    showDisableiCloudView(false);
    if (systemVersion() >= SystemVersion{10, 10})
        tell(searchField, [](NSTextField &box) { box.setPlaceholderString(localized("FileManager_Search")); });
    initTableHeadMultiLanguage();
    initButtonTitleMultiLanguage();
}

void HNMbaseViewManager::dealloc() {
    NSLog("Class dealloc %@", className());
    NSObject::dealloc();
}

// ---------------------------------------------------------------- panels

void HNMbaseViewManager::pinPanel(const std::shared_ptr<NSView> &panel, double left) {
    const auto content = contentView.lock();
    if (!panel || !content)
        return;
    panel->removeFromSuperview();
    panel->setTranslatesAutoresizingMaskIntoConstraints(false);
    content->addSubview(panel);
    const auto tie = [&](NSLayoutAttribute edge, double constant) {
        content->addConstraint(NSLayoutConstraint::tie(panel, edge, content, edge, constant));
    };
    tie(NSLayoutAttribute::left, left);
    tie(NSLayoutAttribute::right, 0);
    tie(NSLayoutAttribute::top, kBarHeight);
    tie(NSLayoutAttribute::bottom, 0);
}

void HNMbaseViewManager::addNoSearchFieldToSupview() {
    if (!noSearchResultViewCtrl) {
        noSearchResultViewCtrl = alloc<HNNoSearchResultViewController>();
        noSearchResultViewCtrl->initWithNibName_bundle("HNNoSearchResultViewController", NSBundle::bundleForClass());
        noSearchField = noSearchResultViewCtrl->view();
    }
    pinPanel(noSearchField.lock(), layoutConstraintLeft);
}

void HNMbaseViewManager::addDisableiCloudView() { pinPanel(disable_iCloudView.lock(), 0); }

void HNMbaseViewManager::showDisableiCloudView(bool shown) {
    tell(disable_iCloudView, [shown](NSView &panel) { panel.setHidden(!shown); });
}

void HNMbaseViewManager::setNoSearchResultViewHidden(bool hidden) {
    tell(noSearchField, [hidden](NSView &panel) { panel.setHidden(hidden); });
}

void HNMbaseViewManager::showSelectedView(const std::shared_ptr<NSView> &view) {
    if (const auto old = currentView.lock())
        old->removeFromSuperview();
    currentView.reset();
    const auto content = contentView.lock();
    if (!view || !content)
        return;
    currentView = view;
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    content->addSubview(view);
    for (const auto edge : {NSLayoutAttribute::leading, NSLayoutAttribute::trailing, NSLayoutAttribute::bottom, NSLayoutAttribute::top})
        content->addConstraint(NSLayoutConstraint::tie(view, edge, content, edge));
}

// What a panel shows. Flags are set in this order; absent ones stay untouched.
struct HNMbaseViewManager::PanelState {
    bool hidesNoData, hidesNoSearch, hidesRemind;
    std::optional<bool> hidesSpinner;
    bool setsRemindText;
    enum class Animation { added, removed, untouched } animation;
};

void HNMbaseViewManager::showPanel(const PanelState &state, const NSString &text, bool hidden) {
    if (!dispatch::isMain()) {
        dispatch::async(dispatch::main(), [self = weakOf(this), state, text, hidden] {
            tell(self, [&](HNMbaseViewManager &manager) { manager.showPanel(state, text, hidden); });
        });
        return;
    }
    setNoSearchResultViewHidden(hidden);
    if (const auto panel = noSearchResultViewCtrl) {
        panel->hiddenNoDataInfo = state.hidesNoData;
        panel->hiddenNoSearchFieldInfo = state.hidesNoSearch;
        panel->hiddenRemindString = state.hidesRemind;
        if (state.hidesSpinner)
            tell(panel->animationImageView, [&](NSImageView &spinner) { spinner.setHidden(*state.hidesSpinner); });
        if (state.setsRemindText)
            tell(panel->remindString, [&](NSTextField &line) { line.setStringValue(text); });
    }
    if (state.animation == PanelState::Animation::added)
        dispatch::async(dispatch::main(), [self = weakOf(this)] { tell(self, [](HNMbaseViewManager &m) { m.addRotationAnimation(); }); });
    else if (state.animation == PanelState::Animation::removed)
        removeRotationAnimation();
}

void HNMbaseViewManager::showLoadingAnimationView_hiddenView(const NSString &text, bool hidden) {
    showPanel({true, true, false, false, true, PanelState::Animation::added}, text, hidden);
}

void HNMbaseViewManager::updateLoadingProgress(const NSString &text) {
    showPanel({true, true, false, false, true, PanelState::Animation::untouched}, text, false);
}

void HNMbaseViewManager::showNoDataView_hiddenView(const NSString &text, bool hidden) {
    showPanel({false, true, false, true, true, PanelState::Animation::removed}, text, hidden);
}

void HNMbaseViewManager::showNoSearchResultView() {
    showPanel({true, false, true, true, false, PanelState::Animation::untouched}, {}, false);
}

void HNMbaseViewManager::addRotationAnimation() {
    const auto panel = noSearchResultViewCtrl;
    const auto spinner = panel ? panel->animationImageView.lock() : nullptr;
    if (spinner && spinner->layer())
        spinner->layer()->addAnimation_forKey(panel->rotationAnimation(), kRotation);
}

void HNMbaseViewManager::removeRotationAnimation() {
    const auto spinner = noSearchResultViewCtrl ? noSearchResultViewCtrl->animationImageView.lock() : nullptr;
    if (spinner && spinner->layer())
        spinner->layer()->removeAnimationForKey(kRotation);
}

// ---------------------------------------------------------------- loading

void HNMbaseViewManager::hnManagerLoadData_complete(const NSString &noDataText, std::function<void()> complete) {
    loadingFinished = false;
    showLoadingAnimationView_hiddenView(localized("FileManager_loadingData"), false);
    dispatch::async(dispatch::global(), [link = weakOf(this), noDataText, complete = std::move(complete)]() mutable {
        std::shared_ptr<HNMbaseViewManager> self = link.lock();
        // a reader that fails all the same ends the loading panel
        if (const auto model = self ? self->viewModel.lock() : nullptr)
            dispatch::guarded("reloadData", [&] { model->reloadData(); });
        dispatch::async(dispatch::main(), [self = std::move(self), noDataText, complete = std::move(complete)] {
            if (self)
                self->loadDidFinish(noDataText);
            if (complete)
                complete();
        });
    });
}

void HNMbaseViewManager::loadDidFinish(const NSString &noDataText) {
    loadingFinished = true;
    const auto model = viewModel.lock();
    if (model)
        tell(model->arrayController, [](NSArrayController &controller) { controller.rearrangeObjects(); });
    if (!model || model->contents->isEmpty())
        return showNoDataView_hiddenView(noDataText, false);
    setNoSearchResultViewHidden(true);
    removeRotationAnimation();
}

// ---------------------------------------------------------------- search

void HNMbaseViewManager::searchFieldByTextField() {
    const auto model = viewModel.lock();
    if (!model || model->contents->isEmpty() || !loadingFinished)
        return;
    const auto box = searchField.lock();
    const NSString text = (box ? box->stringValue() : NSString()).stringByTrimmingCharactersInSet(CharacterSet::blanks);
    if (model->searchFileByString(text))
        setNoSearchResultViewHidden(true);
    else
        showNoSearchResultView();
    removeRotationAnimation();
}

void HNMbaseViewManager::searchField_(const id &) { searchFieldByTextField(); }

// ---------------------------------------------------------------- status line

void HNMbaseViewManager::showTotalRowInfo(std::uint64_t total) {
    if (total == 1)
        tableRowInfoString = localized("Bottom_item_Format");
    else if (total > 1)
        tableRowInfoString = NSString::stringWithFormat(localized("Bottom_items_Format"), total);
}

void HNMbaseViewManager::showTotalRowInfo_withSelectedCount(std::uint64_t total, std::uint64_t selected) {
    if (selected == 0 || total == 0)
        return showTotalRowInfo(total);
    if (total == 1 || selected == 1)
        tableRowInfoString = localized("Bottom_item_Format_Select");
    else
        tableRowInfoString = NSString::stringWithFormat(localized("Bottom_items_Format_Select"), selected);
}

void HNMbaseViewManager::showTotalRowInfo_withSelectedCount_withSelectedFileSize(std::uint64_t total, std::uint64_t selected,
                                                                                 std::int64_t sizeBytes) {
    if (total == 0)
        return;
    const NSString size = sizeBytes < 1 ? NSString("0 KB") : byteDecFormatFromInteger(sizeBytes);
    if (selected == 0)
        tableRowInfoString = total == 1 ? NSString::stringWithFormat(localized("Bottom_item_Size_Format"), size)
                                        : NSString::stringWithFormat(localized("Bottom_items_Size_Format"), total, size);
    else if (total == 1 || selected == 1)
        tableRowInfoString = NSString::stringWithFormat(localized("Bottom_item_Size_Format_Select"), size);
    else
        tableRowInfoString = NSString::stringWithFormat(localized("Bottom_items_Size_Format_Select"), selected, size);
}

void HNMbaseViewManager::showTableRowChangeView_withFileType_operationString(std::int64_t count, const NSString &fileTypeKey,
                                                                             const NSString &operationKey) {
    tableRowChangeStr = NSString::stringWithFormat("%@ %li %@", localized(operationKey), count, localized(fileTypeKey));
    tell(tableRowChangeView, [](NSView &bar) { bar.setHidden(false); });
    dispatch::async(dispatch::global(), [bar = tableRowChangeView] {
        dispatch::sleepFor(3s);
        dispatch::async(dispatch::main(), [bar] { tell(bar, [](NSView &view) { view.setHidden(true); }); });
    });
}

NSString HNMbaseViewManager::getCurrentTimes() const { return stringFromDate(dispatch::date(), "YYYYMMdd_HHmmss", NSTimeZone::local); }
