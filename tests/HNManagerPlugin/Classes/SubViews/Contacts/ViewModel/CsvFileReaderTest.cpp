#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/CsvFileReader.h"

#include <gtest/gtest.h>

#include <random>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/CsvText.h"
#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"
#include "tests/support/Cases.h"
#include "tests/support/ContactText.h"

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

class CsvFile : public testing::TestWithParam<Case> {};

TEST_P(CsvFile, gives) { EXPECT_EQ(outcome(GetParam().parts[0]), GetParam().parts[1]); }

INSTANTIATE_TEST_SUITE_P(Readers, CsvFile, testing::ValuesIn(casesOf("cases/tables.txt")), nameOfCase);

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

// The stages step by step on whole texts, quadratic and plain.
namespace plain {

struct Fatal {};   // a character is read that is not there
using Texts = std::vector<std::string>;

std::string replaced(std::string text, const std::string &part, const std::string &by) {
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += by.size())
        text.replace(at, part.size(), by);
    return text;
}

char characterAt(const std::string &text, long at) {
    if (at < 0 || at >= static_cast<long>(text.size()))
        throw Fatal();
    return text[static_cast<std::size_t>(at)];
}

bool isPair(const std::string &text, long at) { return characterAt(text, at) == '"' && characterAt(text, at + 1) == '"'; }
long quotesIn(const std::string &text) { return std::count(text.begin(), text.end(), '"'); }

Texts split(const std::string &text) {
    Texts pieces;
    std::size_t from = 0;
    for (std::size_t at; (at = text.find(',', from)) != std::string::npos; from = at + 1)
        pieces.push_back(text.substr(from, at - from));
    pieces.push_back(text.substr(from));
    return pieces;
}

std::string backslashes(std::string text) {
    return replaced(replaced(replaced(std::move(text), "\\\\", "&^HJ"), "\\n", "\n"), "\\r", "\r");
}

std::string replaceCommaSymbol(std::string text) {
    if (text.size() == 1)
        return text;
    bool inside = false;
    long i = 0;
    do {
        const char read = characterAt(text, i);
        if (read == '"') {
            if (isPair(text, i))
                ++i;
            else
                inside = !inside;
        }
        if (inside && read == ',')
            text.replace(static_cast<std::size_t>(i), 1, "&^DouHao");
        ++i;
    } while (i < static_cast<long>(text.size()) - 1);
    return text;
}

Texts combine(const Texts &fields) {
    Texts result;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        std::string acc = fields[i];
        if (!acc.starts_with("\"")) {
            result.push_back(acc);
            continue;
        }
        std::size_t goOn = i;
        for (std::size_t j = i + 1; j < fields.size(); ++j) {
            const long q = quotesIn(fields[j]);
            if (q == 0 || q == 2)
                return fields;
            if (q % 2 == 0) {
                acc += "," + fields[j];
            } else if (fields[j].ends_with("\"")) {
                acc += "," + fields[j];
                goOn = j;
                break;
            }
        }
        result.push_back(acc);
        i = goOn;
    }
    return result;
}

std::string replaceQuotes(std::string text) {
    if (text == "\"")
        throw Fatal();
    if (text.starts_with("\"") && text.ends_with("\""))
        text = text.substr(1, text.size() - 2);
    return replaced(text, "\"\"", "\"");
}

std::string deleteQuotes(std::string text) {
    text = replaced(replaced(std::move(text), "\n", ""), "\r", "");
    for (long i = 0; i < static_cast<long>(text.size()); ++i)
        if (text[static_cast<std::size_t>(i)] == '"' && !isPair(text, i == static_cast<long>(text.size()) - 1 ? i - 1 : i))
            text.erase(static_cast<std::size_t>(i), 1);
    return text;
}

std::string change(std::string text) { return replaced(replaced(std::move(text), "&^HJ", "\\"), "&^DouHao", ","); }

}   // namespace plain

std::string randomText(std::mt19937 &random) {
    static constexpr const char *kParts[] = {"\"", "\"", "\"\"", ",", ",", "a", "\\", "\\n", "&^HJ", "&^D", "\n", "\xC3\xA4"};
    std::string text;
    for (auto parts = random() % 15; parts > 0; --parts)
        text += kParts[random() % std::size(kParts)];
    return text;
}

template <class Function>
std::string orFatal(Function function) {
    try {
        return function();
    } catch (const plain::Fatal &) {
        return "fatal";
    } catch (const OutOfRange &) {
        return "fatal";
    }
}

TEST(CsvTextFunctions, giveWhatThePlainWayGives) {
    std::mt19937 random(11);
    for (int round = 0; round < 20'000; ++round) {
        const std::string text = randomText(random);
        SCOPED_TRACE(text);
        ASSERT_EQ(replaceBackslashes(text), plain::backslashes(text));
        ASSERT_EQ(changeCSVData(text), plain::change(text));
        ASSERT_EQ(orFatal([&] { return replaceCommaSymbol(text); }), orFatal([&] { return plain::replaceCommaSymbol(text); }));
        ASSERT_EQ(orFatal([&] { return replaceDoubleQuotationMarkString(text); }), orFatal([&] { return plain::replaceQuotes(text); }));
        ASSERT_EQ(orFatal([&] { return deleteDoubleQuotationMarkString(text); }), orFatal([&] { return plain::deleteQuotes(text); }));
        const auto fields = plain::combine(plain::split(text));
        std::string all = std::to_string(fields.size());
        for (const std::string &field : fields)
            all += "|" + field;
        ASSERT_EQ(combined(text), all);
    }
}

}   // namespace
