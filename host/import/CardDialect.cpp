#include "host/import/CardDialect.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "host/import/CardProperty.h"
#include "host/import/ForeignContact.h"
#include "host/import/Labels.h"
#include "host/import/Pictures.h"
#include "toolkit/NSString.h"

namespace host::foreign {

namespace {

std::size_t occurrences(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string_view::npos; at += part.size())
        ++count;
    return count;
}

bool has(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

// An escape that the reader would leave in the text.
bool hasEscape(std::string_view text) {
    for (std::size_t at = 0; (at = text.find('\\', at)) != std::string_view::npos; at += 2)
        if (at + 1 < text.size() && std::string_view(",;:nN\\").find(text[at + 1]) != std::string_view::npos)
            return true;
    return false;
}

// The same for a note, where it knows three.
bool hasForeignEscape(std::string_view text) {
    for (std::size_t at = 0; (at = text.find('\\', at)) != std::string_view::npos; at += 2)
        if (at + 1 < text.size() && std::string_view("nr\\").find(text[at + 1]) == std::string_view::npos)
            return true;
    return false;
}

// "TYPE=HOME" or "HOME" first, in one word; the text is not encoded in any way.
bool isPlainHead(std::string_view parameters) {
    const std::string head = upper(parameters);
    for (const std::string_view word : {"QUOTED-PRINTABLE", "CHARSET", "BASE64", "VALUE=", "ENCODING", "\""})
        if (has(head, word))
            return false;
    std::string_view first = parameters.substr(0, parameters.find(';'));
    const std::size_t equals = first.find('=');
    if (equals != std::string_view::npos && upper(first.substr(0, equals)) != "TYPE")
        return false;
    first = first.substr(equals == std::string_view::npos ? 0 : equals + 1);
    for (std::size_t comma; (comma = first.find(',')) != std::string_view::npos; first.remove_prefix(comma + 1))
        if (isTypeWord(trimmed(first.substr(0, comma))) || isTypeWord(trimmed(first.substr(comma + 1))))
            return false;   // a list: the reader takes it for one word
    return !first.empty() && upper(first) != "PREF";
}

class Check {
public:
    explicit Check(std::string_view bytes) : rest_(bytes), bytes_(bytes) {}

    bool run() {
        if (!unicode::isValid(bytes_) || bytes_.empty() || bytes_.starts_with("\xEF\xBB\xBF"))
            return false;
        while (!rest_.empty())
            if (!takeLine())
                return false;
        return !isOpen_ && cards_ > 0 && occurrences(bytes_, "END:VCARD") == cards_;
    }

private:
    // The fields of a card that a second line would overwrite.
    enum Field : std::uint32_t { kName = 1, kFirst = 2, kLast = 4, kOrg = 8, kNick = 16, kBirthday = 32, kTitle = 64, kNote = 128, kPhoto = 256 };
    using Test = bool (Check::*)(std::string_view value);
    struct Row {
        std::string_view prefix;
        Test test;
        std::uint32_t field;
    };
    static const Row kRows[18];

    bool takeLine() {
        const std::size_t cut = rest_.find('\n');
        std::string_view line = rest_.substr(0, cut);
        hasCr_ = line.ends_with('\r');
        rest_.remove_prefix(cut == std::string_view::npos ? rest_.size() : cut + 1);
        hasNext_ = cut != std::string_view::npos;
        if (hasCr_)
            line.remove_suffix(1);
        const bool isFolded = line.starts_with(' ') || line.starts_with('\t');
        const std::string_view inner = trimmed(line);
        // The reader trims blanks alone.
        const std::string_view front(line.data(), inner.data()), back(inner.data() + inner.size(), line.data() + line.size());
        if (hasControl(front) || hasControl(back))
            return false;
        if (inner.empty())
            return cards_ > 0;
        return !isFolded && !has(inner, "\r") && !has(inner, std::string_view("\0", 1)) && readLine(inner);
    }

    static bool hasControl(std::string_view text) {
        return std::ranges::any_of(text, [](char c) { return static_cast<unsigned char>(c) < ' ' && c != '\t'; });
    }

    bool readLine(std::string_view line) {
        if (line == "BEGIN:VCARD")
            return begin();
        if (!isOpen_)
            return false;
        if (line == "END:VCARD") {
            isOpen_ = false;
            // A name that stands in FN alone is lost, but for a company's own card.
            return hasName_ || formattedName_.empty() || unescaped(formattedName_) == company_;
        }
        const std::string_view label = std::exchange(labelled_, {});
        if (line.starts_with("item"))
            return item(line, label);
        for (const Row &row : kRows)
            if (line.starts_with(row.prefix)) {
                const bool isSecond = (seen_ & row.field) != 0;
                seen_ |= row.field;
                const std::string_view value = line.substr(row.prefix.size());
                return !isSecond && !has(value, row.prefix) && (this->*row.test)(value);
            }
        return false;
    }

    bool begin() {
        if (isOpen_)
            return false;
        isOpen_ = true;
        ++cards_;
        seen_ = 0;
        hasName_ = false;
        formattedName_ = company_ = {};
        return true;
    }

    // ---- the values
    bool any(std::string_view) { return true; }
    bool plain(std::string_view value) { return !hasEscape(value); }
    bool name(std::string_view value) {
        const bool isEmpty = value.find_first_not_of("; ") == std::string_view::npos;
        hasName_ = !isEmpty;
        return std::ranges::count(value, ';') == 4 && !has(value, ":") && !hasEscape(value);
    }
    bool formattedName(std::string_view value) {
        formattedName_ = value;
        return true;
    }
    bool organisation(std::string_view value) {
        company_ = value.substr(0, value.find(';'));
        return std::ranges::count(value, ';') == 1 && !hasEscape(value);
    }
    bool note(std::string_view value) { return !has(value, "NOTE:") && !hasForeignEscape(value); }
    bool photo(std::string_view value) {
        const auto bytes = base64Decoded(value);
        return bytes && isPicture(*bytes) && value.find_first_of("-_ ") == std::string_view::npos && value.size() % 4 == 0;
    }
    bool labelledValue(std::string_view value) {
        const std::size_t colon = value.find(':');
        return colon != std::string_view::npos && !has(value.substr(colon + 1), ":") && isPlainHead(value.substr(0, colon)) &&
               !hasEscape(value.substr(colon + 1));
    }
    bool email(std::string_view value) {
        if (upper(value.substr(0, 14)) == "TYPE=INTERNET;")   // the type stands second
            value.remove_prefix(14);
        return upper(value.substr(0, value.find_first_of(":;"))) != "TYPE=INTERNET" && upper(value.substr(0, 9)) != "INTERNET:" &&
               labelledValue(value);
    }
    bool url(std::string_view value) {   // one colon of the scheme
        return std::ranges::count(value, ':') == 2 && isPlainHead("TYPE=" + std::string(value.substr(0, value.find(':')))) && !hasEscape(value) &&
               !has(value.substr(0, value.find(':')), ";");
    }
    bool messenger(std::string_view value) {   // behind "IMPP;X-SERVICE-TYPE="
        const std::size_t type = value.find(";TYPE=");
        return type != std::string_view::npos && type > 0 && occurrences(value, "TYPE=") == 1 && std::ranges::count(value, ':') == 2 &&
               !hasEscape(value);
    }
    bool oneColon(std::string_view value) { return std::ranges::count(value, ':') == 1 && !hasEscape(value); }

    // ---- items
    bool item(std::string_view line, std::string_view label) {
        static constexpr std::string_view kWords[] = {".TEL", ".EMAIL", ".URL", ".IMPP", ".ADR", ".X-ABRELATEDNAMES", ".X-ABDATE"};
        const std::size_t dot = line.find('.'), colon = line.find(':');
        if (dot == std::string_view::npos || colon == std::string_view::npos || dot > colon)
            return false;
        const std::string_view group = line.substr(0, dot), head = line.substr(dot, colon - dot), value = line.substr(colon + 1);
        const bool isOneKind = std::ranges::none_of(kWords, [&](std::string_view word) { return has(value, word); });
        if (head == ".X-ABLabel")
            return group == label && !label.empty() && isLabel(value) && isOneKind;
        if (head == ".X-ABADR")
            return isOneKind;
        const auto *word = std::ranges::find_if(kWords, [&](std::string_view w) { return has(line, w); });
        if (word == std::end(kWords) || !head.starts_with(*word) || hasEscape(value))
            return false;
        const std::string_view parameters = head.substr(word->size());
        switch (word - kWords) {
        case 0:
        case 1: return parameters.empty() && !has(value, ":");
        case 2:
            labelled_ = group;
            return parameters.empty() && !has(line, ".URL:" + std::string(value) + ".URL:") && occurrences(line, ".URL:") == 1 &&
                   !has(line, ";TYPE=pref:") && !has(line, ";type=pref:") && isLabelNext(group);
        case 3: return parameters.starts_with(";X-SERVICE-TYPE=") && occurrences(line, "TYPE=") == 1 && std::ranges::count(value, ':') == 1;
        case 4: return isAddress(parameters, value);
        default: labelled_ = group; return parameters.empty() && !has(value, ":") && isLabelNext(group);
        }
    }
    bool isAddress(std::string_view parameters, std::string_view value) {
        return (parameters.empty() || (parameters.starts_with(";TYPE=") && isPlainHead(parameters.substr(1)) && occurrences(parameters, ";") == 1)) &&
               std::ranges::count(value, ';') == 6 && value.starts_with(";;") && !has(value, ":");
    }
    // The reader looks at the line below whatever it is.
    [[nodiscard]] bool isLabelNext(std::string_view group) const {
        return hasNext_ && rest_.starts_with(std::string(group) + ".X-ABLabel:");
    }
    [[nodiscard]] bool isLabel(std::string_view value) const {
        return hasCr_ && value.starts_with("_$!<") && value.ends_with(">!$_") && value.size() > 8 && !has(value, ":") && !has(value, ".");
    }

    std::string_view rest_, bytes_;
    bool hasCr_ = false, hasNext_ = false, isOpen_ = false, hasName_ = false;
    std::size_t cards_ = 0;
    std::uint32_t seen_ = 0;
    std::string_view formattedName_, company_;
    std::string_view labelled_;   // the group whose label line is below
};

const Check::Row Check::kRows[18] = {
    {"N:", &Check::name, kName},
    {"FN:", &Check::formattedName, 0},
    {"X-PHONETIC-FIRST-NAME:", &Check::plain, kFirst},
    {"X-PHONETIC-LAST-NAME:", &Check::plain, kLast},
    {"X-PHONETIC-MIDDLE-NAME:", &Check::any, 0},
    {"ORG:", &Check::organisation, kOrg},
    {"NICKNAME:", &Check::plain, kNick},
    {"BDAY;VALUE=date:", &Check::plain, kBirthday},
    {"TITLE:", &Check::plain, kTitle},
    {"NOTE:", &Check::note, kNote},
    {"PHOTO;ENCODING=b;TYPE=JPEG:", &Check::photo, kPhoto},
    {"EMAIL;", &Check::email, 0},
    {"TEL;", &Check::labelledValue, 0},
    {"URL;TYPE=", &Check::url, 0},
    {"IMPP;X-SERVICE-TYPE=", &Check::messenger, 0},
    {"X-ABRELATEDNAMES;TYPE=", &Check::oneColon, 0},
    {"X-ABDATE;TYPE=", &Check::oneColon, 0},
    {"VERSION:", &Check::any, 0},
};

}  // namespace

bool isCardDialect(std::string_view bytes) { return Check(bytes).run(); }

}  // namespace host::foreign
