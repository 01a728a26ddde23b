#include "host/cli/ContactRecord.h"

namespace host::cli {

namespace {

using Info = ZpContactDataInfo;

struct TextField {
    const char *name;
    const NSString &(Info::*text)() const;
};
constexpr TextField kTexts[] = {
    {"pKey", &Info::pKey},
    {"completeName", &Info::completeName},
    {"first_name", &Info::first_name},
    {"last_name", &Info::last_name},
    {"middle_name", &Info::middle_name},
    {"name_title", &Info::name_title},
    {"name_suffix", &Info::name_suffix},
    {"first_name_yomi", &Info::first_name_yomi},
    {"last_name_yomi", &Info::last_name_yomi},
    {"middle_name_yomi", &Info::middle_name_yomi},
    {"nickname", &Info::nickname},
    {"company_name", &Info::company_name},
    {"department", &Info::department},
    {"job_title", &Info::job_title},
    {"birthday", &Info::birthday},
    {"notes", &Info::notes},
    {"imagePath", &Info::imagePath},
};

template <class Record> Json listOf(const std::vector<Record> &records, std::initializer_list<const char *> keys) {
    Json list = Json::array();
    for (const Record &record : records) {
        Json &entry = list.emplace_back(Json::object());
        entry["type"] = toJson(record.type);
        for (const char *key : keys)
            entry[key] = toJson(record.valueForKey(key).text());
    }
    return list;
}

}  // namespace

Json contactRecord(const ZpContactDataInfo &contact) {
    Json record = Json::object();
    for (const TextField &field : kTexts)
        record[field.name] = toJson((contact.*field.text)());
    const NSDataRef picture = contact.imageCharData();
    record["imageCharData"] = picture ? Json(base64(picture->bytes())) : Json(nullptr);
    record["image_length"] = contact.image_length();
    record["phone_numbers"] = listOf(contact.phone_numbers(), {"phone_number"});
    record["emails"] = listOf(contact.emails(), {"email"});
    record["addresses"] =
        listOf(contact.addresses(), {"street", "city", "state", "postal_code", "country", "country_code"});
    record["urls"] = listOf(contact.urls(), {"url"});
    record["dates"] = listOf(contact.dates(), {"date"});
    record["relatednames"] = listOf(contact.relatednames(), {"relatename"});
    record["ims"] = listOf(contact.ims(), {"service", "user"});
    return record;
}

std::string base64(std::string_view bytes) {
    constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::string_view group = bytes.substr(at, 3);
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < 3; ++i)
            bits = bits << 8 | (i < group.size() ? static_cast<unsigned char>(group[i]) : 0u);
        for (std::size_t i = 0; i < 4; ++i)
            text += i <= group.size() ? kAlphabet[bits >> (18 - 6 * i) & 63] : '=';
    }
    return text;
}

}  // namespace host::cli
