#include "toolkit/NSImage.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "toolkit/services/NSBundle.h"

// ---------------------------------------------------------------- NSImage

std::shared_ptr<NSImage> NSImage::named(const NSString &name) {
    const bool hasType = !name.pathExtension().isEmpty();
    for (const auto &bundle : {NSBundle::bundleForClass(), NSBundle::mainBundle()})
        if (auto image = bundle ? bundle->imageForResource_ofType(name, hasType ? "" : "png") : nullptr)
            return image;
    if (!name.hasPrefix("NS"))
        return nullptr;
    auto image = make<NSImage>();   // one of the system's own: a name without bytes, the host draws it
    image->setName(name);
    return image;
}

namespace {

// Null where the file cannot be read.
NSDataRef readFile(const NSString &path, std::size_t atMost = std::string::npos) {
    std::ifstream file(path.str(), std::ios::binary | std::ios::ate);
    const auto end = file ? static_cast<std::streamoff>(file.tellg()) : -1;
    if (end < 0)
        return nullptr;
    std::string bytes(std::min(atMost, static_cast<std::size_t>(end)), '\0');
    file.seekg(0);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return file ? std::make_shared<const NSData>(std::move(bytes)) : nullptr;
}

// Most headers stand at the very beginning; some have long metadata before the size.
NSSize sizeOfFile(const NSString &path) {
    constexpr std::size_t kHeads[] = {64U << 10, 1U << 20, 16U << 20};
    for (const std::size_t head : kHeads) {
        const NSDataRef bytes = readFile(path, head);
        if (!bytes)
            return {};
        if (const auto size = pictureSizeFromHeader(bytes->bytes()))
            return *size;
        if (bytes->bytes().size() < head)
            return {};
    }
    return {};
}

}  // namespace

std::shared_ptr<NSImage> NSImage::withContentsOfFile(const NSString &path) {
    std::error_code error;
    if (path.isEmpty() || !std::filesystem::is_regular_file(path.str(), error))
        return nullptr;
    auto image = withFetch([path]() -> NSDataRef { return readFile(path); });
    image->path_ = path;
    return image;
}

std::shared_ptr<NSImage> NSImage::withData(NSDataRef data) {
    return data ? withFetch([data] { return data; }) : nullptr;
}

std::shared_ptr<NSImage> NSImage::withFetch(Fetch fetch) {
    auto image = make<NSImage>();
    image->fetch_ = std::move(fetch);
    return image;
}

// A file is read again when it is asked for again: thousands of pictures of a conversation shall not stay in memory.
NSDataRef NSImage::data() const {
    if (!path_.isEmpty())
        return fetch_ ? fetch_() : nullptr;
    std::call_once(fetched_, [this] { data_ = fetch_ ? fetch_() : nullptr; });
    return data_;
}

NSSize NSImage::size() const {
    std::call_once(sized_, [this] {
        if (crop_) {
            size_ = crop_->size;
            return;
        }
        if (!path_.isEmpty()) {
            size_ = sizeOfFile(path_);
            return;
        }
        const NSDataRef bytes = data();
        size_ = bytes ? pictureSizeFromHeader(bytes->bytes()).value_or(NSSize{}) : NSSize{};
    });
    return size_;
}

std::shared_ptr<NSImage> NSImage::cropped(const NSRect &rect) const {
    const auto source = std::static_pointer_cast<const NSImage>(shared_from_this());
    auto image = withFetch([source] { return source->data(); });
    const NSRect whole = crop_ ? *crop_ : NSRect({0, 0}, size());
    image->crop_ = rect.offsetBy(whole.origin.x, whole.origin.y).intersection(whole);
    image->name_ = name_;
    image->path_ = path_;
    return image;
}

NSString NSImage::description() const {
    if (!name_.isEmpty())
        return name_;
    return path_.isEmpty() ? NSString("picture") : path_.lastPathComponent();
}

// ---------------------------------------------------------------- headers

namespace {

// Reads big-endian or little-endian numbers; a step beyond the end makes it bad, and all reads then give 0.
class Reader {
public:
    explicit Reader(std::string_view bytes, bool littleEndian = false) : bytes_(bytes), littleEndian_(littleEndian) {}

