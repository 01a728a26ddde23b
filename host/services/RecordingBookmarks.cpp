#include "host/services/RecordingBookmarks.h"

#include <unordered_map>

namespace host {

bool RecordingBookmarks::noted(bool success) {
    record_->count(success);
    if (!success)
        record_->explain(failures_.first());
    return success;
}

BookmarkList RecordingBookmarks::roadBookMarkData() {
    BookmarkList list = bookmarks_->roadBookMarkData();
    record_->explain(failures_.first());   // a list that cannot be read is empty, and only its reason tells so
    return list;
}

bool RecordingBookmarks::addBookMarkFolder(const NewFolders &folders) {
    record_->ask(1);
    return noted(bookmarks_->addBookMarkFolder(folders));
}

bool RecordingBookmarks::addBookMark(const NewBookmarks &bookmarks) {
    record_->ask(1);
    return noted(bookmarks_->addBookMark(bookmarks));
}

bool RecordingBookmarks::editBookMarkFolder(const std::shared_ptr<BookmarkDataInfo> &folder) {
    record_->ask(1);
    return noted(bookmarks_->editBookMarkFolder(folder));
}

bool RecordingBookmarks::editBookMark(const std::shared_ptr<BookmarkDataInfo> &bookmark) {
    record_->ask(1);
    return noted(bookmarks_->editBookMark(bookmark));
}

void RecordingBookmarks::moveBookMark_childrenKey_callBack(const NSString &folderKey, const std::vector<NSString> &keys,
                                                           const MoveProgress &progress) {
    record_->ask(static_cast<std::int64_t>(keys.size()));
    bookmarks_->moveBookMark_childrenKey_callBack(folderKey, keys, progress);
    const auto reason = failures_.first();
    std::unordered_map<NSString, NSString> parents;
    for (const auto &record : bookmarks_->roadBookMarkData())
        parents.emplace(record->pKey, record->parentKey.isNil() ? NSString("") : record->parentKey);
    for (const NSString &key : keys) {
        const auto found = parents.find(key);
        record_->count(found != parents.end() && found->second == folderKey);
    }
    record_->explain(reason);
}

void RecordingBookmarks::deleteBookMarkFromPkeys_callBack(const Keys &keys, const DeleteProgress &progress) {
    record_->ask(static_cast<std::int64_t>(keys.size()));
    bookmarks_->deleteBookMarkFromPkeys_callBack(keys, [&](std::int64_t index, std::int64_t total, bool success, bool *stop) {
        if (total > 0)   // the call for no keys tells of no item
            noted(success);
        if (progress)
            progress(index, total, success, stop);
    });
}

}  // namespace host
