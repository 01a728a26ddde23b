// What the device's bookmarks promise, asked of the store on a real database and of the bookmarks in memory that other
// tests use.
#include <gtest/gtest.h>

#include "device/bookmarks/BookmarkStore.h"
#include "device/sample/Sample.h"
#include "tests/device/TestDevice.h"
#include "tests/device/bookmarks/BookmarkCalls.h"
#include "tests/support/fake/Bookmarks.h"

using testdevice::TempFolder;

namespace {

using Layer = std::shared_ptr<CBookmarkManagerImpl>;
struct Implementation {
    const char *name;
    Layer (*make)(const TempFolder &folder);
};

class BookmarkContract : public testing::TestWithParam<Implementation> {
protected:
    // F(a G(b) E) top
    void SetUp() override {
        ASSERT_TRUE(layer_->addBookMarkFolder({{"", "F"}}));
        ASSERT_TRUE(layer_->addBookMark({{"", {"top", "http://t"}}}));
        ASSERT_TRUE(layer_->addBookMark({{key("F"), {"a", "http://a"}}}));
        ASSERT_TRUE(layer_->addBookMarkFolder({{key("F"), "G"}}));
        ASSERT_TRUE(layer_->addBookMarkFolder({{key("F"), "E"}}));
        ASSERT_TRUE(layer_->addBookMark({{key("G"), {"b", "http://b"}}}));
    }
    [[nodiscard]] std::shared_ptr<BookmarkDataInfo> named(const NSString &name) const {
        for (const auto &record : layer_->roadBookMarkData())
            if (record->markName == name)
                return record;
        return nullptr;
    }
    [[nodiscard]] NSString key(const char *name) const {
        const auto record = named(name);
        return record ? record->pKey : NSString("no such");
    }
    [[nodiscard]] std::shared_ptr<BookmarkDataInfo> edited(const char *name, const NSString &newName, const NSString &url) const {
        auto record = make<BookmarkDataInfo>();
        record->pKey = key(name), record->markName = newName, record->url = url;
        return record;
    }
    // "F(a G(b) E) top", children in the layer's order.
    [[nodiscard]] std::string tree() const { return below(layer_->roadBookMarkData(), NSString()); }
    std::string move(const std::vector<NSString> &keys, const NSString &target) { return callsOfMove(*layer_, target, keys); }
    std::string remove(const std::vector<NSString> &keys, int stopAt = -1) { return callsOfDelete(*layer_, keys, stopAt); }

