#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/BookmarkFile.h"
#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/HNBookMarkEntity.h"
#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/VisitAddress.h"
#include "tests/support/Cases.h"
#include "tests/support/TempFolder.h"

using namespace bookmarks;

namespace {

std::shared_ptr<HNBookMarkEntity> link(const NSString &name, const NSString &url) {
    auto made = make<HNBookMarkEntity>();
    made->name = name, made->url = url;
    made->setIsLeaf(true);
    return made;
}

std::shared_ptr<HNBookMarkEntity> folder(const NSString &name, std::initializer_list<id> children) {
    auto made = make<HNBookMarkEntity>();
    made->name = name, made->isFolder = true;
    made->children()->setArray(NSArray(children));
    return made;
}

std::string written(const NSArray &nodes, std::int64_t budget) {
    std::string html;
    appendNodes(html, nodes, budget);
    return html;
}

TEST(BookmarkFile, theBudgetCountsLinksAndEndsEachListWhereItIsSpent) {
    const NSArray nodes{folder("f", {link("1", "a"), folder("g", {}), link("2", "b")}), folder("h", {})};
    EXPECT_EQ(written(nodes, 1), "\n<DT><H3 FOLDED>f</H3>\n<DL><p>\n<DT><A HREF=\"a\">1</A>\n</DL><p>");
    EXPECT_EQ(written(nodes, 0), "");
    EXPECT_TRUE(written(nodes, 2).ends_with("\n</DL><p>\n<DT><A HREF=\"b\">2</A>\n</DL><p>"));
    EXPECT_EQ(written(nodes, -1), written(nodes, 3));   // only nought stops
    EXPECT_TRUE(written(nodes, 3).ends_with("\n<DT><H3 FOLDED>h</H3>\n<DL><p>\n</DL><p>"));
}

TEST(BookmarkFile, aFullDiskLeavesNoHalfDocument) {
    const TempFolder folder;
    const std::string path = folder.path() / "full.html";
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto old = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{10, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const std::error_code why = appendToFile(path, "a document of 24 letters");
    const bool isNewThere = std::filesystem::exists(path);
    writeFile(path, "old");
    const bool isOldWritten = !appendToFile(path, "a document of 24 letters");
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, old);
    EXPECT_EQ(why, std::errc::file_too_large);
    EXPECT_FALSE(isNewThere);
    EXPECT_FALSE(isOldWritten);
    EXPECT_EQ(readFile(path), "old");
}

TEST(BookmarkLine, givesItsText) {
    struct {
        const char *name;
        NSString (*helper)(const NSString &);
        const char *line, *result;   // null: absent
    } rows[] = {
        {"folder", folderNameOfLine, "<DT><H3 FOLDED>News</H3>", "News"},
        {"folderInAnyCase", folderNameOfLine, "  <dt><h3 folded>News</h3>", "News"},
        {"folderIsGreedy", folderNameOfLine, "<DT><H3 FOLDED>a</H3>b</H3>", "a</H3>b"},
        {"folderWithoutName", folderNameOfLine, "<DT><H3 FOLDED></H3>", nullptr},
        {"folderOfAnotherKind", folderNameOfLine, "<DT><H3>News</H3>", nullptr},
        {"folderOverTwoLines", folderNameOfLine, "<DT><H3 FOLDED>a\nb</H3>", nullptr},
        {"folderInTheSecondLine", folderNameOfLine, "x</H3>\n<DT><H3 FOLDED>b</H3>", "b"},
        {"folderAfterALineSeparator", folderNameOfLine, "<DT><H3 FOLDED>a\xE2\x80\xA8<DT><H3 FOLDED>b</H3>", "b"},
        {"url", urlOfLine, "<DT><A HREF=\"http://x\">X</A>", "http://x"},
        {"urlRunsToTheLastQuote", urlOfLine, "<DT><A HREF=\"http://x\">a \"b\"</A>", "http://x\">a \"b"},
        {"urlEmpty", urlOfLine, "<DT><A HREF=\"\">X</A>", nullptr},
        {"urlOfOneQuote", urlOfLine, "\"", nullptr},
        {"urlOfThreeQuotes", urlOfLine, "\"\"\"", "\""},
        {"name", nameOfLine, "<DT><A HREF=\"http://x\">X & <Y></a>", "X & <Y>"},
        {"nameFromTheFirstMark", nameOfLine, "<DT><A HREF=\"http://\">x\">X</A>", "x\">X"},
        {"nameEmpty", nameOfLine, "<DT><A HREF=\"http://x\"></A>", nullptr}};
    for (const auto &[name, helper, line, result] : rows)
        EXPECT_EQ(helper(line), NSString(result)) << name;
}

TEST(Visit, opensWhatTheBrowserCanTake) {
    for (const Case &row : casesOf("cases/visitedAddresses.txt"))
        EXPECT_EQ(addressToOpen(row.parts[0]), NSString(row.parts[1])) << row.name;
    EXPECT_EQ(addressToOpen(nullptr), NSString("http://"));
}

}   // namespace
