// A text table in a .strings file: "key" = "text"; with /* */ and // comments, UTF-8, escapes \" \\ \n \r \t \Uxxxx.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

#include "toolkit/NSString.h"

using TextTable = std::unordered_map<NSString, NSString>;

// What is wrong with a table, with its line (from 1).
struct StringsFileError {
    int line = 0;
    std::string reason;
};

// Entries up to the first error are kept; `error` (may be null) tells it. A double key keeps the first text and is an error.
[[nodiscard]] TextTable readStringsFile(std::string_view bytes, StringsFileError *error = nullptr);
