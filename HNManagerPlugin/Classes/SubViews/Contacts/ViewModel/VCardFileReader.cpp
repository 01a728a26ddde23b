#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/VCardFileReader.h"

#include <algorithm>
#include <array>
#include <bit>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/WholeFile.h"
#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"
#include "HNManagerPlugin/contracts/RVFoundation/NSDataBase64.h"

namespace {

constexpr std::string_view kCardEnd = "END:VCARD";

// ---------------------------------------------------------------- pieces of a line

// A split is a plain cut at every occurrence. Our literals cannot overlap themselves, so what stands behind the last
// occurrence is the last piece; without one the only piece is the whole text.
std::string_view lastPiece(std::string_view text, std::string_view literal) {
    const std::size_t at = text.rfind(literal);
    return at == std::string_view::npos ? text : text.substr(at + literal.size());
}

std::string_view firstPiece(std::string_view text, std::string_view literal) {
    return text.substr(0, text.find(literal));
}

std::optional<std::string_view> secondPiece(std::string_view text, std::string_view literal) {
    const std::size_t at = text.find(literal);
    if (at == std::string_view::npos)
        return std::nullopt;
    return firstPiece(text.substr(at + literal.size()), literal);
}

// The first N pieces and how many there are.
template <std::size_t N>
struct Pieces {
    std::array<std::string_view, N> at{};
    std::size_t count = 0;

    Pieces(std::string_view text, std::string_view literal) {
        for (std::size_t cut; (cut = text.find(literal)) != std::string_view::npos;
             text.remove_prefix(cut + literal.size()))
            add(text.substr(0, cut));
        add(text);
    }

private:
    void add(std::string_view piece) {
        if (count < N)
            at[count] = piece;
        ++count;
    }
};

bool contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

std::string withoutLineEnds(std::string_view text) {
    std::string kept;
    kept.reserve(text.size());
    std::ranges::copy_if(text, std::back_inserter(kept), [](char c) { return c != '\r' && c != '\n'; });
    return kept;
}

// A piece of a line has no LF, and mostly one CR, at its end.
NSString cleaned(std::string_view text) {
    if (text.ends_with('\r'))
        text.remove_suffix(1);
    return contains(text, "\r") ? NSString(withoutLineEnds(text)) : NSString(text);
}

std::size_t startOfLastCharacter(std::string_view text) {
    std::size_t at = text.size() - 1;
    while (at > 0 && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80)
        --at;
    return at;
}

bool isPlain(char c) { return static_cast<unsigned char>(c) > ' ' && static_cast<unsigned char>(c) < 0x80; }

std::string_view trimmedOfBlanks(std::string_view text) {
    while (!text.empty() && !isPlain(text.front())) {
        std::size_t behind = 0;
        if (!unicode::isBlank(unicode::next(text, behind)))
            break;
        text.remove_prefix(behind);
    }
    while (!text.empty() && !isPlain(text.back())) {
        const std::size_t start = startOfLastCharacter(text);
        std::size_t behind = start;
        if (!unicode::isBlank(unicode::next(text, behind)))
            break;
        text.remove_suffix(text.size() - start);
    }
    return text;
}

// Backslash-n, backslash-r and two backslashes. The fixed text "&^HJ" has always stood for a backslash here, and an
// escaped comma or semicolon has always kept its backslash.
NSString unescapedNote(const NSString &note) {
    constexpr std::string_view kPlaceholder = "&^HJ";
    const std::string_view text = note.view();
    if (text.find_first_of("\\&") == std::string_view::npos)
        return note;
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view rest = text.substr(at);
        const bool isPlaceholder = rest.starts_with(kPlaceholder);
        if (isPlaceholder || rest.starts_with("\\\\"))
            out += '\\';
        else if (rest.starts_with("\\n"))
            out += '\n';
        else if (rest.starts_with("\\r"))
            out += '\r';
        else {
            out += text[at++];
            continue;
        }
        at += isPlaceholder ? kPlaceholder.size() : 2;
    }
    return NSString(out);
}

// ---------------------------------------------------------------- labels

// A label line reads "item1.X-ABLabel:_$!<HomePage>!$_" and a CR. The 9 counts the four characters before the name,
// the four behind it and the CR: in a file without CR the name loses its last letter.
constexpr std::string_view kLabelMark = "_$!<";
constexpr std::size_t kAroundLabel = 9, kBeforeLabel = 4;

