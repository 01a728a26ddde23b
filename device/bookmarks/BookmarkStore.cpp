#include "device/bookmarks/BookmarkStore.h"

#include "device/bookmarks/BookmarkReader.h"
#include "device/bookmarks/BookmarkWriter.h"

namespace device::bookmarks {

namespace {

std::int64_t secondsSince1970() {
    return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch()).count();
}

// Of a bookmark or a folder, never the top level.
std::int64_t knownRow(const NSString &key) {
    const auto row = rowOfKey(key);
    if (!row || *row == kRoot)
        throw AccessError(AccessError::Kind::missing, "", "no bookmark has the key " + unicode::sanitized(key.view()));
    return *row;
}

std::int64_t folderRow(const NSString &key) {
    if (const auto row = rowOfKey(key))
        return *row;
    throw AccessError(AccessError::Kind::missing, "", "no folder has the key " + unicode::sanitized(key.view()));
}

const BookmarkDataInfo &given(const std::shared_ptr<BookmarkDataInfo> &bookmark) {
    if (!bookmark)
        throw AccessError(AccessError::Kind::failed, "", "no bookmark was given");
    return *bookmark;
}

}  // namespace

std::shared_ptr<BookmarkStore> BookmarkStore::open(std::shared_ptr<FileTree> tree) { return alloc<BookmarkStore>(std::move(tree)); }

void BookmarkStore::noteFailure(const std::exception &error, const std::string &record) {
    Failure failure = Failure::of(error);
    if (!record.empty())
        failure.text = record + ": " + failure.text;
    failures_.note(std::move(failure));
}

void BookmarkStore::needDevice() const {
    if (!tree_->isThere())
        throw AccessError(AccessError::Kind::gone, tree_->root().string(), "the device has gone");
}

// ---------------------------------------------------------------- reading

BookmarkList BookmarkStore::roadBookMarkData() {
    failures_.clear();
    try {
        if (tree_->find(kBookmarks)) {
            sqlite::Database database = tree_->openForReading(kBookmarks);
            return readBookmarks(database);
        }
        needDevice();
    } catch (const std::exception &error) {
        noteFailure(error);
    }
    return {};
}

std::int64_t BookmarkStore::isDeviceiCloudOpen(std::int64_t kind) { return tree_->isInCloud(static_cast<CloudKind>(kind)) ? 1 : 0; }

// ---------------------------------------------------------------- one transaction

void BookmarkStore::withDatabase(const Work &work) {
    needDevice();
    const WriterLock lock = tree_->lockForWriting();
    sqlite::Database database = tree_->openForWriting(lock, kBookmarks);
    BookmarkWriter writer(database, secondsSince1970());
    work(database, writer);
}

bool BookmarkStore::inOneTransaction(const Work &work) {
    failures_.clear();
    try {
        withDatabase([&](sqlite::Database &database, BookmarkWriter &writer) {
            sqlite::Transaction all(database);
            work(database, writer);
            needDevice();
            all.commit();
        });
        return true;
    } catch (const std::exception &error) {
        noteFailure(error);
        return false;
    }
}

bool BookmarkStore::inSavepoint(sqlite::Database &database, const std::string &record, const std::function<void()> &work) {
    try {
        sqlite::Savepoint item(database);
        work();
        item.keep();
        return true;
    } catch (const std::exception &error) {
        if (!database.inTransaction())   // the disk refused: nothing of the transaction is left
            throw;
        noteFailure(error, record);
        return false;
    }
}

bool BookmarkStore::addBookMarkFolder(const NewFolders &folders) {
    return inOneTransaction([&](sqlite::Database &, BookmarkWriter &writer) {
        for (const auto &[parent, name] : folders)
            writer.add(folderRow(parent), Type::folder, name, "");
    }) && !folders.empty();
}

