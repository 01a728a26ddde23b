#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/VisitAddress.h"

#include <algorithm>

namespace bookmarks {

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isOfHost(char c) { return isLetter(c) || isDigit(c) || c == '.' || c == '-'; }
bool isOfPath(char c) { return isOfHost(c) || std::string_view("~!@#$%^&*+?:_/=<>").find(c) != std::string_view::npos; }

template <class Test> std::string_view takeWhile(std::string_view &rest, Test test) {
    const auto end = static_cast<std::size_t>(std::ranges::find_if_not(rest, test) - rest.begin());
    const std::string_view taken = rest.substr(0, end);
    rest.remove_prefix(end);
    return taken;
}

bool isHostName(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0)
        return false;
    const std::string_view last = name.substr(dot + 1);
    return last.size() >= 2 && last.size() <= 4 && std::ranges::all_of(last, isLetter);
}

bool isHostWithPath(std::string_view rest) {
    if (!isHostName(takeWhile(rest, isOfHost)))
        return false;
    if (rest.starts_with(':')) {
        rest.remove_prefix(1);
        if (takeWhile(rest, isDigit).empty())
            return false;
    }
    if (rest.starts_with('/'))
        takeWhile(rest, isOfPath);
    return rest.empty();
}

// Behind "www" one character of any kind, but for those that end a line.
bool isWwwHost(std::string_view text) {
    if (!text.starts_with("www"))
        return false;
    std::size_t at = 3;
    if (at >= text.size())
        return false;
    const char32_t any = unicode::next(text, at);
    const bool endsLine = (any >= 0x0A && any <= 0x0D) || any == 0x85 || any == 0x2028 || any == 0x2029;
    return !endsLine && isHostWithPath(text.substr(at));
}

}   // namespace

bool isWholeAddress(const NSString &address) {
    const std::string_view text = address.view();
    for (const std::string_view scheme : {"http://", "https://", "ftp://"})
        if (text.starts_with(scheme))
            return isHostWithPath(text.substr(scheme.size()));
    return isWwwHost(text);
}

NSString addressToOpen(const NSString &address) {
    return isWholeAddress(address) ? address : NSString::stringWithFormat("http://%@", address.isNil() ? NSString("") : address);
}

}   // namespace bookmarks
