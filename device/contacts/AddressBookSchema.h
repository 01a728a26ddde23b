// Where a device keeps its address book, the numbers of its properties, and the tables of a new one.
#pragma once

#include <cstdint>

#include "device/FileTree.h"

namespace device::contacts {

inline const DevicePath kAddressBook{"HomeDomain", "Library/AddressBook/AddressBook.sqlitedb"};
inline const DevicePath kAddressBookImages{"HomeDomain", "Library/AddressBook/AddressBookImages.sqlitedb"};
inline constexpr const char *kImagesSchema = "images";   // of the attached picture database

enum class Property : std::int64_t {
    phone = 3,
    email = 4,
    address = 5,
    date = 12,
    instantMessage = 13,
    url = 22,
    relatedName = 23,
};

// The newest layout known, with the triggers, defaults and keys that real ones have.
extern const char *const kNewAddressBook;
extern const char *const kNewAddressBookImages;

}  // namespace device::contacts
