#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/HNMContactViewModel.h"

#include <algorithm>
#include <string_view>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactRepeatCheck.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/CsvFileReader.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/DuplicateSearch.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/VCardFileReader.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVLoger.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/services/NSNotificationCenter.h"

namespace {

Value::List listOf(const ContactList &contacts) { return Value::List(contacts.begin(), contacts.end()); }

// For hosts that want to say why a file gave nothing: absent, or the line (absent too) and the reason.
Value unreadableReasonOf(const NSString &path) {
    const auto why = VCardFileReader::whyNothing(path);
    return why ? Value(Value::List{why->line ? Value(*why->line) : Value(), Value(why->reason)}) : Value();
}

ContactList contactsIn(const std::vector<Value> &arguments, std::size_t index) {
    ContactList contacts;
    if (index < arguments.size())
        for (const Value &item : arguments[index].list())
            if (auto contact = std::dynamic_pointer_cast<ZpContactDataInfo>(item.object()))
                contacts.push_back(std::move(contact));
    return contacts;
}

// For hosts that want to say what an import brought twice. The two lists share no contact.
Value countOfRepeats(const ContactList &records, const ContactList &existing) {
    ContactRepeatCheck check(existing);
    return Value(std::ranges::count_if(records, [&](const auto &record) { return check.isContactRepeat(*record) != nullptr; }));
}

NSString firstText(const std::vector<Value> &arguments) { return arguments.empty() ? NSString() : arguments[0].text(); }

}   // namespace

HN_CLASS_TABLE(HNMContactViewModel, HNMbaseViewModel,
               .key("selectedEntity", &HNMContactViewModel::selectedEntity)
                   .key("contactGroup", &HNMContactViewModel::contactGroup)
                   .key("deviceDisconnected", &HNMContactViewModel::deviceDisconnected)
                   .selector("contactsOfImportFile:",
                             [](NSObject &o, const std::vector<Value> &arguments) {
                                 return Value(listOf(
                                     static_cast<HNMContactViewModel &>(o).contactsOfImportFile(firstText(arguments))));
                             })
                   .selector("loadImportContactsVCFDataFromPath:",
                             [](NSObject &o, const std::vector<Value> &arguments) {
                                 auto &model = static_cast<HNMContactViewModel &>(o);
                                 return Value(listOf(model.loadImportContactsVCFDataFromPath(firstText(arguments))));
                             })
                   .selector("contactsOfCSVFile:",
                             [](NSObject &o, const std::vector<Value> &arguments) {
                                 auto &model = static_cast<HNMContactViewModel &>(o);
                                 return Value(listOf(model.contactsOfCSVFile(firstText(arguments))));
                             })
                   .selector("unreadableReasonOfFile:",
                             [](NSObject &, const std::vector<Value> &arguments) {
                                 return unreadableReasonOf(firstText(arguments));
                             })
                   .selector("countOfRepeats:amongContacts:",
                             [](NSObject &, const std::vector<Value> &arguments) {
                                 return countOfRepeats(contactsIn(arguments, 0), contactsIn(arguments, 1));
                             })
                   .selector("moveSpecialCharactersToBack", &HNMContactViewModel::moveSpecialCharactersToBack)
                   .selector("showSelectRowContactDetailInfo:", &HNMContactViewModel::showSelectRowContactDetailInfo)
                   .selector("deviceDisConnectNotify:", &HNMContactViewModel::deviceDisConnectNotify))

void HNMContactViewModel::init() {
    HNMbaseViewModel::init();
    selectedEntity = make<HNContactEntity>();
    contactGroup = make<NSMutableArray>();
    NSNotificationCenter::defaultCenter().addObserver_selector_name_object(
        selfOf(this), "deviceDisConnectNotify:", NMobileDeviceDisConnectionDidChangeNotification);
}

void HNMContactViewModel::deviceDisConnectNotify(const id &) { deviceDisconnected = true; }

CContactManagerImpl *HNMContactViewModel::contacts() {
    if (!contactM)
        contactM = GContextFactory.defaultManager()->contactInterface();
    return contactM.get();
}

ContactList HNMContactViewModel::contactsOf(const NSArray &rows) {
    ContactList contacts;
    contacts.reserve(rows.count());
    for (const id &row : rows)
        if (auto contact = std::dynamic_pointer_cast<ZpContactDataInfo>(row))
            contacts.push_back(std::move(contact));
    return contacts;
}

// ---------------------------------------------------------------- the list

std::shared_ptr<NSImage> HNMContactViewModel::defaultPicture() {
    return NSBundle::bundleForClass()->imageForResource_ofType("icon_list_user", "png");
}

