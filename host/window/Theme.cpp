#include "host/window/Theme.h"

#include <QApplication>

#include <algorithm>
#include <cmath>

namespace host {

namespace {

Theme currentTheme(ThemeKind::light);

QColor qtColor(const NSColor &color) {
    const auto part = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
    return QColor::fromRgbF(part(color.redComponent()), part(color.greenComponent()), part(color.blueComponent()),
                            part(color.alphaComponent()));
}

double luminance(const QColor &color) {
    const auto linear = [](double part) { return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor withLightness(const QColor &color, double lightness) {
    return QColor::fromHslF(std::max(0.0f, color.hslHueF()), color.hslSaturationF(), static_cast<float>(std::clamp(lightness, 0.0, 1.0)),
                            color.alphaF());
}

// Steps away from the ground until the two are told apart well enough.
QColor readableOn(QColor color, const QColor &ground, double step) {
    double lightness = color.lightnessF();
    while (Theme::contrast(color, ground) < Theme::kTextContrast && lightness > 0 && lightness < 1) {
        lightness = std::clamp(lightness + step, 0.0, 1.0);
        color = withLightness(color, lightness);
    }
    return color;
}

constexpr double kColoured = 0.3;    // saturation from which a colour is more than a shade of grey
constexpr double kAlmostWhite = 0.8; // luminance
constexpr double kFaint = 0.6;       // alpha below which an area is a mere tint

}  // namespace

const Theme &Theme::current() { return currentTheme; }

void Theme::use(ThemeKind kind) {
    currentTheme = Theme(kind);
    QApplication::setPalette(currentTheme.palette());
}

ThemeKind Theme::ofSystem() {
    const bool isOwn = QCoreApplication::testAttribute(Qt::AA_SetPalette);
    if (isOwn)
        QApplication::setPalette(QPalette());
    const ThemeKind kind = kindOf(QApplication::palette());
    if (isOwn)
        QApplication::setPalette(currentTheme.palette());
    return kind;
}

ThemeKind Theme::kindOf(const QPalette &palette) {
    return palette.color(QPalette::Window).lightnessF() < 0.5f ? ThemeKind::dark : ThemeKind::light;
}

double Theme::contrast(const QColor &a, const QColor &b) {
    const double one = luminance(a), two = luminance(b);
    return (std::max(one, two) + 0.05) / (std::min(one, two) + 0.05);
}

// Black becomes a soft white and white the dark ground.
QColor Theme::turned(const NSColor &color) const {
    const QColor plain = qtColor(color);
    if (kind_ == ThemeKind::light)
        return plain;
    constexpr double kLightest = 0.93, kRange = 0.80;
    return withLightness(plain, kLightest - kRange * plain.lightnessF());
}

QColor Theme::fill(const NSColor &color) const {
    const QColor own = qtColor(color);
    const bool carriesText = own.hslSaturationF() > kColoured && own.alphaF() >= kFaint && luminance(own) <= kAlmostWhite;
    return carriesText ? readableOn(own, Qt::white, -0.01) : turned(color);   // white text stands on such areas
}

QColor Theme::text(const NSColor &color) const {
    if (luminance(qtColor(color)) > kAlmostWhite)
        return qtColor(color);
    return readableOn(turned(color), window(), kind_ == ThemeKind::light ? -0.01 : 0.01);
}

QColor Theme::stroke(const NSColor &color) const { return luminance(qtColor(color)) > kAlmostWhite ? qtColor(color) : fill(color); }

QColor Theme::window() const { return kind_ == ThemeKind::light ? QColor(244, 245, 246) : QColor(40, 41, 43); }
QColor Theme::ground() const { return kind_ == ThemeKind::light ? QColor(255, 255, 255) : QColor(33, 33, 33); }
QColor Theme::control() const { return kind_ == ThemeKind::light ? QColor(250, 250, 251) : QColor(54, 55, 58); }
QColor Theme::line() const { return kind_ == ThemeKind::light ? QColor(196, 199, 204) : QColor(88, 90, 95); }
QColor Theme::plainText() const { return kind_ == ThemeKind::light ? QColor(28, 30, 33) : QColor(236, 237, 238); }
QColor Theme::accent() const { return kind_ == ThemeKind::light ? QColor(7, 121, 138) : QColor(78, 203, 224); }

QPalette Theme::palette() const {
    const bool isDark = kind_ == ThemeKind::dark;
    QPalette palette(control(), window());
    palette.setColor(QPalette::Window, window());
    palette.setColor(QPalette::Base, ground());
    palette.setColor(QPalette::AlternateBase, window());
    palette.setColor(QPalette::ToolTipBase, window());
    palette.setColor(QPalette::Button, control());
    palette.setColor(QPalette::Link, accent());
    palette.setColor(QPalette::Highlight, accent());
    palette.setColor(QPalette::HighlightedText, isDark ? QColor(20, 22, 24) : QColor(255, 255, 255));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, plainText());
    palette.setColor(QPalette::PlaceholderText, isDark ? QColor(160, 162, 166) : QColor(110, 113, 118));
    const QColor faded = isDark ? QColor(132, 134, 138) : QColor(140, 143, 148);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faded);
    return palette;
}

}  // namespace host
