#include "device/picture/Png.h"

#include <gtest/gtest.h>

#include "tests/support/TempFolder.h"

using namespace device::picture;

namespace {

// By the names of their files.
const std::pair<const char *, std::vector<std::uint8_t>> kPictures[] = {
    {"subAndPaeth", {255, 0, 0, 0, 255, 0, 0, 0, 255, 10, 20, 30}},
    {"upAndAverageStored", {255, 0, 0, 0, 255, 0, 0, 0, 255, 10, 20, 30, 0, 0, 255, 10, 20, 30}},
    {"oneBitGreyFixedCodes", {255, 255, 255, 0, 0, 0, 255, 255, 255}},
    {"paletteWithTransparency", {1, 2, 3, 255, 255, 255}},
    {"sixteenBitsHalfTransparent", {177, 152, 127}},
    {"greyAlpha", {40, 40, 40}},
    {"namedTransparentGrey", {255, 255, 255}},
    {"interlaced", {1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 5, 6, 6, 6, 7, 7, 7, 8, 8, 8, 9, 9, 9}}};

std::string sample(const char *name) { return readFile(HN_SAMPLES_DIR "/png/" + std::string(name) + ".png"); }

template <std::size_t N> std::string bytes(const char (&text)[N]) { return std::string(text, N - 1); }

TEST(PngPicture, givesItsPixels) {
    for (const auto &[name, rgb] : kPictures) {
        const std::string png = sample(name);
        const auto pixels = decodedPng(png);
        ASSERT_TRUE(pixels) << name;
        EXPECT_EQ(pixels->rgb, rgb) << name;
        const auto jpeg = convertedToJpeg(png);
        EXPECT_TRUE(jpeg && isJpeg(*jpeg)) << name;
    }
}

TEST(PngPicture, cutOrSpoiltNeverCrashes) {
    for (const auto &[name, rgb] : kPictures) {
        const std::string png = sample(name);
        for (std::size_t at = 0; at < png.size(); ++at) {
            EXPECT_FALSE(decodedPng(png.substr(0, at)) && at + 12 + 4 < png.size()) << name << at;
            for (const int bits : {0xFF, 0x01, 0x80}) {
                std::string spoilt = png;
                spoilt[at] = static_cast<char>(spoilt[at] ^ bits);
                (void)decodedPng(spoilt);
            }
        }
    }
}

TEST(PngPicture, aSizeThatNobodyHasRoomForIsRefused) {
    std::string huge = bytes("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\x7F\xFF\xFF\xFF\x7F\xFF\xFF\xFF\x08\x02\0\0\0----\0\0\0\0IEND----");
    EXPECT_FALSE(decodedPng(huge));
}

TEST(Jpeg, takesOnlyWhatItCanDecode) {
    EXPECT_FALSE(convertedToJpeg(""));
    EXPECT_FALSE(convertedToJpeg("GIF89a"));
    EXPECT_FALSE(convertedToJpeg(bytes("\0\0\0\x18""ftypheic\0\0\0\0mif1heic")));
}

}  // namespace
