#include "device/picture/Png.h"

#include <array>
#include <cstdlib>
#include <span>

#include "device/picture/Inflate.h"

namespace device::picture {

namespace {

constexpr std::string_view kSignature("\x89PNG\r\n\x1A\n", 8);
constexpr std::size_t kChunkFrameBytes = 12;   // length, type, check sum

std::uint32_t number(std::string_view bytes) {
    std::uint32_t value = 0;
    for (const char byte : bytes.substr(0, 4))
        value = value << 8 | static_cast<unsigned char>(byte);
    return value;
}

struct Header {
    std::uint32_t width = 0, height = 0;
    int depth = 0, colour = 0;
    bool isInterlaced = false;

    [[nodiscard]] int samples() const {
        static constexpr std::array<int, 7> kSamples{1, 0, 3, 1, 2, 0, 4};
        return colour >= 0 && colour < 7 ? kSamples[static_cast<std::size_t>(colour)] : 0;
    }
    [[nodiscard]] bool isValid() const {
        const bool hasDepth = depth == 8 || (depth == 16 && colour != 3) ||
                              ((depth == 1 || depth == 2 || depth == 4) && (colour == 0 || colour == 3));
        return samples() && hasDepth && width && height && static_cast<std::int64_t>(width) * height <= kMaxPixels;
    }
    [[nodiscard]] std::size_t rowBytes(std::uint32_t pixels) const {
        return (static_cast<std::size_t>(pixels) * static_cast<std::size_t>(samples() * depth) + 7) / 8;
    }
};

struct Contents {
    Header header;
    std::string_view palette, transparency;
    std::string compressed;
};

std::optional<Contents> split(std::string_view bytes) {
    if (!bytes.starts_with(kSignature))
        return std::nullopt;
    Contents contents;
    for (std::size_t at = kSignature.size(); bytes.size() - at >= kChunkFrameBytes;) {
        const std::size_t size = number(bytes.substr(at));
        const std::string_view type = bytes.substr(at + 4, 4);
        if (size > bytes.size() - at - kChunkFrameBytes)
            return std::nullopt;
        const std::string_view data = bytes.substr(at + 8, size);
        if (type == "IHDR" && size == 13)
            contents.header = {number(data), number(data.substr(4)), data[8], data[9], data[12] == 1};
        else if (type == "PLTE")
            contents.palette = data;
        else if (type == "tRNS")
            contents.transparency = data;
        else if (type == "IDAT")
            contents.compressed += data;
        else if (type == "IEND")
            break;
        at += size + kChunkFrameBytes;
    }
    return contents.header.isValid() ? std::optional(std::move(contents)) : std::nullopt;
}

int paeth(int left, int up, int corner) {
    const int estimate = left + up - corner;
    const int toLeft = std::abs(estimate - left), toUp = std::abs(estimate - up), toCorner = std::abs(estimate - corner);
    return toLeft <= toUp && toLeft <= toCorner ? left : toUp <= toCorner ? up : corner;
}

bool unfilter(int filter, std::span<std::uint8_t> row, std::span<const std::uint8_t> above, std::size_t pixelBytes) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        const int left = i < pixelBytes ? 0 : row[i - pixelBytes];
        const int up = above.empty() ? 0 : above[i];
        const int corner = i < pixelBytes || above.empty() ? 0 : above[i - pixelBytes];
        int guess = 0;
        switch (filter) {
        case 0: break;
        case 1: guess = left; break;
        case 2: guess = up; break;
        case 3: guess = (left + up) / 2; break;
        case 4: guess = paeth(left, up, corner); break;
        default: return false;
        }
        row[i] = static_cast<std::uint8_t>(row[i] + guess);
    }
    return true;
}

class Painter {
public:
    Painter(const Contents &contents, Pixels &pixels) : contents_(contents), header_(contents.header), pixels_(pixels) {}