void HNMContactViewModel::reloadData() {
    CContactManagerImpl *const device = contacts();
    if (!contactGroup->isEmpty())
        contactGroup->removeAllObjects();
    if (!device)
        return;
    device->getContactDataFromAddressList();
    const NSArray read = NSArray::of(device->contactArray());
    contents->addObjectsFromArray(read);
    globalArray->addObjectsFromArray(read);
    contactGroup->addObjectsFromArray(NSArray::of(device->groupArray()));
    const auto picture = defaultPicture();
    for (const auto &contact : contactsOf(contents->snapshot()))
        if (picture && !contact->image_data())
            contact->setImage_data(picture);
    sortContentsArrayWithKey_ascending("completeName", true);
    sortContentsGroupArrayWithKey_ascending("groupName", true);
    moveSpecialCharactersToBack();
}

void HNMContactViewModel::sortContentsGroupArrayWithKey_ascending(const NSString &key, bool ascending) {
    contactGroup->sortUsingDescriptors({NSSortDescriptor(key, ascending)});
}

namespace {

// Marks with which a name goes to the back.
constexpr std::u32string_view kMarks = U"`~!@#$^&*()=|{}':;,[].<>/?"
                                       U"\uFF01\uFFE5\u2026\uFF08\uFF09\u2014\u3010\u3011\u2018\uFF1B\uFF1A\u201D\u201C"
                                       U"\u3002\uFF0C\u3001\uFF1F";

bool goesToTheBack(const NSString &name) {
    return name.isEmpty() || kMarks.find(name.characterAtIndex(0)) != std::u32string_view::npos;
}

void moveToBack(NSMutableArray &list, const NSIndexSet &indexes) {
    const NSArray movers = list.objectsAtIndexes(indexes);
    list.removeObjectsAtIndexes(indexes.clippedTo(list.count()));
    list.addObjectsFromArray(movers);
}

}   // namespace

void HNMContactViewModel::moveSpecialCharactersToBack() {
    NSMutableIndexSet movers;
    std::size_t at = 0;
    for (const id &row : contents->snapshot()) {
        const auto contact = std::dynamic_pointer_cast<ZpContactDataInfo>(row);
        if (contact && goesToTheBack(contact->completeName()))
            movers.addIndex(at);
        ++at;
    }
    moveToBack(*contents, movers);
    moveToBack(*globalArray, movers);
}

void HNMContactViewModel::showSelectRowContactDetailInfo(std::int64_t row) {
    if (row < 0 || row >= static_cast<std::int64_t>(contents->count()))
        return;
    const auto contact = contents->at<ZpContactDataInfo>(static_cast<std::size_t>(row));
    if (!contact)
        return;
    selectedEntity->showDetails(*contact);
    selectedEntity->image = contact->image_data() ? contact->image_data() : defaultPicture();
}

// ---------------------------------------------------------------- search

NSString HNMContactViewModel::identifierOfRow(const id &row) const {
    if (row && row->isMemberOf<ZpContactDataInfo>())   // all of them, as a rule: a search asks for each row's key
        return static_cast<const ZpContactDataInfo &>(*row).pKey();
    const auto *contact = dynamic_cast<const ZpContactDataInfo *>(row.get());
    return contact ? contact->pKey() : NSString();
}

void HNMContactViewModel::prefetchIdentifier(const NSObject &row) const {
    if (row.isMemberOf<ZpContactDataInfo>())
        __builtin_prefetch(&static_cast<const ZpContactDataInfo &>(row).pKey());
}

void HNMContactViewModel::searchSelectedChanged() {
    constexpr std::size_t kFew = 1000;   // as many are stored within a frame
    const auto controller = arrayController.lock();
    if (!controller)
        return;
    const NSArray rows = controller->arrangedObjects();
    const NSIndexSet &selection = controller->selectionIndexes();
    if (!noted_.selections.empty() && rows != noted_.rows)
        storeNotedSelections();
    std::erase_if(noted_.selections, [&](const NSIndexSet &earlier) { return selection.containsIndexes(earlier); });
    if (noted_.selections.empty() && selection.count() <= kFew)
        return rememberSelection();
    noted_.rows = rows;
    noted_.selections.push_back(selection);
}

// The latest first: its positions stand.
void HNMContactViewModel::storeNotedSelections() {
    const auto noted = std::exchange(noted_, {});
    NSMutableIndexSet stored;
    for (auto selection = noted.selections.rbegin(); selection != noted.selections.rend(); ++selection) {
        std::int64_t position = 0;
        for (const std::size_t row : selection->indexes()) {
            if (!stored.containsIndex(row))
                selectInfoDic->setObject_forKey(Value(position), identifierOfRow(noted.rows.objectAtIndex(row)));
            ++position;
        }
        stored.addIndexes(*selection);
    }
}

bool HNMContactViewModel::searchFileByString(const NSString &text) {
    storeNotedSelections();
    const std::vector<bool> matches = text.isEmpty() ? std::vector<bool>() : search_.matching(text, globalArray->snapshot());
    return searchRows(text, [&, place = std::size_t(0)](const id &) mutable { return matches[place++]; });
}

