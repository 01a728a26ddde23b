#include "host/import/ForeignContact.h"

#include <algorithm>

namespace host::foreign {

namespace {

std::string lowered(std::string_view text) {
    std::string out(text);
    std::ranges::transform(out, out.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
    return out;
}

// As much of a text as a person needs to know it again, on one line.
std::string startOf(std::string_view text) {
    constexpr std::size_t kMostBytes = 60;
    std::string start(text.substr(0, kMostBytes));
    while (start.size() < text.size() && !start.empty() && (static_cast<unsigned char>(text[start.size()]) & 0xC0) == 0x80)
        start.pop_back();
    std::ranges::replace_if(start, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return start.empty() || start.size() == text.size() ? start : start + "...";
}

}  // namespace

bool ForeignContact::isEmpty() const {
    const std::string *const texts[] = {&lastName,      &firstName,      &middleName, &nameTitle, &nameSuffix, &firstNameYomi, &lastNameYomi,
                                        &middleNameYomi, &nickname,       &company,    &department, &jobTitle,   &birthday,      &notes};
    return std::ranges::all_of(texts, [](const std::string *text) { return text->empty(); }) && phones.empty() && emails.empty() &&
           urls.empty() && dates.empty() && relatedNames.empty() && addresses.empty() && messengers.empty() && picture.empty();
}

void ForeignContact::leave(std::string what) {
    constexpr std::size_t kMost = 40;
    if (notCarried.size() < kMost)
        notCarried.push_back(std::move(what));
    else
        ++alsoNotCarried;
}

std::string ForeignContact::title() const {
    std::string name = joined({firstName, middleName, lastName}, " ");
    if (!name.empty())
        return name;
    for (const std::string *text : {&company, &nickname})
        if (!text->empty())
            return *text;
    for (const auto *list : {&emails, &phones})
        if (!list->empty())
            return list->front().text;
    return {};
}

std::string leftBehind(std::string_view what, std::string_view text) {
    const std::string start = startOf(text);
    return start.empty() ? startOf(what) : startOf(what) + " \"" + start + "\"";
}

bool tellsNothingNew(std::string_view text, std::string_view known) {
    constexpr std::size_t kMostBytes = 1000;
    if (text.size() > kMostBytes || known.size() > 4 * kMostBytes)
        return text == known;
    const std::string haystack = lowered(known);
    const std::string words = lowered(text);
    constexpr std::string_view kBetween = " ,.;\n\r\t\"()/-";
    for (std::size_t at = 0; (at = words.find_first_not_of(kBetween, at)) != std::string::npos;) {
        const std::size_t end = std::min(words.find_first_of(kBetween, at), words.size());
        if (haystack.find(words.substr(at, end - at)) == std::string::npos)
            return false;
        at = end;
    }
    return true;
}

std::string joined(const std::vector<std::string> &parts, std::string_view between) {
    std::string text;
    for (const std::string &part : parts)
        if (!part.empty())
            text.append(text.empty() ? "" : between).append(part);
    return text;
}

std::string_view trimmed(std::string_view text) {
    const auto isSpace = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
    while (!text.empty() && (isSpace(text.front()) || text.starts_with("\xC2\xA0")))
        text.remove_prefix(isSpace(text.front()) ? 1 : 2);
    while (!text.empty() && (isSpace(text.back()) || text.ends_with("\xC2\xA0")))
        text.remove_suffix(isSpace(text.back()) ? 1 : 2);
    return text;
}

std::string upper(std::string_view ascii) {
    std::string text(ascii);
    std::ranges::transform(text, text.begin(), [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; });
    return text;
}

void replaceAll(std::string &text, std::string_view part, std::string_view by) {
    std::size_t at = text.find(part);
    if (at == std::string::npos)
        return;
    std::string out;
    std::size_t copied = 0;
    for (; at != std::string::npos; at = text.find(part, copied)) {
        out.append(text, copied, at - copied).append(by);
        copied = at + part.size();
    }
    text = out.append(text, copied);
}

}  // namespace host::foreign
