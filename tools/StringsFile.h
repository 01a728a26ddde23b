#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// Text tables as files of the kind
//
//     /* comment */ "key" = "value";      // another comment
//
// in UTF-8. In both texts \" \\ \n \r \t stand for what they stand for in C; a text may run over several lines.
namespace tools {

struct StringsEntry {
    std::string key;
    std::string value;
    std::string file;   // as handed to the reader
    int line = 0;       // of the key, from 1
};

// what() reads "file:line: reason".
struct StringsError : std::runtime_error {
    StringsError(const std::string &file, int line, const std::string &reason);
};

// Entries in the order of `text`. Throws StringsError at the first place that does not follow the format.
std::vector<StringsEntry> parseStrings(std::string_view text, const std::string &file);

// All files as one table, in their order. Throws StringsError for a key that comes twice, naming both places.
std::vector<StringsEntry> mergeStrings(const std::vector<std::vector<StringsEntry>> &files);

// One line per entry; parseStrings gives the same keys and values back.
std::string formatStrings(const std::vector<StringsEntry> &entries);

} // namespace tools
