// A contact as one readable line, for samples and expected values: "last_name=Doe; tel(CELL)=123\r". Absent fields are left
// out; an absent text inside a sub-record reads "~". Record-bound order of fields, list order as it stands.
#pragma once

#include <string>
#include <string_view>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

[[nodiscard]] std::string described(const ZpContactDataInfo &contact);   // \r, \n, \t and \0 written so
[[nodiscard]] std::string described(const ContactList &contacts);        // one line each

// The contact of such a line, the other way round: no escapes, and no "; name=" or "; name(" within a text.
[[nodiscard]] std::shared_ptr<ZpContactDataInfo> contactOf(std::string_view text);
[[nodiscard]] ContactList contactsOf(std::string_view lines);
// Adds to one.
void fill(ZpContactDataInfo &contact, std::string_view text);
