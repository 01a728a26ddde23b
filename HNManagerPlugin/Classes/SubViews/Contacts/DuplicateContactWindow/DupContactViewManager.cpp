#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DupContactViewManager.h"

HN_CLASS_TABLE(DupContactViewManager, HNMbaseViewManager)

void DupContactViewManager::viewDidLoad() {
    HNMbaseViewManager::viewDidLoad();
    tell(viewModel, [](HNMbaseViewModel &model) { model.reloadView(); });
}
