// The bookmarks as the plug-in gets them: passes everything on and notes in an OperationRecord what each item became.
// A move counts by the list that is read afterwards. Threads: as the bookmarks themselves.
#pragma once

#include <memory>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/CBookmarkManagerImpl.h"
#include "device/FailureLog.h"
#include "host/services/OperationRecord.h"

namespace host {

class RecordingBookmarks : public CBookmarkManagerImpl {
public:
    // `failures` is the log of `bookmarks`.
    RecordingBookmarks(std::shared_ptr<CBookmarkManagerImpl> bookmarks, device::FailureLog &failures, std::shared_ptr<OperationRecord> record)
        : bookmarks_(std::move(bookmarks)), failures_(failures), record_(std::move(record)) {}

    [[nodiscard]] BookmarkList roadBookMarkData() override;
    [[nodiscard]] std::int64_t isDeviceiCloudOpen(std::int64_t kind) override { return bookmarks_->isDeviceiCloudOpen(kind); }
    bool addBookMarkFolder(const NewFolders &folders) override;
    bool addBookMark(const NewBookmarks &bookmarks) override;
    bool editBookMarkFolder(const std::shared_ptr<BookmarkDataInfo> &folder) override;
    bool editBookMark(const std::shared_ptr<BookmarkDataInfo> &bookmark) override;
    void moveBookMark_childrenKey_callBack(const NSString &folderKey, const std::vector<NSString> &keys,
                                           const MoveProgress &progress) override;
    void deleteBookMarkFromPkeys_callBack(const Keys &keys, const DeleteProgress &progress) override;

private:
    // One item or one whole call that gives a plain answer.
    bool noted(bool success);
    std::shared_ptr<CBookmarkManagerImpl> bookmarks_;
    device::FailureLog &failures_;
    std::shared_ptr<OperationRecord> record_;
};

}  // namespace host
