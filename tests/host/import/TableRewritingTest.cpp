#include <gtest/gtest.h>

#include "host/import/Rewriting.h"
#include "host/import/TableDialect.h"
#include "host/import/TableHeadings.h"

using namespace host::foreign;

namespace {

constexpr std::string_view kPlain = "Row,Row 2,Given Name,Given Name Yomi,Additional Name,Additional Name Yomi,Family Name,Family Name Yomi,Nickname,Name Prefix,"
                                    "Name Suffix,Birthday,Notes,Organization 1 - Name,Organization 1 - Department,Organization 1 - Title,";

std::string rewritten(std::string_view bytes) {
    std::string out;
    (void)rewriteTable(bytes, "a.csv", [&](std::string_view piece) { out.append(piece); }, [](std::int64_t, const std::string &) {});
    return out;
}

struct Row {
    const char *name, *table, *headings, *rows;
};
class TableText : public testing::TestWithParam<Row> {};

TEST_P(TableText, isWrittenAsTheReadersTakeIt) {
    EXPECT_EQ(rewritten(GetParam().table), std::string(kPlain) + GetParam().headings + "End of Row\n" + GetParam().rows);
}

INSTANTIATE_TEST_SUITE_P(Tables, TableText, testing::Values(
    Row{"semicolons", "First Name;Last Name\nAda;Lovelace\nAlan;Turing", "", "\".\",,Ada,,,,Lovelace,,,,,,,,,,\n\".\",,Alan,,,,Turing,,,,,,,,,,\n"},
    Row{"tabsAndAMark", "\xEF\xBB\xBF" "First Name\tNotes\r\nAda\ta, b\r\n", "", "\".\",,Ada,,,,,,,,,,\"a, b\",,,,\n"},
    Row{"aSpreadsheetsOwnLine", "sep=;\nFirst Name;Notes\nAda;x", "", "\".\",,Ada,,,,,,,,,,x,,,,\n"},
    Row{"lineBreaksAndQuotesInCells", "First Name,Notes\nAda,\"a\r\n\"\"b\"\" C:\\new\"\n", "", "\".\",,Ada,,,,,,,,,,\"a\\n\"\"b\"\" C:\\\\new\",,,,\n"},
    Row{"severalValuesInACell", "First Name,Phone 1 - Type,Phone 1 - Value\nAda,* Home,1 ::: 2\n",
        "Phone 1 - Type,Phone 1 - Value,Phone 2 - Type,Phone 2 - Value,", "\".\",,Ada,,,,,,,,,,,,,,Home,1,Home,2,\n"},
    Row{"newHeadingsOfWebMail", "First Name,Phone 1 - Label,Phone 1 - Value\nAda,,1\n", "Phone 1 - Type,Phone 1 - Value,", "\".\",,Ada,,,,,,,,,,,,,,other,1,\n"},
    Row{"partsOfAnAddress", "Home City,Home Street,Home Street 2,Home Address\nC,S,T,all of it\n",
        "Address 1 - Type,Address 1 - Postal Code,Address 1 - Country,Address 1 - Region,Address 1 - City,Address 1 - Street,",
        "\".\",,,,,,,,,,,,,,,,Home,,,,C,\"S, T\",\n"},
    Row{"aFullNameAlone", "Name\nAda Lovelace\n", "", "\".\",,Ada Lovelace,,,,,,,,,,,,,,\n"},
    Row{"daysByTheLanguage", "Nachname;Geburtsdatum\nA;1.2.1980\nB;1/2/1980", "", "\".\",,,,,,A,,,,,1980-02-01,,,,,\n\".\",,,,,,B,,,,,1980-02-01,,,,,\n"},
    Row{"anotherCharset", "Vorname;Ort privat\nJ\xFCrgen;K\xF6ln\n",
        "Address 1 - Type,Address 1 - Postal Code,Address 1 - Country,Address 1 - Region,Address 1 - City,Address 1 - Street,",
        "\".\",,Jürgen,,,,,,,,,,,,,,Home,,,,Köln,,\n"},
    Row{"ourOwnEscapes", "Given Name,Notes\nAda,a\\nb\\\\n\n", "", "\".\",,Ada,,,,,,,,,,a\\nb\\\\n,,,,\n"}),
    [](const auto &row) { return std::string(row.param.name); });

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

struct Told {
    const char *name, *table, *told;
};
class TableTold : public testing::TestWithParam<Told> {};

TEST_P(TableTold, ofARowIsWhatItLeavesBehind) {
    std::string told;
    (void)rewriteTable(GetParam().table, "a.csv", [](std::string_view) {}, [&](std::int64_t line, const std::string &text) { told = line > 1 ? text : told; });
    EXPECT_EQ(told, GetParam().told);
}

INSTANTIATE_TEST_SUITE_P(Rows, TableTold, testing::Values(
    Told{"anAddressThatSaysMore", "Home Street,Home City,Home Address\nS,C,\"S\n84 C\"\n", "row 1 leaves behind: formatted address \"S 84 C\""},
    Told{"anAddressThatSaysTheSame", "Home Street,Home City,Home Address\nS,C,\"S\nC\"\n", ""},
    Told{"aSecondNameAndNumber", "Name,Display Name,Phone 1 - Value,Phone 1 - Value\nA,B,1,2\n", "row 1 \"A\" leaves behind: Display Name \"B\"; Phone 1 - Value \"2\""},
    Told{"aSecondYearOfBirth", "Name,Birth Year,Birth Year\nA,1980,1981\n", "row 1 \"A\" leaves behind: Birth Year \"1981\""}),
    [](const auto &row) { return std::string(row.param.name); });

// A hostile row has a text under each of 100,000 headings, and headings of any length.
TEST(TableRewriting, tellsOfAWideRowTheFirstFewAndTheirNumber) {
    std::string headings = "Name", cells = "A";
    for (int i = 0; i < 1000; ++i)
        headings += ",x" + std::string(1000, 'y'), cells += ",z";
    std::string told;
    (void)rewriteTable(headings + "\n" + cells + "\n", "a.csv", [](std::string_view) {},
                       [&](std::int64_t line, const std::string &text) { told = line > 1 ? text : told; });
    EXPECT_TRUE(told.ends_with("; and 960 more")) << told;
    EXPECT_LT(told.size(), 4000u);
}

// ---------------------------------------------------------------- headings

struct Heading {
    const char *heading, *meaning;
};
class TableHeading : public testing::TestWithParam<Heading> {};

TEST_P(TableHeading, isUnderstood) { EXPECT_EQ(meaningOf(columnsOf({GetParam().heading}).front()), GetParam().meaning); }

INSTANTIATE_TEST_SUITE_P(Words, TableHeading, testing::Values(
    Heading{"Given Name", "first name"}, Heading{"Prénom", "first name"}, Heading{"Apellidos", "last name"}, Heading{"姓氏", "last name"},
    Heading{"E-mail 2 Address", "e-mail"}, Heading{"E-mail Display Name", "left behind"}, Heading{"Primäre E-Mail-Adresse", "e-mail"},
    Heading{"Adresse de messagerie", "e-mail"}, Heading{"Dirección de correo electrónico", "e-mail"}, Heading{"电子邮件地址", "e-mail"},
    Heading{"Mobile Phone", "Mobile phone"}, Heading{"Mobiltelefon", "Mobile phone"}, Heading{"Móvil", "Mobile phone"}, Heading{"移动电话", "Mobile phone"},
    Heading{"Business Fax", "WorkFAX phone"}, Heading{"Téléphone (domicile)", "Home phone"}, Heading{"Teléfono del trabajo", "Work phone"}, Heading{"商务电话", "Work phone"},
    Heading{"Company Main Phone", "Main phone"}, Heading{"Assistant's Phone", "Assistant phone"},
    Heading{"Postleitzahl geschäftlich", "Work address, postal code"}, Heading{"Ville (bureau)", "Work address, city"}, Heading{"Code postal (domicile)", "Home address, postal code"},
    Heading{"Business Country/Region", "Work address, country"}, Heading{"商务地址 省/市/自治区", "Work address, state"}, Heading{"住宅地址 街道", "Home address, street"},
    Heading{"Web Page 1", "web address"}, Heading{"Address 2 - PO Box", "address, street"}, Heading{"Event 1 - Label", "label of date"}, Heading{"Sensitivity", "left behind"},
    Heading{"User 1", "left behind"}, Heading{"", "left behind"}));

// ---------------------------------------------------------------- what is left alone

struct Alone {
    const char *name, *table;
    bool isLeft;
};
class TableDialect : public testing::TestWithParam<Alone> {};

TEST_P(TableDialect, isLeftAloneOrNot) { EXPECT_EQ(isTableDialect(GetParam().table), GetParam().isLeft); }

INSTANTIATE_TEST_SUITE_P(Tables, TableDialect, testing::Values(
    Alone{"ourOwnWriters", "Given Name,Notes,Phone 1 - Type,Phone 1 - Value,End of Row\r\nAda,\"a, \"\"b\"\"\\nc\",Home,1,\r\nAlan,,,,\r\n", true},
    Alone{"oneRowWithItsEnd", "Given Name,Notes\nAda,x\n", true}, Alone{"oneRowWithoutItsEnd", "Given Name,Notes\nAda,x", false},
    Alone{"twoRowsWithoutTheEnd", "Given Name,Notes\nAda,x\nAlan,y", false}, Alone{"threeRowsWithoutTheEnd", "Given Name,Notes\nA,x\nB,y\nC,z", true},
    Alone{"aRowTooShort", "Given Name,Notes\nAda\n", false}, Alone{"aLineBreakInACell", "Given Name,Notes\nAda,\"a\nb\"\nB,c\n", false},
    Alone{"otherHeadings", "First Name,Notes\nAda,x\n", false}, Alone{"aColumnThatIsLost", "Given Name,Gender\nAda,f\n", false},
    Alone{"anEmptyColumnMore", "Given Name,Gender\nAda,\n", true}, Alone{"aNumberWithoutItsType", "Phone 1 - Type,Phone 1 - Value\n,1\n", false},
    Alone{"severalValues", "Phone 1 - Type,Phone 1 - Value\nHome,1 ::: 2\n", false}, Alone{"otherOrderOfAnAddress", "Address 1 - Type,Address 1 - Street\nHome,x\n", false},
    Alone{"aGroupCutOff", "Given Name,Phone 1 - Type\nAda,\n", false}, Alone{"aHeadingTwice", "Notes,Notes\na,b\n", false},
    Alone{"cellsThatTheRepairWouldJoin", "Given Name,Notes\n\"A,B\",\"a\"\"b\"\n", false}, Alone{"aMark", "\xEF\xBB\xBFGiven Name,Notes\nA,b\n", false},
    Alone{"headingsAlone", "Given Name,Notes\n", false}), [](const auto &row) { return std::string(row.param.name); });

}  // namespace
