// The bookmark file: one HTML document of folders and links in the Netscape bookmark format.
//
// Text     UTF-8, line feeds, no byte order mark, nothing escaped: names and addresses go in as they stand. Kept: readers of
//          earlier files depend on the exact pieces.
// Nesting  a folder is its start, what is in it, its end; no list stands round the top level.
// Lines    the three helpers take one line and give what stands there, absent where it does not fit. They are greedy: from
//          the first mark to the last one of the line, at least one character; letters of the marks in any case.
// Threads  any.
#pragma once

#include <cstdint>
#include <string>
#include <system_error>

#include "toolkit/lists/NSArray.h"

namespace bookmarks {

extern const char *const kFileHead, *const kFileTail;

// Writes nodes (of HNBookMarkEntity) behind `html`. `budget` is the number of bookmarks that may still be written; where it
// is 0 the list at hand ends, a folder that was begun is closed all the same.
void appendNodes(std::string &html, const NSArray &nodes, std::int64_t &budget);
// Writes behind what a file holds; makes the file where it is missing. Why not, where not all of it could be written: then
// what stood there before is there, and no new file.
std::error_code appendToFile(const NSString &path, std::string_view text);

[[nodiscard]] NSString folderNameOfLine(const NSString &line);
[[nodiscard]] NSString urlOfLine(const NSString &line);
[[nodiscard]] NSString nameOfLine(const NSString &line);

}   // namespace bookmarks
