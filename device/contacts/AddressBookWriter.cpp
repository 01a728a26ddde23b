#include "device/contacts/AddressBookWriter.h"

#include <algorithm>

#include "device/contacts/AddressBookReader.h"
#include "device/contacts/ContactPicture.h"
#include "device/contacts/Dates.h"
#include "device/contacts/Labels.h"

namespace device::contacts {

namespace {

const std::vector<std::string> &personColumns() {
    static const std::vector<std::string> columns = [] {
        std::vector<std::string> names;
        for (const PersonField &field : kPersonFields)
            names.emplace_back(field.column);
        names.insert(names.end(), {"Birthday", "CreationDate", "ModificationDate", "Kind", "StoreID"});
        return names;
    }();
    return columns;
}
constexpr std::size_t kBirthday = kPersonFields.size(), kCreated = kBirthday + 1, kChanged = kBirthday + 2, kKind = kBirthday + 3,
                      kStore = kBirthday + 4;

std::array<NSString, kPersonFields.size()> fieldsOf(const ZpContactDataInfo &contact) {
    std::array<NSString, kPersonFields.size()> fields;
    for (std::size_t i = 0; i < fields.size(); ++i)
        fields[i] = written((contact.*kPersonFields[i].get)());
    return fields;
}

// A merge can name a contact that had no name: the name as a whole then stands in First.
void nameWhole(std::array<NSString, kPersonFields.size()> &fields, const NSString &completeName) {
    for (std::size_t i = 0; i < kNameParts; ++i)
        fields[i] = nullptr;
    fields[kFirstNameField] = completeName;
}

bool isOrganization(const std::array<NSString, kPersonFields.size()> &fields) {
    return std::all_of(fields.begin(), fields.begin() + kNameParts, [](const NSString &part) { return part.isEmpty(); }) &&
           !fields[kOrganizationField].isEmpty();
}

NSString storedValue(const ListItem &item) { return item.property == Property::date ? storedOfDate(item.value) : item.value; }

NSString lastFourOf(const NSString &number) {
    std::string digits;
    for (const char c : number.view())
        if (c >= '0' && c <= '9')
            digits += c;
    return digits.size() < 4 ? NSString() : NSString(digits.substr(digits.size() - 4));
}

}  // namespace

// ---------------------------------------------------------------- rows that belong to another

AddressBookWriter::Children::Children(const sqlite::Table &table, std::string column, std::string key, std::string condition)
    : column_(std::move(column)), key_(std::move(key)), condition_(std::move(condition)) {
    if (table.has(column_))
        table_ = table.name;
}

void AddressBookWriter::Children::index(sqlite::Database &database) {
    if (table_.empty())
        return;
    rows_.emplace();
    sqlite::Statement row = database.prepare("SELECT " + key_ + ", " + column_ + " FROM " + table_ + " WHERE " + column_ + " IS NOT NULL" + condition_);
    while (row.step())
        (*rows_)[row.integer(1)].push_back(row.integer(0));
}

std::vector<std::int64_t> AddressBookWriter::Children::of(sqlite::Database &database, std::int64_t owner) const {
    std::vector<std::int64_t> found;
    if (rows_) {
        const auto rows = rows_->find(owner);
        return rows == rows_->end() ? found : rows->second;
    }
    if (table_.empty())
        return found;
    if (!find_)
        find_ = database.prepare("SELECT " + key_ + " FROM " + table_ + " WHERE " + column_ + " = ?" + condition_);
    find_.bind(1, owner);
    while (find_.step())
        found.push_back(find_.integer(0));
    find_.reset();
    return found;
}

void AddressBookWriter::Children::removeRow(sqlite::Database &database, std::int64_t row) const {
    if (!remove_)
        remove_ = database.prepare("DELETE FROM " + table_ + " WHERE " + key_ + " = ?");
    remove_.bind(1, row).run();
}

void AddressBookWriter::Children::removeAll(sqlite::Database &database, std::int64_t owner) const {
    for (const std::int64_t row : of(database, owner))
        removeRow(database, row);
}

// ---------------------------------------------------------------- adding

AddressBookWriter::AddressBookWriter(sqlite::Database &database, bool hasImages, std::int64_t now)
    : database_(database), hasImages_(hasImages), now_(now), persons_(database.table("ABPerson")), values_(database.table("ABMultiValue")),
      labels_(database.table("ABMultiValueLabel")), entries_(database.table("ABMultiValueEntry")),
      keys_(database.table("ABMultiValueEntryKey")), groups_(database.table("ABGroup")), members_(database.table("ABGroupMembers")) {
    if (!persons_.exists())
        throw AccessError(AccessError::Kind::damaged, database_.file(), "is no address book (it has no table ABPerson)");
    insertPerson_ = Insertion(database_, persons_, personColumns());
    if (values_.has("record_id") && values_.has("property"))
        insertValue_ = Insertion(database_, values_, {"record_id", "property", "identifier", "label", "value"});
    if (entries_.has("parent_id") && entries_.has("key") && entries_.has("value") && keys_.has("value"))
        insertEntry_ = Insertion(database_, entries_, {"parent_id", "key", "value"});
    if (members_.has("group_id") && members_.has("member_id"))
        insertMember_ = Insertion(database_, members_, {"group_id", "member_id", "member_type"}, "INSERT OR IGNORE INTO ");
    if (const sqlite::Table lastFours = database_.table("ABPhoneLastFour"); lastFours.has("multivalue_id") && lastFours.has("value"))
        insertLastFour_ = Insertion(database_, lastFours, {"multivalue_id", "value"}, "INSERT OR REPLACE INTO ");
    valuesOf_ = Children(values_, "record_id", values_.has("UID") ? "UID" : "rowid");
    entriesOf_ = Children(entries_, "parent_id");
    membersOf_ = Children(members_, "member_id", "rowid", members_.has("member_type") ? " AND member_type = 0" : "");
    searchKeysOf_ = Children(database_.table("ABPersonSearchKey"), "person_id");
    lastFoursOf_ = Children(database_.table("ABPhoneLastFour"), "multivalue_id");
    if (hasImages_) {
        fullImagesOf_ = Children(database_.table("ABFullSizeImage", kImagesSchema), "record_id");
        thumbnailsOf_ = Children(database_.table("ABThumbnailImage", kImagesSchema), "record_id");
    }
}

void AddressBookWriter::forgetRows() {
    labelRows_.clear();
    keyRows_.clear();
    storeRow_.reset();
}

void AddressBookWriter::expectManyRemovals() {
    for (Children *children : {&valuesOf_, &entriesOf_, &membersOf_, &searchKeysOf_, &lastFoursOf_, &fullImagesOf_, &thumbnailsOf_})
        children->index(database_);
}

std::int64_t AddressBookWriter::storeRow() {
    if (!storeRow_) {
        const sqlite::Table stores = database_.table("ABStore");
        storeRow_ = stores.exists() ? database_.integer("SELECT min(ROWID) FROM " + stores.name) : 0;
    }
    return *storeRow_;
}

std::int64_t AddressBookWriter::add(const ZpContactDataInfo &contact) {
    if (!insertPerson_)
        throw AccessError(AccessError::Kind::damaged, database_.file(), "ABPerson has no column that a contact could be written to");
    Fields fields = fieldsOf(contact);
    const NSString completeName = written(contact.completeName());
    if (!completeName.isEmpty() && completeNameOf(fields) != completeName)
        nameWhole(fields, completeName);
    for (std::size_t i = 0; i < fields.size(); ++i)
        insertPerson_.bind(i, fields[i]);
    insertPerson_.bind(kBirthday, storedOfDate(written(contact.birthday())));
    insertPerson_.bind(kCreated, now_).bind(kChanged, now_).bind(kStore, storeRow());
    insertPerson_.bind(kKind, std::int64_t{isOrganization(fields)});
    insertPerson_.run();
    const std::int64_t record = database_.lastInsertRowid();
    std::map<Property, std::int64_t> identifiers;
    for (const ListItem &item : itemsOf(contact))
        if (const ListItem clean = written(item); clean.hasValue())
            insertItem(record, identifiers[clean.property]++, clean);
    if (const std::optional<std::string> picture = newPictureOf(contact))
        insertPicture(record, *picture);
    return record;
}

void AddressBookWriter::insertItem(std::int64_t record, std::int64_t identifier, const ListItem &item) {
    if (!insertValue_ || (!item.parts.empty() && !insertEntry_))
        return;   // a version without a place for it
    insertValue_.bind(0, record).bind(1, static_cast<std::int64_t>(item.property)).bind(2, identifier);
    if (const auto label = labelRow(item.type))
        insertValue_.bind(3, *label);
    else
        insertValue_.bindNull(3);
    insertValue_.bind(4, storedValue(item)).run();
    const std::int64_t UID = database_.lastInsertRowid();
    for (const ListItem::Part &part : item.parts)
        if (!part.value.isNil())
            insertPart(UID, part);
    if (item.property == Property::phone)
        noteLastFour(UID, item.value);
}

void AddressBookWriter::insertPart(std::int64_t UID, const ListItem::Part &part) {
    if (const auto key = keyRow(part.key))
        insertEntry_.bind(0, UID).bind(1, *key).bind(2, part.value).run();
}

void AddressBookWriter::noteLastFour(std::int64_t UID, const NSString &number) {
    if (!insertLastFour_)
        return;
    lastFoursOf_.removeAll(database_, UID);
    if (const NSString digits = lastFourOf(number))
        insertLastFour_.bind(0, UID).bind(1, digits).run();
}

std::optional<std::int64_t> AddressBookWriter::labelRow(const NSString &type) {
    if (type.isNil() || !labels_.has("value"))
        return std::nullopt;
    const NSString label = labelOfType(type);
    if (const auto known = labelRows_.find(label); known != labelRows_.end())
        return known->second;
    sqlite::Statement found = database_.prepare("SELECT rowid FROM " + labels_.name + " WHERE value = ?");
    if (found.bind(1, label).step())
        return labelRows_[label] = found.integer(0);
    Insertion(database_, labels_, {"value"}).bind(0, label).run();
    return labelRows_[label] = database_.lastInsertRowid();
}

std::optional<std::int64_t> AddressBookWriter::keyRow(const char *key) {
    if (!keys_.has("value"))
        return std::nullopt;
    if (const auto known = keyRows_.find(key); known != keyRows_.end())
        return known->second;
    sqlite::Statement found = database_.prepare("SELECT rowid FROM " + keys_.name + " WHERE lower(value) = lower(?)");
    if (found.bind(1, key).step())
        return keyRows_[key] = found.integer(0);
    Insertion(database_, keys_, {"value"}).bind(0, std::string(key)).run();
    return keyRows_[key] = database_.lastInsertRowid();
}

// ---------------------------------------------------------------- groups

std::optional<std::int64_t> AddressBookWriter::groupRow(const ContactGroupInfo &group) {
    if (!groups_.exists())
        return std::nullopt;
    sqlite::Statement row = group.storeKey ? database_.prepare("SELECT ROWID FROM " + groups_.name + " WHERE ROWID = ?")
                                           : database_.prepare("SELECT ROWID FROM " + groups_.name + " WHERE " + groups_.term("Name") + " = ?");
    if (group.storeKey)
        row.bind(1, group.storeKey);
    else
        row.bind(1, group.groupName);
    return row.step() ? std::optional(row.integer(0)) : std::nullopt;
}

std::int64_t AddressBookWriter::addGroup(const NSString &name) {
    Insertion(database_, groups_, {"Name", "StoreID"}).bind(0, written(name)).bind(1, storeRow()).run();
    return database_.lastInsertRowid();
}

void AddressBookWriter::addToGroup(std::int64_t record, std::int64_t group) {
    if (!insertMember_)
        return;
    sqlite::Statement known = database_.prepare("SELECT 1 FROM " + members_.name + " WHERE group_id = ? AND member_id = ?" +
                                                (members_.has("member_type") ? " AND member_type = 0" : ""));
    if (!known.bind(1, group).bind(2, record).step())
        insertMember_.bind(0, group).bind(1, record).bind(2, std::int64_t{0}).run();
}

void AddressBookWriter::moveGroups(std::int64_t from, std::int64_t to) {
    for (const std::int64_t row : membersOf_.of(database_, from)) {
        addToGroup(to, database_.integer("SELECT group_id FROM " + members_.name + " WHERE rowid = " + std::to_string(row)));
        membersOf_.removeRow(database_, row);
    }
}

// ---------------------------------------------------------------- changing and removing

bool AddressBookWriter::edit(std::int64_t record, const ZpContactDataInfo &contact) {
    const std::shared_ptr<ZpContactDataInfo> before = AddressBookReader(database_).contact(record);
    if (!before)
        return false;
    bool changed = editPerson(record, *before, contact);
    changed = editLists(record, *before, contact) || changed;
    changed = editPicture(record, contact) || changed;
    if (changed && persons_.has("ModificationDate"))
        database_.prepare("UPDATE " + persons_.name + " SET ModificationDate = ? WHERE ROWID = ?").bind(1, now_).bind(2, record).run();
    return true;
}

bool AddressBookWriter::editPerson(std::int64_t record, const ZpContactDataInfo &before, const ZpContactDataInfo &after) {
    Fields fields;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const NSString &text = (after.*kPersonFields[i].get)();
        // An untouched text stays as it is stored, control characters at its ends included.
        fields[i] = text == (before.*kPersonFields[i].get)() ? text : written(text);
    }
    // The editor changes the parts and leaves the name of the load; only a new whole name counts.
    const NSString completeName = written(after.completeName());
    if (!completeName.isEmpty() && after.completeName() != before.completeName() && completeNameOf(fields) != completeName)
        nameWhole(fields, completeName);
    bool changed = false;
    const auto update = [&](const char *column, const NSString &text) {
        if (!persons_.has(column))
            return;
        database_.prepare("UPDATE " + persons_.name + " SET " + column + " = ? WHERE ROWID = ?").bind(1, text).bind(2, record).run();
        changed = true;
    };
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (fields[i] != (before.*kPersonFields[i].get)())
            update(kPersonFields[i].column, fields[i]);
    if (after.birthday() != before.birthday())
        update("Birthday", storedOfDate(written(after.birthday())));
    return changed;
}