bool BookmarkStore::addBookMark(const NewBookmarks &bookmarks) {
    return inOneTransaction([&](sqlite::Database &, BookmarkWriter &writer) {
        for (const auto &[parent, made] : bookmarks)
            writer.add(folderRow(parent), Type::bookmark, made.markName, made.url);
    }) && !bookmarks.empty();
}

bool BookmarkStore::editBookMarkFolder(const std::shared_ptr<BookmarkDataInfo> &folder) {
    return inOneTransaction([&](sqlite::Database &, BookmarkWriter &writer) {
        const BookmarkDataInfo &record = given(folder);
        writer.renameFolder(knownRow(record.pKey), record.markName);
    });
}

bool BookmarkStore::editBookMark(const std::shared_ptr<BookmarkDataInfo> &bookmark) {
    return inOneTransaction([&](sqlite::Database &, BookmarkWriter &writer) {
        const BookmarkDataInfo &record = given(bookmark);
        writer.editBookmark(knownRow(record.pKey), record.markName, record.url);
    });
}

void BookmarkStore::moveBookMark_childrenKey_callBack(const NSString &folderKey, const std::vector<NSString> &keys,
                                                      const MoveProgress &progress) {
    inOneTransaction([&](sqlite::Database &database, BookmarkWriter &writer) {
        const std::int64_t target = folderRow(folderKey);
        for (const NSString &key : keys)
            inSavepoint(database, "bookmark " + unicode::sanitized(key.view()), [&] {
                if (!writer.move(knownRow(key), target))
                    throw AccessError(AccessError::Kind::failed, "", "a folder cannot be moved into itself");
            });
    });
    // It is all decided by now: a wish to stop comes too late.
    const auto total = static_cast<std::int64_t>(keys.size());
    for (std::int64_t index = 0; progress && index < total; ++index) {
        bool stop = false;
        progress(index, 0, total, 0, &stop);
    }
}

// ---------------------------------------------------------------- delete, in groups

std::vector<bool> BookmarkStore::removeGroup(sqlite::Database &database, BookmarkWriter &writer, const std::vector<NSString> &keys,
                                             std::size_t first) {
    needDevice();   // else each key would fail for a reason that tells less
    std::vector<bool> outcomes;
    sqlite::Transaction group(database);
    const auto start = limits_.now();
    do {
        const NSString &key = keys[first + outcomes.size()];
        outcomes.push_back(
            inSavepoint(database, "bookmark " + unicode::sanitized(key.view()), [&] { writer.remove(knownRow(key)); }));
    } while (first + outcomes.size() < keys.size() && static_cast<std::int64_t>(outcomes.size()) < limits_.keys &&
             limits_.now() - start < limits_.time);
    writer.forgetRemovedFolders();
    needDevice();
    group.commit();
    return outcomes;
}

void BookmarkStore::deleteBookMarkFromPkeys_callBack(const Keys &keys, const DeleteProgress &progress) {
    failures_.clear();
    std::vector<NSString> list;
    for (const auto &entry : keys)
        list.push_back(entry.first);
    std::size_t told = 0;
    std::optional<std::size_t> askedAt;   // the first key whose callback asked to stop
    const auto tell = [&](bool success) {
        bool stop = false;
        if (progress)
            progress(static_cast<std::int64_t>(told), static_cast<std::int64_t>(list.size()), success, &stop);
        if (stop && !askedAt)
            askedAt = told;
        ++told;
    };
    if (list.empty() && progress) {
        bool stop = false;
        progress(-1, 0, false, &stop);
    }
    try {
        if (!list.empty())
            withDatabase([&](sqlite::Database &database, BookmarkWriter &writer) {
                while (told < list.size() && !askedAt)
                    for (const bool success : removeGroup(database, writer, list, told))
                        tell(success);
            });
    } catch (const std::exception &error) {
        noteFailure(error);
        while (told < list.size() && !askedAt)
            tell(false);
    }
    // Who asked to stop waits for one call more; it is of a key that was not touched.
    if (askedAt && told == *askedAt + 1 && told < list.size())
        tell(false);
}

}  // namespace device::bookmarks
