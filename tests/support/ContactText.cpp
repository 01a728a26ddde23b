#include "tests/support/ContactText.h"

#include <algorithm>
#include <stdexcept>

namespace {

using C = ZpContactDataInfo;

constexpr struct {
    std::string_view name;
    const NSString &(C::*read)() const;
    void (C::*write)(NSString);
} kTexts[] = {
    {"pKey", &C::pKey, &C::setPKey},
    {"completeName", &C::completeName, &C::setCompleteName},
    {"last_name", &C::last_name, &C::setLast_name},
    {"first_name", &C::first_name, &C::setFirst_name},
    {"middle_name", &C::middle_name, &C::setMiddle_name},
    {"name_title", &C::name_title, &C::setName_title},
    {"name_suffix", &C::name_suffix, &C::setName_suffix},
    {"first_name_yomi", &C::first_name_yomi, &C::setFirst_name_yomi},
    {"middle_name_yomi", &C::middle_name_yomi, &C::setMiddle_name_yomi},
    {"last_name_yomi", &C::last_name_yomi, &C::setLast_name_yomi},
    {"nickname", &C::nickname, &C::setNickname},
    {"company", &C::company_name, &C::setCompany_name},
    {"department", &C::department, &C::setDepartment},
    {"job", &C::job_title, &C::setJob_title},
    {"birthday", &C::birthday, &C::setBirthday},
    {"notes", &C::notes, &C::setNotes},
};

std::string escaped(const NSString &text) {
    if (text.isNil())
        return "~";
    std::string out;
    for (const char c : text.view()) {
        if (c == '\r' || c == '\n' || c == '\t' || c == '\0')
            out += c == '\r' ? "\\r" : c == '\n' ? "\\n" : c == '\t' ? "\\t" : "\\0";
        else
            out += c;
    }
    return out;
}

NSString read(std::string_view text) { return text == "~" ? NSString() : NSString(text); }

std::vector<NSString> split(std::string_view text, char mark, std::size_t parts) {
    std::vector<NSString> texts;
    for (std::size_t end = 0; end != text.npos && texts.size() < parts;
         text.remove_prefix(end == text.npos ? 0 : end + 1)) {
        end = texts.size() + 1 == parts ? text.npos : text.find(mark);
        texts.push_back(read(text.substr(0, end)));
    }
    texts.resize(parts);
    return texts;
}

// Each list of a contact: its name, how it is read and written, what stands between its texts, and these.
template <class Visitor>
void visitLists(const Visitor &visit) {
    using A = ZpContactAddressDataInfo;
    visit("tel", &C::phone_numbers, &C::mutable_phone_numbers, ' ', &ZpPhoneNumberDataInfo::phone_number);
    visit("email", &C::emails, &C::mutable_emails, ' ', &ZpEmailDataInfo::email);
    visit("adr", &C::addresses, &C::mutable_addresses, ',', &A::street, &A::city, &A::state, &A::postal_code,
          &A::country, &A::country_code);
    visit("url", &C::urls, &C::mutable_urls, ' ', &ZpUrlDataInfo::url);
    visit("date", &C::dates, &C::mutable_dates, ' ', &ZpDateDataInfo::date);
    visit("related", &C::relatednames, &C::mutable_relatednames, ' ', &ZpRelatedNameDataInfo::relatename);
    visit("im", &C::ims, &C::mutable_ims, '/', &ZpIMDataInfo::service, &ZpIMDataInfo::user);
}

void addItem(C &contact, std::string_view name, const NSString &type, std::string_view value) {
    bool isKnown = false;
    visitLists([&](std::string_view list, auto, auto write, char mark, auto... texts) {
        if (list != name)
            return;
        isKnown = true;
        auto &record = (contact.*write)().emplace_back();
        record.type = type;
        const auto parts = split(value, mark, sizeof...(texts));
        std::size_t at = 0;
        ((record.*texts = parts[at++]), ...);
    });
    if (!isKnown)
        throw std::invalid_argument("no field of a contact: " + std::string(name));
}

// Where the next field begins: behind "; ", a word and "=" or "(".
std::size_t endOfField(std::string_view text) {
    for (std::size_t at = 0; (at = text.find("; ", at)) != text.npos; at += 2) {
        const std::size_t end = text.find_first_not_of("abcdefghijklmnopqrstuvwxyzNK_", at + 2);
        if (end != text.npos && end > at + 2 && (text[end] == '=' || text[end] == '('))
            return at;
    }
    return text.size();
}

}   // namespace

std::string described(const ZpContactDataInfo &c) {
    std::string line;
    const auto add = [&line](const std::string &part) { line += (line.empty() ? "" : "; ") + part; };
    for (const auto &text : kTexts)
        if ((c.*text.read)())
            add(std::string(text.name) + "=" + escaped((c.*text.read)()));
    visitLists([&](const char *list, auto read, auto, char mark, auto first, auto... more) {
        for (const auto &record : (c.*read)()) {
            std::string item = std::string(list) + "(" + escaped(record.type) + ")=" + escaped(record.*first);
            ((item += mark + escaped(record.*more)), ...);
            add(mark == ',' && item.ends_with(",~") ? item.substr(0, item.size() - 2)
                                                    : item);   // seldom is there a country code
        }
    });
    if (c.imageCharData())
        add("image=" + escaped(NSString(c.imageCharData()->bytes())));
    if (c.image_length() != 0)
        add("image_length=" + std::to_string(c.image_length()));
    return line;
}

std::string described(const ContactList &contacts) {
    std::string text;
    for (const auto &contact : contacts)
        text += described(*contact) + "\n";
    return text;
}

void fill(C &contact, std::string_view text) {
    while (!text.empty()) {
        const std::string_view field = text.substr(0, endOfField(text));
        text.remove_prefix(std::min(text.size(), field.size() + 2));
        const std::size_t nameEnd = field.find_first_of("(=");
        const std::string_view name = field.substr(0, nameEnd);
        const auto *plain = std::ranges::find(kTexts, name, [](const auto &row) { return row.name; });
        const std::size_t typeEnd = field.find(")=");
        if (plain != std::end(kTexts))
            (contact.*plain->write)(read(field.substr(nameEnd + 1)));
        else if (name == "image")
            contact.setImageCharData(NSData::of(std::string(field.substr(nameEnd + 1))));
        else
            addItem(contact, name, read(field.substr(nameEnd + 1, typeEnd - nameEnd - 1)), field.substr(typeEnd + 2));
    }
}

std::shared_ptr<C> contactOf(std::string_view text) {
    auto made = make<C>();
    fill(*made, text);
    return made;
}

ContactList contactsOf(std::string_view lines) {
    ContactList contacts;
    for (std::size_t end = 0; !lines.empty(); lines.remove_prefix(std::min(end, lines.size()))) {
        end = std::min(lines.find('\n'), lines.size());
        contacts.push_back(contactOf(lines.substr(0, end++)));
    }
    return contacts;
}
