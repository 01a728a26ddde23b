#include "toolkit/NSString.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

// ---------------------------------------------------------------- unicode

namespace unicode {

namespace {

struct FoldingRun {
    char32_t first, last;
    std::uint8_t stride;
    std::int32_t distance;
};
constexpr FoldingRun kFolding[] = {
#include "toolkit/UnicodeFolding.inc"
};

}  // namespace

char32_t next(std::string_view text, std::size_t &at) noexcept {
    constexpr char32_t kBad = 0xFFFD;
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80)
        return lead;
    const int more = lead >= 0xF0 && lead <= 0xF4 ? 3 : lead >= 0xE0 && lead < 0xF0 ? 2 : lead >= 0xC2 && lead < 0xE0 ? 1 : 0;
    if (more == 0 || text.size() - at < static_cast<std::size_t>(more))
        return kBad;
    char32_t character = lead & (0x3F >> more);
    for (int i = 0; i < more; ++i) {
        const auto byte = static_cast<unsigned char>(text[at + i]);
        if ((byte & 0xC0) != 0x80)
            return kBad;
        character = character << 6 | (byte & 0x3F);
    }
    constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    if (character < kSmallest[more] || character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF))
        return kBad;
    at += more;
    return character;
}

void append(std::string &text, char32_t character) {
    if (character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF))
        character = 0xFFFD;
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | character >> 6);
        text += static_cast<char>(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        text += static_cast<char>(0xE0 | character >> 12);
        text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (character & 0x3F));
    } else {
        text += static_cast<char>(0xF0 | character >> 18);
        text += static_cast<char>(0x80 | (character >> 12 & 0x3F));
        text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (character & 0x3F));
    }
}

namespace {

// Where a bad byte or a NUL stands, or the size.
std::size_t firstUnclean(std::string_view text, bool nulIsUnclean) noexcept {
    std::size_t at = 0;
    while (at < text.size()) {
        // Eight ASCII bytes at a time: the texts of a whole device pass here.
        if (text.size() - at >= 8) {
            std::uint64_t word;
            std::memcpy(&word, text.data() + at, 8);
            const bool ascii = (word & 0x8080808080808080U) == 0;
            const bool hasNul = ((word - 0x0101010101010101U) & ~word & 0x8080808080808080U) != 0;
            if (ascii && !(hasNul && nulIsUnclean)) {
                at += 8;
                continue;
            }
        }
        const std::size_t start = at;
        const char32_t character = next(text, at);
        if (character == 0xFFFD && at - start == 1)
            return start;
        if (character == 0 && nulIsUnclean)
            return start;
    }
    return text.size();
}

}  // namespace

bool isValid(std::string_view text) noexcept { return firstUnclean(text, false) == text.size(); }

std::string sanitized(std::string_view text) {
    const std::size_t unclean = firstUnclean(text, true);
    std::string clean(text.substr(0, unclean));
    for (std::size_t at = unclean; at < text.size();) {
        const char32_t character = next(text, at);
        if (character != 0)
            append(clean, character);
    }
    return clean;
}

char32_t folded(char32_t character) noexcept {
    if (character < 0x80)
        return character >= 'A' && character <= 'Z' ? character + 32 : character;
    const auto *run = std::lower_bound(std::begin(kFolding), std::end(kFolding), character,
                                       [](const FoldingRun &r, char32_t c) { return r.last < c; });
    if (run == std::end(kFolding) || character < run->first || (character - run->first) % run->stride != 0)
        return character;
    return static_cast<char32_t>(static_cast<std::int32_t>(character) + run->distance);
}

bool isBlank(char32_t c) noexcept {
    return c == '\t' || c == ' ' || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x202F || c == 0x205F ||
           c == 0x3000;
}

