#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactRules.h"

#include <gtest/gtest.h>

#include "tests/support/Cases.h"
#include "tests/support/ContactText.h"

namespace {

using namespace contactRules;

// Asked both ways, of records of their own: asking may sort their lists.
template <class Rule>
std::string asked(const Case &pair, Rule rule) {
    const auto answer = [&](std::size_t left, std::size_t right) {
        return rule(*contactOf(pair.parts[left]), *contactOf(pair.parts[right])) ? "agree" : "differ";
    };
    return answer(0, 1) + std::string(" ") + answer(1, 0);
}

class ContactItems : public testing::TestWithParam<Case> {};
TEST_P(ContactItems, agreeOrNot) { EXPECT_EQ(asked(GetParam(), checkContactItem_sameAs), GetParam().parts[2]); }
INSTANTIATE_TEST_SUITE_P(Samples, ContactItems, testing::ValuesIn(casesOf("cases/contactItems.txt", 3)), nameOfCase);

class ContactNames : public testing::TestWithParam<Case> {};
TEST_P(ContactNames, agreeOrNot) { EXPECT_EQ(asked(GetParam(), checkContactName_sameAs), GetParam().parts[2]); }
INSTANTIATE_TEST_SUITE_P(Samples, ContactNames, testing::ValuesIn(casesOf("cases/contactNames.txt", 3)), nameOfCase);

TEST(ContactItemSorts, stayForGoodUpToTheFirstDifference) {
    const auto left = contactOf("im()=s/b; im()=s/a; url()=2; url()=1; date()=2; date()=1");
    const auto right = contactOf("im()=s/a; im()=s/b; url()=3; url()=1; date()=2; date()=1");
    EXPECT_FALSE(checkContactItem_sameAs(*left, *right));
    EXPECT_EQ(described(*left), "url()=1; url()=2; date()=2; date()=1; im()=s/a; im()=s/b");
    EXPECT_EQ(described(*right), "url()=1; url()=3; date()=2; date()=1; im()=s/a; im()=s/b");
}

TEST(ContactNumbers, losesNoBreakSpacesAndHyphensOnly) {
    EXPECT_EQ(deletePhoneNumberSpace("+1\u00A0555-12 (3)\t-"), NSString("+155512 (3)\t"));
    EXPECT_EQ(deletePhoneNumberSpace("-"), NSString(""));
    EXPECT_TRUE(deletePhoneNumberSpace(NSString()).isNil());
}

}   // namespace
