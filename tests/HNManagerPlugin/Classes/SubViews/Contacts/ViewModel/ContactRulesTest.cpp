#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactRules.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ContactText.h"

namespace {

using namespace contactRules;
using Change = std::function<void(ZpContactDataInfo &)>;

std::shared_ptr<ZpContactDataInfo> contact(const Change &change) {
    auto made = make<ZpContactDataInfo>();
    change(*made);
    return made;
}

ZpContactAddressDataInfo address(const char *country, const char *street, const char *countryCode = nullptr) {
    ZpContactAddressDataInfo made;
    made.country = country;
    made.street = street;
    made.country_code = countryCode;
    return made;
}

struct Pair {
    const char *name;
    Change left, right;
    bool agree, agreeTheOtherWayRound;
};
const auto kName = [](const auto &row) { return std::string(row.param.name); };
const Change kNothing = [](ZpContactDataInfo &) {};

class ContactItems : public testing::TestWithParam<Pair> {};

TEST_P(ContactItems, agreeOrNot) {
    const Pair &pair = GetParam();
    EXPECT_EQ(checkContactItem_sameAs(*contact(pair.left), *contact(pair.right)), pair.agree);
    EXPECT_EQ(checkContactItem_sameAs(*contact(pair.right), *contact(pair.left)), pair.agreeTheOtherWayRound);
}

using C = ZpContactDataInfo;
using Urls = std::vector<ZpUrlDataInfo>;
using Addresses = std::vector<ZpContactAddressDataInfo>;
Change urls(Urls list) {
    return [=](C &c) { c.mutable_urls() = list; };
}
Change addresses(Addresses list) {
    return [=](C &c) { c.mutable_addresses() = list; };
}

INSTANTIATE_TEST_SUITE_P(
    Rule, ContactItems,
    testing::Values(
        Pair{"empty", kNothing, kNothing, true, true},
        Pair{"caseOfCompany", [](C &c) { c.setCompany_name("ACME \xC3\x84"); }, [](C &c) { c.setCompany_name("Acme \xC3\xA4"); }, true, true},
        Pair{"notes", [](C &c) { c.setNotes("a"); }, [](C &c) { c.setNotes("b"); }, false, false},
        Pair{"absentLeftIsAnything", kNothing, [](C &c) { c.setJob_title("x"); }, true, false},
        Pair{"emptyIsNotAbsent", [](C &c) { c.setBirthday(""); }, kNothing, false, true},
        Pair{"departmentOnlyRight", kNothing, [](C &c) { c.setDepartment("x"); }, true, false},
        Pair{"namesAndNumbersPlayNoPart",
             [](C &c) {
                 c.setCompleteName("a"), c.setFirst_name("a"), c.setNickname("a");
                 c.mutable_phone_numbers() = {{"home", "1"}}, c.mutable_emails() = {{"home", "a@b"}};
             },
             kNothing, true, true},
        Pair{"countOfUrls", urls({{"a", NSString()}}), kNothing, false, false},
        Pair{"upperCaseSortsFirst", urls({{"a", "u"}, {"b", "v"}}), urls({{"c", "u"}, {"d", "V"}}), false, false},
        Pair{"orderOfUrlsOfOneCase", urls({{"a", "u"}, {"b", "v"}}), urls({{"c", "v"}, {"d", "u"}}), true, true},
        Pair{"addressesOfOneCountryKeepTheirOrder", addresses({address("US", "a"), address("US", "b")}),
             addresses({address("US", "b"), address("US", "a")}), false, false},
        Pair{"addressesByCountry", addresses({address("US", "a"), address("DE", "b")}), addresses({address("DE", "B"), address("US", "A")}), true, true},
        Pair{"countryCodeCounts", addresses({address("US", "a", "us")}), addresses({address("US", "a", "ca")}), false, false},
        Pair{"absentCountryCodeAtTheLeft", addresses({address("US", "a")}), addresses({address("US", "a", "ca")}), true, false},
        Pair{"serviceOfAnImPlaysNoPart", [](C &c) { c.mutable_ims() = {{"", "AIM", "joe"}}; }, [](C &c) { c.mutable_ims() = {{"", "ICQ", "Joe"}}; }, true, true},
        Pair{"dates", [](C &c) { c.mutable_dates() = {{"", "2001"}}; }, [](C &c) { c.mutable_dates() = {{"", "2002"}}; }, false, false},
        Pair{"relatedNames", [](C &c) { c.mutable_relatednames() = {{"x", "Ann"}}; }, [](C &c) { c.mutable_relatednames() = {{"y", "ANN"}}; }, true, true}),
    kName);

TEST(ContactItemSorts, stayForGoodUpToTheFirstDifference) {
    const auto left = contact([](C &c) {
        c.mutable_ims() = {{"", "s", "b"}, {"", "s", "a"}};
        c.mutable_urls() = {{"", "2"}, {"", "1"}};
        c.mutable_dates() = {{"", "2"}, {"", "1"}};
    });
    const auto right = contact([](C &c) {
        c.mutable_ims() = {{"", "s", "a"}, {"", "s", "b"}};
        c.mutable_urls() = {{"", "3"}, {"", "1"}};
        c.mutable_dates() = {{"", "2"}, {"", "1"}};
    });
    EXPECT_FALSE(checkContactItem_sameAs(*left, *right));
    EXPECT_EQ(described(*left), "url()=1; url()=2; date()=2; date()=1; im()=s/a; im()=s/b");
    EXPECT_EQ(described(*right), "url()=1; url()=3; date()=2; date()=1; im()=s/a; im()=s/b");
}

class ContactNames : public testing::TestWithParam<Pair> {};

TEST_P(ContactNames, agreeOrNot) {
    const Pair &pair = GetParam();
    EXPECT_EQ(checkContactName_sameAs(*contact(pair.left), *contact(pair.right)), pair.agree);
    EXPECT_EQ(checkContactName_sameAs(*contact(pair.right), *contact(pair.left)), pair.agreeTheOtherWayRound);
}

Change named(const char *name, const char *middleYomi = nullptr) {
    return [=](C &c) { c.setCompleteName(name), c.setMiddle_name_yomi(middleYomi); };
}

INSTANTIATE_TEST_SUITE_P(
    Rule, ContactNames,
    testing::Values(Pair{"twoNameless", kNothing, named(""), false, false}, Pair{"nameInAnyCase", named("Joe"), named("JOE"), true, true},
                    Pair{"otherName", named("Joe"), named("Jo"), false, false},
                    Pair{"firstNamePlaysNoPart", [](C &c) { c.setFirst_name("Joe"); }, [](C &c) { c.setFirst_name("Joe"); }, false, false},
                    Pair{"namelessLeftAgreesWithAnyName", kNothing, named("Joe"), true, false},
                    Pair{"phoneticReadingDiffers", named("Joe", "a"), named("Joe", "b"), false, false},
                    Pair{"phoneticReadingAlone", named(nullptr, "do"), named(nullptr, "DO"), true, true}),
    kName);

TEST(ContactNumbers, losesNoBreakSpacesAndHyphensOnly) {
    EXPECT_EQ(deletePhoneNumberSpace("+1\xC2\xA0"
                                     "555-12 (3)\t-"),
              NSString("+155512 (3)\t"));
    EXPECT_EQ(deletePhoneNumberSpace("-"), NSString(""));
    EXPECT_TRUE(deletePhoneNumberSpace(NSString()).isNil());
}

}   // namespace
