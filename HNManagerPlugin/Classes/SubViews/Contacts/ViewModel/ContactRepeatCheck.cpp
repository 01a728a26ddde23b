#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactRepeatCheck.h"

#include <algorithm>
#include <unordered_set>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactRules.h"

using namespace contactRules;

// The index is a trie whose nodes are known by a hash of the texts on their way, one step per compared text. A contact
// goes down its own texts; an absent one is a step of its own. A look-up goes, at each step, where its own text leads
// and where the absent step leads, since an absent text of a contact is the same as anything. Two nodes that share a
// hash can only offer a contact too many: whoever is found is compared once more.
namespace {

using Key = std::uint64_t;
constexpr Key kRoot = 0x243F6A8885A308D3U, kAbsent = 0x13198A2E03707344U;
enum class Leaf : Key { names = 1, phone, email };

Key step(Key node, Key value) {
    Key mixed = (node ^ (value + 0x9E3779B97F4A7C15U + (node << 6) + (node >> 2))) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 29)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 32);
}

Key hashOf(std::string_view text) { return std::hash<std::string_view>{}(text); }
Key foldedHash(const NSString &text) { return hashOf(text.folded().view()); }
Key leaf(Key node, Leaf kind) { return step(node, static_cast<Key>(kind)); }
Key exactLeaf(Key node, Leaf kind, const NSString &text) {
    return step(leaf(node, kind), hashOf(deletePhoneNumberSpace(text).view()));
}

}   // namespace

// ---------------------------------------------------------------- positions

void ContactRepeatCheck::Positions::finish(bool keepsFirstOnly) {
    std::sort(pairs_.begin(), pairs_.end());
    const auto isDouble = [keepsFirstOnly](const Pair &a, const Pair &b) {
        return a.first == b.first && (keepsFirstOnly || a.second == b.second);
    };
    pairs_.erase(std::unique(pairs_.begin(), pairs_.end(), isDouble), pairs_.end());
    pairs_.shrink_to_fit();
}

std::span<const ContactRepeatCheck::Pair> ContactRepeatCheck::Positions::all(Key key) const {
    const auto begin = std::lower_bound(pairs_.begin(), pairs_.end(), Pair{key, 0});
    const auto end = std::upper_bound(begin, pairs_.end(), Pair{key, kNone});
    return {begin, end};
}

ContactRepeatCheck::Position ContactRepeatCheck::Positions::first(Key key) const {
    const auto found = std::lower_bound(pairs_.begin(), pairs_.end(), Pair{key, 0});
    return found == pairs_.end() || found->first != key ? kNone : found->second;
}

// ---------------------------------------------------------------- walking down

// The texts in the order of the comparison. The counts of all lists are compared before the first list is.
template <class Walker>
void ContactRepeatCheck::walkItems(const ZpContactDataInfo &contact, Walker &walker) {
    visitItemTexts(contact, [&](const NSString &text) { walker.text(text); });
    visitItemLists([&](auto read, auto, auto) { walker.exactly((contact.*read)().size()); });
    std::size_t list = 0;
    visitItemLists([&](auto read, auto, auto key) {
        walker.beforeList(list++, (contact.*read)().size());
        for (const auto *item : inOrder((contact.*read)(), key))
            visitTexts(*item, [&](const NSString &text) { walker.text(text); });
    });
}

class ContactRepeatCheck::Insertion {
public:
    Insertion(ContactRepeatCheck &check, Position position) : check_(check), position_(position) {}

    void text(const NSString &text) { go(text.isNil() ? kAbsent : foldedHash(text)); }
    void exactly(std::size_t value) { go(value); }
    void beforeList(std::size_t list, std::size_t count) {
        if (count > 1)
            check_.unsorted_[list].add(node, position_);
    }

    Key node = kRoot;

private:
    void go(Key value) {
        node = step(node, value);
        check_.nodes_.add(node, position_);
    }
    ContactRepeatCheck &check_;
    Position position_;
};

class ContactRepeatCheck::LookUp {
public:
    LookUp(const Positions &nodes, Reached &reached) : nodes_(nodes), reached_(reached) {}

    void text(const NSString &text) {
        if (reached_.agreeing.empty())
            return;   // saves the folding
        const bool isAbsent = text.isNil();
        const Key value = isAbsent ? kAbsent : foldedHash(text);
        go([&](Key node, auto &&take) {
            take(step(node, kAbsent));
            if (!isAbsent)
                take(step(node, value));
        });
    }
    void exactly(std::size_t value) {
        go([&](Key node, auto &&take) { take(step(node, value)); });
    }
    void beforeList(std::size_t list, std::size_t) { reached_.beforeList[list] = reached_.agreeing; }

private:
    template <class Steps>
    void go(Steps steps) {
        next_.clear();
        for (const Key node : reached_.agreeing)
            steps(node, [&](Key child) {
                if (nodes_.first(child) != kNone)
                    next_.push_back(child);
            });
        reached_.agreeing.swap(next_);
    }
    const Positions &nodes_;
    Reached &reached_;
    Keys next_;
};

// ---------------------------------------------------------------- the index

ContactRepeatCheck::ContactRepeatCheck(ContactList contents) : contents_(std::move(contents)) {
    for (std::size_t i = 0; i < contents_.size(); ++i)
        insert(*contents_[i], static_cast<Position>(i));
    for (Positions *positions : {&nodes_, &names_, &phones_, &emails_, &emailsWithoutPhones_})
        positions->finish(true);
    for (Positions &positions : unsorted_)
        positions.finish(false);
}

