#include "host/import/TableReader.h"

#include <algorithm>
#include <map>

#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"
#include "host/import/Charset.h"
#include "host/import/Dates.h"
#include "host/import/Labels.h"
#include "host/import/TableDialect.h"
#include "toolkit/NSString.h"

namespace host::foreign {

namespace {

using Kind = Column::Kind;
using Part = Column::Part;
using Role = Column::Role;

constexpr std::string_view kBetweenValues = " ::: ";

std::vector<std::string> valuesOf(const std::string &text) {
    std::vector<std::string> values;
    for (std::size_t from = 0, at = 0; at != std::string::npos; from = at + kBetweenValues.size()) {
        at = text.find(kBetweenValues, from);
        values.emplace_back(trimmed(std::string_view(text).substr(from, at == std::string::npos ? at : at - from)));
        if (values.back() == ":::")   // " ::: " at the end has lost its blank
            values.back().clear();
        else if (values.back().ends_with(" :::"))
            values.back().resize(values.back().size() - 4);
    }
    return values;
}

std::string oneLine(std::string text) {
    std::ranges::replace_if(text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return text;
}

// The two escapes of the dialect.
std::string ownEscapesUndone(std::string_view text) {
    std::string out;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char next = at + 1 < text.size() ? text[at + 1] : '\0';
        if (text[at] != '\\' || (next != 'n' && next != 'r' && next != '\\')) {
            out += text[at];
            continue;
        }
        out += next == 'n' ? '\n' : next == 'r' ? '\r' : '\\';
        ++at;
    }
    return out;
}

struct Field {
    Column::Field field;
    std::string ForeignContact::*text;
};
constexpr Field kFields[] = {
    {Column::Field::first, &ForeignContact::firstName},         {Column::Field::middle, &ForeignContact::middleName},
    {Column::Field::last, &ForeignContact::lastName},           {Column::Field::title, &ForeignContact::nameTitle},
    {Column::Field::suffix, &ForeignContact::nameSuffix},       {Column::Field::firstYomi, &ForeignContact::firstNameYomi},
    {Column::Field::middleYomi, &ForeignContact::middleNameYomi}, {Column::Field::lastYomi, &ForeignContact::lastNameYomi},
    {Column::Field::nickname, &ForeignContact::nickname},       {Column::Field::company, &ForeignContact::company},
    {Column::Field::department, &ForeignContact::department},   {Column::Field::jobTitle, &ForeignContact::jobTitle},
    {Column::Field::birthday, &ForeignContact::birthday},       {Column::Field::notes, &ForeignContact::notes},
};

}  // namespace

// A group's columns may stand in any order.
struct TableReader::Row {
    struct Group {
        const Column *column = nullptr;   // one of its columns
        std::string label, service, values;
        PostalAddress address;
        std::string formatted, pobox, extended;
    };
    ForeignContact contact;
    std::string fullName, year, month, day;
    std::map<std::size_t, Group> groups;
};

TableReader::TableReader(std::string_view bytes, std::string file, const Tell &tell) : bytes_(bytes), file_(std::move(file)) {
    auto charset = takeMark(bytes_);
    if (!charset)
        charset = wideCharset(bytes_);
    if (!charset && !unicode::isValid(bytes_))
        charset = likelyCharset(bytes_);
    if (charset && *charset != "UTF-8") {
        Charsets charsets;
        whole_ = charsets.toUtf8(bytes_, *charset).value_or("");
        bytes_ = whole_;
        tell(0, "read as " + *charset);
    } else if (!unicode::isValid(bytes_)) {
        whole_ = unicode::sanitized(bytes_);
        bytes_ = whole_;
    }
    takeHeadings();
}

void TableReader::takeHeadings() {
    isOwn_ = hasDialectHeadings(bytes_);
    separator_ = separatorOf(bytes_);
    if (bytes_.size() > 5 && upper(bytes_.substr(0, 4)) == "SEP=") {   // a spreadsheet's own line
        separator_ = bytes_[4];
        bytes_.remove_prefix(std::min(bytes_.find('\n'), bytes_.size() - 1) + 1);
        headingLine_ = 1;
    }
    TableCells cells(bytes_, separator_, file_);
    if (!cells.next())
        throw FatalParseFailure(file_, 1, "the file has no heading line");
    std::vector<std::string> headings;
    headings.reserve(cells.count());
    for (std::size_t i = 0; i < cells.count(); ++i)
        headings.emplace_back(trimmed(cells.cell(i)));
    columns_ = columnsOf(headings);
    headingLine_ += cells.line();
    if (std::ranges::none_of(columns_, [](const Column &c) { return c.kind != Kind::unknown && c.kind != Kind::bookkeeping; }))
        throw FatalParseFailure(file_, headingLine_, NSString("no column has a heading that is known; " + leftBehind("the first is", headings.front())));
    std::map<std::string, std::size_t> groups;
    for (const Column &column : columns_)
        groupOf_.push_back(column.group.empty() ? 0 : groups.try_emplace(column.group, groups.size()).first->second);
}

std::string TableReader::text(std::string_view cell) const {
    std::string text = isOwn_ ? ownEscapesUndone(cell) : std::string(cell);
    replaceAll(text, "\r\n", "\n");
    std::ranges::replace(text, '\r', '\n');
    return std::string(trimmed(text));
}

void TableReader::read(const Visit &visit) {
    TableCells cells(bytes_, separator_, file_);
    filled_.assign(columns_.size(), 0);
    std::int64_t number = 0;
    const std::int64_t above = headingLine_ - 1;
    for (bool isHeading = true; cells.next(); isHeading = false) {
        if (isHeading)
            continue;
        Row row;
        bool isBlank = true;
        for (std::size_t i = 0; i < cells.count(); ++i) {
            const std::string_view cell = cells.cell(i);
            if (trimmed(cell).empty())
                continue;
            isBlank = false;
            takeCell(row, i, cell);
        }
        if (isBlank)
            continue;
        row.contact.line = cells.line() + above;
        row.contact.number = ++number;
        finish(row);
        visit(std::move(row.contact));
    }
}

void TableReader::takeCell(Row &row, std::size_t index, std::string_view cell) {
    std::string value = text(cell);
    if (index >= columns_.size()) {
        row.contact.leave(leftBehind("a cell beyond the headings", value));
        return;
    }
    ++filled_[index];
    const Column &column = columns_[index];
    if (column.group.empty())
        return takeAlone(row, column, value);
    Row::Group &group = row.groups[groupOf_[index]];
    group.column = group.column && column.role != Role::value ? group.column : &column;
    if (column.role == Role::type)
        setOnce(row, column, group.label, value);
    else if (column.role == Role::service)
        setOnce(row, column, group.service, value);
    else if (column.kind == Kind::unknown)
        row.contact.leave(leftBehind(column.heading, value));
    else if (column.kind != Kind::address)
        setOnce(row, column, group.values, value);
    else {
        std::string *const parts[] = {&group.address.street, &group.pobox, &group.extended, &group.address.city, &group.address.state,
                                      &group.address.postalCode, &group.address.country, &group.formatted};
        std::string &part = *parts[static_cast<int>(column.part)];
        part += (part.empty() ? "" : ", ") + value;
    }
}

// What a second column of the same meaning says is left behind, unless it is the same.
void TableReader::setOnce(Row &row, const Column &column, std::string &field, const std::string &value) {
    if (field.empty())
        field = value;
    else if (field != value)
        row.contact.leave(leftBehind(column.heading, value));
}

void TableReader::takeText(Row &row, const Column &column, std::string value) {
    const auto *field = std::ranges::find(kFields, column.field, &Field::field);
    std::string &text = row.contact.*field->text;
    if (column.field == Column::Field::birthday)
        value = plainDate(value, column.isMonthFirst ? DayOrder::monthFirst : DayOrder::dayFirst);
    else if (column.field != Column::Field::notes)
        value = oneLine(std::move(value));
    if (column.field == Column::Field::notes)
        text += (text.empty() ? "" : "\n") + value;
    else
        setOnce(row, column, text, value);
}

void TableReader::takeAlone(Row &row, const Column &column, const std::string &value) {
    ForeignContact &c = row.contact;
    const auto addAll = [&](std::vector<LabelledText> &list) {
        for (std::string &one : valuesOf(value))
            if (!one.empty())
                list.push_back({column.label, oneLine(std::move(one))});
    };
    const DayOrder order = column.isMonthFirst ? DayOrder::monthFirst : DayOrder::dayFirst;
    switch (column.kind) {
    case Kind::text: return takeText(row, column, value);
    case Kind::fullName: return setOnce(row, column, row.fullName, oneLine(value));
    case Kind::birthYear: return setOnce(row, column, row.year, value);
    case Kind::birthMonth: return setOnce(row, column, row.month, value);
    case Kind::birthDay: return setOnce(row, column, row.day, value);
    case Kind::phone: return addAll(c.phones);
    case Kind::email: return addAll(c.emails);
    case Kind::url: return addAll(c.urls);
    case Kind::related: return addAll(c.relatedNames);
    case Kind::date: c.dates.push_back({column.label, plainDate(oneLine(value), order)}); return;
    case Kind::messenger: c.messengers.push_back({column.label, column.service.empty() ? "IM" : column.service, oneLine(value)}); return;
    case Kind::address:
    case Kind::bookkeeping: return;
    case Kind::unknown: c.leave(leftBehind(column.heading.empty() ? "a cell without heading" : column.heading, value)); return;
    }
}

void TableReader::addAddress(ForeignContact &contact, PostalAddress address, const std::string &formatted) {
    const auto whole = [&] { return joined({address.street, address.city, address.state, address.postalCode, address.country}, " "); };
    if (whole().empty())
        address.street = formatted;
    else if (!tellsNothingNew(formatted, whole()))
        contact.leave(leftBehind("formatted address", formatted));
    if (!whole().empty())
        contact.addresses.push_back(std::move(address));
}

void TableReader::addValues(ForeignContact &c, Kind kind, const std::string &label, const std::string &values, const std::string &services) {
    const std::vector<std::string> serviceOf = valuesOf(services);
    std::size_t index = 0;
    for (std::string &value : valuesOf(values)) {
        const std::string service = index < serviceOf.size() ? serviceOf[index] : "";
        ++index;
        if (value.empty())
            continue;
        value = oneLine(std::move(value));
        switch (kind) {
        case Kind::phone: c.phones.push_back({label, std::move(value)}); break;
        case Kind::email: c.emails.push_back({label, std::move(value)}); break;
        case Kind::url: c.urls.push_back({label, std::move(value)}); break;
        case Kind::related: c.relatedNames.push_back({label, std::move(value)}); break;
        case Kind::date: c.dates.push_back({label, plainDate(value, DayOrder::monthFirst)}); break;
        default: c.messengers.push_back({label, service.empty() ? "IM" : service, std::move(value)}); break;
        }
    }
}

// What only the whole row tells.
void TableReader::finish(Row &row) {
    ForeignContact &c = row.contact;
    for (auto &[number, group] : row.groups) {
        const Column &column = *group.column;
        const std::string label = column.label.empty() ? labelOfText(group.label) : column.label;
        if (column.kind != Kind::address) {
            addValues(c, column.kind, label, group.values, group.service);
            continue;
        }
        PostalAddress address = std::move(group.address);
        address.label = label;
        address.street = joined({address.street, group.extended, group.pobox}, ", ");
        addAddress(c, std::move(address), group.formatted);
    }
    if (!row.year.empty() || !row.month.empty() || !row.day.empty()) {
        const std::string date = plainDate(joined({row.year, row.month, row.day}, "-"));
        if (c.birthday.empty())
            c.birthday = date;
        else if (c.birthday != date)
            c.leave(leftBehind("birthday in parts", date));
    }
    const std::string name = joined({c.nameTitle, c.firstName, c.middleName, c.lastName, c.nameSuffix}, " ");
    if (joined({c.firstName, c.middleName, c.lastName}, "").empty() && row.fullName != c.company)
        c.firstName = row.fullName;
    else if (!tellsNothingNew(row.fullName, joined({name, c.nickname, c.company, c.department}, " ")))
        c.leave(leftBehind("full name", row.fullName));
}

}  // namespace host::foreign
