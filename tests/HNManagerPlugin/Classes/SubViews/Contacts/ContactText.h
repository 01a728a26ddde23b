// A contact as one readable line, for expected values: "last_name=Doe; tel(CELL)=123\r". Absent fields are left out; an
// absent text inside a sub-record reads "~". Record-bound order of fields, list order as it stands.
#pragma once

#include <string>
#include <vector>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

[[nodiscard]] std::string described(const ZpContactDataInfo &contact);
[[nodiscard]] std::string described(const ContactList &contacts);   // one line each

// A contact of this name with numbers and addresses that have the empty label; null is the absent text.
[[nodiscard]] std::shared_ptr<ZpContactDataInfo> person(const char *name, const std::vector<const char *> &phones = {},
                                                        const std::vector<const char *> &emails = {});
