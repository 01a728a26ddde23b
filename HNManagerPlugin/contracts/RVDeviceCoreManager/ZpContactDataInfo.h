// One contact as the device layer reads and writes it, with its sub-records.
//
// Texts    may be absent; a field that stands there without text is "" (import and detail panel tell the two apart).
// Labels   `type` is a free text such as "other" or "Home"; no vocabulary.
// Cost     a record that nobody has written to owns no fields: a list of a million prepared ones stays small.
//          Reading an untouched field gives the absent text or the empty list and does not touch it.
// Threads  no lock: a record belongs to the load, then to the main thread, then to the worker of one flow.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "toolkit/NSData.h"
#include "toolkit/NSImage.h"
#include "toolkit/NSObject.h"

// `storeKey` is the device layer's own: the row that a sub-record was read from, 0 for a new one. It plays no part in
// equality.
struct ZpPhoneNumberDataInfo {
    NSString type;
    NSString phone_number;
    std::int64_t storeKey = 0;
    // The device's rule: the same label and the same text.
    bool operator==(const ZpPhoneNumberDataInfo &other) const {
        return type == other.type && phone_number == other.phone_number;
    }
    [[nodiscard]] Value valueForKey(std::string_view key) const;
};

struct ZpEmailDataInfo {
    NSString type;
    NSString email;
    std::int64_t storeKey = 0;
    bool operator==(const ZpEmailDataInfo &other) const { return type == other.type && email == other.email; }
    [[nodiscard]] Value valueForKey(std::string_view key) const;
};

struct ZpContactAddressDataInfo {
    NSString type;
    NSString street, city, state, postal_code, country;
    NSString country_code;   // compared by the duplicate rule only; no file reader fills it
    std::int64_t storeKey = 0;
    [[nodiscard]] Value valueForKey(std::string_view key) const;
};

struct ZpUrlDataInfo {
    NSString type;
    NSString url;
    std::int64_t storeKey = 0;
    [[nodiscard]] Value valueForKey(std::string_view key) const;
};

struct ZpDateDataInfo {
    NSString type;
    NSString date;   // text as it stands, "yyyy-MM-dd" from a device
    std::int64_t storeKey = 0;
    [[nodiscard]] Value valueForKey(std::string_view key) const;
};

struct ZpRelatedNameDataInfo {
    NSString type;
    NSString relatename;
    std::int64_t storeKey = 0;
    [[nodiscard]] Value valueForKey(std::string_view key) const;
};

struct ZpIMDataInfo {
    NSString type;
    NSString service, user;
    std::int64_t storeKey = 0;
    [[nodiscard]] Value valueForKey(std::string_view key) const;
};

class ZpContactDataInfo : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    HN_DECLARE_CLASS_TABLE

    // A field: `first_name()` reads, `setFirst_name(...)` writes (the first letter in upper case).
#define HN_CONTACT_TEXT(name, Setter)                                                        \
    [[nodiscard]] const NSString &name() const { return fields_ ? fields_->name : kAbsentText; } \
    void set##Setter(NSString value) { fields().name = std::move(value); }
    // A list: `phone_numbers()` reads, `mutable_phone_numbers()` gives it for writing.
