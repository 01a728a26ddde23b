#include <gtest/gtest.h>

#include "host/window/Theme.h"

using host::Theme;
using host::ThemeKind;

namespace {

std::shared_ptr<NSColor> rgb(int red, int green, int blue) { return NSColor::colorWithSRGBRed_green_blue_alpha(red / 255.0, green / 255.0, blue / 255.0, 1); }

}  // namespace

TEST(Contrast, isThatOfTheWebsRules) {
    EXPECT_NEAR(Theme::contrast(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(Theme::contrast(QColor(119, 119, 119), Qt::white), 4.48, 0.01);
    EXPECT_NEAR(Theme::contrast(Qt::white, QColor(10, 179, 203)), 2.53, 0.01);
}

TEST(Themes, textIsReadOnEveryPlainGround) {
    for (const ThemeKind kind : {ThemeKind::light, ThemeKind::dark})
        for (const auto &colour : {rgb(0, 0, 0), rgb(170, 170, 170), rgb(10, 179, 203), rgb(240, 200, 20), rgb(120, 0, 0)}) {
            const Theme theme(kind);
            const QColor text = theme.text(*colour);
            EXPECT_GE(Theme::contrast(text, theme.window()), 4.5) << colour->description().str() << " " << text.name().toStdString();
            EXPECT_GE(Theme::contrast(text, theme.ground()), 4.5) << colour->description().str() << " " << text.name().toStdString();
        }
}

TEST(Themes, whiteIsReadOnColouredAreasInBoth) {
    for (const ThemeKind kind : {ThemeKind::light, ThemeKind::dark}) {
        const Theme theme(kind);
        for (const auto &area : {rgb(10, 179, 203), rgb(250, 160, 30), rgb(80, 200, 90)})
            EXPECT_GE(Theme::contrast(theme.text(*NSColor::whiteColor()), theme.fill(*area)), 4.5);
    }
}

TEST(Themes, aWhiteAreaTurnsDarkAndABlackTextLight) {
    const Theme dark(ThemeKind::dark);
    EXPECT_LT(dark.fill(*NSColor::whiteColor()).lightness(), 40);
    EXPECT_GT(dark.text(*NSColor::blackColor()).lightness(), 220);
    const Theme light(ThemeKind::light);
    EXPECT_EQ(light.fill(*NSColor::whiteColor()), QColor(Qt::white));
    EXPECT_EQ(light.text(*NSColor::blackColor()), QColor(Qt::black));
}