    std::uint64_t number(std::size_t count) {
        if (!need(count))
            return 0;
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const auto byte = static_cast<unsigned char>(bytes_[at_ + (littleEndian_ ? count - 1 - i : i)]);
            value = value << 8 | byte;
        }
        at_ += count;
        return value;
    }
    std::string_view take(std::size_t count) {
        if (!need(count))
            return {};
        const std::string_view part = bytes_.substr(at_, count);
        at_ += count;
        return part;
    }
    void skip(std::size_t count) { (void)take(count); }
    void seek(std::size_t at) {
        isGood_ = isGood_ && at <= bytes_.size();
        at_ = isGood_ ? at : bytes_.size();
    }
    [[nodiscard]] bool isGood() const { return isGood_; }
    [[nodiscard]] std::size_t left() const { return isGood_ ? bytes_.size() - at_ : 0; }
    [[nodiscard]] std::size_t at() const { return at_; }

private:
    bool need(std::size_t count) {
        isGood_ = isGood_ && count <= bytes_.size() - at_;
        return isGood_;
    }
    std::string_view bytes_;
    std::size_t at_ = 0;
    bool littleEndian_, isGood_ = true;
};

std::optional<NSSize> sized(std::uint64_t width, std::uint64_t height, bool turned = false) {
    if (width == 0 || height == 0)
        return std::nullopt;
    const auto w = static_cast<double>(width), h = static_cast<double>(height);
    return turned ? NSSize{h, w} : NSSize{w, h};
}

// PNG (ISO/IEC 15948): the first chunk is IHDR.
std::optional<NSSize> pngSize(std::string_view bytes) {
    Reader reader(bytes);
    reader.skip(8 + 4);
    if (reader.take(4) != "IHDR")
        return std::nullopt;
    const auto width = reader.number(4), height = reader.number(4);
    return reader.isGood() ? sized(width, height) : std::nullopt;
}

// GIF 87a and 89a: the logical screen, little-endian.
std::optional<NSSize> gifSize(std::string_view bytes) {
    Reader reader(bytes, true);
    reader.skip(6);
    const auto width = reader.number(2), height = reader.number(2);
    return reader.isGood() ? sized(width, height) : std::nullopt;
}

// The orientation tag of an Exif block (TIFF inside); 1 where there is none.
unsigned exifOrientation(std::string_view tiff) {
    constexpr std::uint64_t kOrientationTag = 0x0112;
    if (tiff.size() < 8)
        return 1;
    Reader reader(tiff, tiff.starts_with("II"));
    reader.skip(4);
    reader.seek(reader.number(4));
    const std::uint64_t entries = reader.number(2);
    for (std::uint64_t i = 0; i < entries && reader.isGood(); ++i) {
        const auto tag = reader.number(2);
        reader.skip(6);   // type and count: one short
        const auto value = reader.number(2);
        reader.skip(2);
        if (tag == kOrientationTag && reader.isGood())
            return value >= 1 && value <= 8 ? static_cast<unsigned>(value) : 1;
    }
    return 1;
}

// JPEG (ITU-T T.81): segments up to the frame header. Orientations 5 to 8 lie on their side.
std::optional<NSSize> jpegSize(std::string_view bytes) {
    Reader reader(bytes);
    reader.skip(2);
    unsigned orientation = 1;
    while (reader.isGood()) {
        if (reader.number(1) != 0xFF)
            return std::nullopt;
        std::uint64_t marker = reader.number(1);
        while (marker == 0xFF && reader.isGood())   // fill bytes
            marker = reader.number(1);
        if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8))   // markers without a length
            continue;
        if (marker == 0xD9 || marker == 0xDA)
            return std::nullopt;
        const std::uint64_t length = reader.number(2);
        if (length < 2)
            return std::nullopt;
        const bool isFrame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (isFrame) {
            reader.skip(1);
            const auto height = reader.number(2), width = reader.number(2);
            return reader.isGood() ? sized(width, height, orientation >= 5) : std::nullopt;
        }
        const std::string_view body = reader.take(length - 2);
        constexpr std::string_view kExif("Exif\0\0", 6);
        if (marker == 0xE1 && body.starts_with(kExif))
            orientation = exifOrientation(body.substr(kExif.size()));
    }
    return std::nullopt;
}

// ---------------------------------------------------------------- HEIF (ISO/IEC 23008-12 in ISO/IEC 14496-12 boxes)

struct Box {
    std::string_view type, body;
};

std::optional<Box> nextBox(Reader &reader) {
    if (reader.left() < 8)
        return std::nullopt;
    std::uint64_t size = reader.number(4), header = 8;
    const std::string_view type = reader.take(4);
    if (size == 1) {
        size = reader.number(8);
        header = 16;
    }
    if (size == 0)
        size = reader.left() + header;   // to the end of the file
    if (!reader.isGood() || size < header)
        return std::nullopt;
    // A box that is cut short is no box: what it says cannot be trusted.
    const std::string_view body = reader.take(size - header);
    return reader.isGood() ? std::optional(Box{type, body}) : std::nullopt;
}

