#include "HNManagerPlugin/contracts/RVMessageWriter/Sha256.h"

#include <array>
#include <bit>
#include <cstdint>

namespace {

constexpr std::array<std::uint32_t, 64> kRounds = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5, 0xd807aa98, 0x12835b01, 0x243185be,
    0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174, 0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa,
    0x5cb0a9dc, 0x76f988da, 0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967, 0x27b70a85,
    0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85, 0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3,
    0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070, 0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f,
    0x682e6ff3, 0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

using State = std::array<std::uint32_t, 8>;

void takeBlock(State &state, const unsigned char *block) {
    std::array<std::uint32_t, 64> words{};
    for (std::size_t at = 0; at < 16; ++at)
        words[at] = std::uint32_t{block[4 * at]} << 24 | std::uint32_t{block[4 * at + 1]} << 16 | std::uint32_t{block[4 * at + 2]} << 8 |
                    block[4 * at + 3];
    for (std::size_t at = 16; at < 64; ++at) {
        const std::uint32_t a = words[at - 15], b = words[at - 2];
        words[at] = words[at - 16] + (std::rotr(a, 7) ^ std::rotr(a, 18) ^ a >> 3) + words[at - 7] +
                    (std::rotr(b, 17) ^ std::rotr(b, 19) ^ b >> 10);
    }
    auto [a, b, c, d, e, f, g, h] = state;
    for (std::size_t at = 0; at < 64; ++at) {
        const std::uint32_t first =
            h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) + ((e & f) ^ (~e & g)) + kRounds[at] + words[at];
        const std::uint32_t second = (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g, g = f, f = e, e = d + first, d = c, c = b, b = a, a = first + second;
    }
    const State added{a, b, c, d, e, f, g, h};
    for (std::size_t at = 0; at < state.size(); ++at)
        state[at] += added[at];
}

std::string base64(std::string_view bytes) {
    constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k)
            group = group << 8 | (at + k < bytes.size() ? static_cast<unsigned char>(bytes[at + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            text += at + k > bytes.size() ? '=' : kAlphabet[group >> (18 - 6 * k) & 63];
    }
    return text;
}

}  // namespace

std::string sha256Base64(std::string_view text) {
    std::string padded(text);
    padded += '\x80';
    padded.append((120 - padded.size() % 64) % 64, '\0');
    for (int shift = 56; shift >= 0; shift -= 8)
        padded += static_cast<char>(std::uint64_t{text.size()} * 8 >> shift & 0xFF);
    State state{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a, 0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    for (std::size_t at = 0; at < padded.size(); at += 64)
        takeBlock(state, reinterpret_cast<const unsigned char *>(padded.data()) + at);
    std::string digest;
    for (const std::uint32_t word : state)
        for (int shift = 24; shift >= 0; shift -= 8)
            digest += static_cast<char>(word >> shift & 0xFF);
    return base64(digest);
}
