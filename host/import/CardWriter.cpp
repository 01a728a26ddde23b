#include "host/import/CardWriter.h"

#include <algorithm>
#include <cstdint>

namespace host::foreign {

namespace {

// Words that the reader looks for anywhere in a line, or anywhere in the file; a CR within hides them.
constexpr std::string_view kWords[] = {"END:VCARD", ".TEL",   ".EMAIL", ".URL",       ".IMPP",
                                       ".ADR",      ".X-AB",  "TYPE",   "type=pref:", "NOTE:"};

// The reader takes line ends out of a field, so a CR may stand within.
std::string hidden(std::string text, std::string_view literal = {}) {
    const auto hide = [&](std::string_view word) {
        if (text.find(word) != std::string::npos)
            replaceAll(text, word, std::string(word.substr(0, 2)) + "\r" + std::string(word.substr(2)));
    };
    for (const std::string_view word : kWords)
        hide(word);
    if (!literal.empty())
        hide(literal);
    return text;
}

struct Substitute {
    char character;
    std::string_view by;
};
constexpr Substitute kSubstitutes[] = {{':', "："}, {';', "；"}, {'=', "＝"}};

class Card {
public:
    Card(std::string &to, ForeignContact &contact) : to_(to), c_(contact) {}

    void append() {
        line("BEGIN:VCARD");
        line("VERSION:3.0");
        names();
        work();
        numbers();
        messengers();
        addresses();
        labelledItems();
        if (!c_.notes.empty())
            line("NOTE:" + note());
        if (!c_.picture.empty()) {
            to_.append("PHOTO;ENCODING=b;TYPE=JPEG:");
            appendBase64(to_, c_.picture);
            to_ += '\n';
        }
        to_.append("END:VCARD\n");
    }

private:
    // A label that ends with "END" before a number that begins with "VCARD" would end the card; a label may hold a CR.
    void line(std::string text) {
        replaceAll(text, "END:VCARD", "EN\rD:VCARD");
        to_.append(text).append("\n");
    }

    // One line, without the characters that end a field; `what` names the field where something had to change.
    std::string part(const std::string &text, std::string_view ends, std::string_view what) {
        std::string out;
        bool isChanged = false;
        for (const char c : text) {
            const auto *substitute = ends.find(c) == std::string_view::npos ? nullptr : std::ranges::find(kSubstitutes, c, &Substitute::character);
            if (substitute)
                out.append(substitute->by);
            else if (c == '\n')
                out.append(", ");
            else if (c != '\r')
                out += c;
            isChanged = isChanged || substitute;
        }
        if (isChanged)
            c_.leave("the signs " + std::string(ends) + " in " + leftBehind(what, text) + ", written full-width");
        if (text.find('\n') != std::string::npos)
            c_.leave("the line breaks in " + leftBehind(what, text) + ", now commas");
        return out;
    }
    std::string label(const std::string &label) { return label.empty() ? "other" : part(label, ":;=", "label"); }

    void names() {
        const auto name = [&](const std::string &text) { return hidden(part(text, ":;", "name")); };
        line("N:" + name(c_.lastName) + ";" + name(c_.firstName) + ";" + name(c_.middleName) + ";" + name(c_.nameTitle) + ";" +
             name(c_.nameSuffix));
        text("X-PHONETIC-FIRST-NAME:", c_.firstNameYomi);
        text("X-PHONETIC-LAST-NAME:", c_.lastNameYomi);
        if (!c_.middleNameYomi.empty())
            c_.leave(leftBehind("phonetic middle name", c_.middleNameYomi));
        text("NICKNAME:", c_.nickname);
    }

    void work() {
        if (!c_.company.empty() || !c_.department.empty())
            line("ORG:" + hidden(part(c_.company, ";", "company"), "ORG:") + ";" + hidden(part(c_.department, ";", "department"), "ORG:"));
        text("TITLE:", c_.jobTitle);
        text("BDAY;VALUE=date:", c_.birthday);
    }

