#include "host/window/PictureCache.h"

#include <QBuffer>
#include <QCache>
#include <QImageReader>

#include <cmath>

namespace host {

namespace {

struct Key {
    const NSImage *image;
    QRect crop;
    QSize wanted;
    bool operator==(const Key &) const = default;
};

std::size_t qHash(const Key &key, std::size_t seed) {
    return qHashMulti(seed, quintptr(key.image), key.crop.x(), key.crop.y(), key.crop.width(), key.crop.height(), key.wanted.width(),
                      key.wanted.height());
}

struct Entry {
    std::shared_ptr<NSImage> image;   // keeps the address from being used anew
    QPixmap pixmap;
};

QCache<Key, Entry> &entries() {
    static QCache<Key, Entry> cache(PictureCache::kMaxKilobytes);
    return cache;
}

QRect pixelsOf(const std::optional<NSRect> &crop) {
    return crop ? QRectF(crop->minX(), crop->minY(), crop->size.width, crop->size.height).toAlignedRect() : QRect();
}

}  // namespace

PictureCache &PictureCache::shared() {
    static PictureCache cache;
    return cache;
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
    const Key key{image.get(), pixelsOf(crop), wanted};
    if (const Entry *entry = entries().object(key))
        return entry->pixmap;
    QImage picture = decode(*image, wanted, crop);
    if (picture.width() > wanted.width() && picture.height() > wanted.height())
        picture = picture.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QPixmap pixmap = QPixmap::fromImage(picture);
    entries().insert(key, new Entry{image, pixmap}, static_cast<int>(1 + picture.sizeInBytes() / 1024));
    return pixmap;
}

}  // namespace host
