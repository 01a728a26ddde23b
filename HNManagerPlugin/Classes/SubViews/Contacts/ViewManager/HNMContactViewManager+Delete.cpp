// The deletion of the selected contacts.
#include "HNManagerPlugin/Classes/PublicProgressWindow/CountedFlow.h"
#include "HNManagerPlugin/Classes/PublicProgressWindow/ResultText.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewManager/HNMContactViewManager.h"
#include "HNManagerPlugin/contracts/RVCoreHelper/RVProductWebLogHelper.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindowController.h"

namespace {

// A mixed result tells the successes alone.
NSString deleteResult(std::int64_t succeeded, std::int64_t failed) {
    if (succeeded > 0)
        return successText(results::deleteContacts, succeeded);
    return NSString::stringWithFormat(
        localized(failed > 1 ? results::deleteContacts.failedSeveral : results::deleteContacts.failedOne), failed);
}

}   // namespace

void HNMContactViewManager::_GALogContactDelete() { JOIN_POINT(HNMContactViewManager, "_GALogContactDelete"); }

std::int64_t HNMContactViewManager::openDeleteDialog() {
    const NSArray rows = selectedRows();
    const auto *only = rows.count() == 1 ? dynamic_cast<const ZpContactDataInfo *>(rows.firstObject().get()) : nullptr;
    const NSString question =
        only ? NSString::stringWithFormat(localized("ContactView_DeleteContact"), only->completeName())
             : NSString::stringWithFormat(localized("ContactView_DeleteContacts"),
                                          static_cast<std::int64_t>(rows.count()), localized("ContactView_Contacts"));
    return openWindow({.title = "ContactView_DeleteWindowTitle",
                       .icon = "icon_help",
                       .leftButton = "ContactView_button_Cancel",
                       .rightButton = "ContactView_button_Delete",
                       .type = RUIDialogWindowController::kRightIsOne},
                      question);
}

void HNMContactViewManager::onDeleteButton(const id &) {
    _GALogContactDelete();
    if (openDeleteDialog() != 1)
        return;
    const ContactList contacts = HNMContactViewModel::contactsOf(selectedRows());
    if (!contacts.empty())
        deleteContacts(contacts);
}

void HNMContactViewManager::deleteContacts(const ContactList &contacts) {
    const auto deleted = make<NSMutableArray>();
    CountedPlan plan;
    plan.windowTitle = localized("ContactView_DeleteWindowTitle");
    plan.waitText = localized("ContactView_waitDelete");
    plan.borderButtonEnabled = false;
    plan.countsItemAfterCancel = true;
    plan.start = [model = contactViewModel, contacts, deleted](const CountedRun::Ref &run) {
        tell(model, [&](HNMContactViewModel &m) {
            m.delectSelectedContact_callBack(contacts, [run, deleted](std::int64_t index, std::int64_t total,
                                                                      const std::shared_ptr<ZpContactDataInfo> &contact,
                                                                      bool success, bool *stop) {
                if (success)
                    deleted->addObject(contact);
                if (run->itemDone(index, total, success) == 1)
                    *stop = true;
            });
        });
    };
    plan.itemText = [](std::int64_t, std::int64_t) { return localized("ContactView_deleting"); };
    plan.resultText = deleteResult;
    plan.didFinish = [self = weakOf(this), deleted](const CountedRun::Ref &) {
        tell(self, [&](HNMContactViewManager &manager) { manager.removeDeleted(deleted->snapshot()); });
    };
    CountedFlow::run(std::move(plan));
}

void HNMContactViewManager::removeDeleted(const NSArray &deleted) {
    const auto model = contactViewModel.lock();
    if (!model)
        return;
    model->contents->removeObjectsIdenticalIn(deleted);
    model->globalArray->removeObjectsIdenticalIn(deleted);
    if (const auto controller = arrayController())
        controller->rearrangeObjects();
    showSelectedContactInfoAtRow(-1);   // the detail panel stands as it was
    showBottomBar(0);
    updateHeadCheckBoxState();
    if (!model->contents->isEmpty())
        return;
    if (!model->globalArray->isEmpty())
        return showNoSearchResultView();
    setTableHidden(true);
    showNoDataView_hiddenView(localized("FileManager_NoContacts"), false);
}
