// The device's bookmarks as the plug-in uses them.
//
// Threads   every operation blocks until done and may be called on any queue; callbacks come on the calling thread or a
//           thread of the layer, one after the other, never two at a time.
// Failure   an item that fails is told by its callback (a move tells nothing) and the rest goes on; nothing throws.
// Keys      a pKey; the empty text stands for the top level.
#pragma once

#include <cstdint>
#include <functional>
#include <map>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/BookmarkDataInfo.h"

struct BookmarkNameAndURL {
    NSString markName, url;
    bool operator==(const BookmarkNameAndURL &) const = default;
};

class CBookmarkManagerImpl : public NSObject {
public:
    // Parent's pKey to what is made in it.
    using NewFolders = std::map<NSString, NSString>;
    using NewBookmarks = std::map<NSString, BookmarkNameAndURL>;
    // pKey to the same pKey.
    using Keys = std::map<NSString, NSString>;
    // One item was moved or passed over; `index` counts from 0. `*stop` set to true asks to stop. Comes once per key, the
    // last one with index + 1 equal to total unless it was stopped; never for an empty list.
    using MoveProgress =
        std::function<void(std::int64_t index, std::int64_t unused, std::int64_t total, std::int64_t unusedToo, bool *stop)>;
    // One item was tried. Comes once per key, the last one with index + 1 equal to total unless it was stopped; after a stop
    // was asked for, at least one further call comes where the asking call was not the last. No keys bring one call with
    // -1, 0, false.
    using DeleteProgress = std::function<void(std::int64_t index, std::int64_t total, bool success, bool *stop)>;

    // Reads the device anew: folders and bookmarks in one list, the children of one parent in the device's order.
    // Empty where it cannot be read.
    [[nodiscard]] virtual BookmarkList roadBookMarkData() = 0;
    // Not 0 while this kind of data (0 contacts, 2 bookmarks, 4 messages) is kept in the cloud and not on the device.
    [[nodiscard]] virtual std::int64_t isDeviceiCloudOpen(std::int64_t kind) = 0;

    // One new item for each entry, at the end of its parent; all of them or none. False where nothing was added.
    virtual bool addBookMarkFolder(const NewFolders &folders) = 0;
    virtual bool addBookMark(const NewBookmarks &bookmarks) = 0;
    // By pKey: the name of a folder, name and URL of a bookmark. `isFolder` of the record is not to be read: callers leave
    // it false for folders too.
    virtual bool editBookMarkFolder(const std::shared_ptr<BookmarkDataInfo> &folder) = 0;
    virtual bool editBookMark(const std::shared_ptr<BookmarkDataInfo> &bookmark) = 0;
    // To the end of the target folder, in the order given. All that can be moved, or none.
    virtual void moveBookMark_childrenKey_callBack(const NSString &folderKey, const std::vector<NSString> &keys,
                                                   const MoveProgress &progress) = 0;
    // A folder goes with everything below it.
    virtual void deleteBookMarkFromPkeys_callBack(const Keys &keys, const DeleteProgress &progress) = 0;
};
