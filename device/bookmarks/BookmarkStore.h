// The bookmarks of a device image or a backup folder.
//
// Reading  every version of the database; an image is read as it stands, a backup is never changed.
// Writing  one WriterLock per operation. Adding and moving are one transaction each. A delete goes in groups of up to 200
//          keys or 100 ms, each group one transaction, each key a savepoint; a key's callback comes after its group's
//          commit, on the calling thread. Killed at any moment, the device holds each change whole or not.
// Lost     once the device has gone, the group at work and all that follow fail; each still brings its callback.
// Reasons  `failures` tells why; the contract itself only says no.
// Threads  any; a second writing operation at the same time is refused, not queued.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/CBookmarkManagerImpl.h"
#include "device/FailureLog.h"
#include "device/FileTree.h"

namespace device::bookmarks {

class BookmarkWriter;

class BookmarkStore : public CBookmarkManagerImpl {
public:
    static constexpr bool kEndsOnAnyThread = true;
    struct GroupLimits {
        std::int64_t keys = 200;
        std::chrono::milliseconds time{100};
        std::function<std::chrono::steady_clock::time_point()> now = std::chrono::steady_clock::now;
    };

    // Made by `open`.
    explicit BookmarkStore(std::shared_ptr<FileTree> tree) : tree_(std::move(tree)) {}
    [[nodiscard]] static std::shared_ptr<BookmarkStore> open(std::shared_ptr<FileTree> tree);

    // A device without bookmarks gives an empty list; one whose bookmarks cannot be read gives an empty list and a failure.
    [[nodiscard]] BookmarkList roadBookMarkData() override;
    [[nodiscard]] std::int64_t isDeviceiCloudOpen(std::int64_t kind) override;
    bool addBookMarkFolder(const NewFolders &folders) override;
    bool addBookMark(const NewBookmarks &bookmarks) override;
    bool editBookMarkFolder(const std::shared_ptr<BookmarkDataInfo> &folder) override;
    bool editBookMark(const std::shared_ptr<BookmarkDataInfo> &bookmark) override;
    // Keys that are not on the device, and folders that would come below themselves, are passed over; each is a failure.
    void moveBookMark_childrenKey_callBack(const NSString &folderKey, const std::vector<NSString> &keys,
                                           const MoveProgress &progress) override;
    void deleteBookMarkFromPkeys_callBack(const Keys &keys, const DeleteProgress &progress) override;

    // Why the last operation failed, in whole or in part.
    [[nodiscard]] FailureLog &failures() { return failures_; }
    // For tests, and before the first operation.
    void setGroupLimits(GroupLimits limits) { limits_ = std::move(limits); }

private:
    // Throws where the device has gone.
    void needDevice() const;
    using Work = std::function<void(sqlite::Database &, BookmarkWriter &)>;
    // Runs `work` with a database that is open for writing; throws.
    void withDatabase(const Work &work);
    // One transaction; false, with a failure noted, where it was not committed.
    bool inOneTransaction(const Work &work);
    // True where `work` went through; otherwise nothing of it is left and its failure is noted. Throws where the whole
    // transaction is lost.
    bool inSavepoint(sqlite::Database &database, const std::string &record, const std::function<void()> &work);
    [[nodiscard]] std::vector<bool> removeGroup(sqlite::Database &database, BookmarkWriter &writer, const std::vector<NSString> &keys,
                                                std::size_t first);
    void noteFailure(const std::exception &error, const std::string &record = "");

    std::shared_ptr<FileTree> tree_;
    FailureLog failures_;
    GroupLimits limits_;
};

}  // namespace device::bookmarks