std::size_t characters(std::string_view text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string_view withoutCharacters(std::string_view text, std::size_t front, std::size_t back) {
    for (; front > 0; --front) {
        std::size_t behind = 0;
        unicode::next(text, behind);
        text.remove_prefix(behind);
    }
    for (; back > 0; --back)
        text = text.substr(0, startOfLastCharacter(text));
    return text;
}

NSString labelName(std::string_view label) {
    return cleaned(withoutCharacters(label, kBeforeLabel, kAroundLabel - kBeforeLabel));
}

// ---------------------------------------------------------------- the scan

class Scan {
public:
    Scan(std::string_view text, const NSString &file, const VCardFileReader::Log &log)
        : rest_(text), file_(file), log_(log) {
        prepareRecords(text);
    }

    ContactList run() {
        do {
            takeLine();
            readLine();
        } while (hasNext_);
        return std::move(contacts_);
    }

private:
    using Action = void (Scan::*)();
    struct Row {
        std::string_view prefix;
        Action action;
    };
    template <void (ZpContactDataInfo::*Set)(NSString)>
    void setText(std::string_view literal) {
        (contact().*Set)(cleaned(lastPiece(line_, literal)));
    }
    static const Row kRows[];
    static const Row kItemRows[];
    static std::array<std::uint32_t, 256> rowsByFirstByte();

    // ---- lines
    void prepareRecords(std::string_view text);
    void takeLine();
    void readLine();
    std::string_view nextLine() const { return rest_.substr(0, rest_.find('\n')); }
    ZpContactDataInfo &contact();
    [[noreturn]] void fail(const char *reason) const { throw FatalParseFailure(file_, lineNumber_, reason); }
    std::string_view demand(std::optional<std::string_view> piece, const char *reasonWithout) const {
        return piece ? *piece : (fail(reasonWithout), std::string_view());
    }

    // ---- the ladder's actions
    void begin();
    void end();
    void nothing() {}
    void unknown();
    void name();
    void firstNameYomi() { setText<&ZpContactDataInfo::setFirst_name_yomi>("X-PHONETIC-FIRST-NAME:"); }
    void lastNameYomi() { setText<&ZpContactDataInfo::setLast_name_yomi>("X-PHONETIC-LAST-NAME:"); }
    void organisation();
    // Overwrites what ORG gave: a phonetic company has no field of its own.
    void phoneticOrganisation() { setText<&ZpContactDataInfo::setCompany_name>("X-PHONETIC-ORG:"); }
    void nickname() { setText<&ZpContactDataInfo::setNickname>("NICKNAME:"); }
    void birthday() { setText<&ZpContactDataInfo::setBirthday>("BDAY;VALUE=date:"); }
    void title() { setText<&ZpContactDataInfo::setJob_title>("TITLE:"); }
    void note();
    void photo();
    void email();
    void telephone();
    void url();
    void instantMessage();
    void relatedName();
    void date();
    void item();
    // ---- the actions of item lines
    void itemTelephone();
    void itemEmail();
    void itemUrl();
    void itemInstantMessage();
    void itemAddress();
    void itemRelatedName();
    void itemDate();
    void itemOther() { seen_ = true; }
    NSString urlLabel() const;
    NSString plainLabel() const;

    std::string_view rest_;   // behind the line at hand
    std::string_view line_;   // the line at hand, trimmed
    bool hasNext_ = false;
    std::int64_t lineNumber_ = 0;
    ContactList contacts_;
    std::int64_t current_ = -1;
    bool seen_ = false;
    const NSString &file_;
    const VCardFileReader::Log &log_;
};

// First hit wins.
const Scan::Row Scan::kRows[] = {
    {"BEGIN:VCARD", &Scan::begin},
    {"N:", &Scan::name},
    {"FN:", &Scan::nothing},
    {"X-PHONETIC-FIRST-NAME", &Scan::firstNameYomi},
    {"X-PHONETIC-LAST-NAME", &Scan::lastNameYomi},
    {"ORG", &Scan::organisation},
    {"X-PHONETIC-ORG", &Scan::phoneticOrganisation},
    {"NICKNAME", &Scan::nickname},
    {"BDAY;", &Scan::birthday},
    {"TITLE", &Scan::title},
    {"NOTE", &Scan::note},
    {"PHOTO", &Scan::photo},
    {"EMAIL;", &Scan::email},
    {"TEL;", &Scan::telephone},
    {"URL;TYPE=", &Scan::url},
    {"URL;type=", &Scan::url},
    {"IMPP", &Scan::instantMessage},
    {"X-ABRELATEDNAMES;TYPE=", &Scan::relatedName},
    {"X-ABRELATEDNAMES;type=", &Scan::relatedName},
    {"X-ABDATE;TYPE=", &Scan::date},
    {"X-ABDATE;type=", &Scan::date},
    {"item", &Scan::item},
    {"END", &Scan::end},
    {"VERSION:", &Scan::nothing},
};

// What an item line contains; first hit wins.
const Scan::Row Scan::kItemRows[] = {
    {".TEL", &Scan::itemTelephone},       {".EMAIL", &Scan::itemEmail}, {".URL", &Scan::itemUrl},
    {".IMPP", &Scan::itemInstantMessage}, {".ADR", &Scan::itemAddress}, {".X-ABRELATEDNAMES", &Scan::itemRelatedName},
    {".X-ABDATE", &Scan::itemDate},
};

// Bit i: row i of the ladder begins with this byte. Most lines of a file with pictures begin with none.
std::array<std::uint32_t, 256> Scan::rowsByFirstByte() {
    static_assert(std::size(kRows) <= 32);
    std::array<std::uint32_t, 256> rows{};
    for (std::size_t i = 0; i < std::size(kRows); ++i)
        rows[static_cast<unsigned char>(kRows[i].prefix.front())] |= 1U << i;
    return rows;
}

void Scan::prepareRecords(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(kCardEnd, at)) != std::string_view::npos; at += kCardEnd.size())
        ++count;
    contacts_.reserve(count);
    while (contacts_.size() < count)
        contacts_.push_back(make<ZpContactDataInfo>());
}