// ---------------------------------------------------------------- import

NSString HNMContactViewModel::deleteEnterChar(const NSString &text) const {
    return VCardFileReader::deleteEnterChar(text);
}

ContactList HNMContactViewModel::loadImportContactsVCFDataFromPath(const NSString &path) {
    return VCardFileReader::read(path, [](std::string_view text) { RVLog(NSString(text)); });
}

ContactList HNMContactViewModel::contactsOfCSVFile(const NSString &path) { return CsvFileReader::read(path); }

ContactList HNMContactViewModel::contactsOfImportFile(const NSString &path) {
    if (path.pathExtension().isEqualIgnoringCase("csv"))
        return combineImportRepeatContacts(contactsOfCSVFile(path));
    if (path.pathExtension().isEqualIgnoringCase("vcf"))
        return combineImportRepeatContacts(loadImportContactsVCFDataFromPath(path));
    return {};
}

std::shared_ptr<ZpContactDataInfo>
HNMContactViewModel::isContactRepeat(const std::shared_ptr<ZpContactDataInfo> &record) {
    return ContactRepeatCheck(contactsOf(contents->snapshot())).isContactRepeat(*record);
}

ContactList HNMContactViewModel::combineImportRepeatContacts(ContactList records) {
    if (!records.empty())
        ContactRepeatCheck(contactsOf(contents->snapshot())).combineImportRepeatContacts(records);
    return records;
}

// ---------------------------------------------------------------- duplicates

DupContactGroups HNMContactViewModel::findDuplicateContacts() {
    return DuplicateSearch::groupsOf(
        contactsOf(contents->snapshot()), [this] { return deviceDisconnected.get(); },
        [](std::string_view line) { RVLog(NSString(line)); });
}

bool HNMContactViewModel::combineRepeatContacts_newContact_toGroup(const ContactList &group,
                                                                   const std::shared_ptr<ZpContactDataInfo> &merged,
                                                                   const ContactGroupList &groups) {
    CContactManagerImpl *const device = contacts();
    return device && device->combineRepeatContacts_newContact_toGroup(group, merged, groups);
}

// ---------------------------------------------------------------- the device

// Whoever waits for the last item must not wait for ever where there is no device to ask: every item then fails.
void HNMContactViewModel::importContactsFromArray_CallBack(const ContactList &list,
                                                           const CContactManagerImpl::AddProgress &callBack) {
    CContactManagerImpl *const device = contacts();
    const auto total = static_cast<std::int64_t>(list.size());
    if (!device)
        for (std::int64_t i = 0; i < total && callBack(i, total, -1) == 0; ++i) {
        }
    else if (list.empty())
        device->addNewContacts_toGroups_progress(
            list, {}, [callBack](std::int64_t, std::int64_t, std::int32_t) { return callBack(0, 0, -1); });
    else
        device->addNewContacts_toGroups_progress(list, {}, callBack);
}

void HNMContactViewModel::delectSelectedContact_callBack(const ContactList &list,
                                                         const CContactManagerImpl::DeleteProgress &callBack) {
    if (CContactManagerImpl *const device = contacts())
        return device->deleteContactsOrGroups_callBack(list, callBack);
    bool stop = false;
    for (std::size_t i = 0; i < list.size() && !stop; ++i)
        callBack(static_cast<std::int64_t>(i), static_cast<std::int64_t>(list.size()), list[i], false, &stop);
}

bool HNMContactViewModel::addContactToDevice_addToGroup(const std::shared_ptr<ZpContactDataInfo> &contact,
                                                        const ContactGroupList &groups) {
    CContactManagerImpl *const device = contacts();
    return device && device->addNewContact_toGroups(contact, groups);
}

std::int64_t HNMContactViewModel::editContactsFromArray(const ContactList &list) {
    CContactManagerImpl *const device = contacts();
    return device ? device->editContacts_onGroups(list, {}) : 0;
}

void HNMContactViewModel::exportContactsToVCFToPath_exportContacts(const NSString &path, const ContactList &list) {
    if (CContactManagerImpl *const device = contacts())
        device->exportContactsToVCFFile_toPath(list, path);
}

void HNMContactViewModel::exportContactsToPath_exportContacts_callBack(const NSString &path, const ContactList &list,
                                                                       const CContactManagerImpl::ExportFinish &callBack) {
    if (CContactManagerImpl *const device = contacts())
        device->exportContactsToCSVFileFromArray_toPath_callBack(list, path, callBack);
}

std::int64_t HNMContactViewModel::checkContactiCloudState() {
    CContactManagerImpl *const device = contacts();
    return device ? device->isDeviceiCloudOpen(0) : 0;
}
