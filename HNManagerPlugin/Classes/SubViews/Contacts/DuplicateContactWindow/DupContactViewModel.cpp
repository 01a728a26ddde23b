#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DupContactViewModel.h"

HN_CLASS_TABLE(DupContactViewModel, HNMbaseViewModel)

void DupContactViewModel::reloadView() {
    tell(arrayController, [](NSArrayController &controller) { controller.rearrangeObjects(); });
}
