#include <gtest/gtest.h>

#include <sstream>

#include "host/import/Rewriting.h"
#include "host/import/TableDialect.h"
#include "host/import/TableHeadings.h"
#include "tests/support/Cases.h"

using namespace host::foreign;

namespace {

constexpr std::string_view kPlain =
    "Row,Row 2,Given Name,Given Name Yomi,Additional Name,Additional Name Yomi,Family Name,Family Name "
    "Yomi,Nickname,Name Prefix,"
    "Name Suffix,Birthday,Notes,Organization 1 - Name,Organization 1 - Department,Organization 1 - Title,";

std::string rewritten(std::string_view bytes) {
    std::string out;
    (void)rewriteTable(
        bytes, "a.csv", [&](std::string_view piece) { out.append(piece); }, [](std::int64_t, const std::string &) {});
    return out;
}

class TableText : public testing::TestWithParam<Case> {};

TEST_P(TableText, isWrittenAsTheReadersTakeIt) {
    const auto &parts = GetParam().parts;
    EXPECT_EQ(rewritten(parts[0]), std::string(kPlain) + parts[1] + "End of Row\n" + parts[2]);
}

INSTANTIATE_TEST_SUITE_P(Samples, TableText, testing::ValuesIn(casesOf("cases/foreignTables.txt", 3)), nameOfCase);

// A table as wide as its widest row would be many times the file.
TEST(TableRewriting, goesOverAsCardsWhereATableWouldSwell) {
    std::string table = "First Name,Phone 1 - Type,Phone 1 - Value\n", many = "0";
    for (int i = 1; i < 2000; ++i)
        many += " ::: " + std::to_string(i);
    for (int i = 0; i < 50; ++i)
        table += "Ada,Home," + (i == 0 ? many : std::string("1")) + "\n";
    const std::string out = rewritten(table);
    EXPECT_TRUE(out.starts_with("BEGIN:VCARD\nVERSION:3.0\nN:;Ada;;;\nTEL;TYPE=Home:0\n")) << out.substr(0, 200);
    EXPECT_LT(out.size(), table.size() * 5);
}

// ---------------------------------------------------------------- what is told

std::string toldOfTheLastRow(std::string_view table) {
    std::string told;
    (void)rewriteTable(
        table, "a.csv", [](std::string_view) {},
        [&](std::int64_t line, const std::string &text) { told = line > 1 ? text : told; });
    return told;
}

class TableTold : public testing::TestWithParam<Case> {};

TEST_P(TableTold, ofARowIsWhatItLeavesBehind) { EXPECT_EQ(toldOfTheLastRow(GetParam().parts[0]), GetParam().parts[1]); }

INSTANTIATE_TEST_SUITE_P(Samples, TableTold, testing::ValuesIn(casesOf("cases/leftBehindByTables.txt")), nameOfCase);

// A hostile row has a text under each of 100,000 headings, and headings of any length.
TEST(TableRewriting, tellsOfAWideRowTheFirstFewAndTheirNumber) {
    std::string headings = "Name", cells = "A";
    for (int i = 0; i < 1000; ++i)
        headings += ",x" + std::string(1000, 'y'), cells += ",z";
    const std::string told = toldOfTheLastRow(headings + "\n" + cells + "\n");
    EXPECT_TRUE(told.ends_with("; and 960 more")) << told;
    EXPECT_LT(told.size(), 4000u);
}

// ---------------------------------------------------------------- headings

class TableHeading : public testing::TestWithParam<Case> {};

TEST_P(TableHeading, isUnderstood) {
    std::istringstream headings(GetParam().parts[1]);
    for (std::string heading; std::getline(headings, heading);)
        EXPECT_EQ(meaningOf(columnsOf({heading}).front()), GetParam().parts[0]) << heading;
}

INSTANTIATE_TEST_SUITE_P(Samples, TableHeading, testing::ValuesIn(casesOf("cases/tableHeadings.txt")), nameOfCase);

// ---------------------------------------------------------------- what is left alone

class TableDialect : public testing::TestWithParam<Case> {};

TEST_P(TableDialect, isLeftAloneOrNot) {
    EXPECT_EQ(isTableDialect(GetParam().parts[0]) ? "left alone" : "rewritten", GetParam().parts[1]);
}

INSTANTIATE_TEST_SUITE_P(Samples, TableDialect, testing::ValuesIn(casesOf("cases/tableDialect.txt")), nameOfCase);

}   // namespace
