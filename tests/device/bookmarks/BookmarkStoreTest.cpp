#include <gtest/gtest.h>

#include <csignal>

#include "device/bookmarks/BookmarkStore.h"
#include "device/bookmarks/BookmarkWriter.h"
#include "tests/device/HardEnds.h"
#include "tests/device/TestDevice.h"
#include "tests/device/bookmarks/BookmarkCalls.h"

using namespace device;
using namespace device::bookmarks;
using namespace testdevice;

namespace {

std::string sample(const char *name) { return readFile(std::string(HN_SAMPLES_DIR "/bookmarks/") + name); }

class Image : public EmptyImage {
public:
    explicit Image(const std::string &sql) {
        std::filesystem::create_directories(database().parent_path());
        execOn(database(), sql);
        store = BookmarkStore::open(open());
    }
    [[nodiscard]] std::filesystem::path database() const { return path() / "HomeDomain/Library/Safari/Bookmarks.db"; }
    // What a killed writer left is rolled back.
    [[nodiscard]] std::string query(const std::string &sql) const { return queryOn(database(), sql, sqlite::Access::readWrite); }
    // "1F<- 2a<1": key, name and parent, in the order of the list.
    [[nodiscard]] std::string list() const {
        std::string text;
        for (const auto &record : store->roadBookMarkData())
            text += (text.empty() ? "" : " ") + record->pKey.str() + record->markName.str() + "<" +
                    (record->parentKey.isNil() ? "-" : record->parentKey.str());
        return text;
    }
    std::string moved(const char *target, const std::vector<NSString> &keys) const { return callsOfMove(*store, target, keys); }
    std::string deleted(const std::vector<NSString> &keys, int stopAt = -1) const { return callsOfDelete(*store, keys, stopAt); }
    [[nodiscard]] std::string reason() const { return store->failures().first() ? store->failures().first()->text : ""; }

