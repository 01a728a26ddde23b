#include "host/import/Labels.h"

#include <algorithm>
#include <utility>

#include "host/import/ForeignContact.h"

namespace host::foreign {

namespace {

// A word and what it says; null: nothing that a label tells.
struct Word {
    std::string_view word;
    const char *label;
};
constexpr Word kWords[] = {
    {"HOME", "Home"},         {"WORK", "Work"},           {"CELL", "Mobile"},      {"MOBILE", "Mobile"},   {"FAX", "Fax"},
    {"PAGER", "Pager"},       {"MAIN", "Main"},           {"IPHONE", "iPhone"},    {"CAR", "Car"},         {"OTHER", "other"},
    {"HOMEFAX", "HomeFAX"},   {"WORKFAX", "WorkFAX"},     {"BUSINESS", "Work"},    {"PERSONAL", "Home"},   {"HOMEPAGE", "HomePage"},
    {"SCHOOL", "School"},     {"PROFILE", "Profile"},     {"BLOG", "Blog"},        {"ISDN", "ISDN"},       {"MODEM", "Modem"},
    {"BBS", "BBS"},           {"PCS", "PCS"},             {"VOICE", nullptr},      {"INTERNET", nullptr},  {"POSTAL", nullptr},
    {"PREF", nullptr},        {"MSG", nullptr},           {"TEXT", nullptr},       {"VIDEO", nullptr},     {"DOM", nullptr},
    {"INTL", nullptr},        {"PARCEL", nullptr},        {"X400", nullptr},       {"TEXTPHONE", nullptr}, {"MAIN-NUMBER", "Main"},
};

// What tables and label lines call them, in the languages that programs export in; compared without case, blanks and marks.
constexpr Word kTexts[] = {
    {"homephone", "Home"},    {"workphone", "Work"},      {"mobilephone", "Mobile"}, {"cellphone", "Mobile"}, {"homepage", "HomePage"},
    {"privat", "Home"},       {"privé", "Home"},          {"domicile", "Home"},      {"personal", "Home"},    {"casa", "Home"},
    {"particular", "Home"},   {"maison", "Home"},         {"zuhause", "Home"},       {"住宅", "Home"},        {"家庭", "Home"},
    {"geschäftlich", "Work"}, {"arbeit", "Work"},         {"dienstlich", "Work"},    {"travail", "Work"},     {"professionnel", "Work"},
    {"bureau", "Work"},       {"trabajo", "Work"},        {"工作", "Work"},          {"单位", "Work"},        {"公司", "Work"},
    {"mobil", "Mobile"},      {"handy", "Mobile"},        {"móvil", "Mobile"},       {"portable", "Mobile"},  {"手机", "Mobile"},
    {"移动", "Mobile"},       {"andere", "other"},        {"sonstige", "other"},     {"autre", "other"},      {"otro", "other"},
    {"其他", "other"},        {"homefax", "HomeFAX"},     {"workfax", "WorkFAX"},    {"faxhome", "HomeFAX"},  {"faxwork", "WorkFAX"},
    {"hauptnummer", "Main"},  {"principal", "Main"},      {"jahrestag", "Anniversary"}, {"ehepartner", "Spouse"}, {"ehefrau", "Spouse"},
    {"ehemann", "Spouse"},    {"conjoint", "Spouse"},     {"cónyuge", "Spouse"},     {"配偶", "Spouse"},
};

const Word *find(std::string_view word) {
    const auto *found = std::ranges::find(kWords, word, &Word::word);
    return found == std::end(kWords) ? nullptr : found;
}

std::string folded(std::string_view text) {
    std::string out;
    for (const char c : text)
        if (c != ' ' && c != '-' && c != '_')
            out += c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    return out;
}

// "_$!<Mobile>!$_" and what careless programs make of it.
std::string_view withoutMarks(std::string_view text) {
    const std::size_t open = text.find("$!<"), close = text.rfind(">!$");
    return open != std::string_view::npos && close != std::string_view::npos && open + 3 <= close ? text.substr(open + 3, close - open - 3)
                                                                                                   : text;
}

}  // namespace

bool isTypeWord(std::string_view word) { return find(upper(word)) != nullptr; }

std::string labelOfTypes(const std::vector<std::string> &types, std::vector<std::string> *unused) {
    bool isFax = false, isHome = false, isWork = false;
    std::string kind, own;   // "Mobile" says more than "Home" does
    std::vector<std::string> rest;
    for (const std::string &type : types) {
        const Word *word = find(upper(type));
        if (!word) {
            const bool isExtension = upper(type).starts_with("X-");
            (own.empty() ? own : rest.emplace_back()) = isExtension ? type.substr(2) : type;
        } else if (!word->label) {
            if (word->word != "VOICE" && word->word != "INTERNET" && word->word != "POSTAL")
                rest.emplace_back(word->word);
        } else if (word->word == "FAX") {
            isFax = true;
        } else if (word->word == "HOME" || word->word == "PERSONAL") {
            isHome = true;
        } else if (word->word == "WORK" || word->word == "BUSINESS") {
            isWork = true;
        } else if (kind.empty()) {
            kind = word->label;
        } else {
            rest.emplace_back(word->word);
        }
    }
    std::string label = isFax ? (isWork ? "WorkFAX" : isHome ? "HomeFAX" : "Fax") : !kind.empty() ? kind : isHome ? "Home" : isWork ? "Work" : "";
    if (label.empty())
        label = std::exchange(own, "");
    if (!own.empty())
        rest.push_back(own);
    if (!isFax && label == kind && !kind.empty()) {
        if (isHome)
            rest.emplace_back("HOME");
        if (isWork)
            rest.emplace_back("WORK");
    } else if (isHome && isWork) {
        rest.emplace_back(isFax ? "HOME" : "WORK");
    }
    if (unused)
        *unused = std::move(rest);
    return label;
}

std::string labelOfText(std::string_view text) {
    text = trimmed(withoutMarks(trimmed(text)));
    if (text.starts_with("* "))   // marks the preferred one
        text = trimmed(text.substr(2));
    const std::string plain = folded(text);
    if (const Word *word = find(upper(plain)); word && word->label)
        return word->label;
    const auto *found = std::ranges::find(kTexts, std::string_view(plain), &Word::word);
    return found == std::end(kTexts) ? std::string(text) : found->label;
}

}  // namespace host::foreign