void Scan::takeLine() {
    const std::size_t cut = rest_.find('\n');
    hasNext_ = cut != std::string_view::npos;
    line_ = trimmedOfBlanks(rest_.substr(0, cut));
    rest_.remove_prefix(hasNext_ ? cut + 1 : rest_.size());
    ++lineNumber_;
}

void Scan::readLine() {
    static const std::array<std::uint32_t, 256> kRowsByFirstByte = rowsByFirstByte();
    std::uint32_t rows = line_.empty() ? 0 : kRowsByFirstByte[static_cast<unsigned char>(line_.front())];
    for (; rows != 0; rows &= rows - 1)   // takes off the lowest bit: the rows in their order
        if (const Row &row = kRows[std::countr_zero(rows)]; line_.starts_with(row.prefix))
            return (this->*row.action)();
    unknown();
}

ZpContactDataInfo &Scan::contact() {
    if (current_ < 0)
        fail("a property stands before the first BEGIN:VCARD");
    if (current_ >= static_cast<std::int64_t>(contacts_.size()))
        fail("the file has more BEGIN:VCARD than END:VCARD: no record is left for this card");
    return *contacts_[static_cast<std::size_t>(current_)];
}

void Scan::begin() {
    if (log_)
        log_("parse vcare contat start");
    ++current_;
    seen_ = true;
}

void Scan::end() {
    if (log_)
        log_("parse vcard contact end");
}

// Before the first card a line that nobody knows would take record -1 out of the list.
void Scan::unknown() {
    if (!seen_)
        fail("an unknown line stands before the first BEGIN:VCARD");
}

void Scan::name() {
    const Pieces<5> parts(*secondPiece(line_, ":"), ";");
    if (parts.count != 5)
        return unknown();
    ZpContactDataInfo &c = contact();
    c.setLast_name(cleaned(parts.at[0]));
    c.setFirst_name(cleaned(parts.at[1]));
    c.setMiddle_name(cleaned(parts.at[2]));
    c.setName_title(cleaned(parts.at[3]));
    c.setName_suffix(cleaned(parts.at[4]));
}

void Scan::organisation() {
    const Pieces<2> halves(line_, "ORG:");
    if (halves.count != 2)
        return unknown();
    ZpContactDataInfo &c = contact();
    const Pieces<2> parts(halves.at[1], ";");
    if (parts.count < 2)
        fail("ORG: without a \";\" behind the company");
    c.setCompany_name(cleaned(parts.at[0]));
    c.setDepartment(cleaned(parts.at[1]));
}

