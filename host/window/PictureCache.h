// Decoded pictures for painting, the least used ones dropped first.
//
// Formats  what Qt reads (PNG, JPEG, GIF, SVG), upright; others through the decoder that the program installs.
// Dark     dark grey icons turn light in a dark theme; photos and coloured pictures stay as they are.
// Turned   arrows that point along the line, from right to left.
// Bad      bytes that cannot be decoded give a null pixmap, remembered like any other.
// Threads  main.
#pragma once

#include <QPixmap>

#include <functional>
#include <memory>
#include <optional>

#include "toolkit/NSImage.h"

namespace host {

class PictureCache {
public:
    static constexpr int kMaxKilobytes = 96 << 10;
    // Gives upright pixels of bytes that Qt cannot read; a null image where it cannot either.
    using Decoder = std::function<QImage(std::string_view bytes)>;

    [[nodiscard]] static PictureCache &shared();
    void setDecoder(Decoder decoder) { decoder_ = std::move(decoder); }

    // The picture, or its part `crop` (upright pixels), in as many pixels as painting it `size` large on a screen of this
    // ratio asks for, but not more than it has.
    [[nodiscard]] QPixmap pixmap(const std::shared_ptr<NSImage> &image, std::optional<NSRect> crop, NSSize size, double ratio);
    void clear();

private:
    [[nodiscard]] QImage decode(const NSImage &image, QSize wanted, std::optional<NSRect> crop) const;
    Decoder decoder_;
};

// A decoder of HEIC pictures.
[[nodiscard]] QImage heicImage(std::string_view bytes);

}  // namespace host
