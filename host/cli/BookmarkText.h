// The bookmark tree as text. Trees may be of any depth: nothing here recurses.
#pragma once

#include "host/cli/BookmarkCategory.h"

namespace host::cli {

// {"bookmarks": [NODE], "status": TEXT, "found": BOOL}
[[nodiscard]] std::string bookmarkDocument(const std::vector<BookmarkCategory::Entry> &entries, const NSString &status, bool found);
// KEY, name (indented by depth), address.
void printBookmarks(const std::vector<BookmarkCategory::Entry> &entries, Console &console);

}  // namespace host::cli
