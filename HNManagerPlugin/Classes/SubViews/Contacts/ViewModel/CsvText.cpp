#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/CsvText.h"

#include <algorithm>

namespace csvText {

namespace {

constexpr std::string_view kBackslash = "&^HJ", kComma = "&^DouHao";

}   // namespace

OutOfRange::~OutOfRange() = default;

std::string replaceBackslashes(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (;;) {
        const std::size_t at = text.find('\\');
        out.append(text.substr(0, at));
        if (at == std::string_view::npos)
            return out;
        const char next = at + 1 < text.size() ? text[at + 1] : '\0';
        if (next == '\\')
            out.append(kBackslash);
        else if (next == 'n' || next == 'r')
            out += next == 'n' ? '\n' : '\r';
        else
            out += '\\';
        const bool isPair = next == '\\' || next == 'n' || next == 'r';
        text.remove_prefix(at + (isPair ? 2 : 1));
    }
}

std::string replaceCommaSymbol(std::string_view text) {
    if (text.empty())
        throw OutOfRange("there is no text behind the header");
    std::string out;
    out.reserve(text.size() + text.size() / 8);
    const std::size_t last = text.size() - 1;
    bool inside = false;
    std::size_t done = 0;   // what is in `out`
    for (std::size_t at = text.find('"'); at < last;) {
        if (text[at] == ',') {
            out.append(text.substr(done, at - done)).append(kComma);
            done = ++at;
        } else if (text[at + 1] == '"') {
            at += 2;
        } else {
            inside = !inside;
            ++at;
        }
        at = inside ? text.find_first_of("\",", at) : text.find('"', at);
    }
    return out.append(text.substr(done));
}

std::size_t countDoubleQuotationMarks(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count(text, '"'));
}

std::string replaceDoubleQuotationMarkString(std::string_view text) {
    if (text == "\"")
        throw OutOfRange("a field is one double quote");
    if (text.size() > 1 && text.front() == '"' && text.back() == '"')
        text = text.substr(1, text.size() - 2);
    std::string out;
    out.reserve(text.size());
    for (std::size_t at; (at = text.find("\"\"")) != std::string_view::npos; text.remove_prefix(at + 2))
        out.append(text.substr(0, at + 1));
    return out.append(text);
}

std::string deleteDoubleQuotationMarkString(std::string_view given) {
    std::string text;
    text.reserve(given.size());
    std::ranges::copy_if(given, std::back_inserter(text), [](char c) { return c != '\n' && c != '\r'; });
    if (text == "\"")
        throw OutOfRange("a field of a group is one double quote");
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char other = at + 1 < text.size() ? text[at + 1] : out.empty() ? '\0' : out.back();
        if (text[at] != '"' || other == '"')
            out += text[at];
        else if (++at < text.size())   // what moved into the gap is passed over
            out += text[at];
    }
    return out;
}

std::string changeCSVData(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (;;) {
        const std::size_t at = text.find("&^");
        out.append(text.substr(0, at));
        if (at == std::string_view::npos)
            return out;
        text.remove_prefix(at);
        const bool isBackslash = text.starts_with(kBackslash), isComma = text.starts_with(kComma);
        out.append(isBackslash ? "\\" : isComma ? "," : "&");
        text.remove_prefix(isBackslash ? kBackslash.size() : isComma ? kComma.size() : 1);
    }
}

// ---------------------------------------------------------------- fields

namespace {

bool isTakenOn(std::size_t quotes) { return quotes % 2 == 0 && quotes > 2; }

}   // namespace

Fields::Fields(std::string_view text, std::size_t limit) : text_(text), limit_(limit) {
    if (!combine())
        cut();
}

std::string_view Fields::fieldAt(std::size_t begin) const { return text_.substr(begin, text_.find(',', begin) - begin); }

void Fields::cut() {
    count_ = 0;
    spans_.clear();
    for (std::size_t begin = 0; begin <= text_.size();) {
        const std::size_t end = begin + fieldAt(begin).size();
        add({begin, end, end});
        begin = end + 1;
    }
}

// Once one opener has found no close up to the end, none behind it will either, nor anything that ends it all: what is left
// is not walked again for each.
bool Fields::combine() {
    bool endsOpen = false;
    for (std::size_t begin = 0; begin <= text_.size();) {
        const std::string_view field = fieldAt(begin);
        const std::size_t end = begin + field.size();
        if (!field.starts_with('"') || end >= text_.size()) {
            add({begin, end, end});
            begin = end + 1;
            continue;
        }
        std::size_t behind = endsOpen ? text_.size() : end;
        bool isClosed = false;
        while (!isClosed && behind < text_.size()) {
            const std::string_view next = fieldAt(behind + 1);
            const std::size_t quotes = countDoubleQuotationMarks(next);
            if (quotes == 0 || quotes == 2)
                return false;
            behind += 1 + next.size();
            isClosed = quotes % 2 == 1 && next.ends_with('"');
        }
        add({begin, end, behind});
        endsOpen = !isClosed;
        begin = (isClosed ? behind : end) + 1;
    }
    return true;
}

std::string Fields::at(std::size_t index) const {
    const Span &span = spans_[index];
    std::string field(text_.substr(span.begin, span.end - span.begin));
    for (std::size_t at = span.end; at < span.behind;) {
        const std::string_view next = fieldAt(at + 1);
        at += 1 + next.size();
        const std::size_t quotes = countDoubleQuotationMarks(next);
        const bool closes = quotes % 2 == 1 && next.ends_with('"');
        if (isTakenOn(quotes) || closes)
            field.append(",").append(next);
    }
    return field;
}

}   // namespace csvText
