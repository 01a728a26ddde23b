#include "device/contacts/CardText.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "device/contacts/ContactPicture.h"

namespace device::contacts {

namespace {

constexpr std::string_view kEnd = "\r\n";

// ---------------------------------------------------------------- texts

// Characters that end a part for the reader; a line break always does.
class Marks {
public:
    constexpr explicit Marks(std::string_view marks) {
        for (const char c : marks)
            isMark_[static_cast<unsigned char>(c)] = true;
        isMark_['\r'] = isMark_['\n'] = true;
    }
    [[nodiscard]] constexpr bool has(char c) const { return isMark_[static_cast<unsigned char>(c)]; }

private:
    std::array<bool, 256> isMark_{};
};
constexpr Marks kLineEnds(""), kColon(":"), kSemicolon(";"), kNamePart(":;"), kLabelPart(":;=");

std::string_view fullWidth(char mark) {
    switch (mark) {
    case ':': return "：";
    case ';': return "；";
    case '=': return "＝";
    case '.': return "．";
    case 'V': return "Ｖ";
    default: return " ";
    }
}

// Marks in full width, line breaks as blanks.
void appendText(std::string &to, std::string_view text, const Marks &marks) {
    for (std::size_t at = 0, run = 0;; ++at) {
        if (at < text.size() && !marks.has(text[at]))
            continue;
        to.append(text.substr(run, at - run));
        if (at == text.size())
            return;
        run = at + 1;
        if (text[at] == '\n' && at > 0 && text[at - 1] == '\r')
            continue;
        to.append(fullWidth(text[at]));
    }
}

// Words that the reader looks for anywhere in a line: behind `from` the mark at `mark` of each is written in full width.
void hideWord(std::string &text, std::size_t from, std::string_view word, std::size_t mark) {
    while ((from = text.find(word, from)) != std::string::npos) {
        const std::string_view by = fullWidth(word[mark]);
        text.replace(from + mark, 1, by);
        from += word.size() - 1 + by.size();
    }
}
// The mark is the word's last character.
void hideWord(std::string &text, std::size_t from, std::string_view word) { hideWord(text, from, word, word.size() - 1); }

// By these the reader tells item lines apart.
void hideItemWords(std::string &text, std::size_t from) {
    if (text.find('.', from) == std::string::npos)
        return;
    for (const char *word : {".TEL", ".EMAIL", ".URL", ".IMPP", ".ADR", ".X-AB"})
        hideWord(text, from, word, 0);
}

std::string_view labelText(const NSString &type) { return type.isEmpty() ? std::string_view("other") : type.view(); }

// For programs that undo escapes: the reader passes the line over.
void appendEscaped(std::string &to, std::string_view text) {
    for (const char c : text) {
        if (c == '\n' || c == '\r')
            to += c == '\n' ? "\\n" : "";
        else if (c == '\\' || c == ',' || c == ';')
            (to += '\\') += c;
        else
            to += c;
    }
}

void appendNote(std::string &to, std::string_view text) {
    const std::size_t from = to.size();
    for (std::size_t at; (at = text.find_first_of("\\\r\n")) != std::string_view::npos; text.remove_prefix(at + 1)) {
        to.append(text.substr(0, at));
        to += '\\';
        to += text[at] == '\\' ? '\\' : text[at] == '\n' ? 'n' : 'r';
    }
    to.append(text);
    hideWord(to, from, "NOTE:");   // the reader takes what stands behind the last one
}

void appendBase64(std::string &to, std::string_view bytes) {
    constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const std::size_t start = to.size();
    to.resize(start + (bytes.size() + 2) / 3 * 4, '=');
    char *out = to.data() + start;
    const auto byte = [&](std::size_t at) { return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at])); };
    std::size_t at = 0;
    for (; at + 2 < bytes.size(); at += 3, out += 4) {
        const std::uint32_t group = byte(at) << 16 | byte(at + 1) << 8 | byte(at + 2);
        out[0] = kAlphabet[group >> 18];
        out[1] = kAlphabet[group >> 12 & 63];
        out[2] = kAlphabet[group >> 6 & 63];
        out[3] = kAlphabet[group & 63];
    }
    const std::size_t left = bytes.size() - at;
    if (left == 0)
        return;
    const std::uint32_t group = byte(at) << 16 | (left == 2 ? byte(at + 1) << 8 : 0);
    out[0] = kAlphabet[group >> 18];
    out[1] = kAlphabet[group >> 12 & 63];
    if (left == 2)
        out[2] = kAlphabet[group >> 6 & 63];
}

// ---------------------------------------------------------------- a card

class Card {
public:
    Card(std::string &to, const ZpContactDataInfo &contact) : to_(to), contact_(contact) {}

    void append() {
        to_.append("BEGIN:VCARD\r\nVERSION:3.0\r\n");
        names();
        work();
        numbers();
        places();
        people();
        if (!contact_.notes().isEmpty()) {
            begin("NOTE:");
            appendNote(to_, contact_.notes().view());
            end();
        }
        picture();
        to_.append("END:VCARD\r\n");
    }

private:
    void begin(std::string_view property) {
        line_ = to_.size();
        to_.append(property);
    }
    // A card ends wherever these letters stand, in any line, even where a label ends and a number begins: their colon stays.
    void end() {
        hideWord(to_, line_, "END:VCARD", 4);
        to_.append(kEnd);
    }
    void add(const NSString &text, const Marks &marks, std::string_view hidden = {}) {
        const std::size_t from = to_.size();
        appendText(to_, text.view(), marks);
        if (!hidden.empty())
            hideWord(to_, from, hidden);
    }
    void addLabel(const NSString &type) { appendText(to_, labelText(type), kLabelPart); }
    void addItemText(const NSString &text, const Marks &marks) {
        const std::size_t from = to_.size();
        appendText(to_, text.view(), marks);
        hideItemWords(to_, from);
    }
    void line(std::string_view property, const NSString &value) {
        if (value.isEmpty())
            return;
        begin(property);
        add(value, kLineEnds, property);
        end();
    }