bool isWhitespace(char32_t c) noexcept {
    return isBlank(c) || (c >= 0x09 && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

bool isControl(char32_t c) noexcept { return c < 0x20 || (c >= 0x7F && c < 0xA0); }

}  // namespace unicode

// ---------------------------------------------------------------- storage

NSString::NSString(std::string_view utf8) {
    if (utf8.size() <= kInlineBytes) {
        std::memset(inline_, 0, sizeof inline_);
        if (!utf8.empty())
            std::memcpy(inline_, utf8.data(), utf8.size());
        setTag(static_cast<unsigned char>(kInlineBytes - utf8.size()));
        return;
    }
    void *memory = std::malloc(sizeof(Block) + utf8.size() + 1);
    if (!memory)
        throw std::bad_alloc();
    block_ = new (memory) Block{{1}, 0, utf8.size()};
    std::memcpy(block_->bytes(), utf8.data(), utf8.size());
    block_->bytes()[utf8.size()] = '\0';
    setTag(kHeapTag);
}

void NSString::releaseBlock() noexcept {
    if (block_->owners.fetch_sub(1, std::memory_order_acq_rel) == 1)
        std::free(block_);
}

NSString &NSString::operator=(const NSString &other) noexcept {
    NSString copy(other);
    return *this = std::move(copy);
}

NSString &NSString::operator=(NSString &&other) noexcept {
    if (this != &other) {
        release();
        std::memcpy(inline_, other.inline_, sizeof inline_);
        other.setNil();
    }
    return *this;
}

// ---------------------------------------------------------------- characters

namespace {

std::size_t countCharacters(std::string_view text) noexcept {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++count)
        unicode::next(text, at);
    return count;
}

// The byte at which character `index` begins; throws behind the end.
std::size_t byteOfCharacter(std::string_view text, std::size_t index) {
    std::size_t at = 0;
    for (; index > 0; --index) {
        if (at >= text.size())
            throw std::out_of_range("NSString: index beyond the end of the text");
        unicode::next(text, at);
    }
    return at;
}

bool isInSet(char32_t character, CharacterSet set) {
    switch (set) {
    case CharacterSet::blanks: return unicode::isBlank(character);
    case CharacterSet::whitespaceAndNewline: return unicode::isWhitespace(character);
    case CharacterSet::newlines:
        return (character >= 0x0A && character <= 0x0D) || character == 0x85 || character == 0x2028 || character == 0x2029;
    case CharacterSet::controls: return unicode::isControl(character);
    }
    return false;
}

// Where the last character of a non-empty text begins.
std::size_t startOfLastCharacter(std::string_view text) {
    for (std::size_t back = 1; back <= 4 && back <= text.size(); ++back) {
        std::size_t at = text.size() - back;
        unicode::next(text, at);
        if (at == text.size())
            if (back > 1 || (static_cast<unsigned char>(text.back()) & 0xC0) != 0x80)
                return text.size() - back;
    }
    return text.size() - 1;
}

}  // namespace

std::size_t NSString::length() const noexcept { return countCharacters(view()); }

char32_t NSString::characterAtIndex(std::size_t index) const {
    std::size_t at = byteOfCharacter(view(), index);
    if (at >= sizeBytes())
        throw std::out_of_range("NSString: index beyond the end of the text");
    return unicode::next(view(), at);
}

bool NSString::operator==(const NSString &other) const noexcept {
    if (std::memcmp(inline_, other.inline_, sizeof inline_) == 0)
        return true;   // copies of one text: its block need not be looked at
    return isNil() == other.isNil() && view() == other.view();
}

std::strong_ordering NSString::operator<=>(const NSString &other) const noexcept {
    if (isNil() || other.isNil())
        return !isNil() <=> !other.isNil();
    return view() <=> other.view();
}

bool NSString::isEqualIgnoringCase(const NSString &other) const {
    if (isNil() != other.isNil())
        return false;
    const std::string_view left = view(), right = other.view();
    std::size_t l = 0, r = 0;
    while (l < left.size() && r < right.size())
        if (unicode::folded(unicode::next(left, l)) != unicode::folded(unicode::next(right, r)))
            return false;
    return l == left.size() && r == right.size();
}

NSString NSString::folded() const {
    if (isNil())
        return {};
    std::string result;
    result.reserve(sizeBytes());
    for (std::size_t at = 0; at < sizeBytes();) {
        const std::size_t start = at;
        const char32_t character = unicode::next(view(), at);
        const char32_t small = unicode::folded(character);
        if (small == character)
            result.append(view().substr(start, at - start));
        else
            unicode::append(result, small);
    }
    return NSString(result);
}

bool NSString::containsString(std::string_view part) const noexcept { return view().find(part) != std::string_view::npos; }

bool NSString::containsIgnoringCase(const NSString &part) const { return folded().containsString(part.folded().view()); }

std::optional<NSRange> NSString::rangeOfString(std::string_view part) const {
    const std::size_t found = view().find(part);
    if (isNil() || found == std::string_view::npos)
        return std::nullopt;
    return NSRange{countCharacters(view().substr(0, found)), countCharacters(part)};
}

std::vector<NSString> NSString::componentsSeparatedByString(std::string_view separator) const {
    std::vector<NSString> pieces;
    if (isNil())
        return pieces;
    std::string_view rest = view();
    for (std::size_t cut; (cut = rest.find(separator)) != std::string_view::npos; rest.remove_prefix(cut + separator.size()))
        pieces.emplace_back(rest.substr(0, cut));
    pieces.emplace_back(rest);
    return pieces;
}

