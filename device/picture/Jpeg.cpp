#include "device/picture/Jpeg.h"

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>

#include <jpeglib.h>
#include <libheif/heif.h>

#include <memory>

#include "device/picture/Png.h"

namespace device::picture {

namespace {

struct ErrorExit {
    jpeg_error_mgr manager;
    std::jmp_buf back;
};

template <class T, void (*release)(T *)> struct Releaser {
    void operator()(T *held) const { release(held); }
};
void releaseHandle(heif_image_handle *handle) { heif_image_handle_release(handle); }
void releaseImage(heif_image *image) { heif_image_release(image); }

}  // namespace

std::optional<std::string> encodedAsJpeg(const Pixels &pixels, int quality) {
    if (pixels.width <= 0 || pixels.height <= 0 || pixels.width > JPEG_MAX_DIMENSION || pixels.height > JPEG_MAX_DIMENSION)
        return std::nullopt;
    jpeg_compress_struct job;
    ErrorExit error;
    job.err = jpeg_std_error(&error.manager);
    error.manager.error_exit = [](j_common_ptr info) { std::longjmp(reinterpret_cast<ErrorExit *>(info->err)->back, 1); };
    error.manager.output_message = [](j_common_ptr) {};
    unsigned char *buffer = nullptr;
    unsigned long size = 0;
    // The library leaves by longjmp: nothing with a destructor may be made between here and the finish.
    if (setjmp(error.back)) {
        jpeg_destroy_compress(&job);
        std::free(buffer);
        return std::nullopt;
    }
    jpeg_create_compress(&job);
    jpeg_mem_dest(&job, &buffer, &size);
    job.image_width = static_cast<JDIMENSION>(pixels.width);
    job.image_height = static_cast<JDIMENSION>(pixels.height);
    job.input_components = 3;
    job.in_color_space = JCS_RGB;
    jpeg_set_defaults(&job);
    jpeg_set_quality(&job, quality, TRUE);
    jpeg_start_compress(&job, TRUE);
    while (job.next_scanline < job.image_height) {
        const std::size_t at = static_cast<std::size_t>(job.next_scanline) * job.image_width * 3;
        JSAMPROW row = const_cast<JSAMPROW>(pixels.rgb.data() + at);
        jpeg_write_scanlines(&job, &row, 1);
    }
    jpeg_finish_compress(&job);
    jpeg_destroy_compress(&job);
    std::string bytes(reinterpret_cast<const char *>(buffer), size);
    std::free(buffer);
    return bytes;
}

std::optional<Pixels> decodedHeif(std::string_view bytes) {
    const auto kind = heif_check_filetype(reinterpret_cast<const std::uint8_t *>(bytes.data()), static_cast<int>(std::min<std::size_t>(bytes.size(), 64)));
    if (bytes.size() < 12 || kind == heif_filetype_no)
        return std::nullopt;
    const std::unique_ptr<heif_context, void (*)(heif_context *)> context(heif_context_alloc(), heif_context_free);
    if (heif_context_read_from_memory_without_copy(context.get(), bytes.data(), bytes.size(), nullptr).code != heif_error_Ok)
        return std::nullopt;
    heif_image_handle *rawHandle = nullptr;
    if (heif_context_get_primary_image_handle(context.get(), &rawHandle).code != heif_error_Ok)
        return std::nullopt;
    const std::unique_ptr<heif_image_handle, Releaser<heif_image_handle, releaseHandle>> handle(rawHandle);
    if (static_cast<std::int64_t>(heif_image_handle_get_width(rawHandle)) * heif_image_handle_get_height(rawHandle) > kMaxPixels)
        return std::nullopt;
    heif_image *rawImage = nullptr;
    if (heif_decode_image(rawHandle, &rawImage, heif_colorspace_RGB, heif_chroma_interleaved_RGB, nullptr).code != heif_error_Ok)
        return std::nullopt;
    const std::unique_ptr<heif_image, Releaser<heif_image, releaseImage>> image(rawImage);
    int stride = 0;
    const std::uint8_t *plane = heif_image_get_plane_readonly(rawImage, heif_channel_interleaved, &stride);
    if (!plane)
        return std::nullopt;
    Pixels pixels{heif_image_get_width(rawImage, heif_channel_interleaved), heif_image_get_height(rawImage, heif_channel_interleaved), {}};
    const std::size_t rowBytes = static_cast<std::size_t>(pixels.width) * 3;
    for (int row = 0; row < pixels.height; ++row) {
        const std::uint8_t *begin = plane + static_cast<std::ptrdiff_t>(row) * stride;
        pixels.rgb.insert(pixels.rgb.end(), begin, begin + rowBytes);
    }
    return pixels;
}

std::optional<std::string> convertedToJpeg(std::string_view bytes) {
    for (const auto decode : {decodedPng, decodedHeif})
        if (const std::optional<Pixels> pixels = decode(bytes))
            return encodedAsJpeg(*pixels);
    return std::nullopt;
}

}  // namespace device::picture
