#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/FoldedSearch.h"

#include <algorithm>
#include <cstring>

namespace bookmarks {

namespace {

constexpr std::size_t kOnStack = 512;
constexpr std::uint64_t kEach = 0x0101010101010101u, kHigh = 0x80 * kEach;

// Eight ASCII letters at once: where a byte is an upper-case letter, 0x20 is added. False where one is no ASCII.
bool lowered(std::string_view text, char *buffer) {
    std::size_t at = 0;
    for (; at < text.size(); at += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + at, std::min(sizeof word, text.size() - at));
        if ((word & kHigh) != 0)
            return false;
        const std::uint64_t fromA = word + (0x80 - 'A') * kEach, behindZ = word + (0x80 - 'Z' - 1) * kEach;
        word |= (fromA & ~behindZ & kHigh) >> 2;
        std::memcpy(buffer + at, &word, sizeof word);
    }
    return true;
}

}   // namespace

bool FoldedSearch::isIn(const NSString &text) const {
    const std::string_view bytes = text.view();
    char buffer[kOnStack];
    if (bytes.size() > kOnStack || !lowered(bytes, buffer))
        return text.folded().containsString(folded_.view());
    return std::string_view(buffer, bytes.size()).find(folded_.view()) != std::string_view::npos;
}

}   // namespace bookmarks
