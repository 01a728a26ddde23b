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

// Nobody derives from a contact; a dynamic cast of every row at every key would cost a third of the search.
const ZpContactDataInfo *ContactSearch::contactOf(const id &row) {
    return row->isMemberOf<ZpContactDataInfo>() ? static_cast<const ZpContactDataInfo *>(row.get()) : nullptr;
}

void ContactSearch::fetchAhead(const NSArray &rows, std::size_t at) const {
    constexpr std::size_t kStep = 16;   // rows between one link of the chain and the next
    const auto fetch = [](const auto *place) { __builtin_prefetch(place); };
    if (at + 3 * kStep < rows.count())
        fetch(rows.items()[at + 3 * kStep].get());
    if (at + 2 * kStep < rows.count())
        if (const auto *contact = contactOf(rows.items()[at + 2 * kStep])) {
            fetch(&contact->completeName());
            fetch(&contact->phone_numbers());
        }
    if (at + kStep < rows.count())
        if (const auto *contact = contactOf(rows.items()[at + kStep])) {
            fetch(contact->phone_numbers().data());
            fetch(contact->emails().data());
        }
    if (next_ + kStep < known_.size()) {
        fetch(known_[next_ + kStep].sources.data());
        fetch(known_[next_ + kStep].text.data());
    }
}

void ContactSearch::setText(const NSString &text) {
    folded_ = text.folded();
    if (next_ > 0)
        known_.resize(next_);   // what the last walk did not come to has gone
    next_ = 0;
}

bool ContactSearch::matches(const ZpContactDataInfo &contact) {
    if (next_ == known_.size())
        known_.emplace_back();
    Folded &known = known_[next_++];
    if (known.contact != &contact || !standsUnchanged(contact, known.sources)) {
        known = {&contact, {}, {}};
        visitSearched(contact, [&](const NSString &text) {
            known.sources.push_back(text);
            known.text.append(text.folded().view()) += kBetweenTexts;
            return true;
        });
    }
    return known.text.find(folded_.view()) != std::string::npos;
}