bool AddressBookWriter::editLists(std::int64_t record, const ZpContactDataInfo &before, const ZpContactDataInfo &after) {
    if (!insertValue_)
        return false;
    std::map<std::int64_t, ListItem> stored;
    for (ListItem &item : itemsOf(before))
        stored.emplace(item.UID, std::move(item));
    bool changed = false;
    std::vector<ListItem> strangers;
    for (ListItem &item : itemsOf(after)) {
        const auto old = item.UID ? stored.find(item.UID) : stored.end();
        if (old == stored.end() || old->second.property != item.property) {
            strangers.push_back(std::move(item));
            continue;
        }
        if (!item.isSame(old->second)) {
            const ListItem clean = written(item);
            if (!clean.hasValue())
                continue;   // a row of the editor that was made empty
            changed = updateItem(old->second, clean) || changed;
        }
        stored.erase(old);
    }
    std::vector<ListItem> added;
    for (const ListItem &item : strangers) {
        // A merge brings the like of an item from another contact: the contact's own row stays.
        const auto own = std::ranges::find_if(stored, [&](const auto &row) { return row.second.property == item.property && item.isSame(row.second); });
        if (own != stored.end())
            stored.erase(own);
        else if (ListItem clean = written(item); clean.hasValue())   // not a row of the editor that was left empty
            added.push_back(std::move(clean));
    }
    for (const auto &[UID, item] : stored)
        removeItem(UID);
    for (const ListItem &item : added)
        insertItem(record, nextIdentifier(record, item.property), item);
    return changed || !stored.empty() || !added.empty();
}

