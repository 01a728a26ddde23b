// Knows the tables that the plug-in's readers take whole: their headings, their two ways of cutting and what they would drop
// or refuse.
//
// A table is left alone only if each cell with a text is read, all of it, and no row is dropped.
// Cost     one pass. Threads: any.
#pragma once

#include <string_view>

namespace host::foreign {

// Each heading is one that the readers know, with a group's columns in their order; only the writers' own fillers stand beside
// them. Such a table has the dialect's escapes.
[[nodiscard]] bool hasDialectHeadings(std::string_view bytes);
[[nodiscard]] bool isTableDialect(std::string_view bytes);

}  // namespace host::foreign
