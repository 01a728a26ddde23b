#include "device/contacts/TableText.h"

#include <algorithm>
#include <span>

namespace device::contacts {

namespace {

using Contact = ZpContactDataInfo;

struct Plain {
    std::string_view heading;
    const NSString &(Contact::*text)() const;
};
constexpr Plain kPlain[] = {
    {"Given Name", &Contact::first_name},
    {"Given Name Yomi", &Contact::first_name_yomi},
    {"Additional Name", &Contact::middle_name},
    {"Additional Name Yomi", &Contact::middle_name_yomi},
    {"Family Name", &Contact::last_name},
    {"Family Name Yomi", &Contact::last_name_yomi},
    {"Nickname", &Contact::nickname},
    {"Name Prefix", &Contact::name_title},
    {"Name Suffix", &Contact::name_suffix},
    {"Birthday", &Contact::birthday},
    {"Notes", &Contact::notes},
    {"Organization 1 - Name", &Contact::company_name},
    {"Organization 1 - Department", &Contact::department},
    {"Organization 1 - Title", &Contact::job_title},
};
constexpr std::string_view kLastHeading = "End of Row";

// The texts of a list's items, each with its type first; `visit(texts...)`.
template <class Visit>
void visitItems(const Contact &c, std::size_t group, Visit &&visit) {
    switch (group) {
    case 0:
        for (const auto &i : c.phone_numbers())
            visit({&i.type, &i.phone_number});
        return;
    case 1:
        for (const auto &i : c.emails())
            visit({&i.type, &i.email});
        return;
    case 2:
        for (const auto &i : c.addresses())
            visit({&i.type, &i.postal_code, &i.country, &i.state, &i.city, &i.street});
        return;
    case 3:
        for (const auto &i : c.urls())
            visit({&i.type, &i.url});
        return;
    case 4:
        for (const auto &i : c.ims())
            visit({&i.type, &i.service, &i.user});
        return;
    case 5:
        for (const auto &i : c.relatednames())
            visit({&i.type, &i.relatename});
        return;
    default:
        for (const auto &i : c.dates())
            visit({&i.type, &i.date});
    }
}
using Texts = std::initializer_list<const NSString *>;

constexpr std::string_view kValue[] = {"Value"};
constexpr std::string_view kAddressParts[] = {"Postal Code", "Country", "Region", "City", "Street"};
constexpr std::string_view kMessengerParts[] = {"Service", "Value"};
struct Group {
    std::string_view word;
    std::span<const std::string_view> parts;   // behind the type
    bool needsAll = false;                     // the reader drops an item that lacks one of several
};
constexpr Group kGroupHeadings[] = {
    {"Phone", kValue}, {"E-mail", kValue}, {"Address", kAddressParts}, {"Website", kValue},
    {"IM", kMessengerParts, true}, {"Relation", kValue}, {"Event", kValue},
};

bool hasValue(Texts texts) {
    return std::any_of(texts.begin() + 1, texts.end(), [](const NSString *text) { return !text->isEmpty(); });
}

// ---------------------------------------------------------------- texts

// Bytes of a line break at `at`: those at which a line of the table would end for some reader; 0 without one.
std::size_t breakAt(std::string_view text, std::size_t at) {
    const char c = text[at];
    if (c >= '\n' && c <= '\r')
        return 1;
    if (c == '\xC2')
        return text.substr(at).starts_with("\xC2\x85") ? 2 : 0;
    return c == '\xE2' && (text.substr(at).starts_with("\xE2\x80\xA8") || text.substr(at).starts_with("\xE2\x80\xA9")) ? 3 : 0;
}

bool isPlain(std::string_view text) {
    return std::ranges::all_of(text, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return c != ',' && c != '"' && c != '\\' && !(byte >= '\n' && byte <= '\r') && byte != 0xC2 && byte != 0xE2;
    });
}

void appendValue(std::string &to, const NSString &value, std::string_view lineBreak) {
    const std::string_view text = value.view();
    if (isPlain(text)) {
        to.append(text);
        return;
    }
    const bool isQuoted = text.find_first_of(",\"") != std::string_view::npos;
    if (isQuoted)
        to += '"';
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = breakAt(text, at);
        if (length == 0) {
            const char c = text[at++];
            to.append(c == '"' || c == '\\' ? 2 : 1, c);
        } else {
            to.append(text[at] == '\r' && lineBreak == "\\n" ? "\\r" : lineBreak);
            at += length;
        }
    }
    if (isQuoted)
        to += '"';
}

void appendType(std::string &to, const NSString &type) {
    const std::string_view text = type.isEmpty() ? "other" : type.view();
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = breakAt(text, at);
        const char c = text[at];
        at += std::max<std::size_t>(length, 1);
        if (length > 0)
            to += ' ';
        else if (c == ',' || c == '"' || c == '\\')
            to.append(c == ',' ? "，" : c == '"' ? "＂" : "＼");
        else
            to += c;
    }
}

}  // namespace

TableText::TableText(const ContactList &contacts) {
    most_[0] = 1;
    for (const auto &contact : contacts)
        for (std::size_t group = 0; group < kGroups; ++group) {
            std::size_t count = 0;
            visitItems(*contact, group, [&](Texts texts) { count += hasValue(texts) ? 1 : 0; });
            most_[group] = std::max(most_[group], count);
        }
}

void TableText::appendHeading(std::string &to) const {
    for (const Plain &plain : kPlain)
        to.append(plain.heading).append(",");
    for (std::size_t group = 0; group < kGroups; ++group)
        for (std::size_t number = 1; number <= most_[group]; ++number) {
            const std::string front = std::string(kGroupHeadings[group].word) + " " + std::to_string(number) + " - ";
            to.append(front).append("Type,");
            for (const std::string_view part : kGroupHeadings[group].parts)
                to.append(front).append(part).append(",");
        }
    to.append(kLastHeading).append("\r\n");
}

void TableText::appendRow(std::string &to, const ZpContactDataInfo &contact) const {
    for (const Plain &plain : kPlain) {
        appendValue(to, (contact.*plain.text)(), "\\n");
        to += ',';
    }
    for (std::size_t group = 0; group < kGroups; ++group) {
        std::size_t count = 0;
        visitItems(contact, group, [&](Texts texts) {
            if (!hasValue(texts))
                return;
            appendType(to, **texts.begin());
            for (const NSString *const *text = texts.begin() + 1; text != texts.end(); ++text) {
                to += ',';
                if ((*text)->isEmpty() && kGroupHeadings[group].needsAll)
                    to.append("\\n");   // text for the reader's test of emptiness, and nothing after its last stage
                else
                    appendValue(to, **text, " ");
            }
            to += ',';
            ++count;
        });
        to.append((most_[group] - count) * (1 + kGroupHeadings[group].parts.size()), ',');
    }
    to.append("\r\n");
}

}  // namespace device::contacts
