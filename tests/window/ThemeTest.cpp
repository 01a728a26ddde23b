#include <gtest/gtest.h>

#include <QApplication>
#include <QProxyStyle>
#include <QStyleFactory>

#include "host/window/DesktopTheme.h"

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

// ---------------------------------------------------------------- the desktop's

namespace {

// As a platform theme makes of the style what the desktop asks for.
class GivenStyle : public QProxyStyle {
public:
    explicit GivenStyle(ThemeKind kind) : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))), kind_(kind) {}
    QPalette standardPalette() const override { return Theme(kind_).palette(); }

private:
    ThemeKind kind_;
};

void changePlatform(ThemeKind kind, QObject &window) {
    QApplication::setStyle(new GivenStyle(kind));
    QEvent event(QEvent::ThemeChange);
    QCoreApplication::sendEvent(&window, &event);
}

class Desktop : public testing::Test {
protected:
    void SetUp() override {
        QApplication::setStyle(new GivenStyle(ThemeKind::light));
        Theme::use(ThemeKind::light);
    }
    void TearDown() override { QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion"))); }
    void portalSays(unsigned scheme, const char *key = "color-scheme") {
        desktop->settingChanged("org.freedesktop.appearance", key, QDBusVariant(scheme));
    }
    std::string take() { return std::exchange(log, {}); }

    std::string log;
    std::unique_ptr<host::DesktopTheme> desktop;
    void follow() {
        desktop = std::make_unique<host::DesktopTheme>([this](ThemeKind kind) {
            Theme::use(kind);
            log += kind == ThemeKind::dark ? "dark " : "light ";
        });
    }
};

}  // namespace

TEST_F(Desktop, aPlatformThatChangesIsFollowedOnce) {
    QObject window;
    follow();
    changePlatform(ThemeKind::dark, window);
    changePlatform(ThemeKind::dark, window);
    EXPECT_EQ(take(), "dark ");
    EXPECT_EQ(Theme::current().kind(), ThemeKind::dark);
    changePlatform(ThemeKind::light, window);
    EXPECT_EQ(take(), "light ");
}

TEST_F(Desktop, thePortalsSchemeGoesBeforeThePlatforms) {
    QObject window;
    follow();
    portalSays(1, "contrast");
    portalSays(2);
    EXPECT_EQ(take(), "");
    portalSays(1);
    changePlatform(ThemeKind::light, window);
    EXPECT_EQ(take(), "dark ");
    portalSays(0);   // the program's own choice: it stays
    EXPECT_EQ(take(), "");
    EXPECT_EQ(host::DesktopTheme::kindOfScheme(QVariant::fromValue(QDBusVariant(1u))), ThemeKind::dark);
}
