// A contact of another program's file, between the reader that filled it and the writer of the dialect.
//
// Texts    UTF-8, unescaped, with LF as line break; empty is absent.
// Labels   "Home", "Mobile", a person's own word; empty for none.
// Dates    "yyyy-MM-dd" where they could be understood, else as they stood.
// Threads  values.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace host::foreign {

struct LabelledText {
    std::string label, text;
};

struct PostalAddress {
    std::string label, street, city, state, postalCode, country;
};

struct Messenger {
    std::string label, service, user;
};

struct ForeignContact {
    std::string lastName, firstName, middleName, nameTitle, nameSuffix;
    std::string firstNameYomi, lastNameYomi, middleNameYomi;
    std::string nickname, company, department, jobTitle, birthday, notes;
    std::vector<LabelledText> phones, emails, urls, dates, relatedNames;
    std::vector<PostalAddress> addresses;
    std::vector<Messenger> messengers;
    std::string picture;   // bytes of a picture file

    std::int64_t line = 0;     // where it begins in the file, from 1
    std::int64_t number = 0;   // among the contacts of the file, from 1
    // For people: what is left behind, each with its text. A hostile row has 100,000 of them: the rest is counted.
    std::vector<std::string> notCarried;
    std::int64_t alsoNotCarried = 0;
    void leave(std::string what);

    [[nodiscard]] bool isEmpty() const;
    // For people: the name, else the company or the first text by which a person knows it; may be empty.
    [[nodiscard]] std::string title() const;
};

// "ROLE "Programmer"": what is left behind and its text on one line, of each the start.
[[nodiscard]] std::string leftBehind(std::string_view what, std::string_view text);
// Every word of `text` stands in `known`. Long texts are taken to tell something new.
[[nodiscard]] bool tellsNothingNew(std::string_view text, std::string_view known);
// Parts that are not empty, with `between` in between.
[[nodiscard]] std::string joined(const std::vector<std::string> &parts, std::string_view between);
// Without white space and control characters at both ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);
[[nodiscard]] std::string upper(std::string_view ascii);
void replaceAll(std::string &text, std::string_view part, std::string_view by);

}  // namespace host::foreign
