// Text as a value: 16 bytes, UTF-8 inside, cheap to copy.
//
// Shape    up to 15 bytes stand inside the value; a longer text is an immutable block shared by all copies.
// Absent   a default-made text is absent (nil). Absent differs from empty; its bytes read as "".
// Units    a character is a code point; indexes and lengths count code points. A byte that is not part of
//          valid UTF-8 counts as one character, U+FFFD, and is kept as it stands.
// Classes  blanks: class Zs and the tab. White space: class Z, U+0009 to U+000D, U+0085. Controls: class Cc.
// Case     "ignoring case" is Unicode simple case folding; it never changes the number of characters.
// Threads  values; copies may be used on any thread at the same time.
#pragma once

#include <atomic>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

class NSObject;
class FormatArgument;

enum class CharacterSet { blanks, whitespaceAndNewline, newlines, controls };

struct NSRange {
    std::size_t location = 0;
    std::size_t length = 0;
    bool operator==(const NSRange &) const = default;
};

class NSString {
public:
    static constexpr std::size_t kInlineBytes = 15;

    NSString() noexcept { setNil(); }
    NSString(std::nullptr_t) noexcept { setNil(); }
    NSString(const char *utf8) : NSString(utf8 ? NSString(std::string_view(utf8)) : NSString()) {}
    NSString(std::string_view utf8);
    NSString(const std::string &utf8) : NSString(std::string_view(utf8)) {}
    NSString(const NSString &other) noexcept;
    NSString(NSString &&other) noexcept;
    NSString &operator=(const NSString &other) noexcept;
    NSString &operator=(NSString &&other) noexcept;
    ~NSString() { release(); }

    [[nodiscard]] bool isNil() const noexcept { return tag() == kNilTag; }
    explicit operator bool() const noexcept { return !isNil(); }
    // True for an absent text and for one without a character.
    [[nodiscard]] bool isEmpty() const noexcept { return sizeBytes() == 0; }
    [[nodiscard]] std::string_view view() const noexcept;
    [[nodiscard]] std::string str() const { return std::string(view()); }
    // Ends with a NUL byte; valid as long as this value stands unchanged.
    [[nodiscard]] const char *UTF8String() const noexcept { return view().data(); }
    [[nodiscard]] std::size_t sizeBytes() const noexcept { return view().size(); }
    // For walks over many texts: fetches the bytes of a text that is read soon.
    void prefetch() const noexcept {
        if (tag() == kHeapTag)
            __builtin_prefetch(block_);
    }
    [[nodiscard]] std::size_t length() const noexcept;
    [[nodiscard]] char32_t characterAtIndex(std::size_t index) const;

    // Absent equals absent alone.
    bool operator==(const NSString &other) const noexcept;
    // By code points, absent first. (The order of UTF-8 bytes is the order of code points.)
    std::strong_ordering operator<=>(const NSString &other) const noexcept;
    [[nodiscard]] bool isEqualIgnoringCase(const NSString &other) const;
    [[nodiscard]] NSString folded() const;

    [[nodiscard]] bool hasPrefix(std::string_view prefix) const noexcept { return view().starts_with(prefix); }
    [[nodiscard]] bool hasSuffix(std::string_view suffix) const noexcept { return view().ends_with(suffix); }
    [[nodiscard]] bool containsString(std::string_view part) const noexcept;
    [[nodiscard]] bool containsIgnoringCase(const NSString &part) const;
    // Code points; absent where `part` does not stand in the text.
    [[nodiscard]] std::optional<NSRange> rangeOfString(std::string_view part) const;

    // A plain cut at each occurrence: at least one piece; an absent text has none. `separator` is not empty.
    [[nodiscard]] std::vector<NSString> componentsSeparatedByString(std::string_view separator) const;
    [[nodiscard]] NSString stringByReplacingOccurrencesOfString_withString(std::string_view part,
                                                                           std::string_view by) const;
    [[nodiscard]] NSString stringByTrimmingCharactersInSet(CharacterSet set) const;
    [[nodiscard]] NSString stringByAppendingString(const NSString &tail) const;
    // Throw std::out_of_range where the range leaves the text.
    [[nodiscard]] NSString substringFromIndex(std::size_t index) const;
    [[nodiscard]] NSString substringToIndex(std::size_t index) const;
    [[nodiscard]] NSString substringWithRange(NSRange range) const;

    // Paths, by the platform's rules: "/a/b/" has the last component "b", "/" has "/", "" has "".
    [[nodiscard]] NSString lastPathComponent() const;
    [[nodiscard]] NSString pathExtension() const;
    [[nodiscard]] NSString stringByDeletingPathExtension() const;
    [[nodiscard]] NSString stringByDeletingLastPathComponent() const;
    [[nodiscard]] NSString stringByAppendingPathComponent(const NSString &component) const;
    [[nodiscard]] NSString stringByAppendingPathExtension(const NSString &extension) const;

    // Leading blanks, a sign and digits; 0 without digits; saturates.
    [[nodiscard]] std::int64_t integerValue() const noexcept;
    [[nodiscard]] double doubleValue() const noexcept;

