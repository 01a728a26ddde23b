#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactRules.h"

#include <gtest/gtest.h>

#include "tests/support/ContactText.h"

namespace {

using namespace contactRules;

struct Pair {
    const char *name, *left, *right;
    bool agree, agreeTheOtherWayRound;
};
const auto kName = [](const auto &row) { return std::string(row.param.name); };

class ContactItems : public testing::TestWithParam<Pair> {};

TEST_P(ContactItems, agreeOrNot) {
    const Pair &pair = GetParam();
    EXPECT_EQ(checkContactItem_sameAs(*contactOf(pair.left), *contactOf(pair.right)), pair.agree);
    EXPECT_EQ(checkContactItem_sameAs(*contactOf(pair.right), *contactOf(pair.left)), pair.agreeTheOtherWayRound);
}

INSTANTIATE_TEST_SUITE_P(
    Rule, ContactItems,
    testing::Values(
        Pair{"empty", "", "", true, true},
        Pair{"caseOfCompany", "company=ACME Ä", "company=Acme ä", true, true},
        Pair{"notes", "notes=a", "notes=b", false, false},
        Pair{"absentLeftIsAnything", "", "job=x", true, false},
        Pair{"emptyIsNotAbsent", "birthday=", "", false, true},
        Pair{"departmentOnlyRight", "", "department=x", true, false},
        Pair{"namesAndNumbersPlayNoPart", "completeName=a; first_name=a; nickname=a; tel(home)=1; email(home)=a@b", "", true, true},
        Pair{"countOfUrls", "url(a)=~", "", false, false},
        Pair{"upperCaseSortsFirst", "url(a)=u; url(b)=v", "url(c)=u; url(d)=V", false, false},
        Pair{"orderOfUrlsOfOneCase", "url(a)=u; url(b)=v", "url(c)=v; url(d)=u", true, true},
        Pair{"addressesOfOneCountryKeepTheirOrder", "adr(~)=a,~,~,~,US; adr(~)=b,~,~,~,US", "adr(~)=b,~,~,~,US; adr(~)=a,~,~,~,US", false, false},
        Pair{"addressesByCountry", "adr(~)=a,~,~,~,US; adr(~)=b,~,~,~,DE", "adr(~)=B,~,~,~,DE; adr(~)=A,~,~,~,US", true, true},
        Pair{"countryCodeCounts", "adr(~)=a,~,~,~,US,us", "adr(~)=a,~,~,~,US,ca", false, false},
        Pair{"absentCountryCodeAtTheLeft", "adr(~)=a,~,~,~,US", "adr(~)=a,~,~,~,US,ca", true, false},
        Pair{"serviceOfAnImPlaysNoPart", "im()=AIM/joe", "im()=ICQ/Joe", true, true},
        Pair{"dates", "date()=2001", "date()=2002", false, false},
        Pair{"relatedNames", "related(x)=Ann", "related(y)=ANN", true, true}),
    kName);

TEST(ContactItemSorts, stayForGoodUpToTheFirstDifference) {
    const auto left = contactOf("im()=s/b; im()=s/a; url()=2; url()=1; date()=2; date()=1");
    const auto right = contactOf("im()=s/a; im()=s/b; url()=3; url()=1; date()=2; date()=1");
    EXPECT_FALSE(checkContactItem_sameAs(*left, *right));
    EXPECT_EQ(described(*left), "url()=1; url()=2; date()=2; date()=1; im()=s/a; im()=s/b");
    EXPECT_EQ(described(*right), "url()=1; url()=3; date()=2; date()=1; im()=s/a; im()=s/b");
}

class ContactNames : public testing::TestWithParam<Pair> {};

TEST_P(ContactNames, agreeOrNot) {
    const Pair &pair = GetParam();
    EXPECT_EQ(checkContactName_sameAs(*contactOf(pair.left), *contactOf(pair.right)), pair.agree);
    EXPECT_EQ(checkContactName_sameAs(*contactOf(pair.right), *contactOf(pair.left)), pair.agreeTheOtherWayRound);
}

INSTANTIATE_TEST_SUITE_P(
    Rule, ContactNames,
    testing::Values(
        Pair{"twoNameless", "", "completeName=", false, false},
        Pair{"nameInAnyCase", "completeName=Joe", "completeName=JOE", true, true},
        Pair{"otherName", "completeName=Joe", "completeName=Jo", false, false},
        Pair{"firstNamePlaysNoPart", "first_name=Joe", "first_name=Joe", false, false},
        Pair{"namelessLeftAgreesWithAnyName", "", "completeName=Joe", true, false},
        Pair{"phoneticReadingDiffers", "completeName=Joe; middle_name_yomi=a", "completeName=Joe; middle_name_yomi=b", false, false},
        Pair{"phoneticReadingAlone", "middle_name_yomi=do", "middle_name_yomi=DO", true, true}),
    kName);

TEST(ContactNumbers, losesNoBreakSpacesAndHyphensOnly) {
    EXPECT_EQ(deletePhoneNumberSpace("+1\u00A0555-12 (3)\t-"), NSString("+155512 (3)\t"));
    EXPECT_EQ(deletePhoneNumberSpace("-"), NSString(""));
    EXPECT_TRUE(deletePhoneNumberSpace(NSString()).isNil());
}

}   // namespace
