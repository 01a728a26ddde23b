#include "device/contacts/AddressBookReader.h"

#include <algorithm>
#include <charconv>

#include "device/contacts/Dates.h"
#include "device/contacts/Labels.h"
#include "device/contacts/PersonFields.h"

namespace device::contacts {

namespace {

constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

// Most people have one or two numbers: the first item makes room for the second.
template <class Record> void append(std::vector<Record> &list, Record &&record) {
    if (list.empty())
        list.reserve(2);
    list.push_back(std::move(record));
}

NSString decimal(std::int64_t number) {
    char text[24];
    const auto end = std::to_chars(text, text + sizeof text, number).ptr;
    return std::string_view(text, static_cast<std::size_t>(end - text));
}

}  // namespace

AddressBookReader::AddressBookReader(sqlite::Database &database) : database_(database) {
    if (!database_.table("ABPerson").exists())
        throw AccessError(AccessError::Kind::damaged, database_.file(), "is no address book (it has no table ABPerson)");
}

ContactList AddressBookReader::contacts(PictureSource *pictures) {
    ContactList contacts;
    readPersons("", contacts);
    readValues("", contacts);
    readParts(contacts);
    if (!pictures)
        return contacts;
    const PictureSource::Places places = pictures->places();
    if (places.empty())
        return contacts;
    for (std::size_t i = 0; i < contacts.size(); ++i)
        if (const auto place = places.find(records_[i]); place != places.end())
            contacts[i]->setImage_data(pictures->picture(records_[i], place->second));
    return contacts;
}

std::shared_ptr<ZpContactDataInfo> AddressBookReader::contact(std::int64_t record) {
    ContactList contacts;
    readPersons(" WHERE ROWID = " + std::to_string(record), contacts);
    if (contacts.empty())
        return nullptr;
    readValues(" AND record_id = " + std::to_string(record), contacts);
    readParts(contacts);
    return contacts.front();
}

void AddressBookReader::readPersons(const std::string &condition, ContactList &contacts) {
    const sqlite::Table persons = database_.table("ABPerson");
    std::string sql = "SELECT ROWID, " + persons.term("Birthday");
    for (const PersonField &field : kPersonFields)
        sql += ", " + persons.term(field.column);
    sqlite::Statement row = database_.prepare(sql + " FROM " + persons.name + condition + " ORDER BY ROWID");
    records_.clear();
    lastPlace_ = 0;
    std::array<NSString, kPersonFields.size()> texts;
    while (row.step()) {
        auto contact = make<ZpContactDataInfo>();
        records_.push_back(row.integer(0));
        contact->setPKey(decimal(records_.back()));
        if (NSString birthday = row.text(1))
            contact->setBirthday(dateOfStored(birthday));
        for (std::size_t i = 0; i < texts.size(); ++i)
            texts[i] = row.text(static_cast<int>(i) + 2);
        contact->setCompleteName(completeNameOf(texts));
        for (std::size_t i = 0; i < texts.size(); ++i)
            if (!texts[i].isNil())
                ((*contact).*kPersonFields[i].set)(std::move(texts[i]));
        contacts.push_back(std::move(contact));
    }
}

std::unordered_map<std::int64_t, NSString> AddressBookReader::labels() {
    std::unordered_map<std::int64_t, NSString> labels;
    const sqlite::Table table = database_.table("ABMultiValueLabel");
    if (!table.has("value"))
        return labels;
    sqlite::Statement row = database_.prepare("SELECT rowid, value FROM " + table.name);
    while (row.step())
        labels.emplace(row.integer(0), typeOfLabel(row.text(1)));
    return labels;
}

// Rows come mostly in the order of the contacts, so that the place of the last one or the next is the answer.
std::size_t AddressBookReader::placeOf(std::int64_t record) {
    for (std::size_t at = lastPlace_; at < records_.size() && at < lastPlace_ + 2; ++at)
        if (records_[at] == record)
            return lastPlace_ = at;
    const auto found = std::ranges::lower_bound(records_, record);
    if (found == records_.end() || *found != record)
        return kNowhere;
    return lastPlace_ = static_cast<std::size_t>(found - records_.begin());
}

void AddressBookReader::readValues(const std::string &condition, ContactList &contacts) {
    parents_.clear();
    const sqlite::Table values = database_.table("ABMultiValue");
    if (!values.has("record_id") || !values.has("property"))
        return;
    labels_ = labels();
    lastLabel_ = 0;
    lastType_ = kNoLabel;
    const std::string key = values.has("UID") ? "UID" : "ROWID";
    sqlite::Statement row = database_.prepare("SELECT record_id, property, " + values.term("label") + ", " + values.term("value") + ", " + key +
                                              " FROM " + values.name + " WHERE property IN (3, 4, 5, 12, 13, 22, 23)" + condition +
                                              " ORDER BY " + key);
    while (row.step())
        if (const std::size_t at = placeOf(row.integer(0)); at != kNowhere)
            addValue(row, at, *contacts[at]);
}

// Neighbours often have the same label.
NSString AddressBookReader::typeOf(const sqlite::Statement &row) {
    const std::int64_t label = row.integer(2);   // 0 for NULL; no row has it
    if (label == lastLabel_)
        return lastType_;
    lastLabel_ = label;
    const auto known = labels_.find(label);
    return lastType_ = label == 0 || known == labels_.end() ? NSString(kNoLabel) : known->second;
}

void AddressBookReader::addValue(sqlite::Statement &row, std::size_t at, ZpContactDataInfo &contact) {
    NSString type = typeOf(row);
    const std::int64_t UID = row.integer(4);
    switch (static_cast<Property>(row.integer(1))) {
    case Property::phone: append(contact.mutable_phone_numbers(), {std::move(type), row.text(3), UID}); break;
    case Property::email: append(contact.mutable_emails(), {std::move(type), row.text(3), UID}); break;
    case Property::url: contact.mutable_urls().push_back({std::move(type), row.text(3), UID}); break;
    case Property::relatedName: contact.mutable_relatednames().push_back({std::move(type), row.text(3), UID}); break;
    case Property::date: contact.mutable_dates().push_back({std::move(type), dateOfStored(row.text(3)), UID}); break;
    case Property::address: {
        auto &addresses = contact.mutable_addresses();
        parents_.push_back({UID, at, addresses.size(), true});
        addresses.emplace_back();
        addresses.back().type = std::move(type);
        addresses.back().storeKey = UID;
        break;
    }
    case Property::instantMessage: {
        auto &ims = contact.mutable_ims();
        parents_.push_back({UID, at, ims.size(), false});
        ims.push_back({std::move(type), {}, {}, UID});
        break;
    }
    }
}

std::unordered_map<std::int64_t, AddressBookReader::Part> AddressBookReader::partKeys() {
    static constexpr std::pair<std::string_view, Part> kParts[] = {
        {"street", Part::street},   {"city", Part::city},         {"state", Part::state},          {"zip", Part::postalCode},
        {"country", Part::country}, {"countrycode", Part::countryCode}, {"service", Part::service}, {"username", Part::username},
    };
    std::unordered_map<std::int64_t, Part> keys;
    const sqlite::Table table = database_.table("ABMultiValueEntryKey");
    if (!table.has("value"))
        return keys;
    sqlite::Statement row = database_.prepare("SELECT rowid, lower(value) FROM " + table.name);
    while (row.step())
        for (const auto &[word, part] : kParts)
            if (row.rawText(1) == word)
                keys.emplace(row.integer(0), part);
    return keys;
}

// Where a part of the item stands; nowhere for a part of the other kind.
NSString *AddressBookReader::partOf(ZpContactAddressDataInfo &address, Part part) {
    switch (part) {
    case Part::street: return &address.street;
    case Part::city: return &address.city;
    case Part::state: return &address.state;
    case Part::postalCode: return &address.postal_code;
    case Part::country: return &address.country;
    case Part::countryCode: return &address.country_code;
    default: return nullptr;
    }
}

NSString *AddressBookReader::partOf(ZpIMDataInfo &message, Part part) {
    return part == Part::service ? &message.service : part == Part::username ? &message.user : nullptr;
}

void AddressBookReader::readParts(ContactList &contacts) {
    const sqlite::Table entries = database_.table("ABMultiValueEntry");
    if (parents_.empty() || !entries.has("parent_id") || !entries.has("key") || !entries.has("value"))
        return;
    const auto keys = partKeys();
    const std::string condition = contacts.size() == 1 ? " WHERE parent_id BETWEEN " + std::to_string(parents_.front().UID) + " AND " +
                                                             std::to_string(parents_.back().UID)
                                                       : "";
    sqlite::Statement row = database_.prepare("SELECT parent_id, key, value FROM " + entries.name + condition);
    std::size_t last = 0;
    const auto parentOf = [&](std::int64_t UID) -> const Parent * {
        for (std::size_t at = last; at < parents_.size() && at < last + 2; ++at)
            if (parents_[at].UID == UID)
                return &parents_[last = at];
        const auto found = std::ranges::lower_bound(parents_, UID, {}, &Parent::UID);
        if (found == parents_.end() || found->UID != UID)
            return nullptr;
        last = static_cast<std::size_t>(found - parents_.begin());
        return &*found;
    };
    while (row.step()) {
        const Parent *parent = parentOf(row.integer(0));
        const auto key = parent ? keys.find(row.integer(1)) : keys.end();
        if (key == keys.end())
            continue;
        ZpContactDataInfo &contact = *contacts[parent->contact];
        NSString *const text = parent->isAddress ? partOf(contact.mutable_addresses()[parent->index], key->second)
                                                 : partOf(contact.mutable_ims()[parent->index], key->second);
        if (text)
            *text = row.text(2);
    }
}

ContactGroupList AddressBookReader::groups() {
    ContactGroupList groups;
    const sqlite::Table table = database_.table("ABGroup");
    if (!table.exists())
        return groups;
    std::unordered_map<std::int64_t, std::shared_ptr<ContactGroupInfo>> byRow;
    sqlite::Statement row = database_.prepare("SELECT ROWID, " + table.term("Name") + " FROM " + table.name + " ORDER BY ROWID");
    while (row.step()) {
        auto group = make<ContactGroupInfo>();
        group->storeKey = row.integer(0);
        group->groupName = row.text(1);
        byRow.emplace(group->storeKey, group);
        groups.push_back(std::move(group));
    }
    const sqlite::Table members = database_.table("ABGroupMembers");
    if (!members.has("group_id") || !members.has("member_id"))
        return groups;
    const std::string persons = members.has("member_type") ? " WHERE member_type = 0" : "";
    sqlite::Statement member = database_.prepare("SELECT group_id, member_id FROM " + members.name + persons + " ORDER BY ROWID");
    while (member.step())
        if (const auto group = byRow.find(member.integer(0)); group != byRow.end())
            group->second->ContactKey.push_back(decimal(member.integer(1)));
    return groups;
}

}  // namespace device::contacts
