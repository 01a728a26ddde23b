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
        known_[place].row = rows[place].get();
        known_[place].place = place;
    }
    std::ranges::sort(known_, std::less<>(), &Folded::row);
}

std::vector<bool> ContactSearch::matching(const NSString &text, const NSArray &rows) {
    meet(rows.items());
    const NSString folded = text.folded();
    std::vector<bool> matches(rows.count());
    for (Folded &one : known_)   // nobody derives from a contact; a dynamic cast of every row would cost a third of the search
        if (one.row->isMemberOf<ZpContactDataInfo>())
            matches[one.place] = holds(static_cast<const ZpContactDataInfo &>(*one.row), one.sources, one.text, folded.view());
    return matches;
}
