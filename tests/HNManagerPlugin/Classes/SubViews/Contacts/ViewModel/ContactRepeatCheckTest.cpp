#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactRepeatCheck.h"

#include <gtest/gtest.h>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactRules.h"
#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/Crowd.h"
#include "tests/support/Cases.h"
#include "tests/support/ContactText.h"

namespace {

using namespace contactRules;

// ---------------------------------------------------------------- single look-ups

class Repeat : public testing::TestWithParam<Case> {};

TEST_P(Repeat, isTheFirstContactThatAgrees) {
    const ContactList contents = contactsOf(GetParam().parts[0]);
    const auto found = ContactRepeatCheck(contents).isContactRepeat(*contactOf(GetParam().parts[1]));
    EXPECT_EQ(found, GetParam().parts[2] == "-1" ? nullptr : contents.at(std::stoul(GetParam().parts[2])));
}

INSTANTIATE_TEST_SUITE_P(Samples, Repeat, testing::ValuesIn(casesOf("cases/repeats.txt", 3)), nameOfCase);

TEST(RepeatedRecord, carriesTheContactsNumbersOn) {
    const auto contact = contactOf("completeName=Ann; tel()=5-5; tel()=66; tel()=6-6; tel()=~; email()=A@b; "
                                   "email()=new@b; email()=NEW@b; email()=~");
    const std::string before = described(*contact);
    const auto record = contactOf("completeName=Ann; tel()=55; email()=a@B"),
               other = contactOf("completeName=Bob; tel()=1");
    ContactRepeatCheck({contact}).combineImportRepeatContacts({record, other});
    EXPECT_EQ(described(*record), "completeName=Ann; tel()=55; tel()=66; tel()=~; email()=a@B; email()=new@b");
    EXPECT_EQ(described(*other), "completeName=Bob; tel()=1");
    EXPECT_EQ(described(*contact), before);
}

TEST(RepeatedRecord, anUntouchedOneStaysSo) {
    const auto record = make<ZpContactDataInfo>();
    ContactRepeatCheck({contactOf("completeName=Ann; tel()=1"), make<ZpContactDataInfo>()})
        .combineImportRepeatContacts({record});
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
