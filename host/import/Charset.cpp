#include "host/import/Charset.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>

#include <iconv.h>

namespace host::foreign {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

struct Alias {
    std::string_view name, charset;
};
constexpr Alias kAliases[] = {
    {"UTF8", "UTF-8"},           {"UNICODE-1-1-UTF-8", "UTF-8"}, {"US-ASCII", "WINDOWS-1252"},  {"ASCII", "WINDOWS-1252"},
    {"ANSI", "WINDOWS-1252"},    {"LATIN1", "WINDOWS-1252"},     {"LATIN-1", "WINDOWS-1252"},   {"L1", "WINDOWS-1252"},
    {"ISO-8859-1", "WINDOWS-1252"}, {"ISO8859-1", "WINDOWS-1252"}, {"ISO_8859-1", "WINDOWS-1252"}, {"ISO-8859-9", "WINDOWS-1254"},
    {"SHIFT-JIS", "CP932"},      {"SHIFT_JIS", "CP932"},         {"SJIS", "CP932"},             {"X-SJIS", "CP932"},
    {"MS_KANJI", "CP932"},       {"WINDOWS-31J", "CP932"},       {"GB2312", "GB18030"},         {"GBK", "GB18030"},
    {"CP936", "GB18030"},        {"EUC-CN", "GB18030"},          {"GB_2312-80", "GB18030"},     {"BIG5", "CP950"},
    {"BIG-5", "CP950"},          {"KS_C_5601-1987", "CP949"},    {"EUC-KR", "CP949"},           {"UTF16", "UTF-16"},
};

bool mayNameACharset(std::string_view name) {
    return !name.empty() && name.size() <= 40 && std::ranges::all_of(name, [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    });
}

const iconv_t kNone = reinterpret_cast<iconv_t>(-1);

constexpr std::size_t kSampleBytes = std::size_t{1} << 20;

unsigned char at(std::string_view bytes, std::size_t index) { return index < bytes.size() ? static_cast<unsigned char>(bytes[index]) : 0; }
bool isBetween(unsigned char byte, unsigned low, unsigned high) { return byte >= low && byte <= high; }
bool isLetter(unsigned char byte) { return isBetween(byte | 0x20U, 'a', 'z'); }

// ---------------------------------------------------------------- two bytes a character

// How a two-byte charset lies: which pairs it has at all, and which of them texts are mostly made of.
struct Pairs {
    const char *charset;
    bool (*isPair)(unsigned char lead, unsigned char trail);
    bool (*isCommon)(unsigned char lead, unsigned char trail);
    bool (*isAlone)(unsigned char byte);   // a character of one byte
};
bool none(unsigned char) { return false; }
constexpr Pairs kPairs[] = {   // the first of equals wins: kana and hangul say more than han characters do
    {"EUC-JP", [](unsigned char l, unsigned char t) { return isBetween(l, 0xA1, 0xF4) && isBetween(t, 0xA1, 0xFE); },
     [](unsigned char l, unsigned char) { return l == 0xA4 || l == 0xA5; }, none},
    {"CP932",
     [](unsigned char l, unsigned char t) {
         return (isBetween(l, 0x81, 0x9F) || isBetween(l, 0xE0, 0xFC)) && isBetween(t, 0x40, 0xFC) && t != 0x7F;
     },
     [](unsigned char l, unsigned char t) {
         return (l == 0x82 && t >= 0x9F) || (l == 0x83 && t <= 0x96) || (l == 0x81 && t == 0x5B) || isBetween(l, 0x88, 0x97);
     },
     [](unsigned char b) { return isBetween(b, 0xA1, 0xDF); }},
    {"CP949", [](unsigned char l, unsigned char t) { return isBetween(l, 0xA1, 0xFE) && isBetween(t, 0xA1, 0xFE); },
     [](unsigned char l, unsigned char) { return isBetween(l, 0xB0, 0xC8); }, none},
    {"GB18030",
     [](unsigned char l, unsigned char t) { return isBetween(l, 0x81, 0xFE) && isBetween(t, 0x40, 0xFE) && t != 0x7F; },
     [](unsigned char l, unsigned char t) { return isBetween(l, 0xB0, 0xD7) && t >= 0xA1; }, none},
    {"CP950",
     [](unsigned char l, unsigned char t) {
         return isBetween(l, 0xA1, 0xF9) && (isBetween(t, 0x40, 0x7E) || isBetween(t, 0xA1, 0xFE));
     },
     [](unsigned char l, unsigned char) { return isBetween(l, 0xA4, 0xC6); }, none},
};

struct Fit {
    std::size_t pairs = 0, common = 0, inAscii = 0;
    bool isPossible = true;
    [[nodiscard]] double share() const { return isPossible && pairs > 0 ? double(common) / double(pairs) : 0; }
};

// `inAscii`: pairs that take a letter of ASCII behind them away from a word, as "ür" of another charset would.
Fit fitOf(std::string_view bytes, const Pairs &kind) {
    Fit fit;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const unsigned char lead = at(bytes, i), trail = at(bytes, i + 1);
        if (lead < 0x80 || kind.isAlone(lead))
            continue;
        if (!kind.isPair(lead, trail)) {
            fit.isPossible = i + 1 >= bytes.size() && fit.isPossible;   // cut off at the end of the sample
            return fit;
        }
        ++fit.pairs;
        fit.common += kind.isCommon(lead, trail) ? 1 : 0;
        fit.inAscii += i > 0 && isLetter(at(bytes, i - 1)) && isLetter(trail) ? 1 : 0;
        ++i;
    }
    return fit;
}