    TempFolder folder_;
    Layer layer_ = GetParam().make(folder_);

private:
    static std::string below(const BookmarkList &list, const NSString &parent) {
        std::string text;
        for (const auto &record : list) {
            if (record->parentKey != parent || record->parentKey.isNil() != parent.isNil())
                continue;
            text += (text.empty() ? "" : " ") + record->markName.str();
            if (const std::string inside = below(list, record->pKey); record->isFolder && !inside.empty())
                text += "(" + inside + ")";
        }
        return text;
    }
};

TEST_P(BookmarkContract, listsFoldersAndBookmarksWithoutAParentAtTheTop) {
    EXPECT_EQ(tree(), "F(a G(b) E) top");
    EXPECT_TRUE(named("F")->isFolder);
    EXPECT_TRUE(named("F")->parentKey.isNil());
    EXPECT_FALSE(named("b")->isFolder);
    EXPECT_EQ(named("b")->url, NSString("http://b"));
    EXPECT_EQ(named("b")->parentKey, key("G"));
    EXPECT_EQ(layer_->isDeviceiCloudOpen(2), 0);
}

TEST_P(BookmarkContract, addsToEachParentOrToNone) {
    EXPECT_TRUE(layer_->addBookMark({{key("G"), {"x", "u"}}, {"", {"x", "u"}}, {key("E"), {"x", "u"}}}));
    EXPECT_EQ(tree(), "F(a G(b x) E(x)) top x");
    for (const NSString &parent : {NSString("987654"), key("a"), NSString("no key")}) {
        EXPECT_FALSE(layer_->addBookMark({{key("E"), {"y", "u"}}, {parent, {"y", "u"}}}));
        EXPECT_FALSE(layer_->addBookMarkFolder({{"", "y"}, {parent, "y"}}));
    }
    EXPECT_FALSE(layer_->addBookMark({}));
    EXPECT_FALSE(layer_->addBookMarkFolder({}));
    EXPECT_EQ(tree(), "F(a G(b x) E(x)) top x");
}

TEST_P(BookmarkContract, editsOnlyItsOwnKind) {
    EXPECT_TRUE(layer_->editBookMark(edited("a", "A", "http://A")));
    EXPECT_TRUE(layer_->editBookMarkFolder(edited("G", "H", "ignored")));
    EXPECT_FALSE(layer_->editBookMark(edited("F", "f", "u")));
    EXPECT_FALSE(layer_->editBookMarkFolder(edited("top", "t", "")));
    EXPECT_FALSE(layer_->editBookMark(edited("nobody", "n", "u")));
    EXPECT_FALSE(layer_->editBookMark(nullptr));
    EXPECT_EQ(tree(), "F(A H(b) E) top");
    EXPECT_EQ(named("A")->url, NSString("http://A"));
    EXPECT_NE(named("H")->url, NSString("ignored"));
}

TEST_P(BookmarkContract, takesAnyText) {
    const NSString name("\"'<b>&\n\t\\%s \xF0\x9F\x8D\x9E"), url("javascript:'\"\n</A>");
    EXPECT_TRUE(layer_->addBookMark({{"", {name, url}}}));
    ASSERT_TRUE(named(name));
    EXPECT_EQ(named(name)->url, url);
    EXPECT_TRUE(layer_->addBookMark({{key("E"), {"", ""}}}));
    EXPECT_TRUE(named(""));
}

TEST_P(BookmarkContract, movesToTheEndInTheOrderGiven) {
    EXPECT_EQ(move({key("top"), key("a")}, key("G")), "0/2 1/2 ");
    EXPECT_EQ(tree(), "F(G(b top a) E)");
    EXPECT_EQ(move({key("b"), key("E")}, key("G")), "0/2 1/2 ");
    EXPECT_EQ(tree(), "F(G(top a b E))");
    EXPECT_EQ(move({key("a")}, ""), "0/1 ");
    EXPECT_EQ(tree(), "F(G(top b E)) a");
    EXPECT_EQ(move({}, key("G")), "");
}

TEST_P(BookmarkContract, movesNoFolderBelowItselfAndPassesOverWhatIsNotThere) {
    EXPECT_EQ(move({key("F"), key("G"), "987654", key("top")}, key("G")), "0/4 1/4 2/4 3/4 ");
    EXPECT_EQ(tree(), "F(a G(b top) E)");
    move({key("a")}, key("b"));
    move({key("a")}, "987654");
    EXPECT_EQ(tree(), "F(a G(b top) E)");
}

TEST_P(BookmarkContract, deletesAFolderWithAllBelowIt) {
    EXPECT_EQ(remove({key("G"), key("b"), "987654"}).size(), 15u);   // three calls
    EXPECT_EQ(tree(), "F(a E) top");
    EXPECT_EQ(remove({key("F"), key("a")}), "0/2+ 1/2+ ");
    EXPECT_EQ(tree(), "top");
    EXPECT_EQ(remove({"987654"}), "0/1- ");
    EXPECT_EQ(remove({}), "-1/0- ");
}

TEST_P(BookmarkContract, aStoppedDeleteStillMakesOneCallMore) {
    EXPECT_EQ(remove({key("a"), key("b")}, 0).substr(0, 5), "0/2+ ");
    const std::string last = remove({key("E")}, 0);
    EXPECT_EQ(last, "0/1+ ");
    EXPECT_EQ(remove({key("top"), key("F"), key("G")}, 0).substr(5, 3), "1/3");
}

INSTANTIATE_TEST_SUITE_P(Bookmarks, BookmarkContract,
                         testing::Values(Implementation{"store",
                                                        [](const TempFolder &folder) {
                                                            device::sample::createImage(folder.path() / "image", "D");
                                                            return Layer(device::bookmarks::BookmarkStore::open(
                                                                std::make_shared<device::ImageFolder>(folder.path() / "image")));
                                                        }},
                                         Implementation{"memory", [](const TempFolder &) { return Layer(make<FakeBookmarks>()); }}),
                         [](const auto &info) { return std::string(info.param.name); });

}  // namespace
