#include "device/contacts/TableText.h"

#include <algorithm>

namespace device::contacts {

namespace {

using Contact = ZpContactDataInfo;

// As kPlainHeadings.
constexpr const NSString &(Contact::*kPlainTexts[])() const = {
    &Contact::first_name, &Contact::first_name_yomi, &Contact::middle_name, &Contact::middle_name_yomi, &Contact::last_name,
    &Contact::last_name_yomi, &Contact::nickname, &Contact::name_title, &Contact::name_suffix, &Contact::birthday,
    &Contact::notes, &Contact::company_name, &Contact::department, &Contact::job_title,
};
static_assert(std::size(kPlainTexts) == std::size(kPlainHeadings));
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

constexpr std::size_t kMessengers = 4;   // the reader drops one that lacks its service or its name

bool hasValue(Texts texts) {
    return std::any_of(texts.begin() + 1, texts.end(), [](const NSString *text) { return !text->isEmpty(); });
}

// ---------------------------------------------------------------- texts

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
        const std::size_t length = lineBreakAt(text, at);
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
        const std::size_t length = lineBreakAt(text, at);
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
        for (std::size_t group = 0; group < most_.size(); ++group) {
            std::size_t count = 0;
            visitItems(*contact, group, [&](Texts texts) { count += hasValue(texts) ? 1 : 0; });
            most_[group] = std::max(most_[group], count);
        }
}

void TableText::appendHeading(std::string &to) const {
    appendHeadings(to, most_);
    to.append(kLastHeading).append("\r\n");
}

bool TableText::isReadWhole(std::string_view row) {
    constexpr std::size_t kRoom = 102399;   // bytes that the reader takes at once
    for (std::size_t cut = kRoom; cut < row.size(); cut += kRoom)
        if ((static_cast<unsigned char>(row[cut]) & 0xC0) == 0x80)
            return false;
    return true;
}

void TableText::appendRow(std::string &to, const ZpContactDataInfo &contact) const {
    for (const auto text : kPlainTexts) {
        appendValue(to, (contact.*text)(), "\\n");
        to += ',';
    }
    for (std::size_t group = 0; group < most_.size(); ++group) {
        std::size_t count = 0;
        visitItems(contact, group, [&](Texts texts) {
            if (!hasValue(texts))
                return;
            appendType(to, **texts.begin());
            for (const NSString *const *text = texts.begin() + 1; text != texts.end(); ++text) {
                to += ',';
                if ((*text)->isEmpty() && group == kMessengers)
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
