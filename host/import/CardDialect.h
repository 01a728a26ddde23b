// Knows the cards that the plug-in's reader takes whole: its ladder of prefixes, its splits and what it would refuse.
//
// A file is left alone only if each of its lines is read, with all of its text, and none ends the reading. What the reader
// knows and passes over (VERSION, FN beside a name, a phonetic middle name, a country code) counts as read.
// Cost     one pass. Threads: any.
#pragma once

#include <string_view>

namespace host::foreign {

[[nodiscard]] bool isCardDialect(std::string_view bytes);

}  // namespace host::foreign