NSString NSString::stringByReplacingOccurrencesOfString_withString(std::string_view part, std::string_view by) const {
    std::string_view rest = view();
    std::size_t cut = part.empty() ? std::string_view::npos : rest.find(part);
    if (cut == std::string_view::npos)
        return *this;
    std::string result;
    result.reserve(rest.size());
    for (; cut != std::string_view::npos; cut = rest.find(part)) {
        result.append(rest.substr(0, cut)).append(by);
        rest.remove_prefix(cut + part.size());
    }
    return NSString(result.append(rest));
}

NSString NSString::stringByTrimmingCharactersInSet(CharacterSet set) const {
    std::string_view text = view();
    while (!text.empty()) {
        std::size_t at = 0;
        if (!isInSet(unicode::next(text, at), set))
            break;
        text.remove_prefix(at);
    }
    while (!text.empty()) {
        const std::size_t start = startOfLastCharacter(text);
        std::size_t at = start;
        if (!isInSet(unicode::next(text, at), set))
            break;
        text.remove_suffix(text.size() - start);
    }
    return text.size() == sizeBytes() ? *this : NSString(text);
}

NSString NSString::stringByAppendingString(const NSString &tail) const {
    std::string result;
    result.reserve(sizeBytes() + tail.sizeBytes());
    return NSString(result.append(view()).append(tail.view()));
}

NSString NSString::substringFromIndex(std::size_t index) const {
    return NSString(view().substr(byteOfCharacter(view(), index)));
}

NSString NSString::substringToIndex(std::size_t index) const {
    return NSString(view().substr(0, byteOfCharacter(view(), index)));
}

NSString NSString::substringWithRange(NSRange range) const {
    const std::string_view tail = view().substr(byteOfCharacter(view(), range.location));
    return NSString(tail.substr(0, byteOfCharacter(tail, range.length)));
}

// ---------------------------------------------------------------- paths

namespace {

std::string_view withoutEndSlashes(std::string_view path) {
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    return path;
}

std::string_view lastComponent(std::string_view path) {
    path = withoutEndSlashes(path);
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos || path.size() == 1 ? path : path.substr(slash + 1);
}

// Where the dot of the extension stands in a last component. A leading dot begins a hidden file's name, no extension.
std::size_t extensionDot(std::string_view component) {
    const std::size_t dot = component.rfind('.');
    return dot == 0 || dot + 1 == component.size() ? std::string_view::npos : dot;
}

}  // namespace

NSString NSString::lastPathComponent() const { return isNil() ? NSString() : NSString(lastComponent(view())); }

NSString NSString::pathExtension() const {
    if (isNil())
        return {};
    const std::string_view component = lastComponent(view());
    const std::size_t dot = extensionDot(component);
    return dot == std::string_view::npos ? NSString("") : NSString(component.substr(dot + 1));
}

NSString NSString::stringByDeletingPathExtension() const {
    const std::string_view path = withoutEndSlashes(view());
    const std::string_view component = lastComponent(path);
    const std::size_t dot = extensionDot(component);
    if (isNil() || dot == std::string_view::npos)
        return isNil() ? NSString() : NSString(path);
    return NSString(path.substr(0, path.size() - (component.size() - dot)));
}

NSString NSString::stringByDeletingLastPathComponent() const {
    if (isNil())
        return {};
    const std::string_view path = withoutEndSlashes(view());
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos)
        return NSString("");
    return NSString(slash == 0 ? std::string_view("/") : withoutEndSlashes(path.substr(0, slash)));
}

NSString NSString::stringByAppendingPathComponent(const NSString &component) const {
    std::string_view tail = component.view();
    while (tail.size() > 1 && tail.front() == '/')
        tail.remove_prefix(1);
    if (isEmpty())
        return NSString(withoutEndSlashes(component.view()));
    std::string result(withoutEndSlashes(view()));
    if (tail.empty() || tail == "/")
        return NSString(result);
    if (result.back() != '/')
        result += '/';
    return NSString(result.append(withoutEndSlashes(tail)));
}

NSString NSString::stringByAppendingPathExtension(const NSString &extension) const {
    std::string result(withoutEndSlashes(view()));
    return NSString(result.append(".").append(extension.view()));
}

// ---------------------------------------------------------------- numbers

