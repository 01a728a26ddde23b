#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/DuplicateSearch.h"

#include <gtest/gtest.h>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactRules.h"
#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/Crowd.h"
#include "tests/support/Cases.h"
#include "tests/support/ContactText.h"

namespace {

using namespace contactRules;
using Person = std::shared_ptr<ZpContactDataInfo>;

// Positions, "1 2 0 | 4 3": the opener last.
std::string text(const DupContactGroups &groups, const ContactList &contacts) {
    std::string text;
    for (const auto &group : groups) {
        text += text.empty() ? "" : " |";
        for (const auto &contact : group->dupContactGroupArray)
            text += (text.empty() ? "" : " ") + std::to_string(std::ranges::find(contacts, contact) - contacts.begin());
    }
    return text;
}

// ---------------------------------------------------------------- the rule

class Duplicates : public testing::TestWithParam<Case> {};

TEST_P(Duplicates, areGrouped) {
    const ContactList contacts = contactsOf(GetParam().parts[0]);
    EXPECT_EQ(text(DuplicateSearch::groupsOf(contacts), contacts), GetParam().parts[1]);
}

INSTANTIATE_TEST_SUITE_P(Samples, Duplicates, testing::ValuesIn(casesOf("cases/duplicates.txt")), nameOfCase);

TEST(DuplicateSearch, stopsWithTheGroupsThatAreFinished) {
    const ContactList contacts = contactsOf("completeName=Ann\ncompleteName=Bob\ncompleteName=Ann\ncompleteName=Bob");
    int asked = 0;
    const auto groups = DuplicateSearch::groupsOf(contacts, [&] { return ++asked == 3; });
    EXPECT_EQ(text(groups, contacts), "2 0");
}

TEST(DuplicateSearch, leavesTheContactsAsTheyAre) {
    const std::string texts = "completeName=Ann; url()=b; url()=a\ncompleteName=Ann; url()=a; url()=b\n";
    const ContactList contacts = contactsOf(texts);
    EXPECT_EQ(DuplicateSearch::groupsOf(contacts).size(), 1U);
    EXPECT_EQ(described(contacts), texts);
}

// ---------------------------------------------------------------- against the plain way

template <class Record>
bool shares(const std::vector<Record> &left, const std::vector<Record> &right, NSString Record::*field, bool fullOnly) {
    for (const Record &record : left)
        if ((!fullOnly || !(record.*field).isEmpty()) && std::ranges::find(right, record) != right.end())
            return true;
    return false;
}

bool shares(const ZpContactDataInfo &c, const ZpContactDataInfo &h, bool fullOnly) {
    if (!c.phone_numbers().empty() && !h.phone_numbers().empty())
        return shares(c.phone_numbers(), h.phone_numbers(), &ZpPhoneNumberDataInfo::phone_number, fullOnly);
    return shares(c.emails(), h.emails(), &ZpEmailDataInfo::email, fullOnly);
}

struct Plain {
    std::string groups, log;
};

Plain plainly(const ContactList &contacts) {
    Plain plain;
    DupContactGroups groups;
    ContactList w = contacts;
    while (w.size() >= 2) {
        plain.log += ">>> Index: " + std::to_string(w.size()) + "\n";
        const Person h = w.front();
        w.erase(w.begin());
        ContactList r, g;
        for (const Person &c : w) {
            const bool isIn =
                checkContactItem_sameAs(*c, *h) && (checkContactName_sameAs(*c, *h) || shares(*c, *h, false));
            (isIn ? g : r).push_back(c);
        }
        for (ContactList f = g; !r.empty();) {
            bool found = false;
            ContactList m, rest;
            for (const Person &d : r) {
                bool isIn = false;
                for (const Person &other : f) {
                    if (!checkContactItem_sameAs(*d, *other))
                        continue;
                    if (checkContactName_sameAs(*d, *other))
                        found = true;
                    else if (shares(*d, *other, true))
                        isIn = found = true;
                }
                (isIn ? m : rest).push_back(d);
            }
            if (!found)
                break;
            g.insert(g.end(), m.begin(), m.end());
            r = rest;
            f = m;
            plain.log += "--- " + std::to_string(r.size()) + " - " + std::to_string(g.size()) + " - " +
                         std::to_string(m.size()) + "\n";
        }
        if (!g.empty()) {
            g.push_back(h);
            groups.push_back(make<DupContactGroupModel>());
            groups.back()->dupContactGroupArray = g;
        }
        w = r;
    }
    plain.groups = text(groups, contacts);
    return plain;
}

TEST(DuplicateSearch, givesWhatTheWalkOverAllPairsGives) {
    std::size_t groupsSeen = 0, roundsSeen = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const ContactList contacts = Crowd(seed).contacts(2 + seed % 60);
        std::string log;
        const auto groups =
            DuplicateSearch::groupsOf(contacts, {}, [&](std::string_view line) { log += std::string(line) + "\n"; });
        const Plain plain = plainly(contacts);
        ASSERT_EQ(text(groups, contacts), plain.groups);
        ASSERT_EQ(log, plain.log);
        groupsSeen += groups.size();
        roundsSeen += static_cast<std::size_t>(std::ranges::count(plain.log, '-')) / 5;
    }
    EXPECT_GT(groupsSeen, 400U);
    EXPECT_GT(roundsSeen, 200U);
}

}   // namespace
