#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/CsvFileReader.h"

#include <gtest/gtest.h>

#include <random>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/CsvText.h"
#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"
#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ContactText.h"
#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/PlainCsvReader.h"

namespace {

std::string readText(const std::string &bytes) {
    auto found = CsvFileReader::firstReader(bytes, "a.csv");
    if (found.empty())
        found = CsvFileReader::secondReader(bytes, "a.csv");
    return described(CsvFileReader::parseCSVContactDictionary(found, "a.csv"));
}

std::string outcome(const std::string &bytes) {
    try {
        return readText(bytes);
    } catch (const FatalParseFailure &failure) {
        return "fatal " + std::to_string(failure.line().value_or(-1)) + " " + failure.reason().str();
    }
}

// ---------------------------------------------------------------- text functions

struct Change {
    const char *name;
    std::string (*function)(std::string_view);
    const char *text, *changed;
};
class CsvTextFunction : public testing::TestWithParam<Change> {};

TEST_P(CsvTextFunction, changes) { EXPECT_EQ(GetParam().function(GetParam().text), GetParam().changed); }

using namespace csvText;
INSTANTIATE_TEST_SUITE_P(
    All, CsvTextFunction,
    testing::Values(Change{"backslashPair", replaceBackslashes, "a\\\\nb\\nc\\rd\\e\\", "a&^HJnb\nc\rd\\e\\"},
                    Change{"threeBackslashes", replaceBackslashes, "\\\\\\n", "&^HJ\n"},
                    Change{"commaInQuotes", replaceCommaSymbol, "x,\"a,b\",c", "x,\"a&^DouHaob\",c"},
                    Change{"pairInQuotes", replaceCommaSymbol, "\"a\"\"b,c\",d", "\"a\"\"b&^DouHaoc\",d"},
                    Change{"lastCharacterIsNotLookedAt", replaceCommaSymbol, "\"a,", "\"a,"},
                    Change{"oneCharacter", replaceCommaSymbol, ",", ","},
                    Change{"outerQuotes", replaceDoubleQuotationMarkString, "\"a \"\"b\"\"\"", "a \"b\""},
                    Change{"oneOuterQuote", replaceDoubleQuotationMarkString, "\"a", "\"a"},
                    Change{"twoQuotes", replaceDoubleQuotationMarkString, "\"\"", ""},
                    Change{"deletedQuotes", deleteDoubleQuotationMarkString, "\"a\"", "a"},
                    Change{"keptPair", deleteDoubleQuotationMarkString, "\"a\"\"b\"", "a\"b"},
                    Change{"oneGoesUnexamined", deleteDoubleQuotationMarkString, "x\"a\"y", "xay"},
                    Change{"theOneBehindADeletedStays", deleteDoubleQuotationMarkString, "a\"b\"", "ab"},
                    Change{"leadingPairStays", deleteDoubleQuotationMarkString, "\"\"\"x\"", "\"\"x"},
                    Change{"lineEndsGo", deleteDoubleQuotationMarkString, "a\r\nb", "ab"},
                    Change{"marks", changeCSVData, "a&^HJb&^DouHaoc&^x", "a\\b,c&^x"}),
    [](const auto &row) { return std::string(row.param.name); });

std::string combined(const std::string &text) {
    const Fields fields(text, 100);
    std::string all = std::to_string(fields.count());
    for (std::size_t i = 0; i < fields.count(); ++i)
        all += "|" + fields.at(i);
    return all;
}

TEST(CsvFields, areRepaired) {
    EXPECT_EQ(combined("a,b,"), "3|a|b|");
    EXPECT_EQ(combined("\"a,b,c\""), "3|\"a|b|c\"");        // a field without quotes behind an open one ends it
    EXPECT_EQ(combined("\"a,c\",d"), "2|\"a,c\"|d");
    EXPECT_EQ(combined("\"a,\"\"b\"\",x\",d"), "2|\"a,\"\"b\"\",x\"|d");
    EXPECT_EQ(combined("\"a,b\"x,c\""), "1|\"a,c\"");        // odd, without a quote at its end: dropped
    EXPECT_EQ(combined("\"a,\"\"b\"\",\"\"c\"\""), "3|\"a,\"\"b\"\",\"\"c\"\"|\"\"b\"\",\"\"c\"\"|\"\"c\"\"");
}

// ---------------------------------------------------------------- files

struct File {
    const char *name;
    std::string bytes;
    const char *contacts;
};
class CsvFile : public testing::TestWithParam<File> {};

TEST_P(CsvFile, gives) { EXPECT_EQ(outcome(GetParam().bytes), GetParam().contacts); }

INSTANTIATE_TEST_SUITE_P(
    Readers, CsvFile,
    testing::Values(
        File{"oneRowKeepsTheLineEndInItsLastField", "Given Name,Notes\nAnn,hi\r\n", "first_name=Ann; notes=hi\\r\\n\n"},
        File{"twoRowsWithoutALineEndLoseTheSecond", "Given Name,Notes\nAnn,1\nBob,2", "first_name=Ann; notes=1\\n\n"},
        File{"threeRowsWithoutALineEndComeWhole", "Given Name,Notes\nAnn,1\nBob,2\nCid,3",
             "first_name=Ann; notes=1\nfirst_name=Bob; notes=2\nfirst_name=Cid; notes=3\n"},
        File{"twoRowsWithALineEnd", "Given Name,Notes\r\nAnn,1\r\nBob,2\r\n", "first_name=Ann; notes=1\nfirst_name=Bob; notes=2\n"},
        File{"oneRowWithoutALineEnd", "Given Name,Notes\nAnn,1", "fatal 2 there is no text behind the header"},
        File{"headerOnly", "Given Name\n", "fatal 2 there is no text behind the header"},
        File{"empty", "", "fatal 1 there is no text behind the header"},
        File{"quotedComma", "Given Name,Notes\n\"a,b\",x\n", "first_name=a,b; notes=x\\n\n"},
        File{"aLineBreakInQuotesOfTheOnlyRecord", "Given Name,Notes,x\nAnn,\"1\n2\",\n", "first_name=Ann; notes=1\\n2\n"},
        File{"aLineBreakInQuotesCutsOneOfMany", "Given Name,Notes,x\nAnn,\"1\n2\",\nBob,3,\n", "first_name=Bob; notes=3\n"},
        File{"wrongNumberOfFields", "Given Name,Notes\nAnn\nBob,2\nCid,3,\n", "first_name=Bob; notes=2\n"},
        File{"unknownColumnsAreIgnored", "Given Name,Shoe Size,x\nAnn,38,\n", "first_name=Ann\n"},
        File{"everyPlainColumn",
             "Given Name,Given Name Yomi,Additional Name,Additional Name Yomi,Family Name,Family Name Yomi,Nickname,Name Prefix,"
             "Name Suffix,Notes,Organization 1 - Name,Organization 1 - Department,Organization 1 - Title,Birthday,x\n"
             "a,b,c,d,e,f,g,h,i,j,k,l,m,n,\n",
             "last_name=e; first_name=a; middle_name=c; name_title=h; name_suffix=i; first_name_yomi=b; middle_name_yomi=d; "
             "last_name_yomi=f; nickname=g; company=k; department=l; job=m; birthday=n; notes=j\n"},
        File{"everyGroup",
             "Phone 1 - Type,n,E-mail 1 - Type,n,Address 1 - Type,p,c,r,t,s,Website 1 - Type,u,IM 1 - Type,s,u,Relation 1 - Type,r,"
             "Event 1 - Type,d,x\nhome,1,work,a@b,home,P,C,R,T,S,blog,http://x,chat,AIM,joe,son,Tim,birth,2001,\n",
             "tel(home)=1; email(work)=a@b; adr(home)=S,T,R,P,C; url(blog)=http://x; date(birth)=2001; related(son)=Tim; "
             "im(chat)=AIM/joe\n"},
        File{"groupsWithoutAValue", "Phone 1 - Type,n,Address 1 - Type,p,c,r,t,s,IM 1 - Type,s,u,x\nhome,,,P,,,,,chat,,joe,\n", "\n"},
        File{"anAddressNeedsOnePart", "Address 1 - Type,p,c,r,t,s,x\nhome,,,,T,,\n", "adr(home)=,T,,,\n"},
        File{"twoQuotesCountAsText", "Phone 1 - Type,n,x\nhome,\"\",\n", "tel(home)=\"\"\n"},
        File{"aTypeStaysRaw", "Phone 1 - Type,n,x\n\"a,b\",1,\n", "tel(\"a&^DouHaob\")=1\n"},
        File{"aLineBreakInANumberGoes", "Phone 1 - Type,n,x\nhome,1\\n2,\n", "tel(home)=12\n"},
        File{"aGroupTakesWhateverStandsBehindIt", "Phone 1 - Type,Given Name\nhome,Ann\n", "first_name=Ann\\n; tel(home)=Ann\n"},
        File{"aWordWithoutTypeIsSkipped", "Phone Number,Given Name,x\n1,Ann,\n", "first_name=Ann\n"},
        File{"simpleIsAnInstantMessage", "SIMPLE Type,b,c,x\n1,2,3,\n", "im(1)=2/3\n"},
        File{"caseOfWordsCounts", "phone type,n,x\n1,2,\n", "\n"},
        File{"theLaterOfEqualHeadings", "Phone 1 - Type,n,Phone 1 - Type,n,x\na,1,b,2,\n", "tel(b)=2\n"},
        File{"aGroupPastTheEnd", "Given Name,IM Type,x\na,b,c\n", "fatal 2 a group of columns runs past the end of the row"},
        File{"oneQuoteInAnyColumn", "Given Name,x,y\n1,2,3\n4,5,\"\n", "fatal 3 a field is one double quote"},
        File{"oneQuoteLeftOfAGroupsField", "Phone Type,n,x\na,\"\\n,\n", "fatal 2 a field of a group is one double quote"},
        File{"aRowThatIsNotUtf8", "Given Name,Notes\nAnn,1\nB\xFC,2\n",
             "fatal 3 the line is not UTF-8, or a character lies across its byte 102,399"},
        File{"aHeadingThatIsNotUtf8", "Given Name,N\xFC\nAnn,1\n", ""},
        File{"otherLineBreaks", "Given Name,x\nAnn,\xE2\x80\xA8" "Bob,\xC2\x85" "Cid,\x0B" "Dan,\n",
             "first_name=Ann\nfirst_name=Bob\nfirst_name=Cid\nfirst_name=Dan\n"},
        File{"aByteOrderMarkBelongsToTheHeading", "\xEF\xBB\xBFGiven Name,Notes\nAnn,1\n", "notes=1\\n\n"},
        File{"quotedHeadingsAreOthers", "\"Given Name\",Notes\nAnn,1\n", "notes=1\\n\n"}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(CsvFile, aLongHeadingIsCutAndTheRestIsTheFirstRow) {
    const std::string heading = "Given Name," + std::string(10239 - 11, 'x');
    EXPECT_EQ(outcome(heading + "y,\nAnn,1\n"), "");                 // the second reader sees three headings
    EXPECT_EQ(outcome(heading + "Ann,1\n"), "first_name=Ann\n");
}

TEST(CsvFile, aLongLineComesInPiecesUnlessACharacterIsCut) {
    const std::string filler(102399 - 2, 'a');
    EXPECT_EQ(outcome("Given Name,x\n" + filler + "\xC3\xA4,\n"), "first_name=" + filler + "\xC3\xA4\n");
    EXPECT_EQ(outcome("Given Name,x\nb" + filler + "\xC3\xA4,\n"),
              "fatal 2 the line is not UTF-8, or a character lies across its byte 102,399");
}

TEST(CsvFile, aFileThatCannotBeOpenedGivesNothing) {
    EXPECT_TRUE(CsvFileReader::read("/nowhere/a.csv").empty());
    EXPECT_TRUE(CsvFileReader::read("/").empty());
    EXPECT_TRUE(CsvFileReader::loadImportCSVGBKEncodingDataFromPath("/nowhere/a.csv").empty());
}

TEST(CsvFile, aHundredThousandColumns) {
    std::string heading = "Given Name", row = "Ann";
    for (int i = 0; i < 100'000; ++i) {
        heading += ",x";
        row += ",\"\"\"\"";   // four quotes: taken on by whoever is open
    }
    EXPECT_EQ(outcome(heading + "\n" + row + "\n" + row + "\n"), "first_name=Ann\nfirst_name=Ann\n");
}

// ---------------------------------------------------------------- against the plain way

std::string randomText(std::mt19937 &random, std::initializer_list<const char *> parts, int most) {
    std::string text;
    for (int n = std::uniform_int_distribution(0, most)(random); n > 0; --n)
        text += parts.begin()[std::uniform_int_distribution<std::size_t>(0, parts.size() - 1)(random)];
    return text;
}

template <class Function>
std::string orFatal(Function function) {
    try {
        return function();
    } catch (const plainCsv::Fatal &) {
        return "fatal";
    } catch (const OutOfRange &) {
        return "fatal";
    }
}

TEST(CsvTextFunctions, giveWhatThePlainWayGives) {
    std::mt19937 random(11);
    for (int round = 0; round < 20'000; ++round) {
        const std::string text = randomText(random, {"\"", "\"", "\"\"", ",", ",", "a", "\\", "\\n", "&^HJ", "&^D", "\n", "\xC3\xA4"}, 14);
        SCOPED_TRACE(text);
        ASSERT_EQ(replaceBackslashes(text), plainCsv::backslashes(text));
        ASSERT_EQ(changeCSVData(text), plainCsv::change(text));
        ASSERT_EQ(orFatal([&] { return replaceCommaSymbol(text); }), orFatal([&] { return plainCsv::replaceCommaSymbol(text); }));
        ASSERT_EQ(orFatal([&] { return replaceDoubleQuotationMarkString(text); }), orFatal([&] { return plainCsv::replaceQuotes(text); }));
        ASSERT_EQ(orFatal([&] { return deleteDoubleQuotationMarkString(text); }), orFatal([&] { return plainCsv::deleteQuotes(text); }));
        std::string plain;
        const auto fields = plainCsv::combine(plainCsv::split(text, ","));
        plain = std::to_string(fields.size());
        for (const std::string &field : fields)
            plain += "|" + field;
        ASSERT_EQ(combined(text), plain);
    }
}

TEST(CsvReaders, giveWhatThePlainWayGives) {
    std::mt19937 random(12);
    int withContacts = 0, fatal = 0;
    for (int round = 0; round < 5'000; ++round) {
        std::string heading = randomText(random, {"Given Name,", "Notes,", "Phone 1 - Type,", "Phone 2 - Type,n,", "n,", "IM Type,s,u,", "Address Type,p,c,r,t,s,"}, 4) + "x";
        const auto columns = static_cast<int>(std::ranges::count(heading, ',')) + 1;
        std::string bytes = heading + "\n";
        for (int row = std::uniform_int_distribution(0, 3)(random); row >= 0; --row) {
            for (int column = 0; column < columns; ++column)
                bytes += (column ? "," : "") + randomText(random, {"a", "b", "\"a,b\"", "\"\"", "\\n", "\\\\", "\"x\"\"y\"", "1"}, 2);
            bytes += randomText(random, {"\n", "\r\n", "\n", "\"", "\xE2\x80\xA8", ","}, 1);
            bytes += row > 0 ? "\n" : "";
        }
        SCOPED_TRACE(bytes);
        const std::string plain = orFatal([&] { return plainCsv::first(bytes); });
        const std::string real = outcome(bytes);
        ASSERT_EQ(real.starts_with("fatal") ? "fatal" : real, plain);
        fatal += plain == "fatal";
        withContacts += plain != "fatal" && !plain.empty();
    }
    EXPECT_GT(withContacts, 1'200);
    EXPECT_GT(fatal, 120);
}

}   // namespace
