#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/HNContactEntity.h"

HN_CLASS_TABLE(HNContactInfo, HNMbaseEntity, .key("info", &HNContactInfo::info).key("label", &HNContactInfo::label))
HN_CLASS_TABLE(HNContactEntity, HNMbaseEntity,
               .key("name", &HNContactEntity::name)
                   .key("image", &HNContactEntity::image)
                   .key("detailInfoArray", &HNContactEntity::detailInfoArray))

namespace {

class Rows {
public:
    void add(const NSString &type, const NSString &info) {
        auto row = make<HNContactInfo>();
        row->type = type;
        row->info = info;
        items.push_back(std::move(row));
    }
    void addUnlessEmpty(const NSString &type, const NSString &info) {
        if (!info.isEmpty())
            add(type, info);
    }
    template <class Record>
    void addAll(const std::vector<Record> &records, NSString Record::*info, NSString Record::*type = &Record::type) {
        for (const Record &record : records)
            add(record.*type, record.*info);
    }
    NSArray::Items items;
};

NSString inOneLine(const ZpContactAddressDataInfo &address) {
    std::string line;
    for (const NSString *part :
         {&address.country, &address.state, &address.city, &address.street, &address.postal_code})
        line += part->str() + " ";
    return NSString(line);
}

}   // namespace

void HNContactEntity::init() {
    HNMbaseEntity::init();
    detailInfoArray = make<NSMutableArray>();
}

void HNContactEntity::showDetails(const ZpContactDataInfo &contact) {
    Rows rows;
    rows.addAll(contact.phone_numbers(), &ZpPhoneNumberDataInfo::phone_number);
    rows.addAll(contact.emails(), &ZpEmailDataInfo::email);
    rows.addAll(contact.urls(), &ZpUrlDataInfo::url);
    for (const auto &address : contact.addresses())
        rows.add(address.type, inOneLine(address));
    rows.addUnlessEmpty("birthday", contact.birthday());
    rows.addAll(contact.dates(), &ZpDateDataInfo::date);
    rows.addAll(contact.relatednames(), &ZpRelatedNameDataInfo::relatename);
    rows.addAll(contact.ims(), &ZpIMDataInfo::user, &ZpIMDataInfo::service);
    rows.addUnlessEmpty("job", contact.job_title());
    if (contact.department())   // an empty one shows all the same
        rows.add("Department", contact.department());
    rows.addUnlessEmpty("Company Name", contact.company_name());
    rows.addUnlessEmpty("Note", contact.notes());
    detailInfoArray->setArray(NSArray(std::move(rows.items)));
    name = contact.completeName();
}
