#include "HNManagerPlugin/Classes/SubViews/Notes/ViewManager/HNMNoteViewManager.h"

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"

HN_CLASS_TABLE(HNMNoteViewManager, HNTableViewManager, )

void HNMNoteViewManager::viewDidLoad() {
    HNTableViewManager::viewDidLoad();
    viewManagerLoadData();
}

void HNMNoteViewManager::viewManagerLoadData() {
    hnManagerLoadData_complete(localized("FileManager_NoNotes"), [link = weakOf(this)] {
        tell(link, [](HNMNoteViewManager &manager) {
            if (const auto model = manager.viewModel.lock())
                manager.showTotalRowInfo(model->contents->count());
            manager.searchFieldByTextField();
        });
    });
}

void HNMNoteViewManager::RowSelectedChange() {
    HNTableViewManager::RowSelectedChange();
    const auto model = viewModel.lock();
    const auto controller = model ? model->arrayController.lock() : nullptr;
    if (!controller)
        return;
    showTotalRowInfo_withSelectedCount(model->contents->count(), controller->selectionIndexes().count());
    model->searchSelectedChanged();
}
