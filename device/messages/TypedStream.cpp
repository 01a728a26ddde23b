#include "device/messages/TypedStream.h"

#include <cstdint>
#include <vector>

namespace device::messages {

namespace {

constexpr std::string_view kSignature = "streamtyped";
constexpr int kVersion = 4;
constexpr int kMaxDepth = 64;            // objects inside objects, and brackets inside encodings
constexpr std::size_t kMaxSteps = 1'000'000;   // an encoding such as [999999999i] would keep the reader busy for minutes

enum Tag : std::uint8_t { kTwoBytes = 0x81, kFourBytes = 0x82, kFloating = 0x83, kNew = 0x84, kNone = 0x85, kEnd = 0x86, kFirstReference = 0x92 };

struct Damaged {};

// One number for all objects and classes, as the archive counts them.
struct Entry {
    enum class Kind { object, classInfo, cString } kind;
    std::size_t superclass = 0;   // of a class, or the class of an object; kNoEntry for none
    std::string_view name;        // of a class
};
constexpr std::size_t kNoEntry = SIZE_MAX;

class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {
        strings_.reserve(16);
        entries_.reserve(16);
    }

    std::optional<std::string_view> text() {
        try {
            if (byte() != kVersion || unsharedString() != kSignature)
                return std::nullopt;
            (void)integer(byte());   // of the system that wrote it
            while (!text_ && at_ < bytes_.size())
                group(kNoEntry, 0);
        } catch (const Damaged &) {
        }
        return text_;
    }

private:
    std::uint8_t byte() {
        if (at_ >= bytes_.size() || ++steps_ > kMaxSteps)
            throw Damaged();
        return static_cast<std::uint8_t>(bytes_[at_++]);
    }

    std::string_view take(std::size_t count) {
        if (count > bytes_.size() - at_)
            throw Damaged();
        at_ += count;
        return bytes_.substr(at_ - count, count);
    }

    std::uint32_t littleEndian(int count) {
        std::uint32_t value = 0;
        for (int i = 0; i < count; ++i)
            value |= static_cast<std::uint32_t>(byte()) << (8 * i);
        return value;
    }

    std::int64_t integer(std::uint8_t head) {
        if (head == kTwoBytes)
            return static_cast<std::int16_t>(littleEndian(2));
        if (head == kFourBytes)
            return static_cast<std::int32_t>(littleEndian(4));
        if (head > kFourBytes && head < kFirstReference)
            throw Damaged();
        return static_cast<std::int8_t>(head);
    }

    // A length: the same bytes, never negative.
    std::size_t length(std::uint8_t head) {
        if (head == kTwoBytes)
            return littleEndian(2);
        if (head == kFourBytes)
            return littleEndian(4);
        if (head > kFourBytes && head < kFirstReference)
            throw Damaged();
        return head;
    }

    template <class T> const T &referred(const std::vector<T> &table, std::uint8_t head) {
        const std::int64_t number = integer(head) - static_cast<std::int8_t>(kFirstReference);
        if (number < 0 || static_cast<std::size_t>(number) >= table.size())
            throw Damaged();
        return table[static_cast<std::size_t>(number)];
    }

    std::string_view unsharedString() {
        const std::uint8_t head = byte();
        return head == kNone ? std::string_view() : take(length(head));
    }

    std::string_view sharedString() {
        const std::uint8_t head = byte();
        if (head == kNone)
            return {};
        if (head != kNew)
            return referred(strings_, head);
        strings_.push_back(take(length(byte())));
        return strings_.back();
    }

    // Some writers put a type itself where its encoding belongs; in right archives such a byte is a reference far back.
    std::string_view encodingOfGroup() {
        const std::size_t head = at_ < bytes_.size() ? static_cast<std::uint8_t>(bytes_[at_]) : 0;
        const bool isType = head == '+' && head - static_cast<std::size_t>(static_cast<std::int8_t>(kFirstReference)) >= strings_.size();
        return isType ? take(1) : sharedString();
    }

    std::size_t entryReferred(std::uint8_t head, Entry::Kind kind) {
        const Entry &entry = referred(entries_, head);
        if (entry.kind != kind)
            throw Damaged();
        return static_cast<std::size_t>(&entry - entries_.data());
    }

    // A class stands before its superclass, which may be a new one again; gives the first of the chain.
    std::size_t classChain() {
        std::size_t first = kNoEntry;
        for (std::size_t below = kNoEntry;;) {
            const std::uint8_t head = byte();
            std::size_t found = kNoEntry;
            if (head == kNew) {
                const std::string_view name = sharedString();
                (void)integer(byte());   // the class's version
                found = entries_.size();
                entries_.push_back({Entry::Kind::classInfo, kNoEntry, name});
            } else if (head != kNone) {
                found = entryReferred(head, Entry::Kind::classInfo);
                if (first != kNoEntry && found >= first)   // a class above itself: some writers count wrong
                    found = kNoEntry;
            }
            if (below == kNoEntry)
                first = found;
            else
                entries_[below].superclass = found;
            if (head != kNew)
                return first;
            below = found;
        }
    }

