#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/VCardFileReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>

#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"
#include "tests/support/Cases.h"
#include "tests/support/ContactText.h"
#include "tests/support/TempFolder.h"

namespace {

using namespace std::string_literals;

// The records one line each, or "fatal at line N".
std::string outcome(std::string_view text) {
    try {
        return described(VCardFileReader::readText(text, "book.vcf"));
    } catch (const FatalParseFailure &failure) {
        return "fatal at line " + std::to_string(failure.line().value_or(-1));
    }
}

class CardLine : public testing::TestWithParam<Case> {};

TEST_P(CardLine, givesItsFields) {
    EXPECT_EQ(outcome(withReturns("BEGIN:VCARD\n" + GetParam().parts[0] + "\nEND:VCARD\n")), GetParam().parts[1] + "\n");
}

INSTANTIATE_TEST_SUITE_P(Samples, CardLine, testing::ValuesIn(casesOf("cases/cardLines.txt")), nameOfCase);

class CardFile : public testing::TestWithParam<Case> {};

TEST_P(CardFile, hasItsOutcome) { EXPECT_EQ(outcome(GetParam().parts[0]), GetParam().parts[1]); }

INSTANTIATE_TEST_SUITE_P(Samples, CardFile, testing::ValuesIn(casesOf("cases/cardFiles.txt")), nameOfCase);

const std::string kOpen = "BEGIN:VCARD\n", kClose = "END:VCARD\n";

TEST(VCardFileReader, logsStartAndEndOfEachCard) {
    std::string log;
    (void)VCardFileReader::readText(kOpen + kClose + "END\n", "book.vcf", [&](std::string_view text) { log += std::string(text) + "|"; });
    EXPECT_EQ(log, "parse vcare contat start|parse vcard contact end|parse vcard contact end|");
}

TEST(VCardFileReader, deleteEnterCharTakesOutBothLineEnds) {
    EXPECT_EQ(VCardFileReader::deleteEnterChar("\r\na\nb\rc\r\n"), NSString("abc"));
    EXPECT_EQ(VCardFileReader::deleteEnterChar(""), NSString(""));
    EXPECT_EQ(VCardFileReader::deleteEnterChar(NSString()), NSString());
}

// ---------------------------------------------------------------- files on disk

class OnDisk : public testing::Test {
protected:
    NSString write(const std::string &bytes) {
        writeFile(folder_.path() / "book.vcf", bytes);
        return (folder_.path() / "book.vcf").string();
    }
    TempFolder folder_;
};

TEST_F(OnDisk, unreadableFilesGiveNothing) {
    for (const std::string &path : {folder_.path().string() + "/missing.vcf", folder_.path().string(), ""s, "/dev/zero"s}) {
        EXPECT_TRUE(VCardFileReader::read(path).empty()) << path;
        ASSERT_TRUE(VCardFileReader::whyNothing(path)) << path;
        EXPECT_EQ(VCardFileReader::whyNothing(path)->line, std::nullopt);
    }
}

TEST_F(OnDisk, otherEncodingsGiveNothingAndTheLineOfTheFirstBadByte) {
    const std::pair<std::string, int> kFiles[] = {
        {kOpen + "TITLE:\xC3\xA9\nTITLE:\xE9t\xE9\n" + kClose, 3}, {"\xFF\xFE" + kOpen, 1},   {kOpen + "TITLE:\xED\xA0\x80\n", 2},
        {kOpen + "\xC0\xAF", 2},                                    {kOpen + "a\n\n\xE2\x82", 4},
    };
    for (const auto &[bytes, line] : kFiles) {
        const NSString path = write(bytes);
        EXPECT_TRUE(VCardFileReader::read(path).empty());
        ASSERT_TRUE(VCardFileReader::whyNothing(path));
        EXPECT_EQ(VCardFileReader::whyNothing(path)->line, line);
    }
}

TEST_F(OnDisk, aGoodFileIsReadAndHasNoReason) {
    const NSString path = write(kOpen + "TITLE:\xEF\xBF\xBD\n" + kClose);   // a real U+FFFD is no bad byte
    EXPECT_EQ(described(VCardFileReader::read(path)), "job=\xEF\xBF\xBD\n");
    EXPECT_FALSE(VCardFileReader::whyNothing(path));
}

TEST_F(OnDisk, aFailureNamesFileLineAndReason) {
    const NSString path = write(kOpen + "TITLE:a\nORG:Acme\n" + kClose);
    try {
        (void)VCardFileReader::read(path);
        FAIL() << "taken";
    } catch (const FatalParseFailure &failure) {
        EXPECT_EQ(failure.what(), path.str() + ":3: ORG: without a \";\" behind the company");
    }
}

// ---------------------------------------------------------------- real files

// A file, a word whose lines are left out of it, and the outcome.
class RealCards : public testing::TestWithParam<Case> {};

TEST_P(RealCards, haveTheirOutcome) {
    std::string text;
    std::istringstream lines(readFile(HN_SAMPLES_DIR "/vcard/" + GetParam().parts[0]));
    for (std::string line; std::getline(lines, line);)
        if (GetParam().parts[1].empty() || line.find(GetParam().parts[1]) == std::string::npos)
            text += line + "\n";
    EXPECT_EQ(outcome(text), GetParam().parts[2]);
}

INSTANTIATE_TEST_SUITE_P(Samples, RealCards, testing::ValuesIn(casesOf("cases/realCards.txt", 3)), nameOfCase);

// ---------------------------------------------------------------- damage

// One record per end of a card, or a refusal that names a line of the text; nothing else.
void expectTakenOrRefused(const std::string &text) {
    if (!unicode::isValid(text))
        return;
    std::size_t ends = 0;
    for (std::size_t at = 0; (at = text.find("END:VCARD", at)) != std::string::npos; at += 9)
        ++ends;
    try {
        ASSERT_EQ(VCardFileReader::readText(text, "book.vcf").size(), ends) << testing::PrintToString(text);
    } catch (const FatalParseFailure &failure) {
        ASSERT_GE(failure.line().value_or(0), 1) << testing::PrintToString(text);
        ASSERT_LE(failure.line().value_or(0), std::ranges::count(text, '\n') + 1) << testing::PrintToString(text);
        ASSERT_FALSE(failure.reason().isEmpty());
    }
}

TEST(DamagedCards, cutAtEveryByteAndEachByteOnceReplaced) {
    const std::string twoCards = readFile(HN_SAMPLES_DIR "/cases/everyKindOfLine.vcf");
    ASSERT_FALSE(twoCards.empty());
    for (const std::string &whole : {twoCards, withReturns(twoCards)})
        for (std::size_t at = 0; at < whole.size(); ++at) {
            expectTakenOrRefused(whole.substr(0, at + 1));
            for (const char with : {'\n', ':', ';', '=', ' ', '\0', static_cast<char>(whole[at] ^ 0x20)}) {
                std::string text = whole;
                text[at] = with;
                expectTakenOrRefused(text);
            }
        }
}

TEST(DamagedCards, randomTexts) {
    static const char *const kWords[] = {
        "BEGIN:VCARD\n", "END:VCARD", "END:VCARD\r\n", "\n", "\r\n", "\r", ":", ";", "=", " ", "\t", "\xC2\xA0", "\xC3\xA9", "\\", "n", "\\\\", "&^HJ", "_$!<", ">!$_", "N:", "a;b;c;d;e",
        "X-PHONETIC-FIRST-NAME:", "X-PHONETIC-LAST-NAME", "X-PHONETIC-ORG:", "ORG:", "ORG", "NICKNAME:", "BDAY;", "VALUE=date:", "TITLE:", "NOTE:", "PHOTO;ENCODING=b;TYPE=JPEG:", "Zm9v", "Yg==",
        "EMAIL;", "type=INTERNET;", "internet", "TYPE=", "type=", "TEL;", "pref", "URL;TYPE=", "URL;type=", "http://h", "IMPP", "X-ABRELATEDNAMES;TYPE=", "X-ABDATE;type=", "item", ".TEL", ".EMAIL",
        ".URL", ".URL:", ";TYPE=pref:", ";type=pref:", ".IMPP", ".ADR", ";TYPE", ";;;;;;", ".X-ABRELATEDNAMES", ".X-ABDATE", "item1.X-ABLabel:", "VERSION:", "FN:", "text", "12345678"};
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 0; round < 20'000; ++round) {
        std::string text = random() % 8 ? "BEGIN:VCARD\n" : "";
        for (std::size_t words = random() % 24; words > 0; --words)
            text += kWords[random() % std::size(kWords)];
        text += random() % 4 ? "\nEND:VCARD\n" : "";
        expectTakenOrRefused(text);
        if (HasFatalFailure())
            return;
    }
}

}  // namespace
