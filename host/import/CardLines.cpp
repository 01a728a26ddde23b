#include "host/import/CardLines.h"

#include <algorithm>

#include "host/import/ForeignContact.h"

namespace host::foreign {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }
bool isBlankLine(std::string_view line) { return std::ranges::all_of(line, isBlank); }

bool isBase64Line(std::string_view line) {
    return std::ranges::all_of(line, [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' || c == '/' || c == '=' || isBlank(c);
    });
}

bool isCardEnd(std::string_view line) { return upper(trimmed(line)) == "END:VCARD"; }

bool namesBase64(std::string_view head) {
    const std::size_t encoding = head.find("ENCODING=B");
    return head.find("BASE64") != std::string_view::npos ||
           (encoding != std::string_view::npos && (encoding + 10 == head.size() || head[encoding + 10] == ';'));
}

}  // namespace

CardLines::CardLines(std::string_view bytes) : bytes_(bytes) {
    if (bytes.find('\n') == std::string_view::npos)
        lineEnd_ = '\r';
}

std::string_view CardLines::peek() const {
    std::string_view line = bytes_.substr(at_, bytes_.find(lineEnd_, at_) - at_);
    while (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

std::string_view CardLines::take() {
    const std::string_view line = peek();
    const std::size_t end = bytes_.find(lineEnd_, at_);
    at_ = end == std::string_view::npos ? bytes_.size() : end + 1;
    ++taken_;
    return line;
}

// The encoding stands before the first colon, which may itself come after a fold.
void CardLines::noteHead() {
    if (hasHead_)
        return;
    const std::size_t colon = line_.find(':');
    constexpr std::size_t kMostHead = 4096;   // what has no colon by then is no property
    hasHead_ = colon != std::string::npos || line_.size() > kMostHead;
    if (colon == std::string::npos || colon > kMostHead)
        return;
    const std::string head = upper(std::string_view(line_).substr(0, colon));
    isQuotedPrintable_ = head.find("QUOTED-PRINTABLE") != std::string::npos;
    isBase64_ = namesBase64(head);
}

void CardLines::appendFolded(std::string_view line) {
    line.remove_prefix(1);
    if (keepsBlank_ && !isBase64_ && !isQuotedPrintable_) {
        while (!line.empty() && isBlank(line.front()))
            line.remove_prefix(1);
        line_ += ' ';
    }
    line_.append(line);
}

bool CardLines::appendNext() {
    if (atEnd())
        return false;
    const std::string_view below = peek();
    if (isQuotedPrintable_ && line_.ends_with('=') && !isCardEnd(below)) {
        line_.pop_back();
        line_.append(take());
        return true;
    }
    if (!below.empty() && isBlank(below.front()) && !isBlankLine(below)) {
        appendFolded(take());
        return true;
    }
    if (isBase64_ && !below.empty() && isBase64Line(below)) {
        line_.append(take());
        return true;
    }
    return false;
}

bool CardLines::next() {
    std::string_view first;
    do {
        if (atEnd())
            return false;
        first = take();
    } while (isBlankLine(first));
    number_ = taken_;
    line_.assign(first);
    hasHead_ = isQuotedPrintable_ = isBase64_ = false;
    do
        noteHead();
    while (appendNext());
    return true;
}

}  // namespace host::foreign
