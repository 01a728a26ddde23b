// Writes contacts into an address book of any version, inside a transaction of the caller's.
//
// Care     a write touches only rows that change; a text that is absent becomes NULL, an empty one "".
// Errors   sqlite::Error, AccessError; the caller then takes the step back and calls `forgetRows`.
// Threads  those of the connection.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <unordered_map>

#include "device/contacts/Insertion.h"
#include "device/contacts/ListItem.h"
#include "device/contacts/PersonFields.h"

namespace device::contacts {

class AddressBookWriter {
public:
    // `hasImages`: the picture database is attached. `now`: seconds since 2001.
    AddressBookWriter(sqlite::Database &database, bool hasImages, std::int64_t now);

    // Gives the new ABPerson.ROWID.
    std::int64_t add(const ZpContactDataInfo &contact);
    // False where there is no such contact.
    bool edit(std::int64_t record, const ZpContactDataInfo &contact);
    bool remove(std::int64_t record);
    void addToGroup(std::int64_t record, std::int64_t group);
    void moveGroups(std::int64_t from, std::int64_t to);
    // A new group; gives its row.
    std::int64_t addGroup(const NSString &name);
    // The row of a group that a caller names by its row or, without one, by its name.
    [[nodiscard]] std::optional<std::int64_t> groupRow(const ContactGroupInfo &group);

    // Rows made by a step that was taken back are looked up again.
    void forgetRows();
    // Many removals follow: walks each table once instead of once per contact.
    void expectManyRemovals();

private:
    using Fields = std::array<NSString, kPersonFields.size()>;
    // Rows of a table by the number that they belong to.
    class Children {
    public:
        Children() = default;
        // `key` names a row of the table.
        Children(const sqlite::Table &table, std::string column, std::string key = "rowid", std::string condition = "");
        void index(sqlite::Database &database);
        [[nodiscard]] std::vector<std::int64_t> of(sqlite::Database &database, std::int64_t owner) const;
        void removeRow(sqlite::Database &database, std::int64_t row) const;
        void removeAll(sqlite::Database &database, std::int64_t owner) const;

    private:
        std::string table_, column_, key_, condition_;   // no table: nothing to do
        mutable sqlite::Statement find_, remove_;        // made on first use
        std::optional<std::unordered_map<std::int64_t, std::vector<std::int64_t>>> rows_;
    };

    void insertItem(std::int64_t record, std::int64_t identifier, const ListItem &item);
    void insertPart(std::int64_t UID, const ListItem::Part &part);
    bool updateItem(const ListItem &before, const ListItem &after);
    void updatePart(std::int64_t UID, const ListItem::Part &part);
    void removeItem(std::int64_t UID);
    bool editLists(std::int64_t record, const ZpContactDataInfo &before, const ZpContactDataInfo &after);
    bool editPerson(std::int64_t record, const ZpContactDataInfo &before, const ZpContactDataInfo &after);
    bool editPicture(std::int64_t record, const ZpContactDataInfo &contact);
    void noteLastFour(std::int64_t UID, const NSString &number);
    void insertPicture(std::int64_t record, std::string_view bytes);
    bool removePicture(std::int64_t record);
    [[nodiscard]] std::int64_t nextIdentifier(std::int64_t record, Property property);
    [[nodiscard]] std::optional<std::int64_t> labelRow(const NSString &type);
    [[nodiscard]] std::optional<std::int64_t> keyRow(const char *key);
    [[nodiscard]] std::int64_t storeRow();

    sqlite::Database &database_;
    bool hasImages_;
    std::int64_t now_;
    sqlite::Table persons_, values_, labels_, entries_, keys_, groups_, members_;
    Insertion insertPerson_, insertValue_, insertEntry_, insertMember_, insertLastFour_;
    Children valuesOf_, entriesOf_, membersOf_, searchKeysOf_, lastFoursOf_, fullImagesOf_, thumbnailsOf_;
    std::map<NSString, std::int64_t> labelRows_;
    std::map<std::string, std::int64_t> keyRows_;
    std::optional<std::int64_t> storeRow_;
};

}  // namespace device::contacts
