#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactRules.h"

#include <array>
#include <utility>

namespace contactRules {

namespace {

// The texts of both sides side by side, ended by the first difference.
template <std::size_t N, class Record, class Visit>
bool agree(const Record &left, const Record &right, Visit visit) {
    std::array<const NSString *, N> texts{};
    std::size_t count = 0;
    visit(left, [&](const NSString &text) { texts[count++] = &text; });
    bool same = true;
    std::size_t at = 0;
    visit(right, [&](const NSString &text) { same = same && isSame(*texts[at++], text); });
    return same;
}

template <class Record>
bool itemsAgree(const Record &left, const Record &right) {
    return agree<6>(left, right, [](const Record &record, auto &&visit) { visitTexts(record, visit); });
}

// Reading an untouched record must not give it fields, so a list that needs no sorting is left alone.
template <class Record>
const std::vector<Record> &sorted(ZpContactDataInfo &contact,
                                  const std::vector<Record> &(ZpContactDataInfo::*read)() const,
                                  std::vector<Record> &(ZpContactDataInfo::*write)(), NSString Record::*key) {
    if ((contact.*read)().size() > 1)
        sortDetailInfo((contact.*write)(), key);
    return (contact.*read)();
}

}   // namespace

bool isSame(const NSString &left, const NSString &right) {
    if (left.isNil())
        return true;
    return !right.isNil() && left.isEqualIgnoringCase(right);
}

bool checkContactItem_sameAs(ZpContactDataInfo &left, ZpContactDataInfo &right) {
    if (!agree<5>(left, right, [](const ZpContactDataInfo &c, auto &&visit) { visitItemTexts(c, visit); }))
        return false;
    bool same = true;
    visitItemLists([&](auto read, auto, auto) { same = same && (left.*read)().size() == (right.*read)().size(); });
    visitItemLists([&](auto read, auto write, auto key) {
        if (!same)
            return;
        const auto &a = sorted(left, read, write, key);
        const auto &b = sorted(right, read, write, key);
        for (std::size_t i = 0; i < a.size() && same; ++i)
            same = itemsAgree(a[i], b[i]);
    });
    return same;
}

bool isNameless(const ZpContactDataInfo &contact) {
    bool nameless = true;
    visitNames(contact, [&](const NSString &text) { nameless = nameless && text.isEmpty(); });
    return nameless;
}

bool checkContactName_sameAs(const ZpContactDataInfo &left, const ZpContactDataInfo &right) {
    if (isNameless(left) && isNameless(right))
        return false;
    return agree<4>(left, right, [](const ZpContactDataInfo &c, auto &&visit) { visitNames(c, visit); });
}

NSString deletePhoneNumberSpace(const NSString &text) {
    return text.stringByReplacingOccurrencesOfString_withString("\xC2\xA0", "")
        .stringByReplacingOccurrencesOfString_withString("-", "");
}

}   // namespace contactRules
