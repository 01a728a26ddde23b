#include "device/contacts/ListItem.h"

#include <algorithm>

namespace device::contacts {

bool ListItem::hasValue() const {
    return !value.isEmpty() || std::ranges::any_of(parts, [](const Part &part) { return !part.value.isEmpty(); });
}

NSString written(const NSString &text) {
    if (text.isNil())
        return text;
    const NSString clean = unicode::isValid(text.view()) ? text : NSString(unicode::sanitized(text.view()));
    return clean.stringByTrimmingCharactersInSet(CharacterSet::controls);
}

std::vector<ListItem> itemsOf(const ZpContactDataInfo &contact) {
    std::vector<ListItem> items;
    for (const auto &phone : contact.phone_numbers())
        items.push_back({Property::phone, phone.type, phone.phone_number, {}, phone.storeKey});
    for (const auto &email : contact.emails())
        items.push_back({Property::email, email.type, email.email, {}, email.storeKey});
    for (const auto &address : contact.addresses())
        items.push_back({Property::address, address.type, {},
                         {{"Street", address.street},
                          {"City", address.city},
                          {"State", address.state},
                          {"ZIP", address.postal_code},
                          {"Country", address.country},
                          {"CountryCode", address.country_code}},
                         address.storeKey});
    for (const auto &date : contact.dates())
        items.push_back({Property::date, date.type, date.date, {}, date.storeKey});
    for (const auto &message : contact.ims())
        items.push_back({Property::instantMessage, message.type, {}, {{"service", message.service}, {"username", message.user}}, message.storeKey});
    for (const auto &url : contact.urls())
        items.push_back({Property::url, url.type, url.url, {}, url.storeKey});
    for (const auto &name : contact.relatednames())
        items.push_back({Property::relatedName, name.type, name.relatename, {}, name.storeKey});
    return items;
}

ListItem written(ListItem item) {
    item.type = written(item.type);
    if (item.property == Property::address && item.type.hasPrefix("="))   // left over from quoted-printable cards
        item.type = item.type.substringFromIndex(1);
    item.value = written(item.value);
    for (ListItem::Part &part : item.parts)
        part.value = written(part.value);
    return item;
}

}  // namespace device::contacts