    // Formats a text that may come from a table that somebody else wrote: a wrong one prints something, never fails.
    // Takes %@ %s %d %i %u %x %X %ld %li %lu %lld %llu %f %%, with width, zero and precision, and "%2$@" positions. A passed but absent
    // argument prints "(null)", one that was not passed prints nothing.
    template <class... Arguments>
    [[nodiscard]] static NSString stringWithFormat(const NSString &format, Arguments &&...arguments);
    [[nodiscard]] static NSString formatted(const NSString &format, const std::vector<FormatArgument> &arguments);

private:
    struct Block {
        std::atomic<std::uint32_t> owners;
        std::uint32_t padding;
        std::size_t size;
        char *bytes() { return reinterpret_cast<char *>(this + 1); }
    };
    static constexpr unsigned char kHeapTag = 0xFE;
    static constexpr unsigned char kNilTag = 0xFF;

    [[nodiscard]] unsigned char tag() const noexcept { return static_cast<unsigned char>(inline_[kInlineBytes]); }
    void setTag(unsigned char value) noexcept { inline_[kInlineBytes] = static_cast<char>(value); }
    void setNil() noexcept {
        std::memset(inline_, 0, sizeof inline_);
        setTag(kNilTag);
    }
    void release() noexcept {
        if (tag() == kHeapTag)
            releaseBlock();
    }
    void releaseBlock() noexcept;

    // Inline text: the last byte holds 15 - size, so that a full text is closed by its own tag of 0.
    union {
        char inline_[kInlineBytes + 1];
        Block *block_;
    };
};
static_assert(sizeof(NSString) == 16);

inline NSString::NSString(const NSString &other) noexcept {
    std::memcpy(inline_, other.inline_, sizeof inline_);
    if (tag() == kHeapTag)
        block_->owners.fetch_add(1, std::memory_order_relaxed);
}

inline NSString::NSString(NSString &&other) noexcept {
    std::memcpy(inline_, other.inline_, sizeof inline_);
    other.setNil();
}

inline std::string_view NSString::view() const noexcept {
    switch (tag()) {
    case kNilTag: return std::string_view("", 0);
    case kHeapTag: return {block_->bytes(), block_->size};
    default: return {inline_, kInlineBytes - static_cast<std::size_t>(tag())};
    }
}

// One argument of a format: a text, a number, or a list of texts (printed as the platform prints an array).
class FormatArgument {
public:
    enum class Kind { text, signedInteger, unsignedInteger, floating, list };
    FormatArgument(NSString value) : kind(Kind::text), text(std::move(value)) {}
    FormatArgument(const char *value) : kind(Kind::text), text(value) {}
    FormatArgument(std::string_view value) : kind(Kind::text), text(value) {}
    FormatArgument(const std::string &value) : kind(Kind::text), text(value) {}
    FormatArgument(double value) : kind(Kind::floating), floating(value) {}
    FormatArgument(float value) : kind(Kind::floating), floating(value) {}
    FormatArgument(std::vector<NSString> value) : kind(Kind::list), list(std::move(value)) {}
    template <class T>
        requires std::is_integral_v<T>
    FormatArgument(T value)
        : kind(std::is_signed_v<T> ? Kind::signedInteger : Kind::unsignedInteger),
          integer(static_cast<std::uint64_t>(static_cast<std::int64_t>(value))) {
        if constexpr (!std::is_signed_v<T>)
            integer = value;
    }

    Kind kind;
    NSString text;
    std::uint64_t integer = 0;
    double floating = 0;
    std::vector<NSString> list;
};

template <class... Arguments>
NSString NSString::stringWithFormat(const NSString &format, Arguments &&...arguments) {
    return formatted(format, {FormatArgument(std::forward<Arguments>(arguments))...});
}

// The platform's printed form of a list of texts.
[[nodiscard]] NSString descriptionOfList(const std::vector<NSString> &list);

template <> struct std::hash<NSString> {
    std::size_t operator()(const NSString &text) const noexcept { return std::hash<std::string_view>{}(text.view()); }
};

// Code points of UTF-8, for those who read character by character.
namespace unicode {

// The code point that begins at `at`, which moves behind it; U+FFFD for a bad byte, which moves by one.
char32_t next(std::string_view text, std::size_t &at) noexcept;
void append(std::string &text, char32_t character);
[[nodiscard]] bool isValid(std::string_view text) noexcept;
// Each bad byte becomes U+FFFD, a NUL is dropped. Hands the text back untouched where nothing is wrong.
[[nodiscard]] std::string sanitized(std::string_view text);

[[nodiscard]] char32_t folded(char32_t character) noexcept;
[[nodiscard]] bool isBlank(char32_t character) noexcept;       // Zs and the tab
[[nodiscard]] bool isWhitespace(char32_t character) noexcept;  // Z, U+0009 to U+000D, U+0085
[[nodiscard]] bool isControl(char32_t character) noexcept;     // Cc

}  // namespace unicode
