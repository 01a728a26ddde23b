#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/CsvFileReader.h"

#include <algorithm>
#include <array>
#include <string>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/CsvColumns.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/CsvText.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/WholeFile.h"
#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"

namespace {

using Dictionaries = CsvFileReader::Dictionaries;
using Kind = CsvColumns::Kind;

std::shared_ptr<const CsvColumns> columnsOf(std::string_view line) {
    std::string heading;
    std::ranges::copy_if(line, std::back_inserter(heading), [](char c) { return c != '\r' && c != '\n'; });
    return std::make_shared<const CsvColumns>(heading);
}

std::int64_t lineEndsIn(std::string_view text) { return std::ranges::count(text, '\n'); }

// ---------------------------------------------------------------- a record's stages

void addRecord(std::string_view text, const std::shared_ptr<const CsvColumns> &columns, std::int64_t line, Dictionaries &to) {
    std::string unescaped, marked;
    if (text.find('\\') != std::string_view::npos)
        text = unescaped = csvText::replaceBackslashes(text);
    if (text.empty() || text.find('"') != std::string_view::npos)
        text = marked = csvText::replaceCommaSymbol(text);
    const csvText::Fields fields(text, columns->count());
    if (fields.count() != columns->count())
        return;
    // Every column is unquoted, used or not; one of a single quote ends the file.
    for (std::size_t column = 0; column < fields.count(); ++column)
        if (fields.isShort(column) && fields.at(column) == "\"")
            throw csvText::OutOfRange("a field is one double quote");
    if (columns->runsPastTheEnd())
        throw csvText::OutOfRange("a group of columns runs past the end of the row");
    CsvDictionary dictionary{columns, {}, line};
    for (const CsvColumns::Entry &entry : columns->entries())
        if (entry.kind == Kind::plain)
            dictionary.values.emplace_back(csvText::replaceDoubleQuotationMarkString(fields.at(entry.column)));
        else
            for (std::size_t i = 0; i < entry.width; ++i)
                dictionary.values.emplace_back(fields.at(entry.column + i));
    to.push_back(std::move(dictionary));
}

void addRecordOf(std::string_view text, const std::shared_ptr<const CsvColumns> &columns, std::int64_t line, const NSString &file,
                 Dictionaries &to) {
    try {
        addRecord(text, columns, line, to);
    } catch (const csvText::OutOfRange &error) {
        throw FatalParseFailure(file, line, error.what());
    }
}

// ---------------------------------------------------------------- the first reader's lines

// As a program reads them into a buffer: up to a line feed or as many bytes as fit. Knows that the file has ended only
// after it wanted to read beyond it.
class Pieces {
public:
    explicit Pieces(std::string_view bytes) : rest_(bytes) {}
    [[nodiscard]] bool hasEnded() const { return hasEnded_; }
    std::string_view next(std::size_t room) {
        const std::size_t feed = rest_.substr(0, room).find('\n');
        const std::size_t size = feed == std::string_view::npos ? std::min(room, rest_.size()) : feed + 1;
        hasEnded_ = feed == std::string_view::npos && size < room;
        const std::string_view piece = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return piece;
    }

private:
    std::string_view rest_;
    bool hasEnded_ = false;
};

constexpr std::size_t kHeadingRoom = 10239, kRowRoom = 102399;

// ---------------------------------------------------------------- the second reader's lines

// Bytes of a line break at the start of `text`: LF, VT, FF, CR, U+0085, U+2028, U+2029; 0 without one.
std::size_t breakAt(std::string_view text) {
    const char first = text.front();
    if (first >= '\n' && first <= '\r')
        return 1;
    if (text.starts_with("\xC2\x85"))
        return 2;
    return text.starts_with("\xE2\x80\xA8") || text.starts_with("\xE2\x80\xA9") ? 3 : 0;
}

constexpr std::array<bool, 256> mayBreak() {
    std::array<bool, 256> may{};
    for (const unsigned char byte : {0x0A, 0x0B, 0x0C, 0x0D, 0xC2, 0xE2})
        may[byte] = true;
    return may;
}

// Up to the next line break, which is taken off too.
std::string_view takeLine(std::string_view &rest) {
    static constexpr std::array<bool, 256> kMayBreak = mayBreak();
    std::size_t at = 0, length = 0;
    for (; at < rest.size(); ++at)
        if (kMayBreak[static_cast<unsigned char>(rest[at])] && (length = breakAt(rest.substr(at))) > 0)
            break;
    const std::string_view line = rest.substr(0, at);
    rest.remove_prefix(at + length);
    return line;
}

// ---------------------------------------------------------------- dictionary to contact

// A group's first text is taken as it stands, the others without quotes; whether they are empty is asked before.
class GroupTexts {
public:
    GroupTexts(const NSString *values, std::size_t count) : values_(values), count_(count) {}
    [[nodiscard]] NSString type() const { return values_[0]; }
    [[nodiscard]] NSString at(std::size_t index) const {
        return csvText::changeCSVData(csvText::deleteDoubleQuotationMarkString(values_[index].view()));
    }
    [[nodiscard]] bool all() const { return std::all_of(values_, values_ + count_, isFull); }
    [[nodiscard]] bool typeAndAny() const { return isFull(values_[0]) && std::any_of(values_ + 1, values_ + count_, isFull); }

private:
    static bool isFull(const NSString &text) { return !text.isEmpty(); }
    const NSString *values_;
    std::size_t count_;
};

template <class Record>
void addTo(std::vector<Record> &list, const GroupTexts &texts, std::initializer_list<NSString Record::*> fields) {
    Record record;
    record.type = texts.type();
    std::size_t at = 0;
    for (const auto field : fields)
        record.*field = texts.at(++at);
    list.push_back(std::move(record));
}

void addGroup(ZpContactDataInfo &contact, Kind kind, const GroupTexts &texts) {
    if (kind == Kind::address ? !texts.typeAndAny() : !texts.all())
        return;
    using Address = ZpContactAddressDataInfo;
    switch (kind) {
    case Kind::phone: return addTo(contact.mutable_phone_numbers(), texts, {&ZpPhoneNumberDataInfo::phone_number});
    case Kind::email: return addTo(contact.mutable_emails(), texts, {&ZpEmailDataInfo::email});
    case Kind::address:
        return addTo(contact.mutable_addresses(), texts,
                     {&Address::postal_code, &Address::country, &Address::state, &Address::city, &Address::street});
    case Kind::website: return addTo(contact.mutable_urls(), texts, {&ZpUrlDataInfo::url});
    case Kind::im: return addTo(contact.mutable_ims(), texts, {&ZpIMDataInfo::service, &ZpIMDataInfo::user});
    case Kind::relation: return addTo(contact.mutable_relatednames(), texts, {&ZpRelatedNameDataInfo::relatename});
    case Kind::event: return addTo(contact.mutable_dates(), texts, {&ZpDateDataInfo::date});
    case Kind::plain:
    case Kind::ignored: return;
    }
}

std::shared_ptr<ZpContactDataInfo> contactOf(const CsvDictionary &dictionary) {
    auto contact = make<ZpContactDataInfo>();
    const NSString *value = dictionary.values.data();
    for (const CsvColumns::Entry &entry : dictionary.columns->entries()) {
        if (entry.kind == Kind::plain)
            ((*contact).*entry.set)(csvText::changeCSVData(value->view()));
        else
            addGroup(*contact, entry.kind, {value, entry.width});
        value += entry.width;
    }
    return contact;
}

}   // namespace

