#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/DuplicateSearch.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactRules.h"

using namespace contactRules;

// Every text that is compared gets a number; contacts with the same numbers form a kind of items and a kind of names. An
// absent text at the left is the same as anything, so a look-up walks a trie of the kinds, at each text to the absent
// step and to its own. Under a kind of items the contacts stand by names, by number and by e-mail.
namespace {

using Id = std::uint32_t;
using Ids = std::vector<Id>;
constexpr Id kAbsent = 0;

template <class Key>
class Numbers {
public:
    // Counts from 1.
    Id of(const Key &key) { return ids_.try_emplace(key, static_cast<Id>(ids_.size() + 1)).first->second; }

private:
    std::unordered_map<Key, Id> ids_;
};

// Sequences of one shape as a trie; a sequence's number is that of its last node.
class Kinds {
public:
    Id add(const Ids &steps) {
        Id node = 0;
        for (const Id step : steps)
            node = next_.try_emplace(keyOf(node, step), static_cast<Id>(next_.size() + 1)).first->second;
        return node;
    }
    // All kinds that equal `steps` but for absent texts.
    [[nodiscard]] Ids agreeing(const Ids &steps) const {
        Ids nodes{0}, reached;
        for (const Id step : steps) {
            reached.clear();
            for (const Id node : nodes) {
                go(node, kAbsent, reached);
                if (step != kAbsent)
                    go(node, step, reached);
            }
            nodes.swap(reached);
        }
        return nodes;
    }

private:
    static std::uint64_t keyOf(Id node, Id step) { return std::uint64_t{node} << 32 | step; }
    void go(Id node, Id step, Ids &to) const {
        if (const auto found = next_.find(keyOf(node, step)); found != next_.end())
            to.push_back(found->second);
    }
    std::unordered_map<std::uint64_t, Id> next_;
};

struct Person {
    Id items = 0, names = 0;
    Ids itemSteps, nameSteps;
    Ids phones, emails;          // labels and texts
    Ids fullPhones, fullEmails;   // those of them that are not empty
    bool isNameless = false, hasPhones = false, hasEmails = false, isLeft = true;
};

class Search {
public:
    Search(const ContactList &contacts, const DuplicateSearch::IsStopped &isStopped, const DuplicateSearch::Log &log)
        : contacts_(contacts), isStopped_(isStopped), log_(log), left_(contacts.size()) {
        people_.reserve(contacts.size());
        for (const auto &contact : contacts)
            people_.push_back(read(*contact));
        for (Id at = 0; at < people_.size(); ++at)
            insert(at);
    }

    DupContactGroups run() {
        DupContactGroups groups;
        for (Id opener = 0; opener < people_.size() && left_ > 1; ++opener) {
            if (!people_[opener].isLeft)
                continue;
            tell(">>> Index: " + std::to_string(left_));
            Ids members;
            if (!groupOf(opener, members))
                break;
            if (!members.empty())
                groups.push_back(groupWith(members, opener));
        }
        return groups;
    }

private:
    // Contacts under one key, apart by the kind of their names: a look-up that must leave a kind alone does not walk it.
    using ByNames = std::map<Id, Ids>;
    using Index = std::unordered_map<std::uint64_t, ByNames>;
    enum Shared : Id { phone, email, emailWithoutPhones, kShared };

    static std::uint64_t keyOf(Id items, Id value) { return std::uint64_t{items} << 32 | value; }
    void tell(const std::string &line) const {
        if (log_)
            log_(line);
    }

    Id textId(const NSString &text) { return text.isNil() ? kAbsent : texts_.of(text.folded()); }
    Id recordId(const NSString &type, const NSString &text) {
        const auto part = [&](const NSString &value) { return value.isNil() ? kAbsent : exactTexts_.of(value); };
        return records_.of(keyOf(part(type), part(text)));
    }

    Person read(const ZpContactDataInfo &contact) {
        Person person;
        visitItemTexts(contact, [&](const NSString &text) { person.itemSteps.push_back(textId(text)); });
        // A count is no text: never absent, never to be passed over.
        visitItemLists([&](auto list, auto, auto) {
            person.itemSteps.push_back(static_cast<Id>((contact.*list)().size() + 1));
        });
        visitItemLists([&](auto list, auto, auto key) {
            for (const auto *item : inOrder((contact.*list)(), key))
                visitTexts(*item, [&](const NSString &text) { person.itemSteps.push_back(textId(text)); });
        });
        visitNames(contact, [&](const NSString &text) { person.nameSteps.push_back(textId(text)); });
        person.isNameless = isNameless(contact);
        readRecords(contact.phone_numbers(), &ZpPhoneNumberDataInfo::phone_number, person.phones, person.fullPhones);
        readRecords(contact.emails(), &ZpEmailDataInfo::email, person.emails, person.fullEmails);
        person.hasPhones = !person.phones.empty();
        person.hasEmails = !person.emails.empty();
        return person;
    }

    template <class Record>
    void readRecords(const std::vector<Record> &list, NSString Record::*field, Ids &all, Ids &full) {
        for (const Record &record : list) {
            all.push_back(recordId(record.type, record.*field));
            if (!(record.*field).isEmpty())
                full.push_back(all.back());
        }
    }

    void insert(Id at) {
        Person &person = people_[at];
        person.items = items_.add(person.itemSteps);
        person.names = names_.add(person.nameSteps);
        namesOfKind_.try_emplace(person.names, person.isNameless);
        byNames_[keyOf(person.items, person.names)].push_back(at);
        const auto add = [&](Shared kind, const Ids &records) {
            for (const Id record : records)
                shared_[kind][keyOf(person.items, record)][person.names].push_back(at);
        };
        add(phone, person.phones);
        add(person.hasPhones ? email : emailWithoutPhones, person.emails);
    }

