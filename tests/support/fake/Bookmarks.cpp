#include "tests/support/fake/Bookmarks.h"

#include <algorithm>

#include "toolkit/dispatch/Queue.h"

namespace {

class OneInterface : public DeviceContext {
public:
    std::shared_ptr<CBookmarkManagerImpl> bookmarks;
    std::shared_ptr<CBookmarkManagerImpl> bookMarkInterface() override { return bookmarks; }
};

NSString parentOf(const NSString &key) { return key.isEmpty() ? NSString() : key; }

}  // namespace

std::shared_ptr<DeviceContext> contextWith(std::shared_ptr<CBookmarkManagerImpl> bookmarks) {
    auto context = make<OneInterface>();
    context->bookmarks = std::move(bookmarks);
    return context;
}

std::shared_ptr<BookmarkDataInfo> FakeBookmarks::add(const NSString &name, const NSString &url, const NSString &parent, bool isFolder) {
    auto record = make<BookmarkDataInfo>();
    record->pKey = NSString(std::to_string(++lastKey_));
    record->parentKey = parent;
    record->markName = name;
    record->url = url;
    record->isFolder = isFolder;
    record->position = lastKey_ - 1;
    stored.push_back(record);
    return record;
}

std::shared_ptr<BookmarkDataInfo> FakeBookmarks::folder(const NSString &name, const NSString &parent) { return add(name, "", parent, true); }

std::shared_ptr<BookmarkDataInfo> FakeBookmarks::bookmark(const NSString &name, const NSString &url, const NSString &parent) {
    return add(name, url, parent, false);
}

BookmarkList FakeBookmarks::roadBookMarkData() {
    log.add("read");
    return stored;
}

std::shared_ptr<BookmarkDataInfo> FakeBookmarks::find(const NSString &key) const {
    const auto found = std::ranges::find(stored, key, &BookmarkDataInfo::pKey);
    return found == stored.end() ? nullptr : *found;
}

bool FakeBookmarks::isPlace(const NSString &parent) const {
    const auto folder = find(parent);
    return parent.isEmpty() || (folder && folder->isFolder);
}

bool FakeBookmarks::isBelow(NSString key, const NSString &folder) const {
    for (auto record = find(key); record; record = find(record->parentKey))
        if (record->pKey == folder)
            return true;
    return false;
}

bool FakeBookmarks::addBookMarkFolder(const NewFolders &folders) {
    bool isGood = !refuses && !folders.empty();
    for (const auto &[parent, name] : folders) {
        log.add("folder '" + name.str() + "' in '" + parent.str() + "'");
        isGood = isGood && isPlace(parent);
    }
    for (const auto &[parent, name] : isGood ? folders : NewFolders())
        folder(name, parentOf(parent));
    return isGood;
}

bool FakeBookmarks::addBookMark(const NewBookmarks &bookmarks) {
    bool isGood = !refuses && !bookmarks.empty();
    for (const auto &[parent, made] : bookmarks) {
        log.add("bookmark '" + made.markName.str() + "' '" + made.url.str() + "' in '" + parent.str() + "'");
        isGood = isGood && isPlace(parent);
    }
    for (const auto &[parent, made] : isGood ? bookmarks : NewBookmarks())
        bookmark(made.markName, made.url, parentOf(parent));
    return isGood;
}

bool FakeBookmarks::edit(const char *word, const std::shared_ptr<BookmarkDataInfo> &record, bool isFolder) {
    if (!record)
        return false;
    log.add(word + (" " + record->pKey.str()) + " '" + record->markName.str() + "' '" + record->url.str() + "'" +
            (record->isFolder ? " isFolder" : ""));
    const auto found = find(record->pKey);
    if (refuses || !found || found->isFolder != isFolder)
        return false;
    found->markName = record->markName;
    if (!isFolder)
        found->url = record->url;
    return true;
}

bool FakeBookmarks::editBookMarkFolder(const std::shared_ptr<BookmarkDataInfo> &folder) { return edit("rename", folder, true); }
bool FakeBookmarks::editBookMark(const std::shared_ptr<BookmarkDataInfo> &bookmark) { return edit("edit", bookmark, false); }

void FakeBookmarks::move(const NSString &key, const NSString &folder) {
    const auto record = find(key);
    if (!record || !isPlace(folder) || isBelow(folder, key))
        return;
    std::erase(stored, record);
    record->parentKey = parentOf(folder);
    stored.push_back(record);
}

void FakeBookmarks::moveBookMark_childrenKey_callBack(const NSString &folderKey, const std::vector<NSString> &keys,
                                                      const MoveProgress &progress) {
    std::string names;
    for (const NSString &key : keys)
        names += " " + key.str();
    log.add("move" + names + " to " + folderKey.str());
    const auto total = static_cast<std::int64_t>(keys.size());
    for (std::int64_t i = 0; i < total; ++i) {
        if (secondsPerItem > 0)
            dispatch::sleepFor(std::chrono::seconds(secondsPerItem));
        move(keys[static_cast<std::size_t>(i)], folderKey);
        bool stop = false;
        if (progress)
            progress(i, 0, total, 0, &stop);
        if (stop)
            return log.add("stopped after " + std::to_string(i + 1));
    }
}

// With all below; what an earlier key took along counts as deleted.
bool FakeBookmarks::remove(const NSString &key, std::set<NSString> &gone) {
    if (kept.contains(key.str()))
        return false;
    if (gone.contains(key))
        return true;
    if (!find(key))
        return false;
    for (const auto &record : BookmarkList(stored))
        if (isBelow(record->pKey, key))
            gone.insert(record->pKey);
    std::erase_if(stored, [&gone](const auto &record) { return gone.contains(record->pKey); });
    return true;
}

void FakeBookmarks::deleteBookMarkFromPkeys_callBack(const Keys &keys, const DeleteProgress &progress) {
    std::string names;
    for (const auto &[key, same] : keys)
        names += " " + key.str();
    log.add("delete" + names);
    const auto total = static_cast<std::int64_t>(keys.size());
    const auto tell = [&](std::int64_t index, bool success) {
        bool stop = false;
        if (progress)
            progress(index, total, success, &stop);
        return stop;
    };
    if (total == 0)
        tell(-1, false);
    std::set<NSString> gone;
    std::int64_t index = 0;
    for (auto key = keys.begin(); key != keys.end(); ++key)
        if (tell(index++, remove(key->first, gone)) && index < total) {
            tell(index, false);   // who asked to stop waits for one call more
            return;
        }
}
