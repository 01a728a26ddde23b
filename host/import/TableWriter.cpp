#include "host/import/TableWriter.h"

#include <algorithm>
#include <vector>

namespace host::foreign {

namespace {

using namespace device::contacts;

using Contact = ForeignContact;

// As kPlainHeadings.
constexpr std::string Contact::*kPlainTexts[] = {
    &Contact::firstName, &Contact::firstNameYomi, &Contact::middleName, &Contact::middleNameYomi, &Contact::lastName, &Contact::lastNameYomi,
    &Contact::nickname, &Contact::nameTitle, &Contact::nameSuffix, &Contact::birthday, &Contact::notes,
    &Contact::company, &Contact::department, &Contact::jobTitle,
};
static_assert(std::size(kPlainTexts) == std::size(kPlainHeadings));

// The texts of a group's items, the type first.
using Items = std::vector<std::vector<const std::string *>>;
Items itemsOf(const Contact &c, std::size_t group) {
    Items items;
    const std::vector<LabelledText> *const lists[] = {&c.phones, &c.emails, nullptr, &c.urls, nullptr, &c.relatedNames, &c.dates};
    if (lists[group])
        for (const LabelledText &item : *lists[group])
            items.push_back({&item.label, &item.text});
    else if (group == 2)
        for (const PostalAddress &a : c.addresses)
            items.push_back({&a.label, &a.postalCode, &a.country, &a.state, &a.city, &a.street});
    else
        for (const Messenger &im : c.messengers)
            items.push_back({&im.label, &im.service, &im.user});
    return items;
}

constexpr std::string_view kMarks[] = {"&^HJ", "&^DouHao"};

class Cells {
public:
    Cells(std::string &to, Contact &contact) : to_(to), contact_(contact) {}

    void plain(const std::string &text) {
        noteMarks(text);
        const bool isQuoted = text.find_first_of(",\"") != std::string::npos;
        to_.append(isQuoted ? "\"" : "");
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t length = lineBreakAt(text, at);
            if (length > 0)
                to_.append("\\n");
            else
                to_.append(text[at] == '"' || text[at] == '\\' ? 2 : 1, text[at]);
            at += std::max<std::size_t>(length, 1);
        }
        to_.append(isQuoted ? "\"," : ",");
    }

    // A value of a group: its quotes are taken out again one by one, so there is no writing one.
    void value(const std::string &text) {
        noteMarks(text);
        const std::string line = oneLine(text, true);
        const bool isQuoted = line.find(',') != std::string::npos;
        to_.append(isQuoted ? "\"" : "");
        for (const char c : line)
            c == '"' ? to_.append("＂") : to_.append(c == '\\' ? 2 : 1, c);
        to_.append(isQuoted ? "\"," : ",");
        if (line.find('"') != std::string::npos)
            contact_.leave("the quotes in " + leftBehind("", text) + ", now full-width");
    }

    // A type is read as it stands, with everything that other cells are cleaned of.
    void type(const std::string &text) {
        const std::string line = oneLine(text.empty() ? "other" : text, false);
        for (const char c : line)
            to_.append(c == ',' ? "，" : c == '"' ? "＂" : c == '\\' ? "＼" : std::string_view(&c, 1));
        to_ += ',';
        if (line.find_first_of(",\"\\") != std::string::npos)
            contact_.leave("the signs in the label" + leftBehind("", text) + ", now full-width");
    }

private:
    std::string oneLine(const std::string &text, bool tells) {
        std::string out;
        bool isChanged = false;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t length = lineBreakAt(text, at);
            isChanged = isChanged || length > 0;
            length > 0 ? out.append(", ") : out.append(1, text[at]);
            at += std::max<std::size_t>(length, 1);
        }
        if (isChanged && tells)
            contact_.leave("the line breaks in" + leftBehind("", text) + ", now commas");
        return out;
    }
    void noteMarks(const std::string &text) {
        for (const std::string_view mark : kMarks)
            if (text.find(mark) != std::string::npos)
                contact_.leave("the signs " + std::string(mark) + ", now " + (mark == kMarks[0] ? "a backslash" : "a comma"));
    }

    std::string &to_;
    Contact &contact_;
};

constexpr std::string_view kFront = "\".\",,";   // the two cells in front

}  // namespace

void TableWriter::measure(const ForeignContact &contact) {
    std::size_t size = kFront.size();
    for (const auto text : kPlainTexts)
        size += (contact.*text).size() + 1;
    for (std::size_t group = 0; group < most_.size(); ++group) {
        const Items items = itemsOf(contact, group);
        most_[group] = std::max(most_[group], items.size());
        for (const auto &item : items)
            for (const std::string *text : item)
                size += text->size() + 8;
    }
    longest_ = std::max(longest_, size);
    ++rows_;
    hasPicture_ = hasPicture_ || !contact.picture.empty();
}

bool TableWriter::fits(std::size_t bytes) const {
    constexpr std::size_t kMostRow = 102'000, kMostHeading = 10'000, kHeadingBytes = 24, kSlack = 1 << 16;
    std::size_t columns = std::size(kPlainTexts) + 3;
    for (std::size_t group = 0; group < most_.size(); ++group)
        columns += most_[group] * (1 + kGroupHeadings[group].parts.size());
    // Escapes double a text at most, a quote takes three bytes instead of one.
    return !hasPicture_ && 3 * longest_ + columns < kMostRow && columns * kHeadingBytes < kMostHeading && rows_ * columns < 2 * bytes + kSlack;
}

void TableWriter::appendHeading(std::string &to) const {
    to.append("Row,Row 2,");
    appendHeadings(to, most_);
    to.append("End of Row\n");
}

void TableWriter::appendRow(std::string &to, ForeignContact &contact) const {
    to.append(kFront);
    Cells cells(to, contact);
    for (const auto text : kPlainTexts)
        cells.plain(contact.*text);
    for (std::size_t group = 0; group < most_.size(); ++group) {
        const Items items = itemsOf(contact, group);
        for (const auto &item : items) {
            cells.type(*item.front());
            for (std::size_t i = 1; i < item.size(); ++i)
                cells.value(*item[i]);
        }
        to.append((most_[group] - items.size()) * (1 + kGroupHeadings[group].parts.size()), ',');
    }
    to += '\n';
}

}  // namespace host::foreign
