#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/PlainCsvReader.h"

#include <algorithm>
#include <cstdio>
#include <map>

#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ContactText.h"

namespace plainCsv {

namespace {

std::string replaced(std::string text, const std::string &part, const std::string &by) {
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += by.size())
        text.replace(at, part.size(), by);
    return text;
}

char characterAt(const std::string &text, long at) {
    if (at < 0 || at >= static_cast<long>(text.size()))
        throw Fatal();
    return text[static_cast<std::size_t>(at)];
}

bool isPair(const std::string &text, long at) { return characterAt(text, at) == '"' && characterAt(text, at + 1) == '"'; }
long quotesIn(const std::string &text) { return std::count(text.begin(), text.end(), '"'); }

}   // namespace

Texts split(const std::string &text, const std::string &separator) {
    Texts pieces;
    std::size_t from = 0;
    for (std::size_t at; (at = text.find(separator, from)) != std::string::npos; from = at + separator.size())
        pieces.push_back(text.substr(from, at - from));
    pieces.push_back(text.substr(from));
    return pieces;
}

std::string backslashes(std::string text) {
    return replaced(replaced(replaced(std::move(text), "\\\\", "&^HJ"), "\\n", "\n"), "\\r", "\r");
}

std::string replaceCommaSymbol(std::string text) {
    if (text.size() == 1)
        return text;
    bool inside = false;
    long i = 0;
    do {
        const char read = characterAt(text, i);
        if (read == '"') {
            if (isPair(text, i))
                ++i;
            else
                inside = !inside;
        }
        if (inside && read == ',')
            text.replace(static_cast<std::size_t>(i), 1, "&^DouHao");
        ++i;
    } while (i < static_cast<long>(text.size()) - 1);
    return text;
}

Texts combine(const Texts &fields) {
    Texts result;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        std::string acc = fields[i];
        if (!acc.starts_with("\"")) {
            result.push_back(acc);
            continue;
        }
        std::size_t goOn = i;
        for (std::size_t j = i + 1; j < fields.size(); ++j) {
            const long q = quotesIn(fields[j]);
            if (q == 0 || q == 2)
                return fields;
            if (q % 2 == 0) {
                acc += "," + fields[j];
            } else if (fields[j].ends_with("\"")) {
                acc += "," + fields[j];
                goOn = j;
                break;
            }
        }
        result.push_back(acc);
        i = goOn;
    }
    return result;
}

std::string replaceQuotes(std::string text) {
    if (text == "\"")
        throw Fatal();
    if (text.starts_with("\"") && text.ends_with("\""))
        text = text.substr(1, text.size() - 2);
    return replaced(text, "\"\"", "\"");
}

std::string deleteQuotes(std::string text) {
    text = replaced(replaced(std::move(text), "\n", ""), "\r", "");
    for (long i = 0; i < static_cast<long>(text.size()); ++i)
        if (text[static_cast<std::size_t>(i)] == '"' && !isPair(text, i == static_cast<long>(text.size()) - 1 ? i - 1 : i))
            text.erase(static_cast<std::size_t>(i), 1);
    return text;
}

std::string change(std::string text) { return replaced(replaced(std::move(text), "&^HJ", "\\"), "&^DouHao", ","); }

