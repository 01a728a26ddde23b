#include "device/bookmarks/BookmarkReader.h"

#include <algorithm>
#include <limits>

#include "device/AccessError.h"
#include "device/bookmarks/BookmarkSchema.h"

namespace device::bookmarks {

namespace {

std::int32_t placeOf(std::int64_t place) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(place, Limits::min(), Limits::max()));
}

NSString keyOf(std::int64_t row) { return NSString(std::to_string(row)); }

}  // namespace

BookmarkList readBookmarks(sqlite::Database &database) {
    const sqlite::Table table = database.table("bookmarks");
    if (!table.has("id"))
        throw AccessError(AccessError::Kind::damaged, database.file(), "has no table of bookmarks");
    sqlite::Statement rows = database.prepare(
        "SELECT id, " + table.term("parent") + ", " + table.term("title") + ", " + table.term("url") + ", " + table.term("type") + ", " +
        table.term("order_index") + " FROM bookmarks WHERE id <> 0 AND coalesce(" + table.term("deleted") + ", 0) = 0 AND coalesce(" +
        table.term("hidden") + ", 0) = 0 ORDER BY 2, 6, 1");
    BookmarkList list;
    while (rows.step()) {
        auto record = make<BookmarkDataInfo>();
        record->pKey = keyOf(rows.integer(0));
        if (const std::int64_t parent = rows.integer(1); parent != kRoot)
            record->parentKey = keyOf(parent);
        record->markName = rows.text(2);
        record->url = rows.text(3);
        record->isFolder = rows.integer(4) == static_cast<std::int64_t>(Type::folder);
        record->position = placeOf(rows.integer(5));
        list.push_back(std::move(record));
    }
    return list;
}

}  // namespace device::bookmarks
