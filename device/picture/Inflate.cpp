#include "device/picture/Inflate.h"

#include <array>
#include <span>
#include <stdexcept>

namespace device::picture {

namespace {

constexpr int kMaxCodeBits = 15;

struct Damage : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Bits {
public:
    explicit Bits(std::string_view bytes) : bytes_(bytes) {}

    int take(int count) {
        while (held_ < count) {
            if (at_ >= bytes_.size())
                throw Damage("cut short");
            buffer_ |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes_[at_++])) << held_;
            held_ += 8;
        }
        const int value = static_cast<int>(buffer_ & ((1u << count) - 1));
        buffer_ >>= count;
        held_ -= count;
        return value;
    }
    void toByte() {
        buffer_ = 0;
        held_ = 0;
    }

private:
    std::string_view bytes_;
    std::size_t at_ = 0;
    std::uint32_t buffer_ = 0;
    int held_ = 0;
};

// Canonical codes: for each length how many there are, and the symbols in the order of their codes.
class Codes {
public:
    explicit Codes(std::span<const std::uint8_t> lengths) : symbols_(lengths.size()) {
        for (const std::uint8_t length : lengths)
            ++counts_[length];
        int left = 1;
        for (int bits = 1; bits <= kMaxCodeBits; ++bits)
            if ((left = left * 2 - counts_[bits]) < 0)
                throw Damage("more codes than fit");
        std::array<int, kMaxCodeBits + 1> next{};
        for (int bits = 1; bits < kMaxCodeBits; ++bits)
            next[bits + 1] = next[bits] + counts_[bits];
        for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol)
            if (lengths[symbol])
                symbols_[static_cast<std::size_t>(next[lengths[symbol]]++)] = static_cast<int>(symbol);
    }

    int read(Bits &bits) const {
        int code = 0, first = 0, index = 0;
        for (int length = 1; length <= kMaxCodeBits; ++length) {
            code |= bits.take(1);
            if (code - counts_[length] < first)
                return symbols_[static_cast<std::size_t>(index + code - first)];
            index += counts_[length];
            first = (first + counts_[length]) * 2;
            code *= 2;
        }
        throw Damage("no such code");
    }

private:
    std::array<int, kMaxCodeBits + 1> counts_{};
    std::vector<int> symbols_;
};

constexpr std::array<int, 29> kLengthBase{3,  4,  5,  6,  7,  8,  9,  10, 11,  13,  15,  17,  19,  23, 27,
                                          31, 35, 43, 51, 59, 67, 83, 99, 115, 131, 163, 195, 227, 258};
constexpr std::array<int, 29> kLengthBits{0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0};
constexpr std::array<int, 30> kDistanceBase{1,   2,   3,   4,   5,   7,    9,    13,   17,   25,   33,   49,   65,    97,    129,
                                            193, 257, 385, 513, 769, 1025, 1537, 2049, 3073, 4097, 6145, 8193, 12289, 16385, 24577};
constexpr std::array<int, 30> kDistanceBits{0, 0, 0, 0, 1, 1, 2, 2,  3,  3,  4,  4,  5,  5,  6,
                                            6, 7, 7, 8, 8, 9, 9, 10, 10, 11, 11, 12, 12, 13, 13};

class Inflater {
public:
    Inflater(std::string_view bytes, std::size_t maxBytes) : bits_(bytes), maxBytes_(maxBytes) {}

    std::vector<std::uint8_t> run() {
        for (bool isLast = false; !isLast;) {
            isLast = bits_.take(1) == 1;
            switch (bits_.take(2)) {
            case 0: stored(); break;
            case 1: fixedCodes(); break;
            case 2: ownCodes(); break;
            default: throw Damage("unknown block");
            }
        }
        return std::move(out_);
    }

private:
    void put(std::uint8_t byte) {
        if (out_.size() >= maxBytes_)
            throw Damage("too large");
        out_.push_back(byte);
    }