// Letters of one byte stand in the upper quarter; pairs have many bytes below it.
bool areAllLetters(std::string_view bytes) {
    std::size_t high = 0, low = 0;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        high += byte >= 0x80 ? 1 : 0;
        low += isBetween(byte, 0x81, 0xBF) ? 1 : 0;
    }
    return low * 10 < high;
}

std::optional<std::string> doubleByteCharset(std::string_view bytes) {
    if (areAllLetters(bytes))
        return std::nullopt;
    const char *best = nullptr;
    double bestShare = 0.6;   // less is no evidence
    for (const Pairs &kind : kPairs) {
        const Fit fit = fitOf(bytes, kind);
        if (fit.share() > bestShare && fit.inAscii * 4 <= fit.pairs) {
            bestShare = fit.share();
            best = kind.charset;
        }
    }
    return best ? std::optional<std::string>(best) : std::nullopt;
}

// ---------------------------------------------------------------- one byte a character

struct Alphabet {
    const char *charset;
    std::string_view frequent;   // letters that every second word has
};
constexpr Alphabet kAlphabets[] = {
    {"WINDOWS-1251", "\xE0\xE5\xE8\xEE\xED\xF0\xF1\xEA"},
    {"KOI8-R", "\xC1\xC5\xC9\xCF\xCE\xD2\xD3\xCB"},
    {"WINDOWS-1253", "\xE1\xEF\xE9\xE5\xF4\xF3\xF2\xDC\xDF\xFC\xDD\xDE\xFE\xFD"},
};

// Where words consist of high bytes the alphabet is no Latin one.
std::optional<std::string> otherAlphabet(std::string_view bytes) {
    std::array<std::size_t, 256> counts{};
    std::size_t high = 0, inRuns = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const unsigned char byte = at(bytes, i);
        if (byte < 0xC0)
            continue;
        ++high;
        ++counts[byte];
        inRuns += at(bytes, i + 1) >= 0xC0 || (i > 0 && at(bytes, i - 1) >= 0xC0) ? 1 : 0;
    }
    if (high < 3 || inRuns * 10 < high * 8)
        return std::nullopt;
    const auto scoreOf = [&](const Alphabet &alphabet) {
        std::size_t sum = 0;
        for (const char c : alphabet.frequent)
            sum += counts[static_cast<unsigned char>(c)];
        return sum;
    };
    const auto *best = std::ranges::max_element(kAlphabets, {}, scoreOf);
    return std::string(best->charset);
}

// Signs of Windows-1252, or none of its characters at all, within words: letters of central Europe. "¿" and "£" begin words,
// "m³" and the like are short.
bool isCentralEuropean(std::string_view bytes) {
    constexpr std::string_view kLetters = "\xA3\xA5\xAF\xB3\xB9\xBC\xBE\xBF\x8D\x8F\x9D";
    std::size_t lettersBefore = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const unsigned char byte = at(bytes, i), behind = at(bytes, i + 1);
        const bool goesOn = isLetter(behind) || behind >= 0xC0;
        if (kLetters.find(bytes[i]) != std::string_view::npos && (byte == 0xBF ? lettersBefore > 0 && goesOn : goesOn || lettersBefore > 2))
            return true;
        lettersBefore = isLetter(byte) || byte >= 0xC0 ? lettersBefore + 1 : 0;
    }
    return false;
}

}  // namespace

