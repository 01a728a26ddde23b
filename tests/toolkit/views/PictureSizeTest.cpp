#include <gtest/gtest.h>

#include "tests/support/TempFolder.h"
#include "toolkit/NSImage.h"

namespace {

std::string sample(const std::string &name) {
    std::string bytes = readFile(std::string(HN_SAMPLES_DIR) + "/photo/" + name);
    EXPECT_NE(bytes, "") << name;
    return bytes;
}

std::string sizeText(std::string_view bytes) {
    const auto size = pictureSizeFromHeader(bytes);
    return size ? std::to_string(int(size->width)) + "x" + std::to_string(int(size->height)) : "none";
}

template <std::size_t N> std::string raw(const char (&bytes)[N]) { return {bytes, N - 1}; }

// A frame of 640 by 480 behind an Exif block with this orientation.
std::string jpeg(char orientation, bool littleEndian) {
    const std::string tiff =
        littleEndian ? raw("II\x2A\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0") + orientation + raw("\0\0\0\0\0\0\0")
                     : raw("MM\0\x2A\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0") + orientation + raw("\0\0\0\0\0\0");
    const std::string exif = raw("Exif\0\0") + tiff;
    return raw("\xFF\xD8\xFF\xE1\0") + static_cast<char>(exif.size() + 2) + exif + raw("\xFF\xDB\0\x03\x01\xFF\xFF\xC0\0\x0B\x08\x01\xE0\x02\x80\x01");
}

// A HEIF header whose primary item is 640 by 480 with this rotation.
std::string heif(char quarterTurns) {
    const auto box = [](const char *type, const std::string &body) {
        return raw("\0\0\0") + static_cast<char>(body.size() + 8) + type + body;
    };
    const std::string ipco = box("ipco", box("ispe", raw("\0\0\0\0\0\0\x02\x80\0\0\x01\xE0")) + box("irot", std::string(1, quarterTurns)));
    const std::string ipma = box("ipma", raw("\0\0\0\0\0\0\0\x01\0\x07\x02\x01\x82"));
    return box("ftyp", raw("heic\0\0\0\0")) + box("meta", raw("\0\0\0\0") + box("pitm", raw("\0\0\0\0\0\x07")) + box("iprp", ipco + ipma));
}

TEST(PictureSize, isReadFromEachKindOfHeader) {
    struct Row {
        const char *name;
        std::string bytes, size;
    };
    const Row rows[] = {
        {"png", raw("\x89PNG\r\n\x1a\n\0\0\0\x0DIHDR\0\0\x01\x02\0\0\0\x05"), "258x5"},
        {"gif", raw("GIF89a\x0A\0\x2C\x01"), "10x300"},
        {"jpegUpright", jpeg(1, true), "640x480"},
        {"jpegUpsideDown", jpeg(3, false), "640x480"},
        {"jpegTurned", jpeg(6, true), "480x640"},
        {"jpegTurnedBigEndian", jpeg(8, false), "480x640"},
        {"jpegWrongOrientation", jpeg(9, true), "640x480"},
        {"heif", heif(0), "640x480"},
        {"heifTurned", heif(1), "480x640"},
        {"heifUpsideDown", heif(2), "640x480"},
        {"heifTurnedLeft", heif(3), "480x640"},
        {"phoneFile", sample("zPug_3.heic"), "64x64"},
        {"cutByItsAperture", sample("L_8__29x100.heif"), "29x100"},
        {"empty", "", "none"},
        {"text", "BEGIN:VCARD", "none"},
        {"pngOfNoWidth", raw("\x89PNG\r\n\x1a\n\0\0\0\x0DIHDR\0\0\0\0\0\0\0\x05"), "none"},
        {"movie", raw("\0\0\0\x14"
                      "ftypqt  \0\0\0\0qt  \0\0\0\x08mdat"), "none"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(sizeText(row.bytes), row.size) << row.name;
}

// Cut anywhere it gives the whole answer or none; with any one byte changed it does not fall over.
TEST(PictureSize, survivesDamage) {
    for (const std::string &whole : {jpeg(6, true), heif(1), raw("\x89PNG\r\n\x1a\n\0\0\0\x0DIHDR\0\0\x01\x02\0\0\0\x05")}) {
        const std::string size = sizeText(whole);
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const std::string cut = sizeText(std::string_view(whole).substr(0, length));
            EXPECT_TRUE(cut == "none" || cut == size) << length << ": " << cut;
        }
        EXPECT_EQ(sizeText(whole.substr(0, whole.size() / 2)), "none");
        for (std::size_t at = 0; at < whole.size(); ++at)
            for (const char change : {'\x01', '\x80', '\xFF'}) {
                std::string damaged = whole;
                damaged[at] = static_cast<char>(damaged[at] ^ change);
                (void)pictureSizeFromHeader(damaged);
            }
    }
    EXPECT_EQ(sizeText(sample("truncated.heic").substr(0, 60)), "none");
}

TEST(Picture, isFetchedOnceAndCutWithoutReading) {
    int fetches = 0;
    const auto image = NSImage::withFetch([&] {
        ++fetches;
        return NSData::of(jpeg(6, true));
    });
    EXPECT_EQ(fetches, 0);
    EXPECT_EQ(image->size(), (NSSize{480, 640}));
    const auto part = image->cropped({400, 0, 200, 100});
    EXPECT_EQ(part->size(), (NSSize{80, 100}));
    EXPECT_EQ(part->cropped({10, 10, 20, 20})->crop(), NSRect(410, 10, 20, 20));
    EXPECT_EQ(part->data(), image->data());
    EXPECT_EQ(fetches, 1);
    EXPECT_EQ(NSImage::withContentsOfFile("/nowhere/at/all.png"), nullptr);
    EXPECT_EQ(NSImage::withData(nullptr), nullptr);
    EXPECT_EQ(NSImage::withFetch([] { return NSDataRef(); })->size(), (NSSize{0, 0}));
}

TEST(Picture, aFileIsMeasuredByItsHeadAndItsBytesAreNotKept) {
    const TempFolder folder;
    const std::string path = folder.path() / "measured.jpg";
    writeFile(path, jpeg(6, true) + std::string(200'000, 'x'));
    const auto image = NSImage::withContentsOfFile(path);
    EXPECT_EQ(image->size(), (NSSize{480, 640}));
    const std::weak_ptr<const NSData> bytes = image->data();
    EXPECT_TRUE(bytes.expired());
    EXPECT_GT(image->data()->length(), 200'000U);
    const auto part = image->cropped({0, 0, 10, 20});
    std::filesystem::remove(path);
    EXPECT_EQ(part->size(), (NSSize{10, 20}));
    EXPECT_EQ(part->data(), nullptr);
}

}  // namespace