    void paint(std::span<const std::uint8_t> row, std::uint32_t column, std::uint32_t x, std::uint32_t y) {
        std::array<int, 4> sample{};
        for (int i = 0; i < header_.samples(); ++i)
            sample[static_cast<std::size_t>(i)] = sampleAt(row, static_cast<std::size_t>(column) * static_cast<std::size_t>(header_.samples()) + static_cast<std::size_t>(i));
        std::array<int, 3> colour{};
        int alpha = 255;
        switch (header_.colour) {
        case 0: colour = {scaled(sample[0]), scaled(sample[0]), scaled(sample[0])}; alpha = keyed(sample, 1); break;
        case 2: colour = {scaled(sample[0]), scaled(sample[1]), scaled(sample[2])}; alpha = keyed(sample, 3); break;
        case 3: fromPalette(static_cast<std::size_t>(sample[0]), colour, alpha); break;
        case 4: colour = {scaled(sample[0]), scaled(sample[0]), scaled(sample[0])}; alpha = scaled(sample[1]); break;
        default: colour = {scaled(sample[0]), scaled(sample[1]), scaled(sample[2])}; alpha = scaled(sample[3]); break;
        }
        const std::size_t at = (static_cast<std::size_t>(y) * header_.width + x) * 3;
        for (std::size_t i = 0; i < 3; ++i)
            pixels_.rgb[at + i] = static_cast<std::uint8_t>((colour[i] * alpha + 255 * (255 - alpha) + 127) / 255);
    }

private:
    int sampleAt(std::span<const std::uint8_t> row, std::size_t index) const {
        if (header_.depth == 16)
            return row[index * 2] << 8 | row[index * 2 + 1];
        const std::size_t bit = index * static_cast<std::size_t>(header_.depth);
        return row[bit / 8] >> (8 - header_.depth - static_cast<int>(bit % 8)) & ((1 << header_.depth) - 1);
    }
    int scaled(int sample) const { return header_.depth == 16 ? sample >> 8 : sample * 255 / ((1 << header_.depth) - 1); }
    // One colour may be named as transparent.
    int keyed(const std::array<int, 4> &sample, std::size_t count) const {
        if (contents_.transparency.size() < count * 2)
            return 255;
        for (std::size_t i = 0; i < count; ++i)
            if (sample[i] != static_cast<int>(number(contents_.transparency.substr(i * 2, 2))))
                return 255;
        return 0;
    }
    void fromPalette(std::size_t index, std::array<int, 3> &colour, int &alpha) const {
        for (std::size_t i = 0; i < 3; ++i)
            colour[i] = index * 3 + i < contents_.palette.size() ? static_cast<unsigned char>(contents_.palette[index * 3 + i]) : 0;
        alpha = index < contents_.transparency.size() ? static_cast<unsigned char>(contents_.transparency[index]) : 255;
    }

    const Contents &contents_;
    const Header &header_;
    Pixels &pixels_;
};

struct Pass {
    std::uint32_t x, y, stepX, stepY;
};
constexpr std::array<Pass, 1> kWhole{{{0, 0, 1, 1}}};
constexpr std::array<Pass, 7> kInterlaced{{{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4}, {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}}};

std::uint32_t steps(std::uint32_t size, std::uint32_t from, std::uint32_t step) { return size > from ? (size - from + step - 1) / step : 0; }

}  // namespace

std::optional<Pixels> decodedPng(std::string_view bytes) {
    const std::optional<Contents> contents = split(bytes);
    if (!contents)
        return std::nullopt;
    const Header &header = contents->header;
    // Seven passes add a filter byte for each of at most twice as many rows, and up to a byte of padding.
    const std::size_t maxBytes = (header.rowBytes(header.width) + 16) * (static_cast<std::size_t>(header.height) + 8) * 2;
    std::optional<std::vector<std::uint8_t>> raw = inflated(contents->compressed, maxBytes);
    if (!raw)
        return std::nullopt;
    Pixels pixels{static_cast<int>(header.width), static_cast<int>(header.height), {}};
    pixels.rgb.assign(static_cast<std::size_t>(header.width) * header.height * 3, 255);
    Painter painter(*contents, pixels);
    const std::size_t pixelBytes = std::max<std::size_t>(1, static_cast<std::size_t>(header.samples() * header.depth) / 8);
    std::size_t at = 0;
    for (const Pass &pass : header.isInterlaced ? std::span<const Pass>(kInterlaced) : std::span<const Pass>(kWhole)) {
        const std::uint32_t columns = steps(header.width, pass.x, pass.stepX), rows = steps(header.height, pass.y, pass.stepY);
        const std::size_t rowBytes = header.rowBytes(columns);
        std::span<const std::uint8_t> above;
        for (std::uint32_t row = 0; columns && row < rows; ++row) {
            if (raw->size() - at < rowBytes + 1)
                return std::nullopt;
            const std::span<std::uint8_t> line(raw->data() + at + 1, rowBytes);
            if (!unfilter((*raw)[at], line, above, pixelBytes))
                return std::nullopt;
            for (std::uint32_t column = 0; column < columns; ++column)
                painter.paint(line, column, pass.x + column * pass.stepX, pass.y + row * pass.stepY);
            above = line;
            at += rowBytes + 1;
        }
    }
    return pixels;
}

}  // namespace device::picture