std::vector<NSString> CsvDictionary::textsUnder(const NSString &heading) const {
    std::size_t at = 0;
    for (const CsvColumns::Entry &entry : columns->entries()) {
        if (columns->headings()[entry.column] == heading)
            return {values.begin() + static_cast<std::ptrdiff_t>(at), values.begin() + static_cast<std::ptrdiff_t>(at + entry.width)};
        at += entry.width;
    }
    return {};
}

Dictionaries CsvFileReader::firstReader(std::string_view bytes, const NSString &file) {
    Pieces pieces(bytes);
    const std::string_view heading = pieces.next(kHeadingRoom);
    const std::int64_t firstRow = 1 + lineEndsIn(heading);
    std::string_view rows = bytes.substr(heading.size());
    std::size_t kept = 0;
    for (std::int64_t line = firstRow; !pieces.hasEnded();) {
        const std::string_view piece = pieces.next(kRowRoom);
        if (!unicode::isValid(piece))
            throw FatalParseFailure(file, line, "the line is not UTF-8, or a character lies across its byte 102,399");
        if (!pieces.hasEnded())
            kept += piece.size();   // the piece that met the end goes: it is none, or a line without an end
        line += lineEndsIn(piece);
    }
    Dictionaries found;
    const auto columns = unicode::isValid(heading) ? columnsOf(heading) : nullptr;
    if (kept == 0)
        throw FatalParseFailure(file, heading.empty() ? 1 : firstRow, "there is no text behind the header");
    if (columns)
        addRecordOf(rows.substr(0, kept), columns, firstRow, file, found);
    return found;
}

Dictionaries CsvFileReader::secondReader(std::string_view bytes, const NSString &file) {
    Dictionaries found;
    if (!unicode::isValid(bytes))
        return found;
    std::string_view rest = bytes;
    const auto columns = columnsOf(takeLine(rest));
    std::int64_t line = 1;
    const char *counted = bytes.data();
    while (!rest.empty()) {
        line += lineEndsIn({counted, static_cast<std::size_t>(rest.data() - counted)});
        counted = rest.data();
        const std::string_view text = takeLine(rest);
        if (!text.empty())
            addRecordOf(text, columns, line, file, found);
    }
    return found;
}

Dictionaries CsvFileReader::loadImportContactsCSVDataFromPath(const NSString &path) {
    const auto bytes = WholeFile::read(path);
    if (!bytes)
        return {};
    Dictionaries found = firstReader(bytes->view(), path);
    return found.empty() ? secondReader(bytes->view(), path) : found;
}

Dictionaries CsvFileReader::loadImportCSVGBKEncodingDataFromPath(const NSString &path) {
    const auto bytes = WholeFile::read(path);
    return bytes ? secondReader(bytes->view(), path) : Dictionaries();
}

ContactList CsvFileReader::parseCSVContactDictionary(const Dictionaries &dictionaries, const NSString &file) {
    ContactList contacts;
    contacts.reserve(dictionaries.size());
    for (const CsvDictionary &dictionary : dictionaries)
        try {
            contacts.push_back(contactOf(dictionary));
        } catch (const csvText::OutOfRange &error) {
            throw FatalParseFailure(file, dictionary.line, error.what());
        }
    return contacts;
}

ContactList CsvFileReader::read(const NSString &path) {
    return parseCSVContactDictionary(loadImportContactsCSVDataFromPath(path), path);
}
