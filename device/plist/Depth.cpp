#include "device/plist/Depth.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

namespace device::plist {

namespace {

constexpr std::size_t kTrailerBytes = 32;
constexpr std::size_t kHeaderBytes = 8;
constexpr std::uint64_t kMaxNodes = 4'000'000;   // shared objects are read once per reference: a small file can unfold

// Opening tags less closing ones; tags inside comments or CDATA only make it stricter.
bool isShallowXml(std::string_view bytes, int maxDepth) {
    int depth = 0;
    for (std::size_t at = bytes.find('<'); at != std::string_view::npos; at = bytes.find('<', at + 1)) {
        const std::string_view tag = bytes.substr(at + 1, 6);
        const std::size_t end = bytes.find_first_of("<>", at + 1);
        const bool isClosed = end != std::string_view::npos && bytes[end] == '>' && bytes[end - 1] == '/';
        if (tag.starts_with("dict") || tag.starts_with("array"))
            depth += isClosed ? 0 : 1;
        else if (tag.starts_with("/dict") || tag.starts_with("/array"))
            --depth;
        if (depth > maxDepth)
            return false;
    }
    return true;
}

// The container structure of a binary list.
class BinaryList {
public:
    explicit BinaryList(std::string_view bytes) : bytes_(bytes) {}

    bool isShallow(int maxDepth) {
        if (bytes_.size() < kHeaderBytes + kTrailerBytes)
            return false;
        const std::string_view trailer = bytes_.substr(bytes_.size() - kTrailerBytes);
        offsetSize_ = static_cast<unsigned char>(trailer[6]);
        referenceSize_ = static_cast<unsigned char>(trailer[7]);
        count_ = number(trailer, 8, 8);
        const std::uint64_t root = number(trailer, 16, 8);
        tableAt_ = number(trailer, 24, 8);
        const std::uint64_t end = bytes_.size() - kTrailerBytes;
        if (offsetSize_ < 1 || offsetSize_ > 8 || referenceSize_ < 1 || referenceSize_ > 8 || tableAt_ >= end ||
            count_ > (end - tableAt_) / offsetSize_ || root >= count_)
            return false;
        heights_.assign(count_, 0);
        nodes_.assign(count_, 0);
        return height(root, maxDepth).has_value();
    }

private:
    static std::uint64_t number(std::string_view bytes, std::size_t at, std::size_t size) {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < size; ++i)
            value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
        return value;
    }

    // 1 for an object without children; nothing where it is deeper than `left` or does not hold together. A ring is
    // deeper than anything. The recursion is as deep as `left` at most.
    std::optional<int> height(std::uint64_t object, int left) {
        if (object >= count_ || left <= 0)
            return std::nullopt;
        if (heights_[object])
            return heights_[object] <= left ? std::optional(heights_[object]) : std::nullopt;
        std::uint64_t at = number(bytes_, tableAt_ + object * offsetSize_, offsetSize_);
        const std::optional<std::uint64_t> references = referencesOf(at);
        if (!references)
            return std::nullopt;
        int tallest = 0;
        std::uint64_t nodes = 1;
        for (std::uint64_t i = 0; i < *references; ++i) {
            const std::uint64_t reference = number(bytes_, at + i * referenceSize_, referenceSize_);
            const auto child = height(reference, left - 1);
            if (!child || (nodes += nodes_[reference]) > kMaxNodes)
                return std::nullopt;
            tallest = std::max(tallest, *child);
        }
        nodes_[object] = nodes;
        return heights_[object] = tallest + 1;
    }

    // The number of references of the object at `at`, which moves to the first of them.
    std::optional<std::uint64_t> referencesOf(std::uint64_t &at) const {
        if (at < kHeaderBytes || at >= tableAt_)
            return std::nullopt;
        const unsigned char marker = static_cast<unsigned char>(bytes_[at++]);
        const int type = marker >> 4;
        if (type != 0xA && type != 0xC && type != 0xD)
            return 0;
        std::uint64_t count = marker & 0x0F;
        if (count == 0x0F) {
            if (at >= tableAt_)
                return std::nullopt;
            const std::size_t size = std::size_t{1} << (bytes_[at++] & 0x03);
            if (tableAt_ - at < size)
                return std::nullopt;
            count = number(bytes_, at, size);
            at += size;
        }
        const std::uint64_t perItem = type == 0xD ? 2 : 1;
        if (count > (tableAt_ - at) / referenceSize_ / perItem)
            return std::nullopt;
        return count * perItem;
    }

    std::string_view bytes_;
    std::size_t offsetSize_ = 0, referenceSize_ = 0;
    std::uint64_t count_ = 0, tableAt_ = 0;
    std::vector<int> heights_;
    std::vector<std::uint64_t> nodes_;   // with everything below
};

}  // namespace

bool isShallow(std::string_view bytes, int maxDepth) {
    return isBinary(bytes) ? BinaryList(bytes).isShallow(maxDepth) : isShallowXml(bytes, maxDepth);
}

}  // namespace device::plist