std::int64_t AddressBookWriter::nextIdentifier(std::int64_t record, Property property) {
    if (!values_.has("identifier"))
        return 0;
    sqlite::Statement most = database_.prepare("SELECT max(identifier) + 1 FROM " + values_.name + " WHERE record_id = ? AND property = ?");
    return most.bind(1, record).bind(2, static_cast<std::int64_t>(property)).step() ? most.integer(0) : 0;
}

bool AddressBookWriter::updateItem(const ListItem &before, const ListItem &after) {
    const std::string where = values_.has("UID") ? " WHERE UID = ?" : " WHERE ROWID = ?";
    if (after.type != before.type && values_.has("label")) {
        sqlite::Statement label = database_.prepare("UPDATE " + values_.name + " SET label = ?" + where);
        if (const auto row = labelRow(after.type))
            label.bind(1, *row);
        label.bind(2, before.UID).run();
    }
    if (after.value != before.value && values_.has("value")) {
        database_.prepare("UPDATE " + values_.name + " SET value = ?" + where).bind(1, storedValue(after)).bind(2, before.UID).run();
        if (after.property == Property::phone)
            noteLastFour(before.UID, after.value);
    }
    for (std::size_t i = 0; i < after.parts.size(); ++i)
        if (after.parts[i].value != before.parts[i].value)
            updatePart(before.UID, after.parts[i]);
    return !after.isSame(before);
}

