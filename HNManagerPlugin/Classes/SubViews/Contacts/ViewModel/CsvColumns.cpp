#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/CsvColumns.h"

#include <algorithm>
#include <unordered_map>

namespace {

using Kind = CsvColumns::Kind;
using Entry = CsvColumns::Entry;

struct Plain {
    std::string_view heading;
    void (ZpContactDataInfo::*set)(NSString);
};
constexpr Plain kPlain[] = {
    {"Given Name", &ZpContactDataInfo::setFirst_name},
    {"Given Name Yomi", &ZpContactDataInfo::setFirst_name_yomi},
    {"Additional Name", &ZpContactDataInfo::setMiddle_name},
    {"Additional Name Yomi", &ZpContactDataInfo::setMiddle_name_yomi},
    {"Family Name", &ZpContactDataInfo::setLast_name},
    {"Family Name Yomi", &ZpContactDataInfo::setLast_name_yomi},
    {"Nickname", &ZpContactDataInfo::setNickname},
    {"Name Prefix", &ZpContactDataInfo::setName_title},
    {"Name Suffix", &ZpContactDataInfo::setName_suffix},
    {"Notes", &ZpContactDataInfo::setNotes},
    {"Organization 1 - Name", &ZpContactDataInfo::setCompany_name},
    {"Organization 1 - Department", &ZpContactDataInfo::setDepartment},
    {"Organization 1 - Title", &ZpContactDataInfo::setJob_title},
    {"Birthday", &ZpContactDataInfo::setBirthday},
};

// First hit wins: "SIMPLE Type" is an instant message, whoever wrote it.
struct Group {
    std::string_view word;
    Kind kind;
    std::size_t width;
};
constexpr Group kGroups[] = {
    {"Phone", Kind::phone, 2}, {"E-mail", Kind::email, 2},      {"Address", Kind::address, 6}, {"Website", Kind::website, 2},
    {"IM", Kind::im, 3},       {"Relation", Kind::relation, 2}, {"Event", Kind::event, 2},
};

bool contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

Entry entryOf(std::string_view heading, std::size_t column) {
    for (const Group &group : kGroups)
        if (contains(heading, group.word))
            return {contains(heading, "Type") ? group.kind : Kind::ignored, column, group.width, nullptr};
    const auto *plain = std::ranges::find(kPlain, heading, &Plain::heading);
    if (plain == std::end(kPlain))
        return {Kind::ignored, column, 1, nullptr};
    return {Kind::plain, column, 1, plain->set};
}

}   // namespace

CsvColumns::CsvColumns(std::string_view headingLine) : headings_(NSString(headingLine).componentsSeparatedByString(",")) {
    std::unordered_map<NSString, std::size_t> last;
    for (std::size_t column = 0; column < headings_.size(); ++column)
        last[headings_[column]] = column;
    for (std::size_t column = 0; column < headings_.size(); ++column) {
        const Entry entry = entryOf(headings_[column].view(), column);
        if (entry.kind == Kind::ignored)
            continue;
        runsPastTheEnd_ = runsPastTheEnd_ || column + entry.width > headings_.size();
        if (last[headings_[column]] == column)
            entries_.push_back(entry);
    }
}