    // The walk ends: no chain of classes comes back to itself.
    bool isKindOf(std::size_t object, std::string_view name) const {
        for (std::size_t at = object == kNoEntry ? kNoEntry : entries_[object].superclass; at != kNoEntry; at = entries_[at].superclass)
            if (entries_[at].name == name)
                return true;
        return false;
    }

    void object(std::size_t owner, int depth) {
        const std::uint8_t head = byte();
        if (head == kNone)
            return;
        if (head != kNew) {
            (void)entryReferred(head, Entry::Kind::object);
            return;
        }
        if (depth >= kMaxDepth)
            throw Damaged();
        const std::size_t self = entries_.size();
        entries_.push_back({Entry::Kind::object, kNoEntry, {}});   // counted before its class
        entries_[self].superclass = classChain();
        // The first text below the attributed string is all of it; strings further in are names of attributes.
        const bool isText = isKindOf(owner, "NSAttributedString") && isKindOf(self, "NSString");
        while (at_ < bytes_.size() && static_cast<std::uint8_t>(bytes_[at_]) != kEnd) {
            const std::optional<std::string_view> bytes = group(self, depth + 1);
            if (isText && bytes && !text_)
                text_ = bytes;
            if (text_)
                return;
        }
        if (byte() != kEnd)
            throw Damaged();
    }

    void cString() {
        const std::uint8_t head = byte();
        if (head == kNew) {
            (void)sharedString();
            entries_.push_back({Entry::Kind::cString, kNoEntry, {}});
        } else if (head != kNone) {
            (void)entryReferred(head, Entry::Kind::cString);
        }
    }

    void floating(std::size_t size) {
        const std::uint8_t head = byte();
        if (head == kFloating)
            (void)take(size);
        else
            (void)integer(head);
    }

    // The values of one encoding; gives the bytes of the first '+' among them.
    std::optional<std::string_view> group(std::size_t owner, int depth) {
        std::string_view encoding = encodingOfGroup();
        if (encoding.empty())
            throw Damaged();
        std::optional<std::string_view> bytes;
        while (!encoding.empty() && !text_)
            value(encoding, owner, depth, bytes);
        return bytes;
    }

    // Takes one type off the encoding, and its value off the archive.
    void value(std::string_view &encoding, std::size_t owner, int depth, std::optional<std::string_view> &bytes) {
        if (encoding.empty() || depth > 2 * kMaxDepth || ++steps_ > kMaxSteps)
            throw Damaged();
        const char type = encoding.front();
        encoding.remove_prefix(1);
        switch (type) {
        case 'c': case 'C': case 'B': (void)take(1); return;
        case 's': case 'S': case 'i': case 'I': case 'l': case 'L': case 'q': case 'Q': (void)integer(byte()); return;
        case 'f': return floating(4);
        case 'd': return floating(8);
        case '*': return cString();
        case '%': case ':': (void)sharedString(); return;
        case '#': (void)classChain(); return;
        case '@': return object(owner, depth);
        case '!': return;   // a field that is left out
        case '+': {
            const std::string_view found = unsharedString();
            if (!bytes)
                bytes = found;
            return;
        }
        case '[': return array(encoding, owner, depth, bytes);
        case '{': return structure(encoding, owner, depth, bytes);
        default: throw Damaged();
        }
    }

    void array(std::string_view &encoding, std::size_t owner, int depth, std::optional<std::string_view> &bytes) {
        std::size_t count = 0;
        for (; !encoding.empty() && encoding.front() >= '0' && encoding.front() <= '9'; encoding.remove_prefix(1))
            if ((count = count * 10 + static_cast<std::size_t>(encoding.front() - '0')) > bytes_.size())
                throw Damaged();
        if (encoding.starts_with("c]") || encoding.starts_with("C]")) {
            (void)take(count);
            encoding.remove_prefix(2);
            return;
        }
        std::string_view rest = encoding;
        for (std::size_t i = 0; i < count && !text_; ++i) {
            rest = encoding;
            value(rest, owner, depth + 1, bytes);
        }
        if (text_)
            return;
        if (count == 0 || !rest.starts_with(']'))
            throw Damaged();
        encoding = rest.substr(1);
    }

    void structure(std::string_view &encoding, std::size_t owner, int depth, std::optional<std::string_view> &bytes) {
        const std::size_t name = encoding.find('=');
        if (name == std::string_view::npos)
            throw Damaged();
        encoding.remove_prefix(name + 1);
        while (!text_ && !encoding.starts_with('}'))
            value(encoding, owner, depth + 1, bytes);
        if (!text_)
            encoding.remove_prefix(1);
    }

    std::string_view bytes_;
    std::size_t at_ = 0, steps_ = 0;
    std::vector<std::string_view> strings_;
    std::vector<Entry> entries_;
    std::optional<std::string_view> text_;
};

}  // namespace

std::optional<std::string_view> textOfTypedStream(std::string_view archive) { return Reader(archive).text(); }

}  // namespace device::messages
