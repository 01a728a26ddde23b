#include "HNManagerPlugin/contracts/RVFoundation/NSDataBase64.h"

#include <array>
#include <cstdint>
#include <string>

namespace {

constexpr std::uint8_t kBad = 0x80, kSkip = 0x81, kPad = 0x82;

constexpr std::array<std::uint8_t, 256> kValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(kBad);
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        values[static_cast<unsigned char>(alphabet[i])] = static_cast<std::uint8_t>(i);
    for (const char c : {' ', '\t', '\r', '\n'})
        values[static_cast<unsigned char>(c)] = kSkip;
    values['='] = kPad;
    return values;
}();

std::uint8_t valueOf(char c) { return kValues[static_cast<unsigned char>(c)]; }

// Four characters of the alphabet at a time; stops at the first group that holds anything else.
std::size_t decodeWholeGroups(std::string_view text, char *&out) {
    std::size_t at = 0;
    for (; text.size() - at >= 4; at += 4) {
        const std::uint32_t a = valueOf(text[at]), b = valueOf(text[at + 1]), c = valueOf(text[at + 2]), d = valueOf(text[at + 3]);
        if ((a | b | c | d) & 0x80)
            break;
        const std::uint32_t bits = a << 18 | b << 12 | c << 6 | d;
        *out++ = static_cast<char>(bits >> 16);
        *out++ = static_cast<char>(bits >> 8 & 0xFF);
        *out++ = static_cast<char>(bits & 0xFF);
    }
    return at;
}

struct Group {
    std::uint32_t bits = 0;
    int characters = 0;
    int padding = 0;

    // False where the character may not stand here.
    bool take(std::uint8_t value, char *&out) {
        if (value == kPad)
            return ++padding <= 2 && characters >= 2 && characters + padding <= 4;
        if (value == kBad || padding > 0)
            return false;
        bits = bits << 6 | value;
        if (++characters == 4)
            flush(out);
        return true;
    }
    void flush(char *&out) {
        bits <<= 6 * (4 - characters);
        for (int byte = 0; byte + 1 < characters; ++byte)
            *out++ = static_cast<char>(bits >> (16 - 8 * byte) & 0xFF);
        bits = 0;
        characters = 0;
    }
};

}  // namespace

NSDataRef jk_dataWithBase64EncodedString(std::string_view text) {
    std::string bytes(text.size() / 4 * 3 + 3, '\0');
    char *out = bytes.data();
    Group group;
    for (std::size_t at = 0; at < text.size();) {
        if (group.characters == 0 && group.padding == 0)
            at += decodeWholeGroups(text.substr(at), out);
        if (at == text.size())
            break;
        const std::uint8_t value = valueOf(text[at++]);
        if (value != kSkip && !group.take(value, out))
            return nullptr;
    }
    if (group.padding > 0 && group.characters + group.padding != 4)
        return nullptr;
    group.flush(out);
    bytes.resize(static_cast<std::size_t>(out - bytes.data()));
    return std::make_shared<const NSData>(std::move(bytes));
}
