#include "device/bookmarks/BookmarkSchema.h"

#include <charconv>

namespace device::bookmarks {

const char *const kNewBookmarks = R"sql(
CREATE TABLE bookmarks (id INTEGER PRIMARY KEY AUTOINCREMENT, special_id INTEGER DEFAULT 0, parent INTEGER, type INTEGER, title TEXT, url TEXT COLLATE NOCASE, num_children INTEGER DEFAULT 0, editable INTEGER DEFAULT 1, deletable INTEGER DEFAULT 1, hidden INTEGER DEFAULT 0, hidden_ancestor_count INTEGER DEFAULT 0, order_index INTEGER NOT NULL, external_uuid TEXT UNIQUE, read INTEGER DEFAULT NULL, last_modified REAL DEFAULT NULL, server_id TEXT, sync_key TEXT, sync_data BLOB, added INTEGER DEFAULT 1, deleted INTEGER DEFAULT 0, extra_attributes BLOB DEFAULT NULL, local_attributes BLOB DEFAULT NULL, fetched_icon BOOL DEFAULT 0, icon BLOB DEFAULT NULL, dav_generation INTEGER DEFAULT 0, locally_added BOOL DEFAULT 0, archive_status INTEGER DEFAULT 0, syncable BOOL DEFAULT 1, web_filter_status INTEGER DEFAULT 0);
CREATE TABLE folder_ancestors (id INTEGER PRIMARY KEY AUTOINCREMENT, folder_id INTEGER NOT NULL, ancestor_id INTEGER NOT NULL);
CREATE INDEX bookmarks_parent_index ON bookmarks(parent);
INSERT INTO bookmarks (id, special_id, parent, type, title, order_index, external_uuid) VALUES (0, 0, NULL, 1, 'Root', 0, 'Root');
)sql";

std::optional<std::int64_t> rowOfKey(const NSString &key) {
    const std::string_view text = key.view();
    if (text.empty())
        return kRoot;
    std::int64_t row = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), row);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(row) : std::nullopt;
}

}  // namespace device::bookmarks
