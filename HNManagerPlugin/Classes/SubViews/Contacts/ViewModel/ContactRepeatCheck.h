// Finds the contacts of the device that an imported record repeats, and lets the record carry their numbers on.
//
// Rule     for the contacts in order: the items agree (ContactRules.h, the contact at the left), and then the names
//          agree, or, where both have telephone numbers, two of them are equal, or, where not both have but both have
//          e-mails, two of these are. Numbers and e-mails are compared exactly, without U+00A0 and "-"; an absent one
//          equals none.
// Order    the rule sorts lists in place for good. The index sorts just those lists that the plain walk over all
//          contacts would have sorted, since their order is seen in the detail panel and in exports.
// Cost     the index is built once; a look-up follows the few contacts that may agree, not all.
// Limits   the contacts must not change while this stands, and must not be among the records that are looked up.
// Threads  one at a time.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

class ContactRepeatCheck {
public:
    explicit ContactRepeatCheck(ContactList contents);

    // The first contact that `record` repeats; null for none.
    [[nodiscard]] std::shared_ptr<ZpContactDataInfo> isContactRepeat(ZpContactDataInfo &record);

    // Each record that repeats a contact gets that contact's numbers and e-mails that it lacks (e-mails ignoring case,
    // the contact's at the left); the contact is not touched, and nothing is dropped from the list.
    void combineImportRepeatContacts(const ContactList &records);

private:
    using Key = std::uint64_t;
    using Position = std::uint32_t;
    using Pair = std::pair<Key, Position>;
    using Keys = std::vector<Key>;
    static constexpr std::size_t kLists = 5;

    // Positions under a key, ascending; closed by `finish` before it is asked.
    class Positions {
    public:
        void add(Key key, Position position) { pairs_.emplace_back(key, position); }
        void finish(bool keepsFirstOnly);
        [[nodiscard]] std::span<const Pair> all(Key key) const;
        // kNone where the key is unknown.
        [[nodiscard]] Position first(Key key) const;

    private:
        std::vector<Pair> pairs_;
    };
    static constexpr Position kNone = UINT32_MAX;

    // What a look-up has reached: the nodes where the comparison of each list begins, and those where all agrees.
    struct Reached {
        Keys beforeList[kLists];
        Keys agreeing;
    };
    template <class Walker>
    static void walkItems(const ZpContactDataInfo &contact, Walker &walker);
    class Insertion;
    class LookUp;

    void insert(const ZpContactDataInfo &contact, Position position);
    [[nodiscard]] Position firstRepeat(const ZpContactDataInfo &record, const Reached &reached) const;
    void sortAsTheWalkDoes(ZpContactDataInfo &record, const Reached &reached, Position last);
    [[nodiscard]] std::shared_ptr<ZpContactDataInfo> walkAll(ZpContactDataInfo &record);

    ContactList contents_;
    Positions nodes_, names_, phones_, emails_, emailsWithoutPhones_;
    Positions unsorted_[kLists];   // contacts with two or more items in the list
    std::unordered_map<Key, std::size_t> sortedBefore_[kLists];   // how many of those are sorted by now
};
