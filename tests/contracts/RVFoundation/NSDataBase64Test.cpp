#include "HNManagerPlugin/contracts/RVFoundation/NSDataBase64.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace {

using namespace std::literals;

std::optional<std::string> decoded(std::string_view text) {
    const NSDataRef data = jk_dataWithBase64EncodedString(text);
    return data ? std::optional(std::string(data->bytes())) : std::nullopt;
}

TEST(Base64Text, givesItsBytes) {
    struct {
        const char *name;
        std::string_view text;
        std::optional<std::string> bytes;
    } rows[] = {
        {"empty", "", ""}, {"wholeGroups", "Zm9vYmFy", "foobar"}, {"onePad", "Zm9vYmE=", "fooba"},
        {"twoPads", "Zm9vYg==", "foob"}, {"highBytes", "//79+/8=", "\xFF\xFE\xFD\xFB\xFF"s},
        {"everyLetter", "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/",
         "\x00\x10\x83\x10\x51\x87\x20\x92\x8B\x30\xD3\x8F\x41\x14\x93\x51\x55\x97\x61\x96\x9B\x71\xD7\x9F"
         "\x82\x18\xA3\x92\x59\xA7\xA2\x9A\xAB\xB2\xDB\xAF\xC3\x1C\xB3\xD3\x5D\xB7\xE3\x9E\xBB\xF3\xDF\xBF"s},
        {"zeroBytes", "AAAA", "\0\0\0"s}, {"trailingCarriageReturn", "Zm9v\r", "foo"},
        {"brokenLinesInsideAGroup", "Z\r\n m9\tvYm\nFy", "foobar"}, {"spaceInPadding", "Zm9vYg= \r=", "foob"},
        {"paddingLeftOut", "Zm9vYg", "foob"}, {"cutInsideAGroup", "Zm9vY", "foo"},
        {"urlAlphabet", "__79", std::nullopt}, {"letterAfterPadding", "Zm9vYg==Zm9v", std::nullopt},
        {"threePads", "Zm9vY===", std::nullopt}, {"padForAWholeGroup", "Zm9v=", std::nullopt},
        {"padNotFillingItsGroup", "Zm9vYg=", std::nullopt}, {"padAlone", "=", std::nullopt},
        {"onePadTooMany", "Zm9vYmE==", std::nullopt}, {"backslash", "Zm9v\\nYmFy", std::nullopt},
        {"notAscii", "Zm9v\xC3\xA9", std::nullopt}, {"nul", "Zm9v\0Zm9v"sv, std::nullopt}};
    for (const auto &[name, text, bytes] : rows)
        EXPECT_EQ(decoded(text), bytes) << name;
}

}  // namespace