    // A number keeps a CR, so none may hide anything in it.
    void numbers() {
        for (const LabelledText &phone : c_.phones) {
            std::string number = part(phone.text, ":", "number");
            replaceAll(number, "TEL;", "TEL；");
            std::string type = label(phone.label);
            line("TEL;TYPE=" + type + ":" + number);
        }
        for (const LabelledText &email : c_.emails) {
            std::string type = label(email.label);
            if (const std::string word = upper(type); word == "INTERNET" || type == "pref")
                type = "other";
            line("EMAIL;TYPE=" + type + ":" + hidden(part(email.text, ":", "e-mail"), "EMAIL;"));
        }
    }

    void messengers() {
        for (const Messenger &im : c_.messengers) {
            if (!im.label.empty() && im.label != "other")
                c_.leave("the label \"" + im.label + "\" of " + leftBehind(im.service, im.user));
            line("IMPP;X-SERVICE-TYPE=" + hidden(part(im.service, ":;", "service")) + ";TYPE=other:x-apple:" + hidden(part(im.user, ":", "messenger")));
        }
    }

    std::string nextItem() { return "item" + std::to_string(++items_); }

    // The type stands right behind the word: the reader keeps an "=".
    void addresses() {
        for (const PostalAddress &a : c_.addresses) {
            std::string value = ":;";
            for (const std::string *text : {&a.street, &a.city, &a.state, &a.postalCode, &a.country})
                value += ";" + hidden(part(*text, ":;", "address"));
            line(nextItem() + ".ADR;TYPE" + hidden(label(a.label)) + value);
        }
    }

    // Where a CR would stay in the text, a full-width point hides what the reader takes for another kind of item.
    static std::string withoutWords(std::string text, std::string_view oneMore = {}) {
        for (const std::string_view word : {std::string_view(".TEL"), std::string_view(".EMAIL"), std::string_view(".URL"), std::string_view(".IMPP"),
                                            std::string_view(".ADR"), oneMore})
            if (!word.empty())
                replaceAll(text, word, "．" + std::string(word.substr(1)));
        return text;
    }

    void labelled(const char *property, const std::string &value, const std::string &label) {
        const std::string item = nextItem();
        line(item + property + value);
        line(item + ".X-ABLabel:_$!<" + (label.empty() ? "other" : withoutWords(part(label, ":", "label"), ".X-AB")) + ">!$_\r");
    }

    void labelledItems() {
        for (const LabelledText &url : c_.urls)
            labelled(".URL:", hidden(oneLine(url.text)), url.label);
        for (const LabelledText &related : c_.relatedNames) {   // keeps a CR as a number does
            labelled(".X-ABRELATEDNAMES:", withoutWords(part(related.text, ":", "related name")), related.label);
        }
        for (const LabelledText &date : c_.dates)
            labelled(".X-ABDATE:", hidden(part(date.text, ":", "date")), date.label);
    }

    static std::string oneLine(std::string text) {
        std::ranges::replace(text, '\n', ' ');
        return text;
    }

    void text(std::string_view property, const std::string &value) {
        if (!value.empty())
            line(std::string(property) + hidden(oneLine(value), property));
    }

    std::string note() {
        std::string out;
        for (const char c : c_.notes)
            out.append(c == '\n' ? "\\n" : c == '\\' ? "\\\\" : c == '\r' ? "" : std::string_view(&c, 1));
        if (out.find("&^HJ") != std::string::npos)
            c_.leave("the signs &^HJ in the note, now a backslash");
        return hidden(std::move(out));
    }

    static void appendBase64(std::string &to, std::string_view bytes) {
        constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        const auto byte = [&](std::size_t at) { return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U; };
        to.reserve(to.size() + (bytes.size() + 2) / 3 * 4 + 1);
        for (std::size_t at = 0; at < bytes.size(); at += 3) {
            const std::uint32_t group = byte(at) << 16 | byte(at + 1) << 8 | byte(at + 2);
            to += kAlphabet[group >> 18];
            to += kAlphabet[group >> 12 & 63];
            to += at + 1 < bytes.size() ? kAlphabet[group >> 6 & 63] : '=';
            to += at + 2 < bytes.size() ? kAlphabet[group & 63] : '=';
        }
    }

    std::string &to_;
    ForeignContact &c_;
    int items_ = 0;
};

}  // namespace

void appendCard(std::string &to, ForeignContact &contact) { Card(to, contact).append(); }

}  // namespace host::foreign
