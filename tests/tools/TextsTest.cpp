#include <gtest/gtest.h>

#include "tools/Source.h"
#include "tools/StringsFile.h"

namespace {

using tools::StringsEntry;

std::string refusal(const std::string &text) {
    try {
        tools::mergeStrings({tools::parseStrings(text, "a.strings")});
    } catch (const tools::StringsError &error) {
        return error.what();
    }
    return "taken";
}

TEST(StringsFile, keepsKeysAndValuesThroughAWriteAndARead) {
    const std::string text = "/* \"x\" = \"y\"; */\n\"a \\\"b\\\\\" = \"1\\n2\"; // rest\n\"k\"\n=\"%@ \xE2\x80\xA6\" ;";
    const auto once = tools::parseStrings(text, "a.strings");
    ASSERT_EQ(once.size(), 2u);
    EXPECT_EQ(once[0].key, "a \"b\\");
    EXPECT_EQ(once[0].value, "1\n2");
    EXPECT_EQ(once[0].line, 2);
    EXPECT_EQ(once[1].value, "%@ \xE2\x80\xA6");
    const std::string written = tools::formatStrings(once);
    EXPECT_EQ(written, "\"a \\\"b\\\\\" = \"1\\n2\";\n\"k\" = \"%@ \xE2\x80\xA6\";\n");
    EXPECT_EQ(tools::formatStrings(tools::parseStrings(written, "b")), written);
}

TEST(StringsFile, refusesWhatIsNoTableAndNamesTheLine) {
    EXPECT_EQ(refusal("\"a\" = \"b\";\n\"c\" = \"d\"\n"), "a.strings:3: expected ;");
    EXPECT_EQ(refusal("\"a\" \"b\";"), "a.strings:1: expected =");
    EXPECT_EQ(refusal("a = \"b\";"), "a.strings:1: expected a key in double quotes");
    EXPECT_EQ(refusal("\"a\" = \"b\\q\";"), "a.strings:1: unknown escape after \\");
    EXPECT_EQ(refusal("\"a\" = \"b"), "a.strings:1: text without a closing quote");
    EXPECT_EQ(refusal("\n/* "), "a.strings:2: comment without an end");
}

TEST(StringsFile, refusesAKeyThatComesTwiceAndNamesBothPlaces) {
    const auto first = tools::parseStrings("\"k\" = \"1\";", "a.strings");
    const auto second = tools::parseStrings("\n\"k\" = \"1\";", "b.strings");
    try {
        tools::mergeStrings({first, second});
        FAIL();
    } catch (const tools::StringsError &error) {
        EXPECT_STREQ(error.what(), "b.strings:2: \"k\" stands already in a.strings:1");
    }
}

TEST(LocalizedKeys, areTheLiteralsOfTheFirstArgument) {
    std::string found;
    for (const auto &used : tools::localizedKeys("localized(\"a\");\n"
                                                 "x = NSString::f(localized( \"b_\" \"c\" ), \"no\");\n"
                                                 "localized(n == 1 ? \"one\" : \"many\", \"no\");\n"
                                                 "localized(\"part_\" + kind); isLocalized(\"no\"); notlocalized(\"no\");\n"
                                                 "// localized(\"no\")\nlocalized(key);\n"))
        found += std::to_string(used.line) + used.key + ' ';
    EXPECT_EQ(found, "1a 2b_c 3one 3many ");
}

TEST(WithoutComments, leavesQuotesAndRawTextsAlone) {
    EXPECT_EQ(tools::withoutComments("a/*b*/c//d\n'\"'/*x*/\"//\"1'000 R\"(/*)\"/**/"),
              "a     c   \n'\"'     \"//\"1'000 R\"(/*)\"    ");
}

} // namespace
