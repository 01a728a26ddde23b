// The search for duplicates and their merge.
#include <unordered_map>
#include <utility>

#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DupContactWindowController.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewManager/HNMContactViewManager.h"
#include "HNManagerPlugin/contracts/RVCoreHelper/RVProductWebLogHelper.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIBreadcrumbWindowController.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/views/NSApplication.h"

namespace {

DupContactGroups groupsOf(const NSArray &array) {
    DupContactGroups groups;
    for (const id &group : array)
        if (auto model = std::dynamic_pointer_cast<DupContactGroupModel>(group))
            groups.push_back(std::move(model));
    return groups;
}

// By contact, the first group of duplicates that has it.
std::unordered_map<const ZpContactDataInfo *, std::shared_ptr<DupContactGroupModel>> byContact(const DupContactGroups &groups) {
    std::unordered_map<const ZpContactDataInfo *, std::shared_ptr<DupContactGroupModel>> places;
    for (const auto &group : groups)
        for (const auto &contact : group->dupContactGroupArray)
            places.try_emplace(contact.get(), group);
    return places;
}

// By pKey, the first group of the device that has it; no other one counts.
std::unordered_map<NSString, ContactGroupList> deviceGroups(const NSArray &groups) {
    std::unordered_map<NSString, ContactGroupList> places;
    for (const id &object : groups)
        if (const auto group = std::dynamic_pointer_cast<ContactGroupInfo>(object))
            for (const NSString &key : group->ContactKey)
                if (!key.isEmpty())
                    places.try_emplace(key, ContactGroupList{group});
    return places;
}

}   // namespace

void HNMContactViewManager::duplicateClick(const id &) {
    JOIN_POINT(HNMContactViewManager, "duplicateClick:");
    auto message = RUIBreadcrumbWindowController::showWindowWithMessage_onMainQueue(
        localized("ContactView_FindingDuduplicateContact"), false);
    dispatch::async(dispatch::global(), [weak = weakOf(this), message = std::move(message)]() mutable {
        tell(weak, [](HNMContactViewManager &self) {
            if (const auto model = self.contactViewModel.lock()) {
                const DupContactGroups groups = model->findDuplicateContacts();
                self.dupcontactsArray = NSArray::of(groups);
            }
        });
        dispatch::sync(dispatch::main(), [&message] { std::exchange(message, nullptr)->close(); });
        const auto self = weak.lock();
        if (self && !self->deviceDisconnected)
            dispatch::performOnMainThread([self] { self->startDuplicate(); }, false);
    });
}

void HNMContactViewManager::startDuplicate() {
    const auto window = make<DupContactWindowController>();
    window->initWithDataSource(groupsOf(dupcontactsArray));
    if (NSApp()->runModalForWindow(window->window()) != DupContactWindowController::kMerge || window->mergeContactsArray.empty())
        return;
    // Made here, so that the worker has it from the start.
    const auto progress = progressWindows().pProressWindow = make<HNMPublicProgressWindow>();
    dispatch::async(dispatch::global(), [weak = weakOf(this), progress, survivors = window->mergeContactsArray] {
        tell(weak, [&](HNMContactViewManager &self) { self.merge(survivors, *progress); });
    });
}

void HNMContactViewManager::merge(const ContactList &survivors, const HNMPublicProgressWindow &progress) {
    const auto self = selfOf(this);
    dispatch::performOnMainThread(
        [self] {
            self->progressWindows().showProgressWindow(self->progressWindows().progressWindowString_upText_downText(
                localized("ContactView_DuduplicateWindowTitle"), localized("ContactView_waitingMerge"), ""));
        },
        false);
    const auto model = contactViewModel.lock();
    const auto duplicates = byContact(groupsOf(dupcontactsArray));
    auto groups = deviceGroups(model ? model->contactGroup->snapshot() : NSArray());
    const auto total = static_cast<std::int64_t>(model ? survivors.size() : 0);
    for (std::int64_t index = 0; index < total && !progress.isClosed; ++index) {
        const auto &survivor = survivors[static_cast<std::size_t>(index)];
        const auto group = duplicates.find(survivor.get());
        if (group == duplicates.end() ||
            !model->combineRepeatContacts_newContact_toGroup(group->second->dupContactGroupArray, survivor, groups[survivor->pKey()]))
            continue;
        dispatch::async(dispatch::main(), [self, index, total] { self->showMerged(index, total); });
    }
    dispatch::async(dispatch::main(), [self] {
        self->progressWindows().closeProgressWindow();
        self->refreshContactFunc();
    });
}

// The text counts from 0, the bar from 1; kept.
void HNMContactViewManager::showMerged(std::int64_t index, std::int64_t total) {
    const auto text = make<NSAttributedString>(NSString::stringWithFormat(localized("ContactView_merging"), index, total));
    tell(progressWindows().pDelegate, [&](HNMProgressDelegate &shown) {
        shown.setProgressDialogInfo_DownTextField_progressValue(
            text, nullptr, static_cast<double>(index + 1) / static_cast<double>(total) * 100);
    });
}
