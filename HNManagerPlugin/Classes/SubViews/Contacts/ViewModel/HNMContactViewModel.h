// All contacts of the device, the rows on show, and the operations on them that need no window.
//
// Rows     are ZpContactDataInfo records; their pKey names them in the selection memory.
// Order    by display name; contacts without a name or with a name that begins with a mark stand behind all others.
// Threads  reloadData, the duplicate search and the calls to the device on background queues; all else main.
// Device   its interface is fetched on first need and then kept: a new device brings a new model. Without a device the
//          lists stay empty and operations give their empty answers.
#pragma once

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactSearch.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/DupContactGroupModel.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/HNContactEntity.h"
#include "HNManagerPlugin/Classes/ViewModel/HNMbaseViewModel.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/CContactManagerImpl.h"

class HNMContactViewModel : public HNMbaseViewModel {
public:
    HN_DECLARE_CLASS_TABLE

    std::shared_ptr<HNContactEntity> selectedEntity;
    std::shared_ptr<CContactManagerImpl> contactM;
    Shared<bool> deviceDisconnected;   // once true, true for the model's life
    std::shared_ptr<NSMutableArray> contactGroup;   // of ContactGroupInfo

    void init() override;
    void reloadData() override;
    bool searchFileByString(const NSString &text) override;
    // A large selection reaches selectInfoDic with the next search: nobody asks before, and who selects all rows shall not
    // wait for it.
    void searchSelectedChanged() override;

    // Not 0 while the contacts are kept in the cloud. Asks the device; blocks.
    [[nodiscard]] std::int64_t checkContactiCloudState();
    // A row beyond the end is ignored. The panel's controller has to rearrange afterwards.
    void showSelectRowContactDetailInfo(std::int64_t row);
    // In both lists, by the rows of `contents`: the two are taken to stand in the same order, which nobody checks.
    void moveSpecialCharactersToBack();
    void sortContentsGroupArrayWithKey_ascending(const NSString &key, bool ascending);

    // ------------------------------------------------------------ import
    // The records of a .csv or .vcf file (by its extension), with the numbers of the contacts that they repeat; empty for
    // any other file. Throws FatalParseFailure.
    [[nodiscard]] ContactList contactsOfImportFile(const NSString &path);
    // The card reader alone; see VCardFileReader.h.
    [[nodiscard]] ContactList loadImportContactsVCFDataFromPath(const NSString &path);
    // The CSV readers and their last stage; see CsvFileReader.h.
    [[nodiscard]] ContactList contactsOfCSVFile(const NSString &path);
    [[nodiscard]] NSString deleteEnterChar(const NSString &text) const;
    // Against the contacts on show.
    [[nodiscard]] std::shared_ptr<ZpContactDataInfo> isContactRepeat(const std::shared_ptr<ZpContactDataInfo> &record);
    ContactList combineImportRepeatContacts(ContactList records);

    // ------------------------------------------------------------ duplicates; see DuplicateSearch.h
    // Of the contacts on show. Any queue; ends early, with the groups that are finished, when the device goes away.
    [[nodiscard]] DupContactGroups findDuplicateContacts();

    // ------------------------------------------------------------ the device; each blocks
    // An empty list still brings one call, with 0, 0, -1.
    void importContactsFromArray_CallBack(const ContactList &contacts,
                                          const CContactManagerImpl::AddProgress &callBack);
    void delectSelectedContact_callBack(const ContactList &contacts,
                                        const CContactManagerImpl::DeleteProgress &callBack);
    bool addContactToDevice_addToGroup(const std::shared_ptr<ZpContactDataInfo> &contact,
                                       const ContactGroupList &groups);
    std::int64_t editContactsFromArray(const ContactList &contacts);
    void exportContactsToVCFToPath_exportContacts(const NSString &path, const ContactList &contacts);
    void exportContactsToPath_exportContacts_callBack(const NSString &path, const ContactList &contacts,
                                                      const CContactManagerImpl::ExportFinish &callBack);
    // `merged` is one of the group: the others go.
    bool combineRepeatContacts_newContact_toGroup(const ContactList &group, const std::shared_ptr<ZpContactDataInfo> &merged,
                                                  const ContactGroupList &groups);

    void deviceDisConnectNotify(const id &notification);

    // The contacts of a list of rows, in its order.
    [[nodiscard]] static ContactList contactsOf(const NSArray &rows);

protected:
    [[nodiscard]] NSString identifierOfRow(const id &row) const override;
    void prefetchIdentifier(const NSObject &row) const override;

private:
    [[nodiscard]] CContactManagerImpl *contacts();
    [[nodiscard]] static std::shared_ptr<NSImage> defaultPicture();

    void storeNotedSelections();

    ContactSearch search_;
    struct NotedSelections {
        NSArray rows;
        std::vector<NSIndexSet> selections;
    } noted_;
};
