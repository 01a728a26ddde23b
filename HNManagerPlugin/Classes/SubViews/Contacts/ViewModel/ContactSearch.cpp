#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactSearch.h"

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

}   // namespace

bool ContactSearch::matches(const ZpContactDataInfo &contact) {
    Folded &known = known_[&contact];
    if (!standsUnchanged(contact, known.sources)) {
        known = {};
        visitSearched(contact, [&](const NSString &text) {
            known.sources.push_back(text);
            known.text.append(text.folded().view()) += kBetweenTexts;
            return true;
        });
    }
    return known.text.find(folded_.view()) != std::string::npos;
}