std::int64_t NSString::integerValue() const noexcept {
    std::string_view text = view();
    while (!text.empty() && (text.front() == ' ' || (text.front() >= '\t' && text.front() <= '\r')))
        text.remove_prefix(1);
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+'))
        text.remove_prefix(1);
    std::uint64_t value = 0;
    constexpr std::uint64_t kMost = std::numeric_limits<std::int64_t>::max();
    const std::uint64_t most = kMost + (negative ? 1 : 0);
    for (; !text.empty() && text.front() >= '0' && text.front() <= '9'; text.remove_prefix(1)) {
        const std::uint64_t digit = static_cast<std::uint64_t>(text.front() - '0');
        value = value > (most - digit) / 10 ? most : value * 10 + digit;
        if (value >= most)
            break;
    }
    return static_cast<std::int64_t>(negative ? 0 - value : value);
}

double NSString::doubleValue() const noexcept {
    std::string_view text = view();
    while (!text.empty() && (text.front() == ' ' || (text.front() >= '\t' && text.front() <= '\r')))
        text.remove_prefix(1);
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);   // the locale never decides
    return value;
}

// ---------------------------------------------------------------- formats

namespace {

struct Conversion {
    bool leftAligned = false, zeroPadded = false, plus = false;
    std::size_t width = 0;
    std::optional<std::size_t> precision;
    std::optional<std::size_t> position;   // counted from 0
    char letter = 0;
};

constexpr std::size_t kMostPadding = 1024;   // a format from a broken table must not ask for gigabytes

std::size_t readNumber(std::string_view text, std::size_t &at) {
    std::size_t number = 0;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at)
        number = std::min<std::size_t>(number * 10 + static_cast<std::size_t>(text[at] - '0'), 1U << 20);
    return number;
}

// Reads what stands behind a '%'. False: no conversion that we know, `at` stands where it stood.
bool readConversion(std::string_view text, std::size_t &at, Conversion &out) {
    std::size_t i = at;
    std::size_t probe = i;
    if (const std::size_t position = readNumber(text, probe); probe > i && probe < text.size() && text[probe] == '$' && position > 0) {
        out.position = position - 1;
        i = probe + 1;
    }
    for (; i < text.size() && std::strchr("-+0 #'", text[i]); ++i) {
        out.leftAligned |= text[i] == '-';
        out.zeroPadded |= text[i] == '0';
        out.plus |= text[i] == '+';
    }
    out.width = std::min(readNumber(text, i), kMostPadding);
    if (i < text.size() && text[i] == '.') {
        ++i;
        out.precision = std::min(readNumber(text, i), kMostPadding);
    }
    while (i < text.size() && (text[i] == 'l' || text[i] == 'h' || text[i] == 'q' || text[i] == 'z'))
        ++i;
    if (i >= text.size() || !std::strchr("@sdiuxXf", text[i]))
        return false;
    out.letter = text[i];
    at = i + 1;
    return true;
}

std::string padded(std::string digits, const Conversion &how, std::size_t characters) {
    if (characters >= how.width)
        return digits;
    const std::size_t gap = how.width - characters;
    if (how.leftAligned)
        return digits.append(gap, ' ');
    if (how.zeroPadded && how.letter != '@' && how.letter != 's') {
        const std::size_t sign = !digits.empty() && (digits[0] == '-' || digits[0] == '+') ? 1 : 0;
        return digits.insert(sign, gap, '0');
    }
    return digits.insert(0, gap, ' ');
}

std::string asText(const FormatArgument &argument) {
    switch (argument.kind) {
    case FormatArgument::Kind::text: return argument.text.isNil() ? "(null)" : argument.text.str();
    case FormatArgument::Kind::signedInteger: return std::to_string(static_cast<std::int64_t>(argument.integer));
    case FormatArgument::Kind::unsignedInteger: return std::to_string(argument.integer);
    case FormatArgument::Kind::floating: {
        char buffer[64];
        const auto end = std::to_chars(buffer, buffer + sizeof buffer, argument.floating);
        return {buffer, end.ptr};
    }
    case FormatArgument::Kind::list: return descriptionOfList(argument.list).str();
    }
    return {};
}

std::string asFixed(double value, std::size_t precision) {
    if (!std::isfinite(value))
        return std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf";
    std::string buffer(400 + precision, '\0');
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, static_cast<int>(precision));
    buffer.resize(static_cast<std::size_t>(end.ptr - buffer.data()));
    return buffer;
}

std::int64_t asInteger(const FormatArgument &argument) {
    if (argument.kind == FormatArgument::Kind::floating) {
        constexpr double kMost = 9.2233720368547748e18;
        return std::isnan(argument.floating) ? 0 : static_cast<std::int64_t>(std::clamp(argument.floating, -kMost, kMost));
    }
    return argument.kind == FormatArgument::Kind::text ? argument.text.integerValue() : static_cast<std::int64_t>(argument.integer);
}

