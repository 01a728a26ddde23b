#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

const NSString ZpContactDataInfo::kAbsentText;

namespace {

template <class Record> struct TextField {
    std::string_view key;
    NSString Record::*field;
};

template <class Record, std::size_t N>
Value valueOf(const Record &record, const TextField<Record> (&fields)[N], std::string_view key) {
    if (key == "type")
        return record.type;
    for (const auto &field : fields)
        if (field.key == key)
            return record.*field.field;
    return {};
}

}  // namespace

Value ZpPhoneNumberDataInfo::valueForKey(std::string_view key) const {
    static constexpr TextField<ZpPhoneNumberDataInfo> kFields[] = {{"phone_number", &ZpPhoneNumberDataInfo::phone_number}};
    return valueOf(*this, kFields, key);
}

Value ZpEmailDataInfo::valueForKey(std::string_view key) const {
    static constexpr TextField<ZpEmailDataInfo> kFields[] = {{"email", &ZpEmailDataInfo::email}};
    return valueOf(*this, kFields, key);
}

Value ZpContactAddressDataInfo::valueForKey(std::string_view key) const {
    using Record = ZpContactAddressDataInfo;
    static constexpr TextField<Record> kFields[] = {{"street", &Record::street},           {"city", &Record::city},
                                                    {"state", &Record::state},             {"postal_code", &Record::postal_code},
                                                    {"country", &Record::country},         {"country_code", &Record::country_code}};
    return valueOf(*this, kFields, key);
}

Value ZpUrlDataInfo::valueForKey(std::string_view key) const {
    static constexpr TextField<ZpUrlDataInfo> kFields[] = {{"url", &ZpUrlDataInfo::url}};
    return valueOf(*this, kFields, key);
}

Value ZpDateDataInfo::valueForKey(std::string_view key) const {
    static constexpr TextField<ZpDateDataInfo> kFields[] = {{"date", &ZpDateDataInfo::date}};
    return valueOf(*this, kFields, key);
}

Value ZpRelatedNameDataInfo::valueForKey(std::string_view key) const {
    static constexpr TextField<ZpRelatedNameDataInfo> kFields[] = {{"relatename", &ZpRelatedNameDataInfo::relatename}};
    return valueOf(*this, kFields, key);
}

Value ZpIMDataInfo::valueForKey(std::string_view key) const {
    static constexpr TextField<ZpIMDataInfo> kFields[] = {{"service", &ZpIMDataInfo::service}, {"user", &ZpIMDataInfo::user}};
    return valueOf(*this, kFields, key);
}

std::shared_ptr<ZpContactDataInfo> ZpContactDataInfo::copy() const {
    auto twin = make<ZpContactDataInfo>();
    if (fields_)
        twin->fields_ = std::make_unique<Fields>(*fields_);
    return twin;
}

#define HN_TEXT_KEY(name, Setter)                                                                     \
    .key(#name, [](NSObject &o) { return Value(static_cast<ZpContactDataInfo &>(o).name()); },        \
         [](NSObject &o, const Value &v) { static_cast<ZpContactDataInfo &>(o).set##Setter(v.text()); })
HN_CLASS_TABLE(ZpContactDataInfo, NSObjectTable,
               HN_TEXT_KEY(pKey, PKey) HN_TEXT_KEY(completeName, CompleteName) HN_TEXT_KEY(first_name, First_name)
               HN_TEXT_KEY(last_name, Last_name) HN_TEXT_KEY(middle_name, Middle_name) HN_TEXT_KEY(name_title, Name_title)
               HN_TEXT_KEY(name_suffix, Name_suffix) HN_TEXT_KEY(first_name_yomi, First_name_yomi)
               HN_TEXT_KEY(last_name_yomi, Last_name_yomi) HN_TEXT_KEY(middle_name_yomi, Middle_name_yomi)
               HN_TEXT_KEY(nickname, Nickname) HN_TEXT_KEY(company_name, Company_name) HN_TEXT_KEY(department, Department)
               HN_TEXT_KEY(job_title, Job_title) HN_TEXT_KEY(birthday, Birthday) HN_TEXT_KEY(notes, Notes)
               HN_TEXT_KEY(imagePath, ImagePath)
               .key("image_data", [](NSObject &o) { return Value(static_cast<ZpContactDataInfo &>(o).image_data()); })
               .key("image_length", [](NSObject &o) { return Value(static_cast<ZpContactDataInfo &>(o).image_length()); }))
#undef HN_TEXT_KEY

HN_CLASS_TABLE(ContactGroupInfo, NSObjectTable,
               .key("groupName", &ContactGroupInfo::groupName).key("isSelected", &ContactGroupInfo::isSelected))
