// Bookmarks in memory, which keep the contract as the device's store does. Says in its log what it was asked for, keys and
// values included.
#pragma once

#include <set>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/CBookmarkManagerImpl.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "tests/support/EventLog.h"

class FakeBookmarks : public CBookmarkManagerImpl {
public:
    BookmarkList stored;
    std::int64_t cloud = 0;
    bool refuses = false;            // add and edit
    std::set<std::string> kept;      // keys that a delete fails on
    int secondsPerItem = 0;          // of the test's clock
    EventLog log;

    // Keys count from 1 in the order of the calls; an absent parent is the top level.
    std::shared_ptr<BookmarkDataInfo> folder(const NSString &name, const NSString &parent = {});
    std::shared_ptr<BookmarkDataInfo> bookmark(const NSString &name, const NSString &url, const NSString &parent = {});

    [[nodiscard]] BookmarkList roadBookMarkData() override;
    [[nodiscard]] std::int64_t isDeviceiCloudOpen(std::int64_t kind) override { return kind == 2 ? cloud : 0; }
    bool addBookMarkFolder(const NewFolders &folders) override;
    bool addBookMark(const NewBookmarks &bookmarks) override;
    bool editBookMarkFolder(const std::shared_ptr<BookmarkDataInfo> &folder) override;
    bool editBookMark(const std::shared_ptr<BookmarkDataInfo> &bookmark) override;
    void moveBookMark_childrenKey_callBack(const NSString &folderKey, const std::vector<NSString> &keys,
                                           const MoveProgress &progress) override;
    void deleteBookMarkFromPkeys_callBack(const Keys &keys, const DeleteProgress &progress) override;

private:
    std::shared_ptr<BookmarkDataInfo> add(const NSString &name, const NSString &url, const NSString &parent, bool isFolder);
    [[nodiscard]] std::shared_ptr<BookmarkDataInfo> find(const NSString &key) const;
    // The empty text is the top level.
    [[nodiscard]] bool isPlace(const NSString &parent) const;
    [[nodiscard]] bool isBelow(NSString key, const NSString &folder) const;
    bool edit(const char *word, const std::shared_ptr<BookmarkDataInfo> &record, bool isFolder);
    void move(const NSString &key, const NSString &folder);
    bool remove(const NSString &key, std::set<NSString> &gone);

    int lastKey_ = 0;
};

// A device with these bookmarks alone.
[[nodiscard]] std::shared_ptr<DeviceContext> contextWith(std::shared_ptr<CBookmarkManagerImpl> bookmarks);
