#include "device/contacts/CardText.h"

#include <algorithm>
#include <initializer_list>

#include "device/contacts/ContactPicture.h"

namespace device::contacts {

namespace {

constexpr std::string_view kEnd = "\r\n", kColon = "：", kSemicolon = "；", kEquals = "＝", kFullStop = "．";

// ---------------------------------------------------------------- texts

void replaceAll(std::string &text, std::string_view part, std::string_view by) {
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += by.size())
        text.replace(at, part.size(), by);
}

// A card ends wherever these letters stand, in any line.
void hideCardEnd(std::string &text) { replaceAll(text, "END:VCARD", "END：VCARD"); }

std::string oneLine(const NSString &value) {
    std::string text = value.str();
    if (text.find_first_of("\r\n") != std::string::npos) {
        replaceAll(text, "\r\n", " ");
        for (char &c : text)
            if (c == '\r' || c == '\n')
                c = ' ';
    }
    hideCardEnd(text);
    return text;
}

// `hidden` are the characters that end a part.
std::string part(const NSString &value, std::string_view hidden) {
    std::string text = oneLine(value);
    if (text.find_first_of(hidden) == std::string::npos)
        return text;
    std::string out;
    for (const char c : text) {
        const bool isHidden = hidden.find(c) != std::string_view::npos;
        if (!isHidden)
            out += c;
        else
            out += c == ':' ? kColon : c == ';' ? kSemicolon : kEquals;
    }
    return out;
}

// Words by which the reader tells item lines apart; they count wherever they stand.
std::string itemPart(const NSString &value, std::string_view hidden) {
    std::string text = part(value, hidden);
    for (const std::string_view word : {"TEL", "EMAIL", "URL", "IMPP", "ADR", "X-AB"}) {
        const std::string marked = "." + std::string(word);
        replaceAll(text, marked, std::string(kFullStop) + std::string(word));
    }
    return text;
}

std::string label(const NSString &type) { return type.isEmpty() ? "other" : itemPart(type, ":;="); }

// For programs that undo escapes: the reader passes these lines over, or knows these escapes.
std::string escaped(const NSString &value, bool listsToo) {
    std::string out;
    for (const char c : value.view()) {
        if (c == '\n' || c == '\r')
            out += c == '\n' ? "\\n" : "";
        else if (c == '\\' || (listsToo && (c == ',' || c == ';')))
            (out += '\\') += c;
        else
            out += c;
    }
    hideCardEnd(out);
    return out;
}

std::string note(const NSString &value) {
    std::string text = value.str();
    replaceAll(text, "\\", "\\\\");
    replaceAll(text, "\n", "\\n");
    replaceAll(text, "\r", "\\r");
    replaceAll(text, "NOTE:", "NOTE：");   // the reader takes what stands behind the last one
    hideCardEnd(text);
    return text;
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
        line("BEGIN:VCARD");
        line("VERSION:3.0");
        names();
        work();
        numbers();
        places();
        people();
        if (!contact_.notes().isEmpty())
            line("NOTE:", note(contact_.notes()));
        picture();
        line("END:VCARD");
    }

private:
    template <class... Parts>
    void line(Parts &&...parts) {
        (to_.append(parts), ...);
        to_.append(kEnd);
    }
    void text(const char *name, const NSString &value) {
        if (!value.isEmpty())
            line(name, oneLine(value));
    }

    void names() {
        constexpr std::string_view kHidden = ":;";
        const auto name = [&](const NSString &value) { return part(value, kHidden); };
        line("N:", name(contact_.last_name()), ";", name(contact_.first_name()), ";", name(contact_.middle_name()), ";",
             name(contact_.name_title()), ";", name(contact_.name_suffix()));
        line("FN:", escaped(contact_.completeName(), true));
        text("X-PHONETIC-FIRST-NAME:", contact_.first_name_yomi());
        text("X-PHONETIC-MIDDLE-NAME:", contact_.middle_name_yomi());
        text("X-PHONETIC-LAST-NAME:", contact_.last_name_yomi());
        text("NICKNAME:", contact_.nickname());
    }

    void work() {
        if (!contact_.company_name().isEmpty() || !contact_.department().isEmpty()) {
            const auto unit = [](const NSString &value) {
                std::string text = part(value, ";");
                replaceAll(text, "ORG:", "ORG：");
                return text;
            };
            line("ORG:", unit(contact_.company_name()), ";", unit(contact_.department()));
        }
        text("TITLE:", contact_.job_title());
        text("BDAY;VALUE=date:", contact_.birthday());
    }

    void numbers() {
        for (const auto &phone : contact_.phone_numbers())
            if (!phone.phone_number.isEmpty())
                line("TEL;TYPE=", label(phone.type), ":", part(phone.phone_number, ":"));
        for (const auto &email : contact_.emails())
            if (!email.email.isEmpty())
                line("EMAIL;type=INTERNET;type=", label(email.type), ":", part(email.email, ":"));
        for (const auto &im : contact_.ims())
            if (!im.user.isEmpty()) {
                std::string user = part(im.user, ":");
                replaceAll(user, "TYPE=", "TYPE＝");
                line("IMPP;X-SERVICE-TYPE=", part(im.service, ":;="), ";TYPE=", label(im.type), ":x-apple:", user);
            }
    }

    // An address counts its parts at each ";", a URL of one colon stands whole in the plain form.
    void places() {
        for (const auto &address : contact_.addresses())
            addressItem(address);
        for (const auto &url : contact_.urls()) {
            const std::string value = oneLine(url.url);
            if (value.empty())
                continue;
            if (std::count(value.begin(), value.end(), ':') == 1)
                line("URL;TYPE=", label(url.type), ":", value);
            else
                labelled(".URL:", value, url.type);
        }
    }

    void addressItem(const ZpContactAddressDataInfo &address) {
        const NSString *const parts[] = {&address.street, &address.city, &address.state, &address.postal_code, &address.country};
        std::string value;
        bool isEmpty = true;
        for (const NSString *text : parts) {
            isEmpty = isEmpty && text->isEmpty();
            value.append(";").append(itemPart(*text, ":;"));
        }
        if (isEmpty)
            return;
        const std::string item = nextItem();
        line(item, ".ADR;TYPE=", label(address.type), ":;", value);
        if (!address.country_code.isEmpty())
            line(item, ".X-ABADR:", itemPart(address.country_code, ":;"));
    }

    void people() {
        for (const auto &related : contact_.relatednames())
            if (!related.relatename.isEmpty())
                labelled(".X-ABRELATEDNAMES:", itemPart(related.relatename, ":"), related.type);
        for (const auto &date : contact_.dates())
            if (!date.date.isEmpty())
                labelled(".X-ABDATE:", itemPart(date.date, ":"), date.type);
    }

    void labelled(const char *property, const std::string &value, const NSString &type) {
        const std::string item = nextItem();
        line(item, property, value);
        line(item, ".X-ABLabel:_$!<", label(type), ">!$_");
    }
    std::string nextItem() { return "item" + std::to_string(++items_); }

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
    int items_ = 0;
};

}  // namespace

void appendCard(std::string &to, const ZpContactDataInfo &contact) { Card(to, contact).append(); }

}  // namespace device::contacts