    void stored() {
        bits_.toByte();
        const int size = bits_.take(16);
        if ((size ^ 0xFFFF) != bits_.take(16))
            throw Damage("wrong length");
        for (int i = 0; i < size; ++i)
            put(static_cast<std::uint8_t>(bits_.take(8)));
    }

    void fixedCodes() {
        std::array<std::uint8_t, 288> lengths;
        for (std::size_t i = 0; i < lengths.size(); ++i)
            lengths[i] = i < 144 ? 8 : i < 256 ? 9 : i < 280 ? 7 : 8;
        std::array<std::uint8_t, 30> distances;
        distances.fill(5);
        codes(Codes(lengths), Codes(distances));
    }

    void ownCodes() {
        static constexpr std::array<int, 19> kOrder{16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
        const auto literals = static_cast<std::size_t>(bits_.take(5) + 257), distances = static_cast<std::size_t>(bits_.take(5) + 1);
        const int orders = bits_.take(4) + 4;
        std::array<std::uint8_t, 19> orderLengths{};
        for (int i = 0; i < orders; ++i)
            orderLengths[static_cast<std::size_t>(kOrder[static_cast<std::size_t>(i)])] = static_cast<std::uint8_t>(bits_.take(3));
        const Codes order(orderLengths);
        std::vector<std::uint8_t> lengths;
        while (lengths.size() < literals + distances) {
            const int symbol = order.read(bits_);
            if (symbol < 16) {
                lengths.push_back(static_cast<std::uint8_t>(symbol));
                continue;
            }
            if (symbol == 16 && lengths.empty())
                throw Damage("nothing to repeat");
            const std::uint8_t value = symbol == 16 ? lengths.back() : 0;
            const int times = symbol == 16 ? bits_.take(2) + 3 : symbol == 17 ? bits_.take(3) + 3 : bits_.take(7) + 11;
            lengths.insert(lengths.end(), static_cast<std::size_t>(times), value);
        }
        if (lengths.size() != literals + distances)
            throw Damage("too many lengths");
        const std::span all(lengths);
        codes(Codes(all.first(literals)), Codes(all.subspan(literals)));
    }

    void codes(const Codes &literals, const Codes &distances) {
        for (;;) {
            const int symbol = literals.read(bits_);
            if (symbol < 256) {
                put(static_cast<std::uint8_t>(symbol));
                continue;
            }
            if (symbol == 256)
                return;
            repeat(static_cast<std::size_t>(symbol - 257), distances);
        }
    }

    void repeat(std::size_t lengthCode, const Codes &distances) {
        if (lengthCode >= kLengthBase.size())
            throw Damage("no such length");
        const int length = kLengthBase[lengthCode] + bits_.take(kLengthBits[lengthCode]);
        const auto distanceCode = static_cast<std::size_t>(distances.read(bits_));
        if (distanceCode >= kDistanceBase.size())
            throw Damage("no such distance");
        const auto distance = static_cast<std::size_t>(kDistanceBase[distanceCode] + bits_.take(kDistanceBits[distanceCode]));
        if (distance > out_.size())
            throw Damage("points before the start");
        for (int i = 0; i < length; ++i)
            put(out_[out_.size() - distance]);
    }

    Bits bits_;
    std::size_t maxBytes_;
    std::vector<std::uint8_t> out_;
};

}  // namespace

std::optional<std::vector<std::uint8_t>> inflated(std::string_view zlib, std::size_t maxBytes) {
    constexpr std::size_t kHeaderBytes = 2;
    if (zlib.size() < kHeaderBytes || (zlib[0] & 0x0F) != 8 || (zlib[1] & 0x20))
        return std::nullopt;
    try {
        return Inflater(zlib.substr(kHeaderBytes), maxBytes).run();
    } catch (const Damage &) {
        return std::nullopt;
    }
}

}  // namespace device::picture
