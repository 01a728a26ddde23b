#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include "tests/host/Program.h"

using testhost::Outcome;
using testhost::Program;
using nlohmann::ordered_json;

namespace {

// 1 Dev(2 One, 4 Inner(5 deep)), 3 top; made by the commands themselves.
std::string imageWithTree(const Program &program) {
    const std::vector<std::vector<std::string>> steps = {{"folder", "Dev"},
                                                         {"add", "One", "http://one.example", "--in", "1"},
                                                         {"add", "top", "javascript:x"},
                                                         {"folder", "Inner", "--in", "1"},
                                                         {"add", "deep", "http://deep.example/NEEDLE", "--in", "4"}};
    EXPECT_EQ(program.run({"device", "create", "image", "--name", "D"}).status, 0);
    for (const auto &step : steps) {
        std::vector<std::string> words = {"--device", "image", "bookmarks"};
        words.insert(words.end(), step.begin(), step.end());
        EXPECT_EQ(program.run(words).status, 0);
    }
    return "image";
}

std::string below(const ordered_json &nodes) {
    std::string text;
    for (const auto &node : nodes) {
        text += (text.empty() ? "" : " ") + node["name"].get<std::string>();
        if (!node["children"].empty())
            text += "(" + below(node["children"]) + ")";
    }
    return text;
}
// "Dev(One Inner(deep)) top".
std::string tree(const Program &program) { return below(program.json({"bookmarks", "list", "--device", "image"})["bookmarks"]); }

constexpr const char *kTree = "Dev(One Inner(deep)) top";

// Runs with these words on the image; what a refusal must not have changed is looked at by `untouched`.
Outcome run(const Program &program, std::vector<std::string> words, std::vector<std::string> options = {}) {
    std::vector<std::string> all = {"--device", "image"};
    all.insert(all.end(), options.begin(), options.end());
    all.emplace_back("bookmarks");
    all.insert(all.end(), words.begin(), words.end());
    return program.run(all);
}

// ---------------------------------------------------------------- list

TEST(BookmarksList, isTheTreeWithEveryField) {
    const Program program;
    const std::string image = imageWithTree(program);
    EXPECT_EQ(program.json({"bookmarks", "list", "--device", image}).dump(),
              R"({"bookmarks":[{"pKey":"1","parentKey":null,"name":"Dev","url":"","isFolder":true,"position":0,"children":[)"
              R"({"pKey":"2","parentKey":"1","name":"One","url":"http://one.example","isFolder":false,"position":0,"children":[]},)"
              R"({"pKey":"4","parentKey":"1","name":"Inner","url":"","isFolder":true,"position":1,"children":[)"
              R"({"pKey":"5","parentKey":"4","name":"deep","url":"http://deep.example/NEEDLE","isFolder":false,"position":0,"children":[]}]}]},)"
              R"({"pKey":"3","parentKey":null,"name":"top","url":"javascript:x","isFolder":false,"position":1,"children":[]}],)"
              R"("status":"3 items","found":true})");
    const Outcome people = run(program, {"list"});
    EXPECT_EQ(people.out, "1  Dev/\n2    One     http://one.example\n4    Inner/\n5      deep  http://deep.example/NEEDLE\n3  top       javascript:x\n");
    EXPECT_EQ(people.err, "hnmanager: 3 items\n");
}

TEST(BookmarksList, searchKeepsTheFoldersOfAHitAndWithoutAHitTheOldRows) {
    const Program program;
    const std::string image = imageWithTree(program);
    const auto searched = [&](const char *text) {
        const auto list = program.json({"bookmarks", "list", "--device", image, "--search", text});
        return below(list["bookmarks"]) + (list["found"] == true ? "" : " not found");
    };
    EXPECT_EQ(searched("needle"), "Dev(Inner(deep))");
    EXPECT_EQ(searched("DEV"), "Dev");
    EXPECT_EQ(searched("javascript"), std::string(kTree) + " not found");   // of the top level only names count
    const Outcome none = run(program, {"list", "--search", "javascript"});
    EXPECT_EQ(none.status, 0);
    EXPECT_NE(none.err.find("nothing matches javascript"), std::string::npos) << none.err;
}

TEST(BookmarksList, isReadFromADatabaseOfAnotherMaker) {
    const Program program;
    EXPECT_EQ(program.run({"device", "create", "image", "--name", "D"}).status, 0);
    program.file("image/HomeDomain/Library/Safari/Bookmarks.db", testhost::readFile(HN_SAMPLES_DIR "/bookmarks/safari.1.Bookmarks.db"));
    EXPECT_EQ(tree(program), "BookmarksBar(Dev Example Bookmark Corrupt) com.apple.ReadingList(RL Unread RL Read)");
    EXPECT_EQ(run(program, {"edit", "4", "N", "http://n"}).status, 0);
    EXPECT_EQ(run(program, {"add", "new", "http://new", "--in", "3"}).status, 0);
    EXPECT_EQ(run(program, {"move", "8", "--to", "3"}).status, 0);
    EXPECT_EQ(run(program, {"delete", "2"}, {"--yes"}).status, 0);
    EXPECT_EQ(tree(program), "BookmarksBar(Dev(new Corrupt) N)");
    EXPECT_EQ(program.json({"--device", "image", "bookmarks", "export", "out.html"})["count"], 3);
}

// ---------------------------------------------------------------- one item

TEST(BookmarksAdd, goesIntoEachFolderAndBesideEachBookmark) {
    const Program program;
    imageWithTree(program);
    EXPECT_EQ(program.json({"bookmarks", "add", "new", "any text", "--in", "4", "2", "3", "--device", "image"}).dump(), R"({"saved":true})");
    EXPECT_EQ(tree(program), "Dev(One Inner(deep new) new) new top");
}

TEST(BookmarksChange, editsABookmarkAndRenamesAFolder) {
    const Program program;
    imageWithTree(program);
    EXPECT_EQ(program.json({"bookmarks", "edit", "2", "A \"<b>\"\n", "ftp://x", "--device", "image"}).dump(), R"({"saved":true})");
    EXPECT_EQ(program.json({"bookmarks", "rename", "4", "Renamed", "--device", "image"}).dump(), R"({"saved":true})");
    EXPECT_EQ(tree(program), "Dev(A \"<b>\"\n Renamed(deep)) top");
}

// ---------------------------------------------------------------- several items

TEST(BookmarksMove, countsWhatTheListSaysAfterwards) {
    const Program program;
    imageWithTree(program);
    EXPECT_EQ(program.json({"bookmarks", "move", "2", "3", "--to", "4", "--device", "image"}).dump(),
              R"({"succeeded":2,"failed":0,"text":"The bookmarks were moved."})");
    EXPECT_EQ(tree(program), "Dev(Inner(deep One top))");
}

TEST(BookmarksDelete, asksFirstAndCountsEveryKeyThatGoes) {
    const Program program;
    imageWithTree(program);
    const Outcome asked = run(program, {"delete", "1"});
    EXPECT_EQ(asked.status, 1);
    EXPECT_NE(asked.err.find("needs --yes"), std::string::npos) << asked.err;
    EXPECT_EQ(tree(program), kTree);
    EXPECT_EQ(program.json({"--yes", "bookmarks", "delete", "1", "--device", "image"}).dump(),
              R"({"succeeded":4,"failed":0,"text":"4 items were deleted."})");
    EXPECT_EQ(tree(program), "top");
}

// ---------------------------------------------------------------- export

TEST(BookmarksExport, writesTheWholeTreeOnceAndReplacesOnlyWhenTold) {
    const Program program;
    imageWithTree(program);
    EXPECT_EQ(program.json({"bookmarks", "export", "out.html", "--device", "image"}).dump(), R"({"count":3,"text":"The bookmarks were exported."})");
    const std::string whole = testhost::readFile(program.home() / "out.html");
    EXPECT_TRUE(whole.starts_with("<!DOCTYPE NETSCAPE-Bookmark-file-1>\n<HTML><META"));
    EXPECT_TRUE(whole.ends_with("\n<DT><H3 FOLDED>Dev</H3>\n<DL><p>\n<DT><A HREF=\"http://one.example\">One</A>\n<DT><H3 FOLDED>Inner</H3>\n<DL><p>"
                                "\n<DT><A HREF=\"http://deep.example/NEEDLE\">deep</A>\n</DL><p>\n</DL><p>"
                                "\n<DT><A HREF=\"javascript:x\">top</A>\n</HTML>"));
    const Outcome refused = run(program, {"export", "out.html"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.err.find("exists already"), std::string::npos) << refused.err;
    program.file("out.html", "an old file");
    EXPECT_EQ(run(program, {"export", "out.html"}, {"--replace"}).status, 0);
    EXPECT_EQ(testhost::readFile(program.home() / "out.html"), whole);   // no second document behind an old one
    EXPECT_EQ(run(program, {"export", "image"}, {"--replace"}).status, 1);
}

TEST(BookmarksExport, aNameOfAnotherKindOrInNoFolderIsRefused) {
    const Program program;
    imageWithTree(program);
    for (const char *file : {"out.txt", "out", "nowhere/out.html"})
        EXPECT_EQ(run(program, {"export", file}).status, 1) << file;
    EXPECT_FALSE(std::filesystem::exists(program.home() / "out.txt.html"));
    EXPECT_FALSE(std::filesystem::exists(program.home() / "nowhere"));
}

// ---------------------------------------------------------------- refusals

struct Refusal {
    const char *name;
    std::vector<std::string> words;
    int status;
    const char *told;
};
class BookmarksRefusal : public testing::TestWithParam<Refusal> {};

TEST_P(BookmarksRefusal, isToldAndChangesNothing) {
    const Program program;
    imageWithTree(program);
    const std::string before = testhost::readFile(program.home() / "image/HomeDomain/Library/Safari/Bookmarks.db");
    const Outcome outcome = run(program, GetParam().words, {"--yes"});
    EXPECT_EQ(outcome.status, GetParam().status);
    EXPECT_NE(outcome.err.find(GetParam().told), std::string::npos) << outcome.err;
    EXPECT_EQ(testhost::readFile(program.home() / "image/HomeDomain/Library/Safari/Bookmarks.db"), before);
}

INSTANTIATE_TEST_SUITE_P(
    Words, BookmarksRefusal,
    testing::Values(Refusal{"addWithoutAText", {"add", "  ", "x"}, 1, "nothing was saved: a text is missing"},
                    Refusal{"addInNothing", {"add", "x", "y", "--in", "1", "99"}, 1, "no bookmark or folder has the KEY 99"},
                    Refusal{"folderInNothing", {"folder", "x", "--in", "99"}, 1, "no bookmark or folder has the KEY 99"},
                    Refusal{"editOfAFolder", {"edit", "1", "a", "b"}, 1, "no bookmark has the KEY 1"},
                    Refusal{"renameOfABookmark", {"rename", "2", "a"}, 1, "no folder has the KEY 2"},
                    Refusal{"moveOfAFolder", {"move", "2", "4", "--to", "1"}, 1, "no bookmark has the KEY 4"},
                    Refusal{"moveToABookmark", {"move", "2", "--to", "3"}, 1, "no folder has the KEY 3"},
                    Refusal{"deleteOfOneThatIsNotThere", {"delete", "2", "99"}, 1, "no bookmark or folder has the KEY 99"},
                    Refusal{"addWithoutAnAddress", {"add", "x"}, 2, "URL is required"},
                    Refusal{"moveToNowhere", {"move", "2"}, 2, "--to is required"},
                    Refusal{"deleteOfNothing", {"delete"}, 2, "KEY is required"},
                    Refusal{"noCommand", {"paint"}, 2, "subcommand is required"}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(BookmarksOfADevice, thatAnotherProgramWritesAreLeftAlone) {
    const Program program;
    imageWithTree(program);
    const int lock = open((program.home() / "image/.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(flock(lock, LOCK_EX | LOCK_NB), 0);
    for (const std::vector<std::string> &words : {std::vector<std::string>{"add", "x", "y"}, {"edit", "2", "x", "y"}, {"move", "2", "--to", "4"}, {"delete", "2"}}) {
        const Outcome outcome = run(program, words, {"--yes"});
        EXPECT_EQ(outcome.status, 3) << words[0];
        EXPECT_NE(outcome.err.find("being written by another program"), std::string::npos) << outcome.err;
    }
    close(lock);
    EXPECT_EQ(tree(program), kTree);
}

TEST(BookmarksOfADevice, thatAreNoDatabaseCannotBeOpened) {
    const Program program;
    imageWithTree(program);
    program.file("image/HomeDomain/Library/Safari/Bookmarks.db", std::string(4096, 'x'));
    for (const std::vector<std::string> &words : {std::vector<std::string>{"list"}, {"add", "x", "y"}, {"export", "out.html"}}) {
        const Outcome outcome = run(program, words);
        EXPECT_EQ(outcome.status, 3) << words[0];
        EXPECT_NE(outcome.err.find("Bookmarks.db"), std::string::npos) << outcome.err;
    }
    EXPECT_FALSE(std::filesystem::exists(program.home() / "out.html"));
}

TEST(BookmarksOfABackup, areReadAndNeverChanged) {
    const Program program;
    const std::string backup = program.smallBackup("backup"), before = testhost::pictureOf(backup);
    EXPECT_EQ(program.json({"bookmarks", "list", "--device", backup})["bookmarks"].size(), 0u);
    const Outcome outcome = program.run({"bookmarks", "add", "x", "y", "--device", backup});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.err.find("backup"), std::string::npos) << outcome.err;
    EXPECT_EQ(testhost::pictureOf(backup), before);
}

TEST(BookmarksInTheCloud, areNeitherListedNorChanged) {
    const Program program;
    imageWithTree(program);
    std::string properties = testhost::readFile(program.home() / "image/Device.plist");
    const std::string off = "<key>CloudBookmarks</key>\n\t<false/>";
    ASSERT_NE(properties.find(off), std::string::npos) << properties;
    program.file("image/Device.plist", properties.replace(properties.find(off), off.size(), "<key>CloudBookmarks</key>\n\t<true/>"));
    EXPECT_EQ(program.json({"bookmarks", "list", "--device", "image"}, 1).dump(), R"({"bookmarks":[],"status":null,"found":true})");
    const Outcome outcome = run(program, {"add", "x", "y"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.err.find("Safari"), std::string::npos) << outcome.err;
}

}  // namespace