void Scan::note() { contact().setNotes(unescapedNote(cleaned(lastPiece(line_, "NOTE:")))); }

void Scan::photo() {
    ZpContactDataInfo &c = contact();
    const std::string_view text = demand(secondPiece(line_, "PHOTO;ENCODING=b;TYPE=JPEG:"),
                                         "PHOTO in another form than PHOTO;ENCODING=b;TYPE=JPEG:");
    const NSDataRef data = jk_dataWithBase64EncodedString(text);
    c.setImageCharData(data);
    c.setImage_length(data ? static_cast<std::int64_t>(data->length()) : 0);
}

// "type=WORK" to "WORK".
NSString behindEquals(std::string_view parameter) { return cleaned(lastPiece(parameter, "=")); }

void Scan::email() {
    ZpContactDataInfo &c = contact();
    const std::string_view text = *secondPiece(line_, "EMAIL;");
    const Pieces<2> parameters(firstPiece(text, ":"), ";");
    ZpEmailDataInfo email;
    email.email = cleaned(lastPiece(text, ":"));
    email.type = behindEquals(parameters.at[0]);
    if (email.type.isEqualIgnoringCase("INTERNET")) {
        if (parameters.count < 2)
            fail("EMAIL; with INTERNET as its only parameter");
        email.type = behindEquals(parameters.at[1]);
    }
    if (email.type == "pref")
        email.type = "home";
    c.mutable_emails().push_back(std::move(email));
}

void Scan::telephone() {
    ZpContactDataInfo &c = contact();
    const std::string_view text = *secondPiece(line_, "TEL;");
    ZpPhoneNumberDataInfo phone;
    phone.phone_number = lastPiece(text, ":");   // keeps its CR: numbers have always gone to devices like this
    phone.type = behindEquals(firstPiece(firstPiece(text, ":"), ";"));
    c.mutable_phone_numbers().push_back(std::move(phone));
}

void Scan::url() {
    ZpContactDataInfo &c = contact();
    const Pieces<3> parts(demand(secondPiece(line_, "URL;TYPE="), "URL;type= in lower case"), ":");
    ZpUrlDataInfo url;
    if (parts.count >= 3) {   // scheme and host: what stands behind a further colon is cut off
        url.url = cleaned(std::string(parts.at[1]).append(":").append(parts.at[2]));
        url.type = cleaned(parts.at[0]);
    }
    c.mutable_urls().push_back(std::move(url));
}

void Scan::instantMessage() {
    ZpContactDataInfo &c = contact();
    const Pieces<4> parts(line_, "TYPE=");
    if (parts.count < 2)
        fail("IMPP without TYPE=");
    ZpIMDataInfo im;
    if (parts.count >= 3)
        im.user = cleaned(lastPiece(parts.at[parts.count == 3 ? 2 : 3], ":"));
    const NSString service = cleaned(parts.at[1]);
    im.service = service.isEmpty() ? service : NSString(service.view().substr(0, startOfLastCharacter(service.view())));
    c.mutable_ims().push_back(std::move(im));
}

void Scan::relatedName() {
    ZpContactDataInfo &c = contact();
    ZpRelatedNameDataInfo related;
    related.type = "other";
    related.relatename = cleaned(demand(secondPiece(line_, ":"), "X-ABRELATEDNAMES;TYPE= without a \":\""));
    c.mutable_relatednames().push_back(std::move(related));
}

void Scan::date() {
    ZpContactDataInfo &c = contact();
    ZpDateDataInfo date;
    date.type = "other";
    date.date = cleaned(demand(secondPiece(line_, ":"), "X-ABDATE;TYPE= without a \":\""));
    c.mutable_dates().push_back(std::move(date));
}

void Scan::item() {
    for (const Row &row : kItemRows)
        if (contains(line_, row.prefix))
            return (this->*row.action)();
    itemOther();
}

void Scan::itemTelephone() {
    ZpPhoneNumberDataInfo phone;
    phone.type = "other";
    phone.phone_number = cleaned(lastPiece(line_, ":"));
    contact().mutable_phone_numbers().push_back(std::move(phone));
}

void Scan::itemEmail() {
    ZpEmailDataInfo email;
    email.type = "other";
    email.email = cleaned(lastPiece(line_, ":"));
    contact().mutable_emails().push_back(std::move(email));
}

