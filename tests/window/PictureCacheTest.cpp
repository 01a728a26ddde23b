// Pictures as the window decodes them.
#include "host/window/PictureCache.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QPainter>

#include "host/window/Theme.h"
#include "toolkit/views/NSApplication.h"

namespace {

QByteArray sample(const char *name) {
    QFile file(QStringLiteral(HN_SAMPLES_DIR "/photo/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

QImage heic(const QByteArray &bytes) { return host::heicImage({bytes.constData(), static_cast<std::size_t>(bytes.size())}); }

std::shared_ptr<NSImage> imageOf(const QImage &image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return NSImage::withData(NSData::of(bytes.toStdString()));
}

// A filled circle on nothing, as an icon is.
std::shared_ptr<NSImage> icon(QColor color) {
    QImage image(32, 32, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setBrush(color);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(6, 6, 20, 20);
    painter.end();
    return imageOf(image);
}

QColor middleOf(const std::shared_ptr<NSImage> &image) {
    return host::PictureCache::shared().pixmap(image, std::nullopt, {32, 32}, 1).toImage().pixelColor(16, 16);
}

}  // namespace

TEST(HeicPicture, givesTheMainPictureUpright) {
    const QImage grey = heic(sample("L_8__29x100.heif"));
    EXPECT_EQ(grey.size(), QSize(29, 100));
    EXPECT_EQ(grey.pixelColor(14, 50).hslSaturation(), 0);
    EXPECT_FALSE(heic(sample("zPug_3.heic")).isNull());
}

TEST(HeicPicture, refusesWhatIsCutShortOrSomethingElse) {
    EXPECT_TRUE(heic(sample("truncated.heic")).isNull());
    EXPECT_TRUE(heic("not a picture at all").isNull());
    EXPECT_TRUE(heic({}).isNull());
    const QByteArray whole = sample("L_8__29x100.heif");
    for (int size = 0; size < whole.size(); size += 37)
        EXPECT_TRUE(heic(whole.left(size)).isNull() || heic(whole.left(size)).size() == QSize(29, 100)) << size;
}

TEST(PictureCache, turnsDarkIconsLightInADarkThemeAndLeavesColouredOnes) {
    struct {
        const char *name;
        QColor color;
        bool turns;
    } rows[] = {{"slate", {86, 99, 115}, true}, {"white", {255, 255, 255}, false}, {"red", {220, 40, 40}, false}};
    for (const auto &[name, color, turns] : rows) {
        host::Theme::use(host::ThemeKind::light);
        EXPECT_EQ(middleOf(icon(color)), color) << name;
        host::Theme::use(host::ThemeKind::dark);
        const QColor shown = middleOf(icon(color));
        if (turns)
            EXPECT_GE(host::Theme::contrast(shown, host::Theme::current().window()), 4.5) << name;
        else
            EXPECT_EQ(shown, color) << name;
    }
    host::Theme::use(host::ThemeKind::light);
}

TEST(PictureCache, turnsAnArrowAlongTheLineFromRightToLeft) {
    QImage image(20, 20, QImage::Format_ARGB32);
    image.fill(Qt::white);
    image.setPixelColor(0, 10, Qt::black);
    const auto leftEdge = [&](const char *name) {
        const auto picture = imageOf(image);
        picture->setName(name);
        return host::PictureCache::shared().pixmap(picture, std::nullopt, {20, 20}, 1).toImage().pixelColor(0, 10);
    };
    EXPECT_EQ(leftEdge("icon_arrow1"), QColor(Qt::black));
    NSApp()->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirection::rightToLeft);
    EXPECT_EQ(leftEdge("icon_arrow1"), QColor(Qt::white));
    EXPECT_EQ(leftEdge("icon_Play"), QColor(Qt::black));
    NSApplication::resetShared();
}