void ContactRepeatCheck::insert(const ZpContactDataInfo &contact, Position position) {
    Insertion items(*this, position);
    walkItems(contact, items);
    const Key agreeing = items.node;
    for (const auto &phone : contact.phone_numbers())
        if (phone.phone_number)
            phones_.add(exactLeaf(agreeing, Leaf::phone, phone.phone_number), position);
    for (const auto &email : contact.emails())
        if (email.email) {
            const Key key = exactLeaf(agreeing, Leaf::email, email.email);
            emails_.add(key, position);
            if (contact.phone_numbers().empty())
                emailsWithoutPhones_.add(key, position);
        }
    Insertion names(*this, position);
    names.node = leaf(agreeing, Leaf::names);
    nodes_.add(names.node, position);
    visitNames(contact, [&](const NSString &text) { names.text(text); });
    names_.add(names.node, position);
}

ContactRepeatCheck::Position ContactRepeatCheck::firstRepeat(const ZpContactDataInfo &record,
                                                             const Reached &reached) const {
    Position first = kNone;
    // A record without a name agrees with no contact: not with a nameless one, and a contact's name needs its like.
    if (!isNameless(record)) {
        Reached names;
        for (const Key node : reached.agreeing)
            names.agreeing.push_back(leaf(node, Leaf::names));
        LookUp lookUp(nodes_, names);
        visitNames(record, [&](const NSString &text) { lookUp.text(text); });
        for (const Key node : names.agreeing)
            first = std::min(first, names_.first(node));
    }
    // A contact with numbers is not asked for its e-mails by a record with numbers.
    const Positions &emails = record.phone_numbers().empty() ? emails_ : emailsWithoutPhones_;
    for (const Key node : reached.agreeing) {
        for (const auto &phone : record.phone_numbers())
            if (phone.phone_number)
                first = std::min(first, phones_.first(exactLeaf(node, Leaf::phone, phone.phone_number)));
        for (const auto &email : record.emails())
            if (email.email)
                first = std::min(first, emails.first(exactLeaf(node, Leaf::email, email.email)));
    }
    return first;
}

// The plain walk sorts a list of each contact up to `last` that it reaches with all before it agreeing.
void ContactRepeatCheck::sortAsTheWalkDoes(ZpContactDataInfo &record, const Reached &reached, Position last) {
    std::size_t list = 0;
    visitItemLists([&](auto, auto write, auto key) {
        bool isReached = false;
        for (const Key node : reached.beforeList[list]) {
            const Position first = nodes_.first(node);
            isReached = isReached || (first != kNone && first <= last);
            const auto contacts = unsorted_[list].all(node);
            if (contacts.empty())
                continue;
            std::size_t &done = sortedBefore_[list][node];
            for (; done < contacts.size() && contacts[done].second <= last; ++done)
                sortDetailInfo(((*contents_[contacts[done].second]).*write)(), key);
        }
        if (isReached && !record.isUntouched())
            sortDetailInfo((record.*write)(), key);
        ++list;
    });
}

// ---------------------------------------------------------------- the check

namespace {

template <class Record>
bool haveEqual(const std::vector<Record> &left, const std::vector<Record> &right, NSString Record::*field) {
    for (const Record &a : left)
        for (const Record &b : right)
            if (a.*field && b.*field && deletePhoneNumberSpace(a.*field) == deletePhoneNumberSpace(b.*field))
                return true;
    return false;
}

bool repeats(ZpContactDataInfo &contact, ZpContactDataInfo &record) {
    if (!checkContactItem_sameAs(contact, record))
        return false;
    if (checkContactName_sameAs(contact, record))
        return true;
    if (!contact.phone_numbers().empty() && !record.phone_numbers().empty())
        return haveEqual(contact.phone_numbers(), record.phone_numbers(), &ZpPhoneNumberDataInfo::phone_number);
    return haveEqual(contact.emails(), record.emails(), &ZpEmailDataInfo::email);
}

void addMissingPhones(const std::vector<ZpPhoneNumberDataInfo> &from, ZpContactDataInfo &to) {
    std::unordered_set<NSString> known;
    for (const auto &phone : to.phone_numbers())
        if (phone.phone_number)
            known.insert(deletePhoneNumberSpace(phone.phone_number));
    for (const auto &phone : from)
        if (!phone.phone_number || known.insert(deletePhoneNumberSpace(phone.phone_number)).second)
            to.mutable_phone_numbers().push_back(phone);
}

void addMissingEmails(const std::vector<ZpEmailDataInfo> &from, ZpContactDataInfo &to) {
    std::unordered_set<NSString> known;
    for (const auto &email : to.emails())
        if (email.email)
            known.insert(email.email.folded());
    for (const auto &email : from) {
        const bool isMissing = email.email ? known.insert(email.email.folded()).second : to.emails().empty();
        if (isMissing)
            to.mutable_emails().push_back(email);
    }
}

}   // namespace

// Only after two texts met in one hash: slow, and right all the same.
std::shared_ptr<ZpContactDataInfo> ContactRepeatCheck::walkAll(ZpContactDataInfo &record) {
    for (const auto &contact : contents_)
        if (repeats(*contact, record))
            return contact;
    return nullptr;
}

std::shared_ptr<ZpContactDataInfo> ContactRepeatCheck::isContactRepeat(ZpContactDataInfo &record) {
    Reached reached;
    reached.agreeing = {kRoot};
    LookUp lookUp(nodes_, reached);
    walkItems(record, lookUp);
    const Position first = firstRepeat(record, reached);
    sortAsTheWalkDoes(record, reached, first);
    if (first == kNone)
        return nullptr;
    return repeats(*contents_[first], record) ? contents_[first] : walkAll(record);
}

void ContactRepeatCheck::combineImportRepeatContacts(const ContactList &records) {
    for (const auto &record : records)
        if (const auto contact = isContactRepeat(*record)) {
            addMissingPhones(contact->phone_numbers(), *record);
            addMissingEmails(contact->emails(), *record);
        }
}
