#include "device/bookmarks/BookmarkWriter.h"

#include <algorithm>
#include <utility>

#include "device/AccessError.h"
#include "device/sqlite/Functions.h"

namespace device::bookmarks {

namespace {

[[noreturn]] void refuse(AccessError::Kind kind, const std::string &reason) { throw AccessError(kind, "", reason); }

}  // namespace

BookmarkWriter::BookmarkWriter(sqlite::Database &database, std::int64_t now)
    : database_(database), now_(now), table_(database.table("bookmarks")) {
    for (const char *column : {"id", "parent", "type", "title", "url", "order_index"})
        if (!table_.has(column))
            throw AccessError(AccessError::Kind::damaged, database.file(), std::string("its bookmarks have no ") + column);
    const sqlite::Table ancestors = database.table("folder_ancestors"), words = database.table("bookmark_title_words");
    hasAncestors_ = ancestors.has("folder_id") && ancestors.has("ancestor_id");
    namesRoot_ = hasAncestors_ && database.integer("SELECT count(*) FROM folder_ancestors WHERE ancestor_id = 0") > 0;
    hasWords_ = words.has("bookmark_id");
    const std::string isThere =
        "coalesce(" + table_.term("deleted") + ", 0) = 0 AND coalesce(" + table_.term("hidden") + ", 0) = 0";
    find_ = database.prepare("SELECT parent, type, title, url FROM bookmarks WHERE id = ? AND id <> 0 AND " + isThere);
    const std::string end = "SELECT coalesce(max(order_index), -1) + 1 FROM bookmarks WHERE id <> 0 AND ";
    end_ = database.prepare(end + "parent = ?");
    rootEnd_ = database.prepare(end + "coalesce(parent, 0) = 0");
    const std::string stamp = table_.has("last_modified") ? ", last_modified = " + std::to_string(now_) : "";
    move_ = database.prepare("UPDATE bookmarks SET parent = ?2, order_index = ?3" + stamp + " WHERE id = ?1");
    children_ = database.prepare("SELECT id FROM bookmarks WHERE parent = ? AND id <> 0");
    if (table_.has("num_children"))
        count_ = database.prepare("UPDATE bookmarks SET num_children = max(coalesce(num_children, 0) + ?2, 0) WHERE id = ?1");
}

BookmarkWriter::Row BookmarkWriter::visibleRow(std::int64_t row) {
    find_.reset();
    if (!find_.bind(1, row).step())
        refuse(AccessError::Kind::missing, "bookmark " + std::to_string(row) + " is not on the device any more");
    Row found{find_.integer(0), find_.integer(1) == static_cast<std::int64_t>(Type::folder), find_.text(2), find_.text(3)};
    find_.reset();
    return found;
}

void BookmarkWriter::needFolder(std::int64_t row) {
    if (row != kRoot && !visibleRow(row).isFolder)
        refuse(AccessError::Kind::failed, "bookmark " + std::to_string(row) + " is no folder");
}

// Asked of the table once per parent. A place that an undone step took stays free, which is no harm.
std::int64_t BookmarkWriter::endOf(std::int64_t parent) {
    if (const auto known = ends_.find(parent); known != ends_.end())
        return known->second++;
    sqlite::Statement &end = parent == kRoot ? rootEnd_ : end_;
    end.reset();
    if (parent != kRoot)
        end.bind(1, parent);
    const std::int64_t place = end.step() ? end.integer(0) : 0;
    end.reset();
    ends_[parent] = place + 1;
    return place;
}

void BookmarkWriter::changeChildCount(std::int64_t parent, std::int64_t by) {
    if (!count_)
        return;
    count_.reset();
    count_.bind(1, parent).bind(2, by).run();
}

// ---------------------------------------------------------------- add

std::int64_t BookmarkWriter::add(std::int64_t parent, Type type, const NSString &title, const NSString &url) {
    needFolder(parent);
    std::string names = "parent, type, title, url, order_index", values = "?1, ?2, ?3, ?4, ?5";
    if (table_.has("external_uuid"))
        names += ", external_uuid", values += ", ?6";
    if (table_.has("last_modified"))
        names += ", last_modified", values += ", " + std::to_string(now_);
    for (const sqlite::Table::Column &column : table_.columns)
        if (column.needsValue && names.find(column.name) == std::string::npos)
            names += ", \"" + column.name + "\"", values += ", 0";
    sqlite::Statement insert = database_.prepare("INSERT INTO bookmarks (" + names + ") VALUES (" + values + ")");
    insert.bind(1, parent).bind(2, static_cast<std::int64_t>(type)).bind(3, title).bind(4, url).bind(5, endOf(parent));
    if (table_.has("external_uuid"))
        insert.bind(6, sqlite::newGuid());
    insert.run();
    const std::int64_t row = database_.lastInsertRowid();
    changeChildCount(parent, 1);
    if (type == Type::folder)
        noteAncestors(row, pathUp(parent));
    return row;
}

// ---------------------------------------------------------------- edit

void BookmarkWriter::update(std::int64_t row, const NSString &title, const NSString &url) {
    std::string sql = "UPDATE bookmarks SET title = ?2, url = ?3";
    if (table_.has("last_modified"))
        sql += ", last_modified = " + std::to_string(now_);
    database_.prepare(sql + " WHERE id = ?1").bind(1, row).bind(2, title).bind(3, url).run();
    forgetWords(row);
}

void BookmarkWriter::renameFolder(std::int64_t row, const NSString &title) {
    const Row old = visibleRow(row);
    if (!old.isFolder)
        refuse(AccessError::Kind::failed, "bookmark " + std::to_string(row) + " is no folder");
    if (old.title != title)
        update(row, title, old.url);
}

void BookmarkWriter::editBookmark(std::int64_t row, const NSString &title, const NSString &url) {
    const Row old = visibleRow(row);
    if (old.isFolder)
        refuse(AccessError::Kind::failed, "bookmark " + std::to_string(row) + " is a folder");
    if (old.title != title || old.url != url)
        update(row, title, url);
}

// A search index of the words of titles, which the device makes anew; old words would find what is no longer there.
void BookmarkWriter::forgetWords(std::int64_t row) {
    if (hasWords_)
        database_.prepare("DELETE FROM bookmark_title_words WHERE bookmark_id = ?").bind(1, row).run();
}

// ---------------------------------------------------------------- move

std::vector<std::int64_t> BookmarkWriter::pathUp(std::int64_t folder) {
    std::vector<std::int64_t> path;
    std::unordered_set<std::int64_t> seen;
    while (folder != kRoot && seen.insert(folder).second) {
        path.push_back(folder);
        find_.reset();
        folder = find_.bind(1, folder).step() ? find_.integer(0) : kRoot;
    }
    find_.reset();
    return path;
}

std::vector<std::int64_t> BookmarkWriter::below(std::int64_t row) {
    std::vector<std::int64_t> rows{row};
    std::unordered_set<std::int64_t> seen{row};
    for (std::size_t next = 0; next < rows.size(); ++next) {
        children_.reset();
        children_.bind(1, rows[next]);
        while (children_.step())
            if (seen.insert(children_.integer(0)).second)
                rows.push_back(children_.integer(0));
    }
    children_.reset();
    return rows;
}

bool BookmarkWriter::move(std::int64_t row, std::int64_t target) {
    needFolder(target);
    const Row old = visibleRow(row);
    if (old.isFolder) {
        const std::vector<std::int64_t> path = pathUp(target);
        if (std::ranges::find(path, row) != path.end())
            return false;
    }
    move_.reset();   // an earlier use may have failed
    move_.bind(1, row).bind(2, target).bind(3, endOf(target)).run();
    if (old.parent == target)
        return true;
    changeChildCount(old.parent, -1);
    changeChildCount(target, 1);
    if (old.isFolder)
        moveAncestors(row, target);
    return true;
}

void BookmarkWriter::noteAncestors(std::int64_t folder, const std::vector<std::int64_t> &path) {
    if (!hasAncestors_)
        return;
    sqlite::Statement insert = database_.prepare("INSERT INTO folder_ancestors (folder_id, ancestor_id) VALUES (?, ?)");
    for (const std::int64_t above : path)
        insert.bind(1, folder).bind(2, above).run();
    if (namesRoot_)
        insert.bind(1, folder).bind(2, kRoot).run();
}

void BookmarkWriter::moveAncestors(std::int64_t folder, std::int64_t target) {
    if (!hasAncestors_)
        return;
    const std::vector<std::int64_t> moved = below(folder), path = pathUp(target);
    const std::unordered_set<std::int64_t> inside(moved.begin(), moved.end());
    for (const std::int64_t row : moved) {
        find_.reset();
        const bool isFolder = find_.bind(1, row).step() && find_.integer(1) == static_cast<std::int64_t>(Type::folder);
        find_.reset();
        if (!isFolder)
            continue;
        std::vector<std::int64_t> gone;
        sqlite::Statement above = database_.prepare("SELECT ancestor_id FROM folder_ancestors WHERE folder_id = ?");
        above.bind(1, row);
        while (above.step())
            if (!inside.contains(above.integer(0)))
                gone.push_back(above.integer(0));
        for (const std::int64_t ancestor : gone)
            database_.prepare("DELETE FROM folder_ancestors WHERE folder_id = ? AND ancestor_id = ?").bind(1, row).bind(2, ancestor).run();
        noteAncestors(row, path);
    }
}

// ---------------------------------------------------------------- remove

void BookmarkWriter::remove(std::int64_t row) {
    if (removed_.contains(row))
        return;
    const Row old = visibleRow(row);
    const std::vector<std::int64_t> gone = below(row);
    sqlite::Statement one = database_.prepare("DELETE FROM bookmarks WHERE id = ?");
    for (const std::int64_t each : gone) {
        one.bind(1, each).run();
        forgetWords(each);
    }
    changeChildCount(old.parent, -1);
    removed_.insert(gone.begin(), gone.end());
    if (old.isFolder && hasAncestors_)
        removedWithFolders_.insert(removedWithFolders_.end(), gone.begin(), gone.end());
}

// One walk over the table for all of them: it has no index.
void BookmarkWriter::forgetRemovedFolders() {
    if (removedWithFolders_.empty())
        return;
    database_.exec("CREATE TEMP TABLE IF NOT EXISTS gone (row INTEGER PRIMARY KEY)");
    sqlite::Statement note = database_.prepare("INSERT OR IGNORE INTO temp.gone VALUES (?)");
    for (const std::int64_t row : std::exchange(removedWithFolders_, {}))
        note.bind(1, row).run();
    database_.exec("DELETE FROM folder_ancestors WHERE folder_id IN (SELECT row FROM temp.gone) OR ancestor_id IN (SELECT row FROM temp.gone);"
                   "DELETE FROM temp.gone");
}

}  // namespace device::bookmarks