    std::shared_ptr<BookmarkStore> store;
};

// 1 F(2 a, 3 G(4 b), 5 E()), 6 top
std::string newest() { return std::string(kNewBookmarks) + sample("rows.sql"); }

std::shared_ptr<BookmarkDataInfo> record(const char *key, const char *name, const char *url) {
    auto made = make<BookmarkDataInfo>();
    made->pKey = key, made->markName = name, made->url = url;
    return made;
}

// ---------------------------------------------------------------- reading

TEST(BookmarkLayouts, areReadAndWritten) {
    for (const std::string &layout : {sample("early.sql"), std::string(kNewBookmarks)}) {
        SCOPED_TRACE(layout);
        const Image image(layout + sample("rows.sql"));
        EXPECT_EQ(image.list(), "1F<- 6top<- 2a<1 3G<1 5E<1 4b<3");
        EXPECT_TRUE(image.store->addBookMark({{"3", {"n", "http://n"}}})) << image.reason();
        EXPECT_TRUE(image.store->addBookMarkFolder({{"", "N"}})) << image.reason();
        EXPECT_EQ(image.list(), "1F<- 6top<- 8N<- 2a<1 3G<1 5E<1 4b<3 7n<3");
        EXPECT_EQ(image.deleted({"1"}), "0/1+ ");
        EXPECT_EQ(image.list(), "6top<- 8N<-");
    }
}

TEST(BookmarkReading, leavesOutWhatIsDeletedOrHiddenAndCleansTexts) {
    const Image image(newest() + R"(UPDATE bookmarks SET deleted = 1 WHERE id = 2; UPDATE bookmarks SET hidden = 1 WHERE id = 5;
        UPDATE bookmarks SET title = CAST(x'61FF0062' AS TEXT), parent = NULL WHERE id = 4;
        UPDATE bookmarks SET order_index = 99999999999 WHERE id = 6;)");
    EXPECT_EQ(image.list(), "4a\xEF\xBF\xBD" "b<- 1F<- 6top<- 3G<1");
    const BookmarkList list = image.store->roadBookMarkData();
    EXPECT_TRUE(list[1]->url.isNil());
    EXPECT_EQ(list[2]->position, 2147483647);
    EXPECT_EQ(list[3]->position, 1);
}

TEST(BookmarkReading, aFileThatIsNoDatabaseGivesNothingAndAReason) {
    const Image image(newest());
    write(image.database(), "no database at all, but long enough to be looked at as one");
    EXPECT_EQ(image.list(), "");
    EXPECT_NE(image.reason(), "");
    const Image empty("CREATE TABLE other (x)");
    EXPECT_EQ(empty.list(), "");
    EXPECT_NE(empty.reason().find("has no table of bookmarks"), std::string::npos);
}

// ---------------------------------------------------------------- changes

class OnNewest : public testing::Test {
protected:
    const Image image{newest()};
};
using BookmarkWriting = OnNewest;
using BookmarkDeleting = OnNewest;

TEST_F(BookmarkWriting, countsChildrenAndTellsWhatIsNoPlace) {
    EXPECT_TRUE(image.store->addBookMark({{"1", {"x", "u"}}, {"5", {"x", "u"}}, {"", {"x", "u"}}}));
    EXPECT_EQ(image.query("SELECT num_children FROM bookmarks WHERE id IN (1, 5) ORDER BY id"), "1|1");
    EXPECT_FALSE(image.store->addBookMark({{"77", {"y", "u"}}}));
    EXPECT_NE(image.reason(), "");
}

TEST_F(BookmarkWriting, editsOnlyWhatDiffersAndNeverTheRoot) {
    EXPECT_TRUE(image.store->editBookMark(record("2", "a", "http://a")));
    EXPECT_EQ(image.query("SELECT last_modified FROM bookmarks WHERE id = 2"), "-");
    EXPECT_TRUE(image.store->editBookMark(record("2", "A", "http://a")));
    EXPECT_NE(image.query("SELECT last_modified FROM bookmarks WHERE id = 2"), "-");
    EXPECT_FALSE(image.store->editBookMark(record("0", "x", "x")));
}

TEST_F(BookmarkWriting, tellsWhyAFolderStaysOutOfItself) {
    EXPECT_EQ(image.moved("3", {"1", "6"}), "0/2 1/2 ");
    EXPECT_EQ(image.reason(), "bookmark 1: a folder cannot be moved into itself");
    EXPECT_EQ(image.list(), "1F<- 2a<1 3G<1 5E<1 4b<3 6top<3");
}

TEST(BookmarkFolders, theFoldersAboveAFolderFollow) {
    const Image image(newest() + "INSERT INTO folder_ancestors (folder_id, ancestor_id) VALUES (3, 1), (5, 1);");
    image.store->addBookMarkFolder({{"3", "new"}});
    EXPECT_EQ(image.query("SELECT group_concat(ancestor_id) FROM folder_ancestors WHERE folder_id = 7"), "3,1");
    image.moved("5", {"3"});
    EXPECT_EQ(image.query("SELECT folder_id || '-' || ancestor_id FROM folder_ancestors ORDER BY folder_id, ancestor_id"), "3-1|3-5|5-1|7-1|7-3|7-5");
    image.deleted({"5"});
    EXPECT_EQ(image.query("SELECT count(*) FROM folder_ancestors"), "0");
}

TEST(BookmarkRings, inTheDatabaseEnd) {
    const Image image(newest() + "UPDATE bookmarks SET parent = 3 WHERE id = 1;");
    image.moved("3", {"6"});
    EXPECT_EQ(image.query("SELECT parent FROM bookmarks WHERE id = 6"), "3");
    image.deleted({"1"});
    EXPECT_EQ(image.list(), "");
}

TEST_F(BookmarkDeleting, leavesNothingOfAFolderBehind) {
    EXPECT_EQ(image.deleted({"1", "2", "77", "x"}), "0/4+ 1/4+ 2/4- 3/4- ");
    EXPECT_EQ(image.query("SELECT count(*) FROM bookmarks"), "2");
}

TEST_F(BookmarkDeleting, aStopEndsAfterItsGroupWithOneCallMore) {
    image.store->setGroupLimits({.keys = 1});
    EXPECT_EQ(image.deleted({"2", "4", "6"}, 0), "0/3+ 1/3- ");
    EXPECT_EQ(image.list(), "1F<- 6top<- 3G<1 5E<1 4b<3");
    image.store->setGroupLimits({.keys = 2});
    EXPECT_EQ(image.deleted({"3", "4", "6"}, 0), "0/3+ 1/3+ ");
}

TEST_F(BookmarkDeleting, aSecondWriterIsRefusedAndEachKeyFails) {
    const ImageFolder other(image.path());
    const WriterLock lock = other.lockForWriting();
    EXPECT_EQ(image.deleted({"2", "6"}), "0/2- 1/2- ");
    EXPECT_EQ(image.store->failures().first()->kind, AccessError::Kind::locked);
    EXPECT_EQ(image.moved("3", {"6"}), "0/1 ");
    EXPECT_FALSE(image.store->addBookMark({{"", {"x", "u"}}}));
    EXPECT_EQ(image.list(), "1F<- 6top<- 2a<1 3G<1 5E<1 4b<3");
}

TEST(BookmarkFolders, oneFolderThatTheDatabaseKeepsStaysWholeAndTheOthersGo) {
    const Image image(newest() + "INSERT INTO folder_ancestors (folder_id, ancestor_id) VALUES (3, 1), (5, 1);"
                                 "CREATE TRIGGER keeps BEFORE DELETE ON bookmarks WHEN OLD.id = 4 BEGIN SELECT RAISE(ABORT, 'kept'); END;");
    EXPECT_EQ(image.deleted({"3", "5", "6"}), "0/3- 1/3+ 2/3+ ");
    EXPECT_EQ(image.reason().substr(0, 12), "bookmark 3: ");
    EXPECT_EQ(image.list(), "1F<- 2a<1 3G<1 4b<3");
    EXPECT_EQ(image.query("SELECT folder_id FROM folder_ancestors"), "3");
    EXPECT_EQ(image.query("SELECT num_children FROM bookmarks WHERE id = 1"), "0");   // as made: no lower than none
}

TEST_F(BookmarkDeleting, aDeviceThatGoesAwayFailsWhatIsLeft) {
    image.store->setGroupLimits({.keys = 1});
    std::string calls;
    image.store->deleteBookMarkFromPkeys_callBack({{"2", "2"}, {"4", "4"}, {"6", "6"}}, [&](std::int64_t, std::int64_t, bool success, bool *) {
        std::filesystem::remove_all(image.path());
        calls += success ? "+" : "-";
    });
    EXPECT_EQ(calls, "+--");
    EXPECT_EQ(image.store->failures().first()->kind, AccessError::Kind::gone);
    EXPECT_FALSE(std::filesystem::exists(image.path()));
}

// ---------------------------------------------------------------- hard ends

// Each operation, and what the list may be afterwards: as before, or as after the whole of it.
struct Operation {
    const char *name;
    void (*run)(BookmarkStore &store);
};
constexpr Operation kOperations[] = {
    {"adds", [](BookmarkStore &store) { store.addBookMark({{"1", {"x", "u"}}, {"3", {"y", "u"}}, {"", {"z", "u"}}}); }},
    {"addsFolders", [](BookmarkStore &store) { store.addBookMarkFolder({{"1", "x"}, {"5", "y"}}); }},
    {"edits", [](BookmarkStore &store) { store.editBookMark(record("2", "A", "http://A")); }},
    {"renames", [](BookmarkStore &store) { store.editBookMarkFolder(record("1", "R", "")); }},
    {"moves", [](BookmarkStore &store) { store.moveBookMark_childrenKey_callBack("5", {"6", "3", "2"}, {}); }},
    {"deletes", [](BookmarkStore &store) { store.deleteBookMarkFromPkeys_callBack({{"1", "1"}, {"6", "6"}}, {}); }},
};

class HardEnd : public testing::TestWithParam<Operation> {
protected:
    static std::string before() { return everything(Image(newest())); }
    static std::string after() {
        const Image image(newest());
        GetParam().run(*image.store);
        return everything(image);
    }
    // All that tells an operation apart, without what is new each time.
    static std::string everything(const Image &image) {
        return image.list() + "|" + image.query("SELECT coalesce(num_children, '-') || coalesce(url, '-') || order_index FROM bookmarks ORDER BY id") + "|" +
               image.query("SELECT folder_id || '-' || ancestor_id FROM folder_ancestors ORDER BY 1");
    }
};

TEST_P(HardEnd, killedAtAnyWriteAllOfItOrNothingIsThere) {
    const std::string none = before(), all = after();
    ASSERT_NE(none, all);
    int kills = 0, wholes = 0;
    for (int status = 0; status != 7; ++kills) {
        const Image image(newest());
        status = inChild([&] {
            dieAtCall(kills + 1);
            GetParam().run(*image.store);
            return 7;
        });
        ASSERT_TRUE(status == 7 || status == 128 + SIGKILL) << status;
        const std::string left = everything(image);
        EXPECT_TRUE(left == none || left == all) << kills << ": " << left;
        wholes += left == all;
        EXPECT_TRUE(image.store->addBookMark({{"", {"later", "u"}}})) << kills << image.reason();
    }
    EXPECT_GT(kills, 4);
    EXPECT_GT(wholes, 0);
}

TEST_P(HardEnd, aFullDiskIsToldAndChangesNothing) {
    const Image image(newest());
    const std::string none = before();
    EXPECT_EQ(inChild([&] {
                  limitFileSize(1'000);   // not even the journal of a change fits
                  GetParam().run(*image.store);
                  return image.reason().empty() ? 6 : 5;
              }),
              5);
    EXPECT_EQ(everything(image), none);
}

TEST_P(HardEnd, aFolderWithoutWritePermissionIsToldAndChangesNothing) {
    const Image image(newest());
    forbidWriting(image.path());
    const std::string picture = pictureOf(image.path());
    EXPECT_EQ(inChild([&] {
                  if (!becomeNobody())
                      return 9;
                  GetParam().run(*image.store);
                  const auto failure = image.store->failures().first();
                  return failure && failure->kind == AccessError::Kind::readOnly && !failure->text.empty() ? 5 : 6;
              }),
              5);
    EXPECT_EQ(pictureOf(image.path()), picture);
}

INSTANTIATE_TEST_SUITE_P(Bookmarks, HardEnd, testing::ValuesIn(kOperations), [](const auto &info) { return std::string(info.param.name); });

}  // namespace
