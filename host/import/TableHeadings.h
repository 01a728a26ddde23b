// What the columns of a table of contacts mean, by their headings: the exports of web mail, of desktop and mail programs, in
// English, German, French, Spanish and Chinese, and whatever is put together from the same words.
//
// Threads  values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host::foreign {

struct Column {
    enum class Kind {
        unknown,       // left behind
        bookkeeping,   // left behind, and nobody misses it
        text,          // one field of the contact
        fullName,
        birthYear,
        birthMonth,
        birthDay,
        phone,
        email,
        url,
        date,
        related,
        messenger,
        address,   // one part of an address
    };
    enum class Field { first, middle, last, title, suffix, firstYomi, middleYomi, lastYomi, nickname, company, department, jobTitle, birthday, notes };
    enum class Part { street, pobox, extended, city, state, postalCode, country, formatted };
    enum class Role { value, type, service };

    std::string heading;
    Kind kind = Kind::unknown;
    Field field{};
    Part part{};
    Role role = Role::value;
    std::string label;     // where the heading tells it
    std::string service;   // of a messenger
    std::string group;     // columns of one group make one item; empty: a column alone
    bool isMonthFirst = true;   // how a date of this language's slashes reads
};

[[nodiscard]] std::vector<Column> columnsOf(const std::vector<std::string> &headings);
// For people: "home phone", "part of the work address", "left behind".
[[nodiscard]] std::string meaningOf(const Column &column);

}  // namespace host::foreign