std::string charsetName(std::string_view name) {
    std::string upper;
    for (const char c : name)
        if (c != ' ' && c != '"')
            upper += c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
    const auto *alias = std::ranges::find(kAliases, std::string_view(upper), &Alias::name);
    return alias == std::end(kAliases) ? upper : std::string(alias->charset);
}

bool isSingleByte(const std::string &charset) {
    return charset.starts_with("WINDOWS-125") || charset.starts_with("CP125") || charset.starts_with("ISO-8859") ||
           charset.starts_with("ISO8859") || charset.starts_with("KOI8") || charset.starts_with("MAC");
}

Charsets::~Charsets() {
    for (const auto &[name, converter] : converters_)
        if (converter)
            iconv_close(static_cast<iconv_t>(converter));
}

void *Charsets::converter(const std::string &charset) {
    if (const auto known = converters_.find(charset); known != converters_.end())
        return known->second;
    constexpr std::size_t kMostCharsets = 64;   // a hostile file names one per line
    if (converters_.size() >= kMostCharsets || !mayNameACharset(charset))
        return nullptr;
    const iconv_t made = iconv_open("UTF-8", charset.c_str());
    return converters_[charset] = made == kNone ? nullptr : static_cast<void *>(made);
}

std::optional<std::string> Charsets::toUtf8(std::string_view bytes, const std::string &charset) {
    const auto open = static_cast<iconv_t>(converter(charset));
    if (!open)
        return std::nullopt;
    iconv(open, nullptr, nullptr, nullptr, nullptr);
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 2);
    std::array<char, 4096> room;   // NOLINT: filled by the converter
    char *from = const_cast<char *>(bytes.data());   // iconv never writes there
    std::size_t left = bytes.size();
    while (left > 0) {
        char *to = room.data();
        std::size_t free = room.size();
        const bool isStopped = iconv(open, &from, &left, &to, &free) == static_cast<std::size_t>(-1);
        text.append(room.data(), static_cast<std::size_t>(to - room.data()));
        if (!isStopped || errno == E2BIG)
            continue;
        text.append(kReplacement);   // bad, or cut off at the end
        ++from;
        --left;
    }
    return text;
}

std::optional<std::string> takeMark(std::string_view &bytes) {
    struct Mark {
        std::string_view bytes, charset;
    };
    static constexpr Mark kMarks[] = {{std::string_view("\xFF\xFE\0\0", 4), "UTF-32LE"},
                                      {std::string_view("\0\0\xFE\xFF", 4), "UTF-32BE"},
                                      {"\xEF\xBB\xBF", "UTF-8"},
                                      {"\xFF\xFE", "UTF-16LE"},
                                      {"\xFE\xFF", "UTF-16BE"}};
    for (const Mark &mark : kMarks)
        if (bytes.starts_with(mark.bytes)) {
            bytes.remove_prefix(mark.bytes.size());
            return std::string(mark.charset);
        }
    return std::nullopt;
}

std::optional<std::string> wideCharset(std::string_view bytes) {
    const std::string_view sample = bytes.substr(0, 4096);
    std::size_t zeros[2] = {};
    for (std::size_t i = 0; i < sample.size(); ++i)
        zeros[i % 2] += sample[i] == '\0' ? 1 : 0;
    const std::size_t half = sample.size() / 2;
    if (half < 4)
        return std::nullopt;
    if (zeros[1] * 2 > half && zeros[0] * 20 < half)
        return "UTF-16LE";
    if (zeros[0] * 2 > half && zeros[1] * 20 < half)
        return "UTF-16BE";
    return std::nullopt;
}

std::string likelyCharset(std::string_view bytes) {
    bytes = bytes.substr(0, kSampleBytes);
    if (const auto charset = doubleByteCharset(bytes))
        return *charset;
    if (const auto charset = otherAlphabet(bytes))
        return *charset;
    return isCentralEuropean(bytes) ? "WINDOWS-1250" : "WINDOWS-1252";
}

}  // namespace host::foreign
