#include "host/import/TableDialect.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"
#include "host/import/TableCells.h"
#include "toolkit/NSString.h"

namespace host::foreign {

namespace {

constexpr std::string_view kPlain[] = {
    "Given Name", "Given Name Yomi", "Additional Name", "Additional Name Yomi",  "Family Name",                 "Family Name Yomi",       "Nickname",
    "Name Prefix", "Name Suffix",    "Notes",           "Organization 1 - Name", "Organization 1 - Department", "Organization 1 - Title", "Birthday",
};
struct Group {
    std::string_view word;
    std::vector<std::string_view> parts;   // behind the type, in their order
};
const Group kGroups[] = {
    {"Phone", {"Value"}}, {"E-mail", {"Value"}}, {"Address", {"Postal Code", "Country", "Region", "City", "Street"}},
    {"Website", {"Value"}}, {"IM", {"Service", "Value"}}, {"Relation", {"Value"}}, {"Event", {"Value"}},
};
constexpr std::size_t kHeadingRoom = 10239, kRowRoom = 102399;   // bytes that the first reader takes at once

// What a column is to the readers.
enum class Kind { ignored, plain, type, value, addressPart };

// Headings as the readers cut them: at each comma, without a look at quotes. Empty where they are no dialect.
std::vector<Kind> kindsOf(std::string_view line) {
    std::vector<std::string_view> headings;
    for (std::size_t from = 0, comma = 0; comma != std::string_view::npos; from = comma + 1) {
        comma = line.find(',', from);
        headings.push_back(line.substr(from, comma == std::string_view::npos ? comma : comma - from));
    }
    std::vector<Kind> kinds;
    std::set<std::string_view> seen;
    bool isAnyKnown = false;
    while (kinds.size() < headings.size()) {
        const std::string_view heading = headings[kinds.size()];
        const auto *group = std::ranges::find_if(kGroups, [&](const Group &g) { return heading.find(g.word) != std::string_view::npos; });
        const bool isPlain = std::ranges::find(kPlain, heading) != std::end(kPlain);
        isAnyKnown = isAnyKnown || isPlain || group != std::end(kGroups);
        if ((isPlain || group != std::end(kGroups)) && !seen.insert(heading).second)
            return {};   // a second one overwrites the first
        if (group == std::end(kGroups)) {
            kinds.push_back(isPlain ? Kind::plain : Kind::ignored);
            continue;
        }
        if (!heading.starts_with(group->word) || !heading.ends_with(" - Type") || headings.size() - kinds.size() <= group->parts.size())
            return {};
        const std::string front(heading.substr(0, heading.size() - 4));
        kinds.push_back(Kind::type);
        for (const std::string_view part : group->parts) {
            if (headings[kinds.size()] != front + std::string(part))
                return {};
            kinds.push_back(group->parts.size() > 2 ? Kind::addressPart : Kind::value);
        }
    }
    return isAnyKnown ? kinds : std::vector<Kind>();
}

std::string_view headingLine(std::string_view bytes) {
    std::string_view line = bytes.substr(0, bytes.find('\n'));
    while (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

// A line break for the second reader that is none for a table.
bool hasOtherBreaks(std::string_view bytes) {
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const char c = bytes[at];
        if (c == '\v' || c == '\f' || (c == '\r' && (at + 1 == bytes.size() || bytes[at + 1] != '\n')))
            return true;
        if ((c == '\xC2' || c == '\xE2') && (bytes.substr(at).starts_with("\xC2\x85") || bytes.substr(at).starts_with("\xE2\x80\xA8") ||
                                             bytes.substr(at).starts_with("\xE2\x80\xA9")))
            return true;
    }
    return false;
}

bool hasLongLine(std::string_view bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', at), bytes.size());
        if (end - at >= kRowRoom)
            return true;
        at = end + 1;
    }
    return false;
}

// A cell in quotes in front of one with three quotes and the like: the readers' repair puts them together.
bool isRepaired(std::string_view row) {
    const std::size_t opener = row.starts_with('"') ? 0 : row.find(",\"");
    if (opener == std::string_view::npos)
        return false;
    bool isQuoted = false;
    std::size_t at = row.starts_with('"') ? 0 : opener + 1;
    for (; at < row.size() && (isQuoted || row[at] != ','); ++at)
        isQuoted = row[at] == '"' ? !isQuoted : isQuoted;
    if (at >= row.size())
        return false;
    std::size_t quotes = 0;
    for (++at; at < row.size() && (isQuoted || row[at] != ','); ++at)
        if (row[at] == '"') {
            isQuoted = !isQuoted;
            ++quotes;
        }
    return quotes != 0 && quotes != 2;
}

bool isRead(const TableCells &cells, const std::vector<Kind> &kinds) {
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        const std::string_view cell = cells.cell(i);
        const bool isGroup = kinds[i] != Kind::plain && kinds[i] != Kind::ignored;
        if (kinds[i] == Kind::ignored ? !cell.empty() : isGroup && (cell.find('"') != std::string_view::npos || cell.find(" ::: ") != std::string_view::npos))
            return false;
        if (kinds[i] != Kind::type)
            continue;
        if (cell.find(',') != std::string_view::npos || cell.starts_with("* "))
            return false;
        bool isAny = false, isAll = true, isAddress = false;
        for (std::size_t part = i + 1; part < kinds.size() && (kinds[part] == Kind::value || kinds[part] == Kind::addressPart); ++part) {
            isAddress = kinds[part] == Kind::addressPart;
            isAny = isAny || !cells.cell(part).empty();
            isAll = isAll && !cells.cell(part).empty();
        }
        if (isAny && (cell.empty() || (!isAll && !isAddress)))
            return false;   // a group without its type is dropped
    }
    return true;
}

bool areRowsRead(std::string_view bytes, const std::vector<Kind> &kinds) {
    TableCells cells(bytes, ',', "");
    std::size_t rows = 0, at = 0;
    for (bool isHeading = true; cells.next(); isHeading = false) {
        const std::size_t end = std::min(bytes.find('\n', at), bytes.size());
        const std::string_view line = bytes.substr(at, end - at);
        at = end + 1;
        if (!cells.isStrict() || cells.lines() != 1)
            return false;
        if (isHeading || (cells.count() == 1 && cells.cell(0).empty()))
            continue;
        ++rows;
        if (cells.count() != kinds.size() || isRepaired(line) || !isRead(cells, kinds))
            return false;
    }
    return rows > 0 && (bytes.ends_with('\n') || rows > 2);
}

}  // namespace

bool hasDialectHeadings(std::string_view bytes) {
    const std::string_view line = headingLine(bytes);
    const std::vector<Kind> kinds = kindsOf(line);
    const auto ignored = std::ranges::count(kinds, Kind::ignored);
    const bool hasEnd = line.ends_with(",End of Row"), hasFront = line.starts_with("Row,Row 2,");
    return !kinds.empty() && ignored == (hasEnd ? 1 : 0) + (hasFront ? 2 : 0);
}

bool isTableDialect(std::string_view bytes) {
    const std::string_view line = headingLine(bytes);
    if (line.size() >= kHeadingRoom - 1 || !unicode::isValid(bytes) || hasOtherBreaks(bytes) || hasLongLine(bytes))
        return false;
    const std::vector<Kind> kinds = kindsOf(line);
    try {
        return !kinds.empty() && areRowsRead(bytes, kinds);
    } catch (const FatalParseFailure &) {
        return false;
    }
}

}  // namespace host::foreign
