#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactSearch.h"

#include <algorithm>
#include <functional>

namespace {

constexpr char kBetweenTexts = '\xFF';

// Visits the searched texts until `visit` gives false; gives how many were visited.
template <class Visit>
std::size_t visitSearched(const ZpContactDataInfo &contact, Visit visit) {
    std::size_t visited = 1;
    if (!visit(contact.completeName()))
        return visited;
    for (const auto &phone : contact.phone_numbers())
        if (++visited; !visit(phone.phone_number))
            return visited;
    for (const auto &email : contact.emails())
        if (++visited; !visit(email.email))
            return visited;
    return visited;
}

bool standsUnchanged(const ZpContactDataInfo &contact, const std::vector<NSString> &sources) {
    if (sources.size() != 1 + contact.phone_numbers().size() + contact.emails().size())
        return false;
    std::size_t at = 0;
    bool same = true;
    visitSearched(contact, [&](const NSString &text) { return same = text == sources[at++]; });
    return same;
}

bool holds(const ZpContactDataInfo &contact, std::vector<NSString> &sources, std::string &text, std::string_view part) {
    if (!standsUnchanged(contact, sources)) {
        sources.clear();
        text.clear();
        visitSearched(contact, [&](const NSString &source) {
            sources.push_back(source);
            text.append(source.folded().view()) += kBetweenTexts;
            return true;
        });
    }
    return text.find(part) != std::string::npos;
}

}   // namespace

void ContactSearch::meet(const NSArray::Items &rows) {
    const auto stands = [&](const Folded &one) { return rows[one.place].get() == one.row; };
    if (known_.size() == rows.size() && std::ranges::all_of(known_, stands))
        return;
    known_.clear();
    known_.resize(rows.size());
    for (std::size_t place = 0; place < rows.size(); ++place) {
        Folded &one = known_[place];
        one.row = rows[place].get();
        one.place = place;
        if (one.row->isMemberOf<ZpContactDataInfo>())   // nobody derives from a contact
            one.contact = static_cast<const ZpContactDataInfo *>(one.row);
    }
    std::ranges::sort(known_, std::less<>(), &Folded::row);
}

// What a contact leads to is asked for step by step, a little before its turn.
void ContactSearch::fetchAhead(std::size_t at) const {
    constexpr std::size_t kRecord = 12, kFields = 8, kItems = 4;
    if (at + kRecord >= known_.size())
        return;
    __builtin_prefetch(known_[at + kRecord].row);
    if (const auto *contact = known_[at + kFields].contact) {
        __builtin_prefetch(&contact->completeName());
        __builtin_prefetch(&contact->phone_numbers());
        __builtin_prefetch(&contact->emails());
    }
    if (const auto *contact = known_[at + kItems].contact) {
        __builtin_prefetch(contact->phone_numbers().data());
        __builtin_prefetch(contact->emails().data());
    }
}

std::vector<bool> ContactSearch::matching(const NSString &text, const NSArray &rows) {
    meet(rows.items());
    const NSString folded = text.folded();
    std::vector<bool> matches(rows.count());
    for (std::size_t at = 0; at < known_.size(); ++at) {
        fetchAhead(at);
        Folded &one = known_[at];
        if (one.contact)
            matches[one.place] = holds(*one.contact, one.sources, one.text, folded.view());
    }
    return matches;
}
