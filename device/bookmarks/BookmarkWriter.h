// Changes single bookmarks inside a transaction of the caller.
//
// Care     rows that are deleted or hidden count as not there. Counts of children and the table of folders above folders
//          follow. Only rows that differ are touched.
// Errors   AccessError, fit for people; sqlite::Error. The caller's savepoint undoes what a failed call left.
// Threads  as the database.
#pragma once

#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "device/bookmarks/BookmarkSchema.h"
#include "device/sqlite/Database.h"

namespace device::bookmarks {

class BookmarkWriter {
public:
    // `now` in seconds since 1970-01-01 UTC. Throws where there is no table that can be written.
    BookmarkWriter(sqlite::Database &database, std::int64_t now);

    // At the end of the parent; gives its row.
    std::int64_t add(std::int64_t parent, Type type, const NSString &title, const NSString &url);
    void renameFolder(std::int64_t row, const NSString &title);
    void editBookmark(std::int64_t row, const NSString &title, const NSString &url);
    // To the end of the target. A folder that would come into itself or below itself stays where it is: false.
    bool move(std::int64_t row, std::int64_t target);
    // With all that is below it. What an earlier call took along counts as removed.
    void remove(std::int64_t row);
    // After the last remove of a transaction: takes the removed folders out of the table of folders above folders.
    void forgetRemovedFolders();

private:
    struct Row {
        std::int64_t parent = kRoot;
        bool isFolder = false;
        NSString title, url;
    };
    [[nodiscard]] Row visibleRow(std::int64_t row);
    void needFolder(std::int64_t row);
    [[nodiscard]] std::int64_t endOf(std::int64_t parent);
    void changeChildCount(std::int64_t parent, std::int64_t by);
    void update(std::int64_t row, const NSString &title, const NSString &url);
    // The folders from `folder` up to the top level, itself first, without the root; ends in a ring too.
    [[nodiscard]] std::vector<std::int64_t> pathUp(std::int64_t folder);
    [[nodiscard]] std::vector<std::int64_t> below(std::int64_t row);
    void noteAncestors(std::int64_t folder, const std::vector<std::int64_t> &path);
    void moveAncestors(std::int64_t folder, std::int64_t target);
    void forgetWords(std::int64_t row);

    sqlite::Database &database_;
    std::int64_t now_;
    sqlite::Table table_;
    bool hasAncestors_, namesRoot_, hasWords_;
    sqlite::Statement find_, end_, rootEnd_, move_, count_, children_;
    std::unordered_map<std::int64_t, std::int64_t> ends_;   // the next free place in each parent
    std::unordered_set<std::int64_t> removed_;
    std::vector<std::int64_t> removedWithFolders_;   // since forgetRemovedFolders
};

}  // namespace device::bookmarks