    // ------------------------------------------------------------ look-ups

    const Ids &agreeingItems(const Person &person) {
        auto [found, isNew] = agreeingItems_.try_emplace(person.items);
        if (isNew)
            found->second = items_.agreeing(person.itemSteps);
        return found->second;
    }

    // Kinds of names that agree with the person's: at most one for each way to leave its four texts out.
    [[nodiscard]] Ids agreeingNames(const Person &person) const {
        Ids kinds = names_.agreeing(person.nameSteps);
        if (person.isNameless)
            std::erase_if(kinds, [&](Id kind) { return namesOfKind_.at(kind); });
        return kinds;
    }

    void take(Id at, Ids &taken) {
        if (!people_[at].isLeft)
            return;
        people_[at].isLeft = false;
        --left_;
        taken.push_back(at);
    }

    void takeNamesakes(Id items, const Ids &names, Ids &taken) {
        for (const Id kind : names)
            if (const auto found = byNames_.find(keyOf(items, kind)); found != byNames_.end()) {
                for (const Id at : found->second)
                    take(at, taken);
                byNames_.erase(found);
            }
    }

    // All under the key, but for those whose names are one of `spared`.
    void takeSharers(Shared kind, Id items, Id record, const Ids &spared, Ids &taken) {
        const auto found = shared_[kind].find(keyOf(items, record));
        if (found == shared_[kind].end())
            return;
        for (auto group = found->second.begin(); group != found->second.end();) {
            if (std::ranges::find(spared, group->first) != spared.end()) {
                ++group;
                continue;
            }
            for (const Id at : group->second)
                take(at, taken);
            group = found->second.erase(group);
        }
        if (found->second.empty())
            shared_[kind].erase(found);
    }

    // Where both have numbers, the e-mails are not looked at.
    void takeSharersOf(const Person &person, const Ids &phones, const Ids &emails, Id items, const Ids &spared,
                       Ids &taken) {
        for (const Id record : phones)
            takeSharers(phone, items, record, spared, taken);
        for (const Id record : emails) {
            takeSharers(emailWithoutPhones, items, record, spared, taken);
            if (!person.hasPhones)
                takeSharers(email, items, record, spared, taken);
        }
    }

    [[nodiscard]] bool hasNamesakeLeft(const Ids &items, const Ids &names) {
        for (const Id kind : items)
            for (const Id name : names)
                if (const auto found = byNames_.find(keyOf(kind, name)); found != byNames_.end()) {
                    Ids &here = found->second;
                    while (!here.empty() && !people_[here.back()].isLeft)
                        here.pop_back();
                    if (!here.empty())
                        return true;
                }
        return false;
    }

    // ------------------------------------------------------------ the two stages

    [[nodiscard]] bool isStopped() const { return isStopped_ && isStopped_(); }

    // False where the search was stopped. Without the opener.
    bool groupOf(Id opener, Ids &members) {
        if (isStopped())
            return false;
        const Person &person = people_[opener];
        people_[opener].isLeft = false;
        --left_;
        const Ids names = agreeingNames(person);
        for (const Id items : agreeingItems(person)) {
            takeNamesakes(items, names, members);
            takeSharersOf(person, person.phones, person.emails, items, {}, members);
        }
        std::ranges::sort(members);
        Ids last = members;
        while (left_ > 0 && !last.empty()) {
            bool isFound = false;
            Ids came;
            if (!closureRound(last, came, isFound))
                return false;
            if (!isFound)
                break;
            std::ranges::sort(came);
            members.insert(members.end(), came.begin(), came.end());
            tell("--- " + std::to_string(left_) + " - " + std::to_string(members.size()) + " - " +
                 std::to_string(came.size()));
            last = std::move(came);
        }
        return true;
    }

    bool closureRound(const Ids &last, Ids &came, bool &isFound) {
        for (const Id at : last) {
            if (isStopped())
                return false;
            const Person &person = people_[at];
            const Ids names = agreeingNames(person);
            const Ids &kinds = agreeingItems(person);
            isFound = isFound || hasNamesakeLeft(kinds, names);
            for (const Id items : kinds)
                takeSharersOf(person, person.fullPhones, person.fullEmails, items, names, came);
        }
        isFound = isFound || !came.empty();
        return true;
    }

    std::shared_ptr<DupContactGroupModel> groupWith(const Ids &members, Id opener) const {
        auto group = make<DupContactGroupModel>();
        for (const Id at : members)
            group->dupContactGroupArray.push_back(contacts_[at]);
        group->dupContactGroupArray.push_back(contacts_[opener]);
        return group;
    }

    const ContactList &contacts_;
    const DuplicateSearch::IsStopped &isStopped_;
    const DuplicateSearch::Log &log_;
    std::size_t left_;
    std::vector<Person> people_;
    Numbers<NSString> texts_, exactTexts_;
    Numbers<std::uint64_t> records_;
    Kinds items_, names_;
    std::unordered_map<Id, bool> namesOfKind_;   // whether they are none
    std::unordered_map<Id, Ids> agreeingItems_;
    std::unordered_map<std::uint64_t, Ids> byNames_;
    Index shared_[kShared];
};

}   // namespace

DupContactGroups DuplicateSearch::groupsOf(const ContactList &contacts, const IsStopped &isStopped, const Log &log) {
    if (contacts.size() < 2)
        return {};
    return Search(contacts, isStopped, log).run();
}
