#include "host/import/CardProperty.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "host/import/ForeignContact.h"

namespace host::foreign {

namespace {

int hexDigit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// The first of `characters` outside double quotes; npos where there is none.
std::size_t findUnquoted(std::string_view text, std::string_view characters, std::size_t from = 0) {
    bool isQuoted = false;
    for (std::size_t at = from; at < text.size(); ++at) {
        if (text[at] == '"')
            isQuoted = !isQuoted;
        else if (!isQuoted && characters.find(text[at]) != std::string_view::npos)
            return at;
    }
    return std::string_view::npos;
}

std::string caretsUndone(std::string_view text) {
    std::string out;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char next = at + 1 < text.size() ? text[at + 1] : '\0';
        if (text[at] == '^' && (next == 'n' || next == '^' || next == '\'')) {
            out += next == 'n' ? '\n' : next == '^' ? '^' : '"';
            ++at;
        } else if (text[at] != '"') {
            out += text[at];
        }
    }
    return out;
}

constexpr std::string_view kEncodings[] = {"BASE64", "QUOTED-PRINTABLE", "8BIT", "7BIT", "B"};
bool isEncoding(const std::string &word) { return std::ranges::find(kEncodings, word) != std::end(kEncodings); }

}  // namespace

// ---------------------------------------------------------------- taking apart

std::optional<CardProperty> CardProperty::parse(std::string_view line) {
    std::size_t colon = findUnquoted(line, ":");
    if (colon == std::string_view::npos)
        colon = line.find(':');   // a quote that nobody closed
    if (colon == std::string_view::npos)
        return std::nullopt;
    CardProperty property;
    property.value = line.substr(colon + 1);
    if (!property.readHead(line.substr(0, colon)))
        return std::nullopt;
    return property;
}

bool CardProperty::readHead(std::string_view head) {
    std::size_t cut = findUnquoted(head, ";");
    std::string_view front = trimmed(head.substr(0, cut));
    if (const std::size_t dot = front.rfind('.'); dot != std::string_view::npos) {
        group = front.substr(0, dot);
        front.remove_prefix(dot + 1);
    }
    name = upper(front);
    while (cut != std::string_view::npos) {
        const std::size_t end = findUnquoted(head, ";", cut + 1);
        addParameter(head.substr(cut + 1, end == std::string_view::npos ? end : end - cut - 1));
        cut = end;
    }
    return !name.empty();
}

void CardProperty::addParameter(std::string_view text) {
    const std::size_t equals = text.find('=');
    const std::string_view word = trimmed(text.substr(equals == std::string_view::npos ? 0 : equals + 1));
    std::string name = equals == std::string_view::npos ? "" : upper(trimmed(text.substr(0, equals)));
    if (name.empty())
        name = isEncoding(upper(word)) ? "ENCODING" : "TYPE";
    constexpr std::size_t kMostParameters = 256;   // no program needs as many
    if (!word.empty() && parameters_.size() < kMostParameters)
        parameters_.push_back({std::move(name), std::string(word)});
}

std::optional<std::string> CardProperty::parameter(std::string_view name) const {
    const auto found = std::ranges::find(parameters_, name, &Parameter::name);
    return found == parameters_.end() ? std::nullopt : std::optional(caretsUndone(found->value));
}

std::vector<std::string_view> CardProperty::parameterNames() const {
    std::vector<std::string_view> names;
    for (const Parameter &parameter : parameters_)
        names.emplace_back(parameter.name);
    return names;
}

std::vector<std::string> CardProperty::types() const {
    std::vector<std::string> words;
    for (const Parameter &parameter : parameters_) {
        if (parameter.name != "TYPE")
            continue;
        std::string rest = caretsUndone(parameter.value);
        for (std::size_t from = 0, comma = 0; comma != std::string::npos; from = comma + 1) {
            comma = rest.find(',', from);
            std::string_view word = trimmed(std::string_view(rest).substr(from, comma == std::string::npos ? comma : comma - from));
            if (upper(word.substr(0, 5)) == "TYPE=")   // "TYPE=HOME,TYPE=VOICE"
                word.remove_prefix(5);
            if (!word.empty())
                words.emplace_back(word);
        }
    }
    return words;
}

