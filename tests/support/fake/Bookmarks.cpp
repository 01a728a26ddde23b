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
    record->pKey = NSString(std::to_string(stored.size() + 1));
    record->parentKey = parent;
    record->markName = name;
    record->url = url;
    record->isFolder = isFolder;
    record->position = static_cast<std::int32_t>(stored.size());
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

bool FakeBookmarks::addBookMarkFolder(const NewFolders &folders) {
    for (const auto &[parent, name] : folders) {
        log.add("folder '" + name.str() + "' in '" + parent.str() + "'");
        if (!refuses)
            folder(name, parentOf(parent));
    }
    return !refuses;
}

bool FakeBookmarks::addBookMark(const NewBookmarks &bookmarks) {
    for (const auto &[parent, made] : bookmarks) {
        log.add("bookmark '" + made.markName.str() + "' '" + made.url.str() + "' in '" + parent.str() + "'");
        if (!refuses)
            bookmark(made.markName, made.url, parentOf(parent));
    }
    return !refuses;
}

bool FakeBookmarks::edit(const char *word, const std::shared_ptr<BookmarkDataInfo> &record) {
    log.add(word + (" " + record->pKey.str()) + " '" + record->markName.str() + "' '" + record->url.str() + "'" +
            (record->isFolder ? " isFolder" : ""));
    const auto found = std::ranges::find(stored, record->pKey, &BookmarkDataInfo::pKey);
    if (refuses || found == stored.end())
        return false;
    (*found)->markName = record->markName;
    (*found)->url = record->url;
    return true;
}

bool FakeBookmarks::editBookMarkFolder(const std::shared_ptr<BookmarkDataInfo> &folder) { return edit("rename", folder); }
bool FakeBookmarks::editBookMark(const std::shared_ptr<BookmarkDataInfo> &bookmark) { return edit("edit", bookmark); }

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
        for (const auto &record : stored)
            if (record->pKey == keys[static_cast<std::size_t>(i)])
                record->parentKey = folderKey;
        bool stop = false;
        progress(i, 0, total, 0, &stop);
        if (stop)
            return log.add("stopped after " + std::to_string(i + 1));
    }
}

void FakeBookmarks::deleteBookMarkFromPkeys_callBack(const Keys &keys, const DeleteProgress &progress) {
    std::string names;
    for (const auto &[key, same] : keys)
        names += " " + key.str();
    log.add("delete" + names);
    bool stop = false;
    const auto total = static_cast<std::int64_t>(keys.size());
    if (total == 0)
        return progress(-1, 0, false, &stop);
    std::int64_t index = 0;
    for (const auto &[key, same] : keys) {
        const bool fails = kept.contains(key.str());
        if (!fails)
            std::erase_if(stored, [&key = key](const auto &record) { return record->pKey == key; });
        progress(index++, total, !fails, &stop);
        if (stop)
            return;
    }
}
