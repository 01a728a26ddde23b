#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include "device/plist/PropertyList.h"
#include "tests/host/Program.h"

using nlohmann::ordered_json;
using testhost::Outcome;

namespace {

using Words = std::vector<std::string>;

std::string below(const ordered_json &nodes) {
    std::string text;
    for (const auto &node : nodes) {
        text += (text.empty() ? "" : " ") + node["name"].get<std::string>();
        if (!node["children"].empty())
            text += "(" + below(node["children"]) + ")";
    }
    return text;
}

class BookmarksCommand : public testing::Test {
protected:
    // 1 Dev(2 One, 4 Inner(5 deep)), 3 top; made by the commands themselves.
    BookmarksCommand() {
        EXPECT_EQ(program.run({"device", "create", "image", "--name", "D"}).status, 0);
        for (const Words &step : {Words{"folder", "Dev"}, Words{"add", "One", "http://one.example", "--in", "1"}, Words{"add", "top", "javascript:x"},
                                  Words{"folder", "Inner", "--in", "1"}, Words{"add", "deep", "http://deep.example/NEEDLE", "--in", "4"}})
            EXPECT_EQ(result(step), R"({"saved":true})");
    }
    static Words onImage(const Words &words) {
        Words all = {"--device", "image", "bookmarks"};
        all.insert(all.end(), words.begin(), words.end());
        return all;
    }
    [[nodiscard]] Outcome run(const Words &words) const { return program.run(onImage(words)); }
    [[nodiscard]] std::string result(const Words &words) const { return program.json(onImage(words)).dump(); }
    Outcome refused(const Words &words, int status, std::string_view told) const { return program.refused(onImage(words), status, told); }
    // "Dev(One Inner(deep)) top".
    [[nodiscard]] std::string tree() const { return below(program.json(onImage({"list"}))["bookmarks"]); }
    [[nodiscard]] std::string database() const { return testhost::readFile(program.home() / kDatabase); }