void AddressBookWriter::updatePart(std::int64_t UID, const ListItem::Part &part) {
    if (!insertEntry_)
        return;
    const std::string where = " WHERE parent_id = ? AND key IN (SELECT rowid FROM " + keys_.name + " WHERE lower(value) = lower(?))";
    if (part.value.isNil()) {
        database_.prepare("DELETE FROM " + entries_.name + where).bind(1, UID).bind(2, part.key).run();
        return;
    }
    database_.prepare("UPDATE " + entries_.name + " SET value = ?" + where).bind(1, part.value).bind(2, UID).bind(3, part.key).run();
    if (database_.changes() == 0)
        insertPart(UID, part);
}

void AddressBookWriter::removeItem(std::int64_t UID) {
    entriesOf_.removeAll(database_, UID);
    lastFoursOf_.removeAll(database_, UID);
    valuesOf_.removeRow(database_, UID);
}

bool AddressBookWriter::remove(std::int64_t record) {
    database_.prepare("DELETE FROM " + persons_.name + " WHERE ROWID = ?").bind(1, record).run();
    if (database_.changes() == 0)
        return false;
    for (const std::int64_t UID : valuesOf_.of(database_, record))
        removeItem(UID);
    membersOf_.removeAll(database_, record);
    searchKeysOf_.removeAll(database_, record);
    removePicture(record);
    return true;
}

