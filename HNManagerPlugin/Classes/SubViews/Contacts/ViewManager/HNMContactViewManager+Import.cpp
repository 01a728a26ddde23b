// The import of contacts from a file.
#include "HNManagerPlugin/Classes/PublicProgressWindow/CountedFlow.h"
#include "HNManagerPlugin/Classes/PublicProgressWindow/ResultText.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewManager/HNMContactViewManager.h"
#include "HNManagerPlugin/contracts/RVCoreHelper/RVProductWebLogHelper.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RStrategyActionEventRouter.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVMFileManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"
#include "toolkit/services/UserFolders.h"

namespace {

constexpr const char *kFolderKey = "ContactImportPathKey";

// A mixed result tells the failures alone, a cancelled run without any contact tells 0 failures.
NSString importResult(std::int64_t succeeded, std::int64_t failed) {
    if (succeeded > 0 && failed == 0)
        return successText(results::importContacts, succeeded);
    return NSString::stringWithFormat(
        localized(failed > 1 ? results::importContacts.failedSeveral : results::importContacts.failedOne), failed);
}

}   // namespace

void HNMContactViewManager::_GALogContactImport() { JOIN_POINT(HNMContactViewManager, "_GALogContactImport"); }
void HNMContactViewManager::_GALogImportCSV() { JOIN_POINT(HNMContactViewManager, "_GALogImportCSV"); }
void HNMContactViewManager::_GALogImportCard() { JOIN_POINT(HNMContactViewManager, "_GALogImportCard"); }

NSString HNMContactViewManager::importFolder() {
    const NSString last = RVProductConfig::valueForKey(kFolderKey);
    return last.isEmpty() ? NSString::stringWithFormat("%@/Documents", userFolders().home) : last;
}

// By the whole path: a card file in a folder named "csv" is reported as CSV.
void HNMContactViewManager::reportImportOf(const NSString &path) {
    if (path.containsIgnoringCase("csv"))
        _GALogImportCSV();
    else
        _GALogImportCard();
}

void HNMContactViewManager::onImportButton(const id &) {
    _GALogContactImport();
    if (!RStrategyActionEventRouter::shareInstance().actionRequestDeviceSize(0))
        return;
    const auto paths =
        RVMFileManager::openPanelWithFileType_directory_allowMutiSelect({"csv", "vcf"}, importFolder(), false);
    const NSString path = paths.empty() ? NSString() : paths.back();
    if (path.isEmpty())
        return;
    reportImportOf(path);
    RVProductConfig::setValue_forKey(path.stringByDeletingLastPathComponent(), kFolderKey);
    const auto model = contactViewModel.lock();
    const ContactList contacts = model ? model->contactsOfImportFile(path) : ContactList();
    if (!contacts.empty())
        importContacts(contacts);
}

void HNMContactViewManager::importContacts(const ContactList &contacts) {
    CountedPlan plan;
    plan.windowTitle = localized("ContactView_ImportWindowTitle");
    plan.waitText = localized("ContactView_waitImport");
    plan.asksBeforeCancel = true;
    plan.start = [model = contactViewModel, contacts](const CountedRun::Ref &run) {
        tell(model, [&](HNMContactViewModel &m) {
            m.importContactsFromArray_CallBack(contacts,
                                               [run](std::int64_t index, std::int64_t total, std::int32_t result) {
                                                   return run->itemDone(index, total, result == 0);
                                               });
        });
    };
    plan.itemText = [](std::int64_t done, std::int64_t total) {
        return NSString::stringWithFormat(localized("ContactView_importing"), done, total);
    };
    plan.resultText = importResult;
    plan.didFinish = [self = weakOf(this)](const CountedRun::Ref &) {
        tell(self, [](HNMContactViewManager &manager) { manager.refreshContactFunc(); });
    };
    CountedFlow::run(std::move(plan));
}
