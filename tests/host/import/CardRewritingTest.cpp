#include <gtest/gtest.h>

#include "host/import/CardDialect.h"
#include "host/import/Rewriting.h"
#include "tests/support/Cases.h"

using namespace host::foreign;

namespace {

struct Outcome {
    std::string cards, told;
};
Outcome rewritten(std::string_view bytes) {
    Outcome outcome;
    (void)rewriteCards(
        bytes, "a.vcf", [&](std::string_view piece) { outcome.cards.append(piece); },
        [&](std::int64_t line, const std::string &text) { outcome.told += std::to_string(line) + ": " + text + "\n"; });
    return outcome;
}

// What stands in the one card behind its VERSION; `N:;;;;` is left out where it says nothing.
std::string body(const std::string &cards) {
    std::string text = cards;
    for (const std::string_view front : {"BEGIN:VCARD\nVERSION:3.0\n", "N:;;;;\n"})
        if (text.starts_with(front))
            text.erase(0, front.size());
    return text.substr(0, text.rfind("END:VCARD\n"));
}

std::string cardOf(const std::string &lines) { return "BEGIN:VCARD\n" + lines + "\nEND:VCARD\n"; }

class CardLine : public testing::TestWithParam<Case> {};

TEST_P(CardLine, isWrittenAsTheReaderTakesIt) {
    const Outcome outcome = rewritten(cardOf(GetParam().parts[0]));
    EXPECT_EQ(body(outcome.cards), GetParam().parts[1]) << outcome.told;
}

INSTANTIATE_TEST_SUITE_P(Samples, CardLine, testing::ValuesIn(casesOf("cases/foreignCards.txt")), nameOfCase);

class LeftBehind : public testing::TestWithParam<Case> {};

TEST_P(LeftBehind, isTold) { EXPECT_EQ(rewritten(cardOf(GetParam().parts[0])).told, GetParam().parts[1]); }

INSTANTIATE_TEST_SUITE_P(Samples, LeftBehind, testing::ValuesIn(casesOf("cases/leftBehindByCards.txt")), nameOfCase);

TEST(CardRewriting, readsAFileInAWideCharsetByItsZeros) {
    std::string wide;
    for (const char c : std::string("BEGIN:VCARD\r\nTEL:12\r\nEND:VCARD\r\n"))
        wide += {c, '\0'};
    EXPECT_EQ(body(rewritten(wide).cards), "TEL;TYPE=other:12\n");
    EXPECT_EQ(body(rewritten("\xFF\xFE" + wide).cards), "TEL;TYPE=other:12\n");
}

TEST(CardRewriting, guessesOneCharsetFromAllTextsTogether) {
    const Outcome outcome =
        rewritten("BEGIN:VCARD\nN:\xCD\xF5;;;;\nNOTE:\xC4\xE3\xBA\xC3\xD6\xD0\xB9\xFA\nEND:VCARD\n");
    EXPECT_EQ(body(outcome.cards), "N:王;;;;\nNOTE:你好中国\n") << outcome.told;
}

// ---------------------------------------------------------------- what is left alone

class CardDialect : public testing::TestWithParam<Case> {};

TEST_P(CardDialect, isLeftAloneOrNot) {
    const std::string card = withReturns("BEGIN:VCARD\nVERSION:3.0\n" + GetParam().parts[0] + "\nEND:VCARD\n");
    EXPECT_EQ(isCardDialect(card) ? "left alone" : "rewritten", GetParam().parts[1]);
}

INSTANTIATE_TEST_SUITE_P(Samples, CardDialect, testing::ValuesIn(casesOf("cases/cardDialect.txt")), nameOfCase);

TEST(CardDialect, needsTextThatIsUtf8AndNoMark) {
    EXPECT_FALSE(isCardDialect("\xEF\xBB\xBF"
                               "BEGIN:VCARD\nN:a;;;;\nEND:VCARD\n"));
    EXPECT_FALSE(isCardDialect("BEGIN:VCARD\nN:\xFC;;;;\nEND:VCARD\n"));
    EXPECT_FALSE(isCardDialect("\nBEGIN:VCARD\nN:a;;;;\nEND:VCARD\n"));
    EXPECT_FALSE(isCardDialect("\x01"
                               "BEGIN:VCARD\nN:a;;;;\nEND:VCARD\n"))
        << "the reader trims blanks alone";
    EXPECT_FALSE(isCardDialect(""));
}

}   // namespace
