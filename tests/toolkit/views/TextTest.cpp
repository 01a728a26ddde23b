#include <gtest/gtest.h>

#include "toolkit/NSAttributedString.h"
#include "toolkit/TextMeasurer.h"

namespace {

TEST(AttributedText, keepsRunsWithoutGapsOrEqualNeighbours) {
    const auto text = make<NSMutableAttributedString>(NSString("caf\u00e9 link end"));
    const auto blue = NSColor::blueColor();
    text->setUnderline(true, {5, 4});
    text->setColor(blue, {5, 4});
    text->setLink("help", {5, 4});
    ASSERT_EQ(text->runs().size(), 3u);
    EXPECT_EQ(text->runs()[1].range, (NSRange{5, 4}));
    EXPECT_EQ(text->linkRuns().size(), 1u);
    EXPECT_EQ(text->attributesAtIndex(8).link, "help");
    EXPECT_TRUE(text->attributesAtIndex(9).link.isNil());
    text->setUnderline(false, {0, 100});
    text->setColor(nullptr, {5, 4});
    text->setLink({}, {5, 4});
    EXPECT_EQ(text->runs().size(), 1u);
    text->appendAttributedString(*text);
    EXPECT_EQ(text->length(), 26u);
    EXPECT_EQ(text->runs().size(), 1u);
}

TEST(Colour, isEqualByValueAndSpace) {
    const auto a = NSColor::colorWithCalibratedRed_green_blue_alpha(10 / 255.0, 179 / 255.0, 203 / 255.0, 1);
    EXPECT_TRUE(sameColor(a, NSColor::colorWithCalibratedRed_green_blue_alpha(10 / 255.0, 179 / 255.0, 203 / 255.0, 1)));
    EXPECT_FALSE(sameColor(a, NSColor::colorWithSRGBRed_green_blue_alpha(10 / 255.0, 179 / 255.0, 203 / 255.0, 1)));
    EXPECT_FALSE(sameColor(a, nullptr));
    EXPECT_EQ(a->description(), "#FF0AB3CB");
}

TEST(TextMeasurer, breaksLinesAsAnEditorDoes) {
    struct Row {
        const char *name, *text;
        double width;
        NSSize size;
    };
    // 10 points: 5 a character, 10 a wide one, 13 a line.
    const Row rows[] = {{"empty", "", 0, {0, 13}},
                        {"oneLine", "hello world", 0, {55, 13}},
                        {"atTheBlank", "hello world", 54, {25, 26}},
                        {"justFits", "hello world", 55, {55, 13}},
                        {"lineFeed", "a\nbcd\n", 0, {15, 39}},
                        {"longWord", "abcdefgh", 20, {20, 26}},
                        {"wide", "\u65e5\u672c", 0, {20, 13}},
                        {"narrowThanACharacter", "ab", 1, {5, 26}}};
    const auto font = NSFont::systemFontOfSize(10);
    for (const Row &row : rows) {
        const NSSize size = TextMeasurer::current()->boundingRect(row.text, font, row.width);
        EXPECT_EQ(size, row.size) << row.name << ": " << size.width << " by " << size.height;
    }
}

}  // namespace