bool CardProperty::isBase64() const {
    const std::string encoding = upper(parameter("ENCODING").value_or(""));
    return encoding == "B" || encoding == "BASE64";
}

bool CardProperty::isQuotedPrintable() const { return upper(parameter("ENCODING").value_or("")) == "QUOTED-PRINTABLE"; }

// ---------------------------------------------------------------- the value

std::string CardProperty::decoded(std::string_view piece, const Decode &decode) const {
    const auto charset = parameter("CHARSET");
    return isQuotedPrintable() ? decode(quotedPrintableDecoded(piece), charset) : decode(piece, charset);
}

std::string CardProperty::text(const Decode &decode) const { return unescaped(decoded(value, decode)); }

// A second byte of a two-byte charset may look like a backslash: such a value is decoded before it is cut. In
// quoted-printable the separators stand plain, and one that is encoded belongs to the text.
std::vector<std::string> CardProperty::parts(char separator, const Decode &decode) const {
    const std::string whole = isQuotedPrintable() ? std::string(value) : decoded(value, decode);
    constexpr std::size_t kMostParts = 64;   // the last one holds what is left
    std::vector<std::string> parts;
    std::size_t from = 0;
    const auto add = [&](std::size_t end) {
        const std::string_view piece = std::string_view(whole).substr(from, end - from);
        parts.push_back(unescaped(isQuotedPrintable() ? decoded(piece, decode) : std::string(piece)));
        from = end + 1;
    };
    for (std::size_t at = 0; at < whole.size(); ++at) {
        if (whole[at] == '\\')
            ++at;
        else if (whole[at] == separator && parts.size() + 1 < kMostParts)
            add(at);
    }
    add(std::max(whole.size(), from));
    return parts;
}

std::optional<std::string> CardProperty::bytes() const {
    std::string_view text = value;
    if (upper(trimmed(text).substr(0, 5)) == "DATA:") {
        const std::size_t comma = text.find(',');
        const bool isBase64Address = comma != std::string_view::npos && upper(text.substr(0, comma)).ends_with(";BASE64");
        return isBase64Address ? base64Decoded(text.substr(comma + 1)) : std::nullopt;
    }
    return base64Decoded(text);
}

std::string unescaped(std::string_view text) {
    if (text.find('\\') == std::string_view::npos)
        return std::string(text);
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char next = at + 1 < text.size() ? text[at + 1] : '\0';
        if (text[at] != '\\' || std::string_view("nN,;:\\\"'").find(next) == std::string_view::npos || next == '\0') {
            out += text[at];
            continue;
        }
        out += next == 'n' || next == 'N' ? '\n' : next;
        ++at;
    }
    return out;
}

std::string quotedPrintableDecoded(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const int high = at + 2 < text.size() && text[at] == '=' ? hexDigit(text[at + 1]) : -1;
        const int low = high < 0 ? -1 : hexDigit(text[at + 2]);
        if (low < 0) {
            out += text[at];
            continue;
        }
        out += static_cast<char>(high * 16 + low);
        at += 2;
    }
    return out;
}

std::optional<std::string> base64Decoded(std::string_view text) {
    std::string out;
    out.reserve(text.size() / 4 * 3);
    std::uint32_t bits = 0;
    int count = 0;
    bool isOver = false;
    for (const char c : text) {
        int digit = -1;
        if (c >= 'A' && c <= 'Z')
            digit = c - 'A';
        else if (c >= 'a' && c <= 'z')
            digit = c - 'a' + 26;
        else if (c >= '0' && c <= '9')
            digit = c - '0' + 52;
        else if (c == '+' || c == '-')
            digit = 62;
        else if (c == '/' || c == '_')
            digit = 63;
        else if (c == '=')
            isOver = true;
        else if (c != ' ' && c != '\t' && c != '\r' && c != '\n')
            return std::nullopt;
        if (digit < 0 || isOver)
            continue;
        bits = bits << 6 | static_cast<std::uint32_t>(digit);
        if (++count % 4 != 1)
            out += static_cast<char>(bits >> (6 - 2 * ((count + 3) % 4)) & 0xFF);
    }
    return out;
}

}  // namespace host::foreign
