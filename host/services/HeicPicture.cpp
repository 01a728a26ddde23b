#include "host/services/HeicPicture.h"

#include <libheif/heif.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace host {

namespace {

template <class Type, void (*release)(Type *)> struct Releaser {
    void operator()(Type *object) const { release(object); }
};
void releaseImage(heif_image *image) { heif_image_release(image); }
void releaseHandle(heif_image_handle *handle) { heif_image_handle_release(handle); }
using Context = std::unique_ptr<heif_context, Releaser<heif_context, heif_context_free>>;
using Handle = std::unique_ptr<heif_image_handle, Releaser<heif_image_handle, releaseHandle>>;
using Image = std::unique_ptr<heif_image, Releaser<heif_image, releaseImage>>;

bool isGood(const heif_error &error) { return error.code == heif_error_Ok; }

Handle mainPicture(heif_context &context, std::string_view bytes) {
    heif_image_handle *handle = nullptr;
    if (!isGood(heif_context_read_from_memory_without_copy(&context, bytes.data(), bytes.size(), nullptr)) ||
        !isGood(heif_context_get_primary_image_handle(&context, &handle)))
        return nullptr;
    return Handle(handle);
}

}  // namespace

std::optional<HeicPicture> HeicPicture::decode(std::string_view bytes) {
    const Context context(heif_context_alloc());
    const Handle handle = mainPicture(*context, bytes);
    if (!handle)
        return std::nullopt;
    const std::int64_t told = std::int64_t{heif_image_handle_get_width(handle.get())} * heif_image_handle_get_height(handle.get());
    heif_image *decoded = nullptr;
    if (told <= 0 || told > kMaxPixels ||
        !isGood(heif_decode_image(handle.get(), &decoded, heif_colorspace_RGB, heif_chroma_interleaved_RGBA, nullptr)))
        return std::nullopt;
    const Image image(decoded);
    HeicPicture picture{heif_image_get_primary_width(decoded), heif_image_get_primary_height(decoded), {}};
    int stride = 0;
    const std::uint8_t *from = heif_image_get_plane_readonly(decoded, heif_channel_interleaved, &stride);
    const std::size_t line = static_cast<std::size_t>(std::max(0, picture.width)) * 4;
    if (!from || picture.height <= 0 || line == 0 || static_cast<std::size_t>(stride) < line)
        return std::nullopt;
    picture.rgba.resize(line * static_cast<std::size_t>(picture.height));
    for (int row = 0; row < picture.height; ++row)
        std::memcpy(picture.rgba.data() + line * static_cast<std::size_t>(row), from + static_cast<std::ptrdiff_t>(stride) * row, line);
    return picture;
}

}  // namespace host