    void names() {
        begin("N:");
        const NSString *const parts[] = {&contact_.last_name(), &contact_.first_name(), &contact_.middle_name(), &contact_.name_title(),
                                         &contact_.name_suffix()};
        for (const NSString *part : parts) {
            if (part != parts[0])
                to_ += ';';
            add(*part, kNamePart);
        }
        end();
        begin("FN:");
        appendEscaped(to_, contact_.completeName().view());
        end();
        line("X-PHONETIC-FIRST-NAME:", contact_.first_name_yomi());
        line("X-PHONETIC-MIDDLE-NAME:", contact_.middle_name_yomi());
        line("X-PHONETIC-LAST-NAME:", contact_.last_name_yomi());
        line("NICKNAME:", contact_.nickname());
    }

    void work() {
        if (!contact_.company_name().isEmpty() || !contact_.department().isEmpty()) {
            begin("ORG:");
            add(contact_.company_name(), kSemicolon, "ORG:");
            to_ += ';';
            add(contact_.department(), kSemicolon, "ORG:");
            end();
        }
        line("TITLE:", contact_.job_title());
        line("BDAY;VALUE=date:", contact_.birthday());
    }

    void numbers() {
        for (const auto &phone : contact_.phone_numbers())
            if (!phone.phone_number.isEmpty()) {
                begin("TEL;TYPE=");
                addLabel(phone.type);
                to_ += ':';
                add(phone.phone_number, kColon, "TEL;");
                end();
            }
        for (const auto &email : contact_.emails())
            if (!email.email.isEmpty()) {
                begin("EMAIL;type=INTERNET;type=");
                addLabel(email.type);
                to_ += ':';
                add(email.email, kColon, "EMAIL;");
                end();
            }
        for (const auto &im : contact_.ims())
            if (!im.user.isEmpty()) {
                begin("IMPP;X-SERVICE-TYPE=");
                add(im.service, kLabelPart);
                to_.append(";TYPE=");
                addLabel(im.type);
                to_.append(":x-apple:");
                add(im.user, kColon, "TYPE=");
                end();
            }
    }

    // An address counts its parts at each ";", a URL of one colon stands whole in the plain form.
    void places() {
        for (const auto &address : contact_.addresses())
            addressItem(address);
        for (const auto &url : contact_.urls()) {
            if (url.url.isEmpty())
                continue;
            if (std::ranges::count(url.url.view(), ':') != 1) {
                labelled(".URL:", url.url, kLineEnds, url.type);
                continue;
            }
            begin("URL;TYPE=");
            addLabel(url.type);
            to_ += ':';
            add(url.url, kLineEnds, "URL;TYPE=");
            end();
        }
    }

    void addressItem(const ZpContactAddressDataInfo &address) {
        const NSString *const parts[] = {&address.street, &address.city, &address.state, &address.postal_code, &address.country};
        if (std::ranges::all_of(parts, [](const NSString *part) { return part->isEmpty(); }))
            return;
        beginItem(".ADR;TYPE=");
        addItemText(NSString(labelText(address.type)), kLabelPart);
        to_.append(":;");
        for (const NSString *part : parts) {
            to_ += ';';
            addItemText(*part, kNamePart);
        }
        end();
        if (address.country_code.isEmpty())
            return;
        againItem(".X-ABADR:");
        addItemText(address.country_code, kNamePart);
        end();
    }

    void people() {
        for (const auto &related : contact_.relatednames())
            if (!related.relatename.isEmpty())
                labelled(".X-ABRELATEDNAMES:", related.relatename, kColon, related.type);
        for (const auto &date : contact_.dates())
            if (!date.date.isEmpty())
                labelled(".X-ABDATE:", date.date, kColon, date.type);
    }

    // An item of two lines: the value, and its label below.
    void labelled(std::string_view property, const NSString &value, const Marks &marks, const NSString &type) {
        beginItem(property);
        const std::size_t from = to_.size();
        addItemText(value, marks);
        for (const char *word : {";TYPE=pref:", ";type=pref:"})   // the reader cuts a URL there
            hideWord(to_, from, word, 0);
        end();
        againItem(".X-ABLabel:_$!<");
        addItemText(NSString(labelText(type)), kLabelPart);
        to_.append(">!$_");
        end();
    }
    void beginItem(std::string_view property) {
        ++items_;
        againItem(property);
    }
    void againItem(std::string_view property) {
        begin("item");
        to_.append(std::to_string(items_)).append(property);
    }

    void picture() {
        const std::optional<std::string> bytes = exportedPictureOf(contact_);
        if (!bytes)
            return;
        to_.append("PHOTO;ENCODING=b;TYPE=JPEG:");
        appendBase64(to_, *bytes);
        to_.append(kEnd);
    }

    std::string &to_;
    const ZpContactDataInfo &contact_;
    std::size_t line_ = 0;   // where the line at work begins
    int items_ = 0;
};

}  // namespace

void appendCard(std::string &to, const ZpContactDataInfo &contact) { Card(to, contact).append(); }

}  // namespace device::contacts
