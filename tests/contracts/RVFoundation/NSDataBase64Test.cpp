#include "HNManagerPlugin/contracts/RVFoundation/NSDataBase64.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>

namespace {

using namespace std::string_literals;

std::optional<std::string> decoded(std::string_view text) {
    const NSDataRef data = jk_dataWithBase64EncodedString(text);
    return data ? std::optional(std::string(data->bytes())) : std::nullopt;
}

struct Row {
    const char *name, *text;
    std::optional<std::string> bytes;
};
class Base64 : public testing::TestWithParam<Row> {};

TEST_P(Base64, givesItsBytes) { EXPECT_EQ(decoded(GetParam().text), GetParam().bytes); }

INSTANTIATE_TEST_SUITE_P(
    Text, Base64,
    testing::Values(Row{"empty", "", ""}, Row{"wholeGroups", "Zm9vYmFy", "foobar"}, Row{"onePad", "Zm9vYmE=", "fooba"},
                    Row{"twoPads", "Zm9vYg==", "foob"}, Row{"highBytes", "//79+/8=", "\xFF\xFE\xFD\xFB\xFF"s},
                    Row{"zeroBytes", "AAAA", "\0\0\0"s}, Row{"trailingCarriageReturn", "Zm9v\r", "foo"},
                    Row{"brokenLinesInsideAGroup", "Z\r\n m9\tvYm\nFy", "foobar"}, Row{"spaceInPadding", "Zm9vYg= \r=", "foob"},
                    Row{"paddingLeftOut", "Zm9vYg", "foob"}, Row{"cutInsideAGroup", "Zm9vY", "foo"},
                    Row{"urlAlphabet", "__79", std::nullopt}, Row{"letterAfterPadding", "Zm9vYg==Zm9v", std::nullopt},
                    Row{"threePads", "Zm9vY===", std::nullopt}, Row{"padForAWholeGroup", "Zm9v=", std::nullopt},
                    Row{"padNotFillingItsGroup", "Zm9vYg=", std::nullopt}, Row{"padAlone", "=", std::nullopt},
                    Row{"onePadTooMany", "Zm9vYmE==", std::nullopt}, Row{"backslash", "Zm9v\\nYmFy", std::nullopt},
                    Row{"notAscii", "Zm9v\xC3\xA9", std::nullopt}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(Base64Text, aNulIsRefused) { EXPECT_EQ(decoded("Zm9v\0Zm9v"s), std::nullopt); }

std::string encoded(std::string_view bytes) {
    static constexpr char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bits, text;
    for (const unsigned char byte : bytes)
        for (int i = 7; i >= 0; --i)
            bits += byte >> i & 1 ? '1' : '0';
    while (bits.size() % 6)
        bits += '0';
    for (std::size_t i = 0; i < bits.size(); i += 6)
        text += kLetters[std::stoi(bits.substr(i, 6), nullptr, 2)];
    while (text.size() % 4)
        text += '=';
    return text;
}

TEST(Base64Text, randomBytesComeBack) {
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 0; round < 300; ++round) {
        std::string bytes(random() % 40, '\0');
        for (char &c : bytes)
            c = static_cast<char>(random());
        std::string text = encoded(bytes);
        for (int i = random() % 3; i > 0; --i)
            text.insert(random() % (text.size() + 1), "\r\n");
        ASSERT_EQ(decoded(text), bytes) << text;
    }
}

}  // namespace
