#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/FoldedSearch.h"

#include <cstring>

namespace bookmarks {

namespace {

bool isPlain(std::string_view text) {
    std::size_t at = 0;
    for (std::uint64_t word; at + sizeof word <= text.size(); at += sizeof word) {
        std::memcpy(&word, text.data() + at, sizeof word);
        if ((word & 0x8080808080808080u) != 0)
            return false;
    }
    for (; at < text.size(); ++at)
        if (static_cast<signed char>(text[at]) < 0)
            return false;
    return true;
}

char lowered(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

}   // namespace

bool FoldedSearch::isIn(const NSString &text) const {
    return isPlain(text.view()) ? isInPlain(text.view()) : text.folded().containsString(folded_.view());
}

bool FoldedSearch::isInPlain(std::string_view text) const {
    constexpr std::size_t kOnStack = 512;
    if (text.size() > kOnStack)
        return NSString(text).folded().containsString(folded_.view());
    char buffer[kOnStack];
    for (std::size_t i = 0; i < text.size(); ++i)
        buffer[i] = lowered(text[i]);
    return std::string_view(buffer, text.size()).find(folded_.view()) != std::string_view::npos;
}

}   // namespace bookmarks