// The three that have a label look at the line below, untrimmed, without taking it. Without a line below the record is
// dropped; a card that has no record fails all the same.
void Scan::itemUrl() {
    ZpContactDataInfo &c = contact();
    if (!hasNext_)
        return;
    const bool preferred = contains(line_, ";TYPE=pref:") || contains(line_, ";type=pref:");
    ZpUrlDataInfo url;
    url.url = cleaned(lastPiece(line_, preferred ? ";TYPE=pref:" : ".URL:"));   // ";type=pref:" keeps the whole line
    url.type = urlLabel();
    c.mutable_urls().push_back(std::move(url));
}

NSString Scan::urlLabel() const {
    const std::string_view label = lastPiece(nextLine(), ":");
    if (!contains(label, kLabelMark))
        return "other";
    if (characters(label) < kAroundLabel)
        fail("the label below this URL is too short");
    return labelName(label);
}

void Scan::itemInstantMessage() {
    ZpContactDataInfo &c = contact();
    const std::string_view text = demand(secondPiece(line_, "TYPE="), "item with .IMPP without TYPE=");
    ZpIMDataInfo im;
    im.service = cleaned(firstPiece(text, ":"));
    im.user = cleaned(lastPiece(text, ":"));
    c.mutable_ims().push_back(std::move(im));
}

void Scan::itemAddress() {
    ZpContactDataInfo &c = contact();
    const std::string_view head = firstPiece(line_, ":");
    ZpContactAddressDataInfo address;
    address.type = "other";
    if (contains(head, ";TYPE") || contains(head, ";type"))
        address.type =
            cleaned(demand(secondPiece(head, ";TYPE"), "item with .ADR and ;type in lower case"));   // keeps its "="
    const Pieces<7> parts(lastPiece(line_, ":"), ";");
    if (parts.count < 7)
        return;
    address.street = cleaned(parts.at[2]);
    address.city = cleaned(parts.at[3]);
    address.state = cleaned(parts.at[4]);
    address.postal_code = cleaned(parts.at[5]);
    address.country = cleaned(parts.at[6]);
    c.mutable_addresses().push_back(std::move(address));
}

void Scan::itemRelatedName() {
    ZpContactDataInfo &c = contact();
    if (!hasNext_)
        return;
    ZpRelatedNameDataInfo related;
    related.relatename = lastPiece(line_, ":");   // keeps its CR
    related.type = plainLabel();
    c.mutable_relatednames().push_back(std::move(related));
}

void Scan::itemDate() {
    ZpContactDataInfo &c = contact();
    if (!hasNext_)
        return;
    ZpDateDataInfo date;
    date.date = cleaned(lastPiece(line_, ":"));
    date.type = plainLabel();
    c.mutable_dates().push_back(std::move(date));
}

NSString Scan::plainLabel() const {
    const std::string_view label = lastPiece(nextLine(), ":");
    if (!contains(label, kLabelMark))
        return "other";
    return characters(label) > kAroundLabel ? labelName(label) : NSString();
}

// ---------------------------------------------------------------- the file

std::int64_t lineOfFirstBadByte(std::string_view text) {
    std::int64_t line = 1;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        if (unicode::next(text, at) == 0xFFFD && at - start == 1)
            break;
        line += text[start] == '\n';
    }
    return line;
}

}   // namespace

ContactList VCardFileReader::readText(std::string_view utf8, const NSString &file, const Log &log) {
    return Scan(utf8, file, log).run();
}

ContactList VCardFileReader::read(const NSString &path, const Log &log) {
    const std::optional<WholeFile> buffer = WholeFile::read(path);
    if (!buffer || !unicode::isValid(buffer->view()))
        return {};
    return readText(buffer->view(), path, log);
}

NSString VCardFileReader::deleteEnterChar(const NSString &text) {
    return text.view().find_first_of("\r\n") == std::string_view::npos ? text : NSString(withoutLineEnds(text.view()));
}

std::optional<VCardFileReader::Unreadable> VCardFileReader::whyNothing(const NSString &path) {
    const std::optional<WholeFile> buffer = WholeFile::read(path);
    if (!buffer)
        return Unreadable{std::nullopt, "the file cannot be read"};
    if (!unicode::isValid(buffer->view()))
        return Unreadable{lineOfFirstBadByte(buffer->view()), "the line is not UTF-8"};
    return std::nullopt;
}
