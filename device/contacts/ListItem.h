// One item of a contact's lists in the one shape in which all of them are stored.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"
#include "device/contacts/AddressBookSchema.h"

namespace device::contacts {

struct ListItem {
    struct Part {
        const char *key;   // as the device spells it
        NSString value;
        bool operator==(const Part &other) const { return value == other.value; }
    };
    Property property = Property::phone;
    NSString type;
    NSString value;            // of kinds without parts; a date as it is shown
    std::vector<Part> parts;   // of addresses and instant messages, always the same ones in the same order
    std::int64_t UID = 0;      // 0 for a new item

    // False for an item that nothing would be left of.
    [[nodiscard]] bool hasValue() const;
    [[nodiscard]] bool isSame(const ListItem &other) const {
        return type == other.type && value == other.value && parts == other.parts;
    }
};

// A text on its way to the device: valid UTF-8 without control characters at both ends. Absent stays absent.
[[nodiscard]] NSString written(const NSString &text);

// All items of a contact, each list in its order, texts as they stand in the record.
[[nodiscard]] std::vector<ListItem> itemsOf(const ZpContactDataInfo &contact);
// The item as it goes to the device.
[[nodiscard]] ListItem written(ListItem item);

}  // namespace device::contacts