double asDouble(const FormatArgument &argument) {
    switch (argument.kind) {
    case FormatArgument::Kind::floating: return argument.floating;
    case FormatArgument::Kind::unsignedInteger: return static_cast<double>(argument.integer);
    case FormatArgument::Kind::text: return argument.text.doubleValue();
    default: return static_cast<double>(static_cast<std::int64_t>(argument.integer));
    }
}

std::string printed(const Conversion &how, const FormatArgument &argument) {
    switch (how.letter) {
    case '@':
    case 's': {
        std::string text = asText(argument);
        if (how.precision)
            text = NSString(text).substringToIndex(std::min(*how.precision, countCharacters(text))).str();
        const std::size_t characters = countCharacters(text);
        return padded(std::move(text), how, characters);
    }
    case 'f': {
        std::string text = asFixed(asDouble(argument), how.precision.value_or(6));
        if (how.plus && text[0] != '-')
            text.insert(0, "+");
        const std::size_t characters = text.size();
        return padded(std::move(text), how, characters);
    }
    default: break;
    }
    std::string text;
    if (how.letter == 'x' || how.letter == 'X') {
        char buffer[32];
        std::snprintf(buffer, sizeof buffer, how.letter == 'x' ? "%llx" : "%llX", static_cast<unsigned long long>(asInteger(argument)));
        text = buffer;
    } else {
        text = how.letter == 'u' ? std::to_string(static_cast<std::uint64_t>(asInteger(argument)))
             : argument.kind == FormatArgument::Kind::unsignedInteger ? std::to_string(argument.integer)
                                                                       : std::to_string(asInteger(argument));
    }
    if (how.precision && text.size() - (text[0] == '-') < *how.precision)
        text.insert(text[0] == '-' ? 1 : 0, *how.precision - (text.size() - (text[0] == '-')), '0');
    if (how.plus && text[0] != '-')
        text.insert(0, "+");
    const std::size_t characters = text.size();
    return padded(std::move(text), how, characters);
}

}  // namespace

NSString NSString::formatted(const NSString &format, const std::vector<FormatArgument> &arguments) {
    if (format.isNil())
        return {};
    const std::string_view text = format.view();
    std::string result;
    std::size_t nextArgument = 0;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] != '%') {
            result += text[at++];
            continue;
        }
        ++at;
        if (at < text.size() && text[at] == '%') {
            result += '%';
            ++at;
            continue;
        }
        Conversion how;
        if (!readConversion(text, at, how)) {
            result += '%';
            continue;
        }
        const std::size_t index = how.position.value_or(nextArgument);
        if (!how.position)
            ++nextArgument;
        if (index < arguments.size())
            result += printed(how, arguments[index]);
    }
    return NSString(result);
}

namespace {

bool needsQuotes(std::string_view text) {
    return text.empty() || !std::ranges::all_of(text, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    });
}

void appendUnit(std::string &out, unsigned unit) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "\\U%04x", unit);
    out += buffer;
}

std::string quoted(std::string_view text) {
    std::string out = "\"";
    for (std::size_t at = 0; at < text.size();) {
        const char32_t c = unicode::next(text, at);
        switch (c) {
        case '"': out += "\\\""; continue;
        case '\\': out += "\\\\"; continue;
        case '\n': out += "\\n"; continue;
        case '\r': out += "\\r"; continue;
        case '\t': out += "\\t"; continue;
        default: break;
        }
        if (c >= 0x20 && c <= 0x7E) {
            out += static_cast<char>(c);
        } else if (c < 0x10000) {
            appendUnit(out, static_cast<unsigned>(c));
        } else {
            appendUnit(out, static_cast<unsigned>(0xD800 + ((c - 0x10000) >> 10)));
            appendUnit(out, static_cast<unsigned>(0xDC00 + ((c - 0x10000) & 0x3FF)));
        }
    }
    return out + "\"";
}

}  // namespace

NSString descriptionOfList(const std::vector<NSString> &list) {
    std::string out = "(\n";
    for (std::size_t i = 0; i < list.size(); ++i) {
        const std::string_view text = list[i].isNil() ? std::string_view("(null)") : list[i].view();
        out += "    ";
        out += needsQuotes(text) ? quoted(text) : std::string(text);
        out += i + 1 < list.size() ? ",\n" : "\n";
    }
    return NSString(out + ")");
}
