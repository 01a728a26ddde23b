#include "host/window/PictureCache.h"

#include <QBuffer>
#include <QCache>
#include <QImageReader>

#include <cmath>

#include "host/services/HeicPicture.h"
#include "host/window/Theme.h"
#include "toolkit/views/NSView.h"

namespace host {

namespace {

struct Key {
    const NSImage *image;
    QRect crop;
    QSize wanted;
    ThemeKind theme;
    bool isTurnedRound;
    bool operator==(const Key &) const = default;
};

std::size_t qHash(const Key &key, std::size_t seed) {
    return qHashMulti(seed, quintptr(key.image), key.crop.x(), key.crop.y(), key.crop.width(), key.crop.height(), key.wanted.width(),
                      key.wanted.height(), int(key.theme), key.isTurnedRound);
}

struct Entry {
    std::shared_ptr<NSImage> image;   // keeps the address from being used anew
    QPixmap pixmap;
};

QCache<Key, Entry> &entries() {
    static QCache<Key, Entry> cache(PictureCache::kMaxKilobytes);
    return cache;
}

// A small drawing in dark greys on nothing, as icons of light windows are: it would vanish on a dark ground.
bool isDarkMark(const QImage &picture) {
    constexpr int kLargest = 256, kMostlyThere = 128, kBright = 150, kColoured = 110;
    if (picture.isNull() || !picture.hasAlphaChannel() || picture.width() > kLargest || picture.height() > kLargest)
        return false;
    int nothing = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            if (qAlpha(pixel) < kMostlyThere)
                ++nothing;
            else if (qGray(pixel) > kBright || QColor(pixel).hslSaturation() > kColoured)
                return false;
        }
    return nothing * 5 > picture.width() * picture.height();
}

QImage lightened(const QImage &picture) {
    constexpr int kLightest = 237, kRange = 204;   // as a theme turns lightness round
    QImage turned = picture.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < turned.height(); ++y)
        for (int x = 0; x < turned.width(); ++x) {
            const QColor own = turned.pixelColor(x, y);
            turned.setPixelColor(x, y, QColor::fromHsl(std::max(0, own.hslHue()), own.hslSaturation(), kLightest - kRange * own.lightness() / 255, own.alpha()));
        }
    return turned;
}

// A picture that points along the line: from right to left it points the other way.
bool isTurnedRound(const NSImage &image) {
    return image.name() == "icon_arrow1" && NSView::userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::rightToLeft;
}

QRect pixelsOf(const std::optional<NSRect> &crop) {
    return crop ? QRectF(crop->minX(), crop->minY(), crop->size.width, crop->size.height).toAlignedRect() : QRect();
}

}  // namespace

PictureCache &PictureCache::shared() {
    static PictureCache cache;
    return cache;
}

QImage heicImage(std::string_view bytes) {
    const auto picture = HeicPicture::decode(bytes);
    if (!picture)
        return {};
    return QImage(picture->rgba.data(), picture->width, picture->height, 4 * picture->width, QImage::Format_RGBA8888).copy();
}

void PictureCache::clear() { entries().clear(); }

QImage PictureCache::decode(const NSImage &image, QSize wanted, std::optional<NSRect> crop) const {
    const NSDataRef data = image.data();
    if (!data)
        return {};
    const auto bytes = data->bytes();
    QByteArray raw = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&raw);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    const QSize own = reader.size();
    const bool isVector = reader.format().startsWith("svg");
    const bool isTurned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    if (!crop && own.isValid() && !isTurned && (isVector || wanted.width() < own.width()))
        reader.setScaledSize(own.scaled(wanted, Qt::KeepAspectRatioByExpanding));
    QImage picture = reader.read();
    if (picture.isNull() && decoder_)
        picture = decoder_(bytes);
    return crop ? picture.copy(pixelsOf(crop)) : picture;
}

QPixmap PictureCache::pixmap(const std::shared_ptr<NSImage> &image, std::optional<NSRect> crop, NSSize size, double ratio) {
    if (!image)
        return {};
    const QSize wanted(std::max(1, static_cast<int>(std::ceil(size.width * ratio))), std::max(1, static_cast<int>(std::ceil(size.height * ratio))));
    const Key key{image.get(), pixelsOf(crop), wanted, Theme::current().kind(), isTurnedRound(*image)};
    if (const Entry *entry = entries().object(key))
        return entry->pixmap;
    QImage picture = decode(*image, wanted, crop);
    if (picture.width() > wanted.width() && picture.height() > wanted.height())
        picture = picture.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (Theme::current().kind() == ThemeKind::dark && isDarkMark(picture))
        picture = lightened(picture);
    if (key.isTurnedRound)
        picture = picture.mirrored(true, false);
    const QPixmap pixmap = QPixmap::fromImage(picture);
    entries().insert(key, new Entry{image, pixmap}, static_cast<int>(1 + picture.sizeInBytes() / 1024));
    return pixmap;
}

}  // namespace host
