#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactRepeatCheck.h"

#include <gtest/gtest.h>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactRules.h"
#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/Crowd.h"
#include "tests/support/ContactText.h"

namespace {

using namespace contactRules;

// ---------------------------------------------------------------- single look-ups

struct Row {
    const char *name;
    std::vector<std::shared_ptr<ZpContactDataInfo>> contents;
    std::shared_ptr<ZpContactDataInfo> record;
    int found;   // position, -1 for none
};
class Repeat : public testing::TestWithParam<Row> {};

TEST_P(Repeat, isTheFirstContactThatAgrees) {
    ContactRepeatCheck check(GetParam().contents);
    const auto found = check.isContactRepeat(*GetParam().record);
    const int at = GetParam().found;
    EXPECT_EQ(found, at < 0 ? nullptr : GetParam().contents[static_cast<std::size_t>(at)]);
}

INSTANTIATE_TEST_SUITE_P(
    Rule, Repeat,
    testing::Values(
        Row{"nothingThere", {}, person("Ann", {"1"}), -1},
        Row{"sameName", {person("Bob", {}), person("ANN", {}), person("ann", {})}, person("Ann", {}), 1},
        Row{"sameNumber",
            {person("Bob", {"5-5"}), person("Cid", {"55"})},
            person("Ann", {"7", "5\u00A05"}),
            0},
        Row{"blanksInANumberCount", {person("Bob", {"5 5"})}, person("Ann", {"55"}), -1},
        Row{"sameEmail", {person("Bob", {}, {"a@b"})}, person("Ann", {}, {"a-@b"}), 0},
        Row{"caseOfAnEmailCounts", {person("Bob", {}, {"A@b"})}, person("Ann", {}, {"a@b"}), -1},
        Row{"emailsAreNotAskedWhereBothHaveNumbers",
            {person("Bob", {"1"}, {"a@b"}), person("Cid", {}, {"a@b"})},
            person("Ann", {"2"}, {"a@b"}),
            1},
        Row{"emailsOfARecordWithoutNumbers", {person("Bob", {"1"}, {"a@b"})}, person("Ann", {}, {"a@b"}), 0},
        Row{"absentNumbersEqualNone", {person("Bob", {nullptr})}, person("Ann", {nullptr}), -1},
        Row{"emptyNumbersAreEqual", {person("Bob", {"-"})}, person("Ann", {""}), 0},
        Row{"namelessContactAgreesWithANamedRecord", {person(nullptr, {})}, person("Ann", {}), 0},
        Row{"namelessRecordAgreesWithNobody",
            {person(nullptr, {}), person("", {}), person("Ann", {})},
            person(nullptr, {}),
            -1}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(RepeatedRecord, carriesTheContactsNumbersOn) {
    const auto contact = person("Ann", {"5-5", "66", "6-6", nullptr}, {"A@b", "new@b", "NEW@b", nullptr});
    const std::string before = described(*contact);
    const auto record = person("Ann", {"55"}, {"a@B"}), other = person("Bob", {"1"});
    ContactRepeatCheck({contact}).combineImportRepeatContacts({record, other});
    EXPECT_EQ(described(*record), "completeName=Ann; tel()=55; tel()=66; tel()=~; email()=a@B; email()=new@b");
    EXPECT_EQ(described(*other), "completeName=Bob; tel()=1");
    EXPECT_EQ(described(*contact), before);
}

TEST(RepeatedRecord, anUntouchedOneStaysSo) {
    const auto record = make<ZpContactDataInfo>();
    ContactRepeatCheck({person("Ann", {"1"}), make<ZpContactDataInfo>()}).combineImportRepeatContacts({record});
    EXPECT_TRUE(record->isUntouched());
}

// ---------------------------------------------------------------- against the walk over all contacts

std::shared_ptr<ZpContactDataInfo> plainRepeat(const ContactList &contents, ZpContactDataInfo &n) {
    for (const auto &c : contents) {
        if (!checkContactItem_sameAs(*c, n))
            continue;
        if (checkContactName_sameAs(*c, n))
            return c;
        bool equal = false;
        if (!c->phone_numbers().empty() && !n.phone_numbers().empty()) {
            for (const auto &a : c->phone_numbers())
                for (const auto &b : n.phone_numbers())
                    equal = equal || (a.phone_number && b.phone_number &&
                                      deletePhoneNumberSpace(a.phone_number) == deletePhoneNumberSpace(b.phone_number));
        } else if (!c->emails().empty() && !n.emails().empty()) {
            for (const auto &a : c->emails())
                for (const auto &b : n.emails())
                    equal = equal ||
                            (a.email && b.email && deletePhoneNumberSpace(a.email) == deletePhoneNumberSpace(b.email));
        }
        if (equal)
            return c;
    }
    return nullptr;
}

void combinePlainly(const ContactList &contents, const ContactList &records) {
    for (const auto &n : records) {
        const auto e = plainRepeat(contents, *n);
        if (!e)
            continue;
        for (const auto &phone : e->phone_numbers()) {
            const auto &own = n->phone_numbers();
            if (std::ranges::none_of(own, [&](const auto &p) {
                    return p.phone_number && phone.phone_number &&
                           deletePhoneNumberSpace(p.phone_number) == deletePhoneNumberSpace(phone.phone_number);
                }))
                n->mutable_phone_numbers().push_back(phone);
        }
        for (const auto &email : e->emails())
            if (std::ranges::none_of(n->emails(), [&](const auto &own) { return isSame(email.email, own.email); }))
                n->mutable_emails().push_back(email);
    }
}

ContactList copies(const ContactList &contacts) {
    ContactList twins;
    for (const auto &contact : contacts)
        twins.push_back(contact->copy());
    return twins;
}

// Records, contacts and the order of every list: all as if each record had been held against each contact.
TEST(RepeatIndex, givesTheAnswerOfTheWalk) {
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Crowd crowd(seed);
    std::size_t repeats = 0;
    for (int round = 0; round < 150; ++round) {
        const ContactList contents = crowd.contacts(60), records = crowd.contacts(30);
        const ContactList plainContents = copies(contents), plainRecords = copies(records);
        ContactRepeatCheck check(contents);
        for (std::size_t i = 0; i < records.size(); ++i) {
            const auto found = check.isContactRepeat(*records[i]);
            const auto plain = plainRepeat(plainContents, *plainRecords[i]);
            const auto at = std::ranges::find(contents, found) - contents.begin();
            ASSERT_EQ(at, std::ranges::find(plainContents, plain) - plainContents.begin());
            ASSERT_EQ(described(contents), described(plainContents)) << "round " << round << " record " << i;
            repeats += found != nullptr;
        }
        ASSERT_EQ(described(records), described(plainRecords));
        check.combineImportRepeatContacts(records);
        combinePlainly(plainContents, plainRecords);
        ASSERT_EQ(described(records), described(plainRecords));
        ASSERT_EQ(described(contents), described(plainContents));
    }
    EXPECT_GT(repeats, 100U);
}

}   // namespace
