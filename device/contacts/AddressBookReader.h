// Reads an address book of any version: what a version lacks is absent.
//
// Cost     each table is walked once, in the order of its rows, whatever the number of contacts.
// Errors   sqlite::Error, AccessError (damaged: a database without ABPerson).
// Threads  those of the connection.
#pragma once

#include <unordered_map>
#include <vector>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"
#include "device/contacts/AddressBookSchema.h"
#include "device/contacts/PictureSource.h"

namespace device::contacts {

class AddressBookReader {
public:
    explicit AddressBookReader(sqlite::Database &database);

    // By ROWID. `pictures` may be null.
    [[nodiscard]] ContactList contacts(PictureSource *pictures);
    // One contact without its picture; null where there is none.
    [[nodiscard]] std::shared_ptr<ZpContactDataInfo> contact(std::int64_t record);
    [[nodiscard]] ContactGroupList groups();

private:
    // A list item that has its parts in a table of their own.
    struct Parent {
        std::int64_t UID;
        std::size_t contact, index;
        bool isAddress;
    };
    enum class Part { street, city, state, postalCode, country, countryCode, service, username };

    void readPersons(const std::string &condition, ContactList &contacts);
    void readValues(const std::string &condition, ContactList &contacts);
    void readParts(ContactList &contacts);
    void addValue(sqlite::Statement &row, std::size_t at, ZpContactDataInfo &contact);
    [[nodiscard]] NSString typeOf(const sqlite::Statement &row);
    [[nodiscard]] std::size_t placeOf(std::int64_t record);
    [[nodiscard]] std::unordered_map<std::int64_t, NSString> labels();
    [[nodiscard]] std::unordered_map<std::int64_t, Part> partKeys();
    [[nodiscard]] static NSString *partOf(ZpContactAddressDataInfo &address, Part part);
    [[nodiscard]] static NSString *partOf(ZpIMDataInfo &message, Part part);

    sqlite::Database &database_;
    std::vector<std::int64_t> records_;   // ascending, one per contact
    std::size_t lastPlace_ = 0;
    std::vector<Parent> parents_;         // ascending by UID
    std::unordered_map<std::int64_t, NSString> labels_;
    std::int64_t lastLabel_ = 0;
    NSString lastType_;
};

}  // namespace device::contacts