#define HN_CONTACT_LIST(name, Record)                                                                        \
    [[nodiscard]] const std::vector<Record> &name() const { return fields_ ? fields_->name : emptyList<Record>(); } \
    [[nodiscard]] std::vector<Record> &mutable_##name() { return fields().name; }

    HN_CONTACT_TEXT(pKey, PKey)   // identity on the device; absent on a record built from a file
    HN_CONTACT_TEXT(completeName, CompleteName)
    HN_CONTACT_TEXT(first_name, First_name)
    HN_CONTACT_TEXT(last_name, Last_name)
    HN_CONTACT_TEXT(middle_name, Middle_name)
    HN_CONTACT_TEXT(name_title, Name_title)
    HN_CONTACT_TEXT(name_suffix, Name_suffix)
    HN_CONTACT_TEXT(first_name_yomi, First_name_yomi)
    HN_CONTACT_TEXT(last_name_yomi, Last_name_yomi)
    HN_CONTACT_TEXT(middle_name_yomi, Middle_name_yomi)
    HN_CONTACT_TEXT(nickname, Nickname)
    HN_CONTACT_TEXT(company_name, Company_name)
    HN_CONTACT_TEXT(department, Department)
    HN_CONTACT_TEXT(job_title, Job_title)
    HN_CONTACT_TEXT(birthday, Birthday)   // text as it stands, never parsed by the plug-in
    HN_CONTACT_TEXT(notes, Notes)
    HN_CONTACT_TEXT(imagePath, ImagePath)   // picture chosen in the editor
    HN_CONTACT_LIST(phone_numbers, ZpPhoneNumberDataInfo)
    HN_CONTACT_LIST(emails, ZpEmailDataInfo)
    HN_CONTACT_LIST(addresses, ZpContactAddressDataInfo)
    HN_CONTACT_LIST(urls, ZpUrlDataInfo)
    HN_CONTACT_LIST(dates, ZpDateDataInfo)
    HN_CONTACT_LIST(relatednames, ZpRelatedNameDataInfo)
    HN_CONTACT_LIST(ims, ZpIMDataInfo)
#undef HN_CONTACT_TEXT
#undef HN_CONTACT_LIST

    // The picture on show; null when the contact has none.
    [[nodiscard]] std::shared_ptr<NSImage> image_data() const { return fields_ ? fields_->image_data : nullptr; }
    void setImage_data(std::shared_ptr<NSImage> image) { fields().image_data = std::move(image); }
    // Raw picture bytes of a record on its way to the device; null without.
    [[nodiscard]] NSDataRef imageCharData() const { return fields_ ? fields_->imageCharData : nullptr; }
    void setImageCharData(NSDataRef data) { fields().imageCharData = std::move(data); }
    [[nodiscard]] std::int64_t image_length() const { return fields_ ? fields_->image_length : 0; }
    void setImage_length(std::int64_t bytes) { fields().image_length = bytes; }

    [[nodiscard]] bool isUntouched() const { return !fields_; }
    // A record with the same texts, lists and pictures.
    [[nodiscard]] std::shared_ptr<ZpContactDataInfo> copy() const;

private:
    struct Fields {
        NSString pKey, completeName, first_name, last_name, middle_name, name_title, name_suffix, first_name_yomi,
            last_name_yomi, middle_name_yomi, nickname, company_name, department, job_title, birthday, notes, imagePath;
        std::vector<ZpPhoneNumberDataInfo> phone_numbers;
        std::vector<ZpEmailDataInfo> emails;
        std::vector<ZpContactAddressDataInfo> addresses;
        std::vector<ZpUrlDataInfo> urls;
        std::vector<ZpDateDataInfo> dates;
        std::vector<ZpRelatedNameDataInfo> relatednames;
        std::vector<ZpIMDataInfo> ims;
        std::shared_ptr<NSImage> image_data;
        NSDataRef imageCharData;
        std::int64_t image_length = 0;
    };
    static const NSString kAbsentText;
    template <class Record> static const std::vector<Record> &emptyList() {
        static const std::vector<Record> empty;
        return empty;
    }
    Fields &fields() {
        if (!fields_)
            fields_ = std::make_unique<Fields>();
        return *fields_;
    }

    std::unique_ptr<Fields> fields_;
};

using ContactList = std::vector<std::shared_ptr<ZpContactDataInfo>>;

// A contact group of the device. `ContactKey` holds the pKey of each member.
class ContactGroupInfo : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    HN_DECLARE_CLASS_TABLE

    NSString groupName;
    bool isSelected = false;   // set only while the editor is open
    std::vector<NSString> ContactKey;
    std::int64_t storeKey = 0;   // the device layer's own row
};

using ContactGroupList = std::vector<std::shared_ptr<ContactGroupInfo>>;