    static constexpr const char *kTree = "Dev(One Inner(deep)) top", *kDatabase = "image/HomeDomain/Library/Safari/Bookmarks.db";
    const testhost::Program program;
};

TEST_F(BookmarksCommand, listIsTheTreeWithEveryField) {
    EXPECT_EQ(program.json(onImage({"list"})).dump(1) + "\n", testhost::readFile(HN_SAMPLES_DIR "/cases/bookmarkList.json"));
    const Outcome people = run({"list"});
    EXPECT_EQ(people.out, "1  Dev/\n2    One     http://one.example\n4    Inner/\n5      deep  http://deep.example/NEEDLE\n3  top       javascript:x\n");
    EXPECT_EQ(people.err, "hnmanager: 3 items\n");
}

TEST_F(BookmarksCommand, searchKeepsTheFoldersOfAHitAndWithoutAHitTheOldRows) {
    const auto searched = [&](const char *text) {
        const auto list = program.json(onImage({"list", "--search", text}));
        return below(list["bookmarks"]) + (list["found"] == true ? "" : " not found");
    };
    EXPECT_EQ(searched("needle"), "Dev(Inner(deep))");
    EXPECT_EQ(searched("DEV"), "Dev");
    EXPECT_EQ(searched("javascript"), std::string(kTree) + " not found");   // of the top level only names count
    refused({"list", "--search", "javascript"}, 0, "nothing matches javascript");
}

TEST_F(BookmarksCommand, takeADatabaseOfAnotherMaker) {
    program.file(kDatabase, testhost::readFile(HN_SAMPLES_DIR "/bookmarks/safari.1.Bookmarks.db"));
    EXPECT_EQ(tree(), "BookmarksBar(Dev Example Bookmark Corrupt) com.apple.ReadingList(RL Unread RL Read)");
    for (const Words &step : {Words{"edit", "4", "N", "http://n"}, Words{"add", "new", "http://new", "--in", "3"}, Words{"move", "8", "--to", "3"},
                              Words{"delete", "2", "--yes"}})
        EXPECT_EQ(run(step).status, 0) << step[0];
    EXPECT_EQ(tree(), "BookmarksBar(Dev(new Corrupt) N)");
    EXPECT_EQ(program.json(onImage({"export", "out.html"}))["count"], 3);
}

// ---------------------------------------------------------------- changes

TEST_F(BookmarksCommand, addEditAndRenameAreSaved) {
    EXPECT_EQ(result({"add", "new", "any text", "--in", "4", "2", "3"}), R"({"saved":true})");
    EXPECT_EQ(tree(), "Dev(One Inner(deep new) new) new top");
    EXPECT_EQ(result({"edit", "2", "A \"<b>\"\n", "ftp://x"}), R"({"saved":true})");
    EXPECT_EQ(result({"rename", "4", "Renamed"}), R"({"saved":true})");
    EXPECT_EQ(tree(), "Dev(A \"<b>\"\n Renamed(deep new) new) new top");
}

TEST_F(BookmarksCommand, moveAndDeleteCountWhatTheListSaysAfterwards) {
    EXPECT_EQ(result({"move", "2", "3", "--to", "4"}), R"({"succeeded":2,"failed":0,"text":"The bookmarks were moved."})");
    EXPECT_EQ(tree(), "Dev(Inner(deep One top))");
    refused({"delete", "4"}, 1, "needs --yes");
    EXPECT_EQ(tree(), "Dev(Inner(deep One top))");
    EXPECT_EQ(result({"delete", "4", "--yes"}), R"({"succeeded":4,"failed":0,"text":"4 items were deleted."})");
    EXPECT_EQ(tree(), "Dev");
}

TEST_F(BookmarksCommand, exportWritesTheWholeTreeOnceAndReplacesOnlyWhenTold) {
    EXPECT_EQ(result({"export", "out.html"}), R"({"count":3,"text":"The bookmarks were exported."})");
    const std::string whole = testhost::readFile(program.home() / "out.html");
    EXPECT_TRUE(whole.starts_with("<!DOCTYPE NETSCAPE-Bookmark-file-1>\n<HTML><META"));
    EXPECT_TRUE(whole.ends_with("\n<DT><A HREF=\"javascript:x\">top</A>\n</HTML>"));
    refused({"export", "out.html"}, 1, "exists already");
    program.file("out.html", "an old file");
    EXPECT_EQ(run({"export", "out.html", "--replace"}).status, 0);
    EXPECT_EQ(testhost::readFile(program.home() / "out.html"), whole);   // no second document behind an old one
    EXPECT_EQ(run({"export", "image", "--replace"}).status, 1);
}

// ---------------------------------------------------------------- refusals

TEST_F(BookmarksCommand, refusalsAreToldAndChangeNothing) {
    struct Row {
        Words words;
        int status;
        const char *told;
    };
    const std::string before = database();
    for (const Row &row : {Row{{"add", "  ", "x"}, 1, "nothing was saved: a text is missing"},
                           Row{{"add", "x", "y", "--in", "1", "99"}, 1, "no bookmark or folder has the KEY 99"},
                           Row{{"folder", "x", "--in", "99"}, 1, "no bookmark or folder has the KEY 99"},
                           Row{{"edit", "1", "a", "b"}, 1, "no bookmark has the KEY 1"},
                           Row{{"rename", "2", "a"}, 1, "no folder has the KEY 2"},
                           Row{{"move", "2", "4", "--to", "1"}, 1, "no bookmark has the KEY 4"},
                           Row{{"move", "2", "--to", "3"}, 1, "no folder has the KEY 3"},
                           Row{{"delete", "2", "99", "--yes"}, 1, "no bookmark or folder has the KEY 99"},
                           Row{{"add", "x"}, 2, "URL is required"},
                           Row{{"move", "2"}, 2, "--to is required"},
                           Row{{"delete"}, 2, "KEY is required"},
                           Row{{"paint"}, 2, "subcommand is required"},
                           Row{{"export", "out.txt"}, 1, "out.txt"},
                           Row{{"export", "out"}, 1, "out"}}) {
        refused(row.words, row.status, row.told);
        EXPECT_EQ(database(), before) << row.told;
    }
    EXPECT_EQ(run({"export", "nowhere/out.html"}).err, "hnmanager: " + (program.home() / "nowhere/out.html").string() + ": its folder does not exist\n");
    for (const char *made : {"out.txt", "out.txt.html", "nowhere"})
        EXPECT_FALSE(std::filesystem::exists(program.home() / made)) << made;
}

TEST_F(BookmarksCommand, leaveADeviceAloneThatAnotherProgramWrites) {
    const int lock = open((program.home() / "image/.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(flock(lock, LOCK_EX | LOCK_NB), 0);
    for (const Words &words : {Words{"add", "x", "y"}, Words{"edit", "2", "x", "y"}, Words{"move", "2", "--to", "4"}, Words{"delete", "2", "--yes"}})
        refused(words, 3, "being written by another program");
    close(lock);
    EXPECT_EQ(tree(), kTree);
}

TEST_F(BookmarksCommand, endWhereThereIsNoDatabase) {
    program.file(kDatabase, std::string(4096, 'x'));
    for (const Words &words : {Words{"list"}, Words{"add", "x", "y"}, Words{"export", "out.html"}})
        refused(words, 3, "Bookmarks.db");
    EXPECT_FALSE(std::filesystem::exists(program.home() / "out.html"));
}

TEST_F(BookmarksCommand, inTheCloudAreNeitherListedNorChanged) {
    auto properties = device::PropertyList::read(program.home() / "image/Device.plist");
    properties.setFlag("CloudBookmarks", true);
    program.file("image/Device.plist", properties.bytes());
    EXPECT_EQ(program.json(onImage({"list"}), 1).dump(), R"({"bookmarks":[],"status":null,"found":true})");
    refused({"add", "x", "y"}, 1, "Safari");
}

}  // namespace