std::optional<std::string_view> findBox(std::string_view inside, std::string_view type) {
    Reader reader(inside);
    while (const auto box = nextBox(reader))
        if (box->type == type)
            return box->body;
    return std::nullopt;
}

std::vector<Box> boxesOf(std::string_view inside) {
    std::vector<Box> boxes;
    Reader reader(inside);
    while (const auto box = nextBox(reader))
        boxes.push_back(*box);
    return boxes;
}

// Numbers (from 1) of the properties that belong to the item.
std::vector<std::size_t> propertiesOf(std::string_view ipma, std::uint64_t item) {
    Reader reader(ipma);
    const std::uint64_t version = reader.number(1), flags = reader.number(3), entries = reader.number(4);
    for (std::uint64_t i = 0; i < entries && reader.isGood(); ++i) {
        const std::uint64_t id = reader.number(version < 1 ? 2 : 4), count = reader.number(1);
        std::vector<std::size_t> numbers;
        for (std::uint64_t n = 0; n < count && reader.isGood(); ++n)
            numbers.push_back((flags & 1) ? reader.number(2) & 0x7FFF : reader.number(1) & 0x7F);
        if (id == item && reader.isGood())
            return numbers;
    }
    return {};
}

std::optional<std::uint64_t> primaryItem(std::string_view meta) {
    const auto pitm = findBox(meta, "pitm");
    if (!pitm)
        return std::nullopt;
    Reader reader(*pitm);
    const std::uint64_t version = reader.number(1);
    reader.skip(3);
    const std::uint64_t item = reader.number(version == 0 ? 2 : 4);
    return reader.isGood() ? std::optional(item) : std::nullopt;
}

// One side of a clean aperture (clap): a fraction, at most the coded side; 0 where it is no sound number.
std::uint64_t apertureSide(Reader &reader, std::uint64_t coded) {
    const std::uint64_t numerator = reader.number(4), denominator = reader.number(4);
    const std::uint64_t side = denominator == 0 ? 0 : numerator / denominator;
    return side <= coded ? side : 0;
}

// The primary item's extent (ispe), cut by its clean aperture, turned by its rotation (irot counts quarter turns). They
// are listed in the order in which they apply.
std::optional<NSSize> heifSize(std::string_view bytes) {
    const auto metaBox = findBox(bytes, "meta");
    if (!metaBox || metaBox->size() < 4)
        return std::nullopt;
    const std::string_view meta = metaBox->substr(4);
    const auto item = primaryItem(meta);
    const auto iprp = findBox(meta, "iprp");
    const auto ipco = iprp ? findBox(*iprp, "ipco") : std::nullopt, ipma = iprp ? findBox(*iprp, "ipma") : std::nullopt;
    if (!item || !ipco || !ipma)
        return std::nullopt;
    const std::vector<Box> properties = boxesOf(*ipco);
    std::uint64_t width = 0, height = 0;
    bool turned = false;
    for (const std::size_t number : propertiesOf(*ipma, *item)) {
        if (number == 0 || number > properties.size())
            continue;
        const Box &property = properties[number - 1];
        Reader reader(property.body);
        if (property.type == "ispe") {
            reader.skip(4);
            width = reader.number(4);
            height = reader.number(4);
        } else if (property.type == "clap") {
            width = apertureSide(reader, width);
            height = apertureSide(reader, height);
        } else if (property.type == "irot" && (reader.number(1) & 1) != 0) {
            turned = !turned;
        }
        if (!reader.isGood())
            return std::nullopt;
    }
    return sized(width, height, turned);
}

}  // namespace

std::optional<NSSize> pictureSizeFromHeader(std::string_view bytes) {
    constexpr std::string_view kPng("\x89PNG\r\n\x1a\n", 8);
    if (bytes.starts_with(kPng))
        return pngSize(bytes);
    if (bytes.starts_with("\xFF\xD8"))
        return jpegSize(bytes);
    if (bytes.starts_with("GIF87a") || bytes.starts_with("GIF89a"))
        return gifSize(bytes);
    if (bytes.size() > 8 && bytes.substr(4, 4) == "ftyp")
        return heifSize(bytes);
    return std::nullopt;
}
