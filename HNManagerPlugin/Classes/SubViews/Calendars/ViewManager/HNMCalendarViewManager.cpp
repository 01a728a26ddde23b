#include "HNManagerPlugin/Classes/SubViews/Calendars/ViewManager/HNMCalendarViewManager.h"

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"

HN_CLASS_TABLE(HNMCalendarViewManager, HNTableViewManager, )

void HNMCalendarViewManager::viewDidLoad() {
    HNTableViewManager::viewDidLoad();
    viewManagerLoadData();
}

void HNMCalendarViewManager::viewManagerLoadData() {
    hnManagerLoadData_complete(localized("FileManager_NoCalendars"), [link = weakOf(this)] {
        tell(link, [](HNMCalendarViewManager &manager) {
            if (const auto model = manager.viewModel.lock())
                manager.showTotalRowInfo(model->contents->count());
            manager.searchFieldByTextField();
        });
    });
}

void HNMCalendarViewManager::RowSelectedChange() {
    HNTableViewManager::RowSelectedChange();
    const auto model = viewModel.lock();
    const auto controller = model ? model->arrayController.lock() : nullptr;
    if (!controller)
        return;
    showTotalRowInfo_withSelectedCount(model->contents->count(), controller->selectionIndexes().count());
    model->searchSelectedChanged();
}
