// When two contacts count as the same: the rule that the duplicate search and the import's repeat check share.
//
// Texts    compared ignoring case, by a message to the left one: an absent left text is the same as anything, a present
//          one differs from an absent right one. So the order of the arguments can decide.
// Lists    addresses, ims, urls, dates and relatednames are compared in sorted order, and the sorts stay: both records
//          keep the new order of each list that was reached before a difference ended the comparison. Stable, by code
//          points, absent first. Labels (`type`) play no part.
// Threads  the caller owns both records for the call.
#pragma once

#include <algorithm>
#include <vector>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

namespace contactRules {

[[nodiscard]] bool isSame(const NSString &left, const NSString &right);

// Everything but names, telephone numbers and e-mails agrees.
[[nodiscard]] bool checkContactItem_sameAs(ZpContactDataInfo &left, ZpContactDataInfo &right);
// Two contacts without any name never agree.
[[nodiscard]] bool checkContactName_sameAs(const ZpContactDataInfo &left, const ZpContactDataInfo &right);
// No display name and no phonetic one.
[[nodiscard]] bool isNameless(const ZpContactDataInfo &contact);

// Without U+00A0 and "-"; absent stays absent. A plain blank stays.
[[nodiscard]] NSString deletePhoneNumberSpace(const NSString &text);

// The lists in the order in which they are compared, and the field that sorts each.
template <class Visit>
void visitItemLists(Visit &&visit) {
    visit(&ZpContactDataInfo::addresses, &ZpContactDataInfo::mutable_addresses, &ZpContactAddressDataInfo::country);
    visit(&ZpContactDataInfo::ims, &ZpContactDataInfo::mutable_ims, &ZpIMDataInfo::user);
    visit(&ZpContactDataInfo::urls, &ZpContactDataInfo::mutable_urls, &ZpUrlDataInfo::url);
    visit(&ZpContactDataInfo::dates, &ZpContactDataInfo::mutable_dates, &ZpDateDataInfo::date);
    visit(&ZpContactDataInfo::relatednames, &ZpContactDataInfo::mutable_relatednames,
          &ZpRelatedNameDataInfo::relatename);
}

// The texts that are compared, in order.
template <class Visit>
void visitItemTexts(const ZpContactDataInfo &c, Visit &&visit) {
    visit(c.company_name());
    visit(c.department());
    visit(c.job_title());
    visit(c.birthday());
    visit(c.notes());
}
template <class Visit>
void visitNames(const ZpContactDataInfo &c, Visit &&visit) {
    visit(c.completeName());
    visit(c.first_name_yomi());
    visit(c.middle_name_yomi());
    visit(c.last_name_yomi());
}

// The texts of one list item that are compared.
template <class Visit>
void visitTexts(const ZpContactAddressDataInfo &a, Visit &&visit) {
    for (const NSString *text : {&a.country, &a.country_code, &a.city, &a.state, &a.street, &a.postal_code})
        visit(*text);
}
template <class Visit>
void visitTexts(const ZpIMDataInfo &im, Visit &&visit) {
    visit(im.user);
}
template <class Visit>
void visitTexts(const ZpUrlDataInfo &url, Visit &&visit) {
    visit(url.url);
}
template <class Visit>
void visitTexts(const ZpDateDataInfo &date, Visit &&visit) {
    visit(date.date);
}
template <class Visit>
void visitTexts(const ZpRelatedNameDataInfo &related, Visit &&visit) {
    visit(related.relatename);
}

// `sortDetailInfo:WithKey:ascending:`, ascending.
template <class Record>
void sortDetailInfo(std::vector<Record> &list, NSString Record::*key) {
    std::stable_sort(list.begin(), list.end(),
                     [key](const Record &a, const Record &b) { return (a.*key <=> b.*key) < 0; });
}

// The same order without touching the list.
template <class Record>
std::vector<const Record *> inOrder(const std::vector<Record> &list, NSString Record::*key) {
    std::vector<const Record *> order;
    for (const Record &record : list)
        order.push_back(&record);
    std::stable_sort(order.begin(), order.end(), [key](const Record *a, const Record *b) { return (a->*key <=> b->*key) < 0; });
    return order;
}

}   // namespace contactRules
