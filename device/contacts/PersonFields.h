// Which column of ABPerson is which field of a contact.
#pragma once

#include <array>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

namespace device::contacts {

struct PersonField {
    const char *column;
    const NSString &(ZpContactDataInfo::*get)() const;
    void (ZpContactDataInfo::*set)(NSString);
};

// The first five make up the complete name, in this order.
inline constexpr std::size_t kNameParts = 5;
inline constexpr std::array<PersonField, 13> kPersonFields{{
    {"Prefix", &ZpContactDataInfo::name_title, &ZpContactDataInfo::setName_title},
    {"First", &ZpContactDataInfo::first_name, &ZpContactDataInfo::setFirst_name},
    {"Middle", &ZpContactDataInfo::middle_name, &ZpContactDataInfo::setMiddle_name},
    {"Last", &ZpContactDataInfo::last_name, &ZpContactDataInfo::setLast_name},
    {"Suffix", &ZpContactDataInfo::name_suffix, &ZpContactDataInfo::setName_suffix},
    {"Organization", &ZpContactDataInfo::company_name, &ZpContactDataInfo::setCompany_name},
    {"FirstPhonetic", &ZpContactDataInfo::first_name_yomi, &ZpContactDataInfo::setFirst_name_yomi},
    {"MiddlePhonetic", &ZpContactDataInfo::middle_name_yomi, &ZpContactDataInfo::setMiddle_name_yomi},
    {"LastPhonetic", &ZpContactDataInfo::last_name_yomi, &ZpContactDataInfo::setLast_name_yomi},
    {"Nickname", &ZpContactDataInfo::nickname, &ZpContactDataInfo::setNickname},
    {"Department", &ZpContactDataInfo::department, &ZpContactDataInfo::setDepartment},
    {"JobTitle", &ZpContactDataInfo::job_title, &ZpContactDataInfo::setJob_title},
    {"Note", &ZpContactDataInfo::notes, &ZpContactDataInfo::setNotes},
}};
inline constexpr std::size_t kFirstNameField = 1, kOrganizationField = 5;

// The non-empty name parts joined by one blank; without any the organization, else "".
[[nodiscard]] NSString completeNameOf(const std::array<NSString, kPersonFields.size()> &fields);

}  // namespace device::contacts
