#include <gtest/gtest.h>

#include "host/import/Charset.h"
#include "host/import/Dates.h"

using namespace host::foreign;

namespace {

struct Row {
    const char *charset, *bytes, *text;
};
class LikelyCharset : public testing::TestWithParam<Row> {};

TEST_P(LikelyCharset, isToldByHowItsLettersLie) {
    EXPECT_EQ(likelyCharset(GetParam().bytes), GetParam().charset);
    Charsets charsets;
    EXPECT_EQ(charsets.toUtf8(GetParam().bytes, GetParam().charset), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Texts, LikelyCharset, testing::Values(
    Row{"WINDOWS-1252", "M\xFCller, Caf\xE9 \x80", "Müller, Café €"},
    Row{"WINDOWS-1250", "Micha\xB3 Nowak, \xA3\xF3""d\x9F", "Michał Nowak, Łódź"},
    Row{"WINDOWS-1251", "\xC8\xE2\xE0\xED \xCF\xE5\xF2\xF0\xEE\xE2, \xEC\xEE\xF1\xEA\xE2\xE0", "Иван Петров, москва"},
    Row{"WINDOWS-1253", "\xC3\xE9\xFE\xF1\xE3\xEF\xF2 \xD0\xE1\xF0\xE1\xE4\xFC\xF0\xEF\xF5\xEB\xEF\xF2", "Γιώργος Παπαδόπουλος"},
    Row{"KOI8-R", "\xE9\xD7\xC1\xCE \xF0\xC5\xD4\xD2\xCF\xD7, \xCD\xCF\xD3\xCB\xD7\xC1", "Иван Петров, москва"},
    Row{"CP932", "\x8E\x52\x93\x63 \x91\xBE\x98\x59, \x82\xE2\x82\xDC\x82\xBE", "山田 太郎, やまだ"},
    Row{"GB18030", "\xCD\xF5\xD0\xA1\xC3\xF7, \xB1\xB1\xBE\xA9\xCA\xD0", "王小明, 北京市"},
    Row{"EUC-JP", "\xA4\xE4\xA4\xDE\xA4\xC0", "やまだ"}, Row{"CP949", "\xC3\xD6\xC0\xAF\xB8\xB2 \xB1\xE8\xC3\xB6\xBC\xF6", "최유림 김철수"}));

TEST(Charsets, aByteThatNoneKnowsIsMarkedAndTheRestGoesOn) {
    Charsets charsets;
    EXPECT_EQ(charsets.toUtf8("a\x82", "CP932"), "a\xEF\xBF\xBD");
    EXPECT_EQ(charsets.toUtf8("\xFFz", "UTF-8"), "\xEF\xBF\xBDz");
    EXPECT_EQ(charsets.toUtf8("a", "NO-SUCH-CHARSET"), std::nullopt);
    EXPECT_EQ(charsets.toUtf8("a", "../UTF-8//IGNORE"), std::nullopt);
}

struct Date {
    const char *text, *day, *dayFirst;
};
class PlainDate : public testing::TestWithParam<Date> {};

TEST_P(PlainDate, isADayOfTheCalendarOrStays) {
    EXPECT_EQ(plainDate(GetParam().text), GetParam().day);
    EXPECT_EQ(plainDate(GetParam().text, DayOrder::dayFirst), GetParam().dayFirst);
}

INSTANTIATE_TEST_SUITE_P(Texts, PlainDate, testing::Values(
    Date{"19800322", "1980-03-22", "1980-03-22"}, Date{"1980-03-22T10:00:00Z", "1980-03-22", "1980-03-22"}, Date{"22.3.1980", "1980-03-22", "1980-03-22"},
    Date{"3/22/1980", "1980-03-22", "1980-03-22"}, Date{"2/3/1980", "1980-02-03", "1980-03-02"}, Date{"1980年3月22日", "1980-03-22", "1980-03-22"},
    Date{"19723101", "19723101", "19723101"}, Date{"--0203", "--0203", "--0203"}, Date{"1980", "1980", "1980"}, Date{"soon", "soon", "soon"}));

}  // namespace