namespace {

struct Dictionary {
    std::map<std::string, Texts> under;
    std::map<std::string, std::size_t> last;   // column
};

constexpr struct {
    const char *word;
    std::size_t width;
} kGroups[] = {{"Phone", 2}, {"E-mail", 2}, {"Address", 6}, {"Website", 2}, {"IM", 3}, {"Relation", 2}, {"Event", 2}};

void addRecord(std::string text, const Texts &headers, std::vector<Dictionary> &to) {
    const Texts fields = combine(split(replaceCommaSymbol(backslashes(std::move(text))), ","));
    if (fields.size() != headers.size())
        return;
    Dictionary dictionary;
    for (std::size_t i = 0; i < headers.size(); ++i) {
        const std::string clean = replaceQuotes(fields[i]);
        const auto *group = std::ranges::find_if(kGroups, [&](const auto &g) { return headers[i].find(g.word) != std::string::npos; });
        dictionary.last[headers[i]] = i;
        if (group == std::end(kGroups))
            dictionary.under[headers[i]] = {clean};
        else if (headers[i].find("Type") != std::string::npos) {
            if (i + group->width > fields.size())
                throw Fatal();
            dictionary.under[headers[i]] = Texts(fields.begin() + static_cast<long>(i), fields.begin() + static_cast<long>(i + group->width));
        }
    }
    to.push_back(std::move(dictionary));
}

std::string contactText(const Dictionary &dictionary) {
    std::vector<std::pair<std::size_t, std::string>> columns;
    for (const auto &[header, column] : dictionary.last)
        columns.emplace_back(column, header);
    std::ranges::sort(columns);
    auto c = make<ZpContactDataInfo>();
    for (const auto &[column, header] : columns) {
        const auto found = dictionary.under.find(header);
        if (found == dictionary.under.end())
            continue;
        const Texts &raw = found->second;
        const auto item = [&raw = raw](std::size_t i) { return NSString(change(deleteQuotes(raw[i]))); };
        const bool all = std::ranges::none_of(raw, &std::string::empty);
        const auto has = [&header = header](const char *word) { return header.find(word) != std::string::npos; };
        if (header == "Given Name")
            c->setFirst_name(change(raw[0]));
        else if (header == "Notes")
            c->setNotes(change(raw[0]));
        else if (has("Phone") && all)
            c->mutable_phone_numbers().push_back({raw[0], item(1)});
        else if (has("Address") && !raw[0].empty() && std::any_of(raw.begin() + 1, raw.end(), [](auto &t) { return !t.empty(); })) {
            ZpContactAddressDataInfo a;
            a.type = raw[0];
            a.postal_code = item(1);
            a.country = item(2);
            a.state = item(3);
            a.city = item(4);
            a.street = item(5);
            c->mutable_addresses().push_back(a);
        } else if (!has("Phone") && !has("Address") && has("IM") && all)
            c->mutable_ims().push_back({raw[0], item(1), item(2)});
    }
    return described(*c) + "\n";
}

std::string contactsText(const std::vector<Dictionary> &dictionaries) {
    std::string text;
    for (const Dictionary &dictionary : dictionaries)
        text += contactText(dictionary);
    return text;
}

Texts headersOf(const std::string &line) { return split(replaced(replaced(line, "\r", ""), "\n", ""), ","); }

}   // namespace

// With the C library's own reader of lines, whose end-of-file flag makes the rule.
std::string first(const std::string &bytes) {
    std::FILE *file = std::tmpfile();
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::rewind(file);
    std::string heading(10240, '\0'), row(102400, '\0');
    const bool hasHeading = std::fgets(heading.data(), 10240, file) != nullptr;
    Texts lines;
    while (!std::feof(file)) {
        (void)!std::fgets(row.data(), 102400, file);
        lines.emplace_back(row.c_str());
    }
    std::fclose(file);
    if (!lines.empty())
        lines.pop_back();
    std::string text;
    for (const std::string &line : lines)
        text += line;
    std::vector<Dictionary> found;
    addRecord(text, headersOf(hasHeading ? heading.c_str() : ""), found);
    return found.empty() ? second(bytes) : contactsText(found);
}

std::string second(const std::string &bytes) {
    std::string text = bytes;
    for (const char *end : {"\r", "\x0B", "\x0C", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"})
        text = replaced(text, end, "\n");
    Texts lines = split(text, "\n");
    const Texts headers = headersOf(lines.front());
    std::vector<Dictionary> found;
    for (std::size_t i = 1; i < lines.size(); ++i)
        if (!lines[i].empty())
            addRecord(lines[i], headers, found);
    return contactsText(found);
}

}   // namespace plainCsv