// ---------------------------------------------------------------- pictures

bool AddressBookWriter::editPicture(std::int64_t record, const ZpContactDataInfo &contact) {
    if (!contact.image_data())
        return removePicture(record);
    if (contact.imagePath().isEmpty())
        return false;
    const std::optional<std::string> picture = newPictureOf(contact);
    if (picture)
        insertPicture(record, *picture);
    return picture.has_value();
}

void AddressBookWriter::insertPicture(std::int64_t record, std::string_view bytes) {
    if (!hasImages_)
        throw AccessError(AccessError::Kind::failed, kAddressBookImages.name(), "cannot be opened for a picture");
    if (!database_.table("ABFullSizeImage", kImagesSchema).exists())
        database_.exec("CREATE TABLE images.ABFullSizeImage (record_id INTEGER PRIMARY KEY, data BLOB)");
    removePicture(record);   // a thumbnail of the old picture as well: the device makes new ones
    Insertion(database_, database_.table("ABFullSizeImage", kImagesSchema), {"record_id", "data"}, "INSERT OR REPLACE INTO ")
        .bind(0, record)
        .bindBytes(1, bytes)
        .run();
}

bool AddressBookWriter::removePicture(std::int64_t record) {
    const bool had = !fullImagesOf_.of(database_, record).empty() || !thumbnailsOf_.of(database_, record).empty();
    fullImagesOf_.removeAll(database_, record);
    thumbnailsOf_.removeAll(database_, record);
    return had;
}

}  // namespace device::contacts
