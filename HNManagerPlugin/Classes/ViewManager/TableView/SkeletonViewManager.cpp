#include "HNManagerPlugin/Classes/ViewManager/TableView/SkeletonViewManager.h"

HN_CLASS_TABLE(SkeletonViewManager, HNTableViewManager, )

void SkeletonViewManager::viewDidLoad() {
    HNTableViewManager::viewDidLoad();
    viewManagerLoadData();
}

void SkeletonViewManager::viewManagerLoadData() {
    hnManagerLoadData_complete(noDataText(), [link = weakOf(this)] {
        tell(link, [](SkeletonViewManager &manager) {
            if (const auto model = manager.viewModel.lock())
                manager.showTotalRowInfo(model->contents->count());
            manager.searchFieldByTextField();
        });
    });
}

void SkeletonViewManager::RowSelectedChange() {
    HNTableViewManager::RowSelectedChange();
    const auto model = viewModel.lock();
    const auto controller = model ? model->arrayController.lock() : nullptr;
    if (!controller)
        return;
    showTotalRowInfo_withSelectedCount(model->contents->count(), controller->selectionIndexes().count());
    model->searchSelectedChanged();
}
