#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/BookmarkFile.h"
#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/HNBookMarkEntity.h"
#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/VisitAddress.h"

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

TEST(BookmarkFile, writesFoldersAndLinksUnescaped) {
    const NSArray nodes{folder("A & <b>", {link("x \"y\"", "http://x?a&b"), folder("empty", {})}), link(nullptr, nullptr)};
    EXPECT_EQ(written(nodes, 2),
              "\n<DT><H3 FOLDED>A & <b></H3>\n<DL><p>"
              "\n<DT><A HREF=\"http://x?a&b\">x \"y\"</A>"
              "\n<DT><H3 FOLDED>empty</H3>\n<DL><p>\n</DL><p>"
              "\n</DL><p>"
              "\n<DT><A HREF=\"\"></A>");
}

TEST(BookmarkFile, theBudgetCountsLinksAndEndsEachListWhereItIsSpent) {
    const NSArray nodes{folder("f", {link("1", "a"), folder("g", {}), link("2", "b")}), folder("h", {})};
    EXPECT_EQ(written(nodes, 1), "\n<DT><H3 FOLDED>f</H3>\n<DL><p>\n<DT><A HREF=\"a\">1</A>\n</DL><p>");
    EXPECT_EQ(written(nodes, 0), "");
    EXPECT_TRUE(written(nodes, 2).ends_with("\n</DL><p>\n<DT><A HREF=\"b\">2</A>\n</DL><p>"));
    EXPECT_TRUE(written(nodes, 3).ends_with("\n<DT><H3 FOLDED>h</H3>\n<DL><p>\n</DL><p>"));
}

TEST(BookmarkFile, aSecondDocumentStandsBehindTheFirst) {
    const std::string path = testing::TempDir() + "bookmarks-twice.html";
    std::filesystem::remove(path);
    EXPECT_TRUE(appendToFile(path, "one"));
    EXPECT_TRUE(appendToFile(path, "two"));
    std::ifstream file(path);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "onetwo");
    std::filesystem::remove(path);
    EXPECT_FALSE(appendToFile("/dev/full", "x"));
    EXPECT_FALSE(appendToFile(testing::TempDir() + "no-such-folder/x", "x"));
}

TEST(BookmarkFile, aFullDiskLeavesNoHalfDocument) {
    const std::string path = testing::TempDir() + "bookmarks-full.html";
    std::filesystem::remove(path);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto old = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{10, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const bool isNewWritten = appendToFile(path, "a document of 24 letters"), isNewThere = std::filesystem::exists(path);
    std::ofstream(path) << "old";
    const bool isOldWritten = appendToFile(path, "a document of 24 letters");
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, old);
    EXPECT_FALSE(isNewWritten);
    EXPECT_FALSE(isNewThere);
    EXPECT_FALSE(isOldWritten);
    EXPECT_EQ(std::filesystem::file_size(path), 3u);
    std::filesystem::remove(path);
}

struct LineRow {
    const char *name;
    NSString (*helper)(const NSString &);
    const char *line;
    const char *result;   // null: absent
};
class Line : public testing::TestWithParam<LineRow> {};

TEST_P(Line, givesItsText) { EXPECT_EQ(GetParam().helper(GetParam().line), NSString(GetParam().result)); }

INSTANTIATE_TEST_SUITE_P(
    Bookmarks, Line,
    testing::Values(LineRow{"folder", folderNameOfLine, "<DT><H3 FOLDED>News</H3>", "News"},
                    LineRow{"folderInAnyCase", folderNameOfLine, "  <dt><h3 folded>News</h3>", "News"},
                    LineRow{"folderIsGreedy", folderNameOfLine, "<DT><H3 FOLDED>a</H3>b</H3>", "a</H3>b"},
                    LineRow{"folderWithoutName", folderNameOfLine, "<DT><H3 FOLDED></H3>", nullptr},
                    LineRow{"folderOfAnotherKind", folderNameOfLine, "<DT><H3>News</H3>", nullptr},
                    LineRow{"folderOverTwoLines", folderNameOfLine, "<DT><H3 FOLDED>a\nb</H3>", nullptr},
                    LineRow{"folderInTheSecondLine", folderNameOfLine, "x</H3>\n<DT><H3 FOLDED>b</H3>", "b"},
                    LineRow{"folderAfterALineSeparator", folderNameOfLine, "<DT><H3 FOLDED>a\xE2\x80\xA8<DT><H3 FOLDED>b</H3>", "b"},
                    LineRow{"url", urlOfLine, "<DT><A HREF=\"http://x\">X</A>", "http://x"},
                    LineRow{"urlRunsToTheLastQuote", urlOfLine, "<DT><A HREF=\"http://x\">a \"b\"</A>", "http://x\">a \"b"},
                    LineRow{"urlEmpty", urlOfLine, "<DT><A HREF=\"\">X</A>", nullptr},
                    LineRow{"urlOfOneQuote", urlOfLine, "\"", nullptr},
                    LineRow{"urlOfThreeQuotes", urlOfLine, "\"\"\"", "\""},
                    LineRow{"name", nameOfLine, "<DT><A HREF=\"http://x\">X & <Y></a>", "X & <Y>"},
                    LineRow{"nameFromTheFirstMark", nameOfLine, "<DT><A HREF=\"http://\">x\">X</A>", "x\">X"},
                    LineRow{"nameEmpty", nameOfLine, "<DT><A HREF=\"http://x\"></A>", nullptr}),
    [](const auto &info) { return std::string(info.param.name); });

struct VisitRow {
    const char *name, *address, *opens;
};
class Visit : public testing::TestWithParam<VisitRow> {};

TEST_P(Visit, opens) { EXPECT_EQ(addressToOpen(GetParam().address), NSString(GetParam().opens)); }

INSTANTIATE_TEST_SUITE_P(
    Bookmarks, Visit,
    testing::Values(VisitRow{"http", "http://example.com", "http://example.com"}, VisitRow{"https", "https://a.b-c.de/", "https://a.b-c.de/"},
                    VisitRow{"ftp", "ftp://files.example.org/pub", "ftp://files.example.org/pub"},
                    VisitRow{"port", "http://example.com:8080/x?y=1#z", "http://example.com:8080/x?y=1#z"},
                    VisitRow{"portOfLetters", "http://example.com:80a/", "http://http://example.com:80a/"},
                    VisitRow{"www", "www.example.com", "www.example.com"}, VisitRow{"wwwAnyCharacter", "wwwxexample.com", "wwwxexample.com"},
                    VisitRow{"wwwAlone", "www.com", "http://www.com"},
                    VisitRow{"noScheme", "example.com", "http://example.com"},
                    VisitRow{"fourLetters", "http://example.info/", "http://example.info/"},
                    VisitRow{"fiveLetters", "http://example.press/", "http://http://example.press/"},
                    VisitRow{"sixLetters", "https://glass.museum/", "http://https://glass.museum/"},
                    VisitRow{"oneLetter", "http://a.b", "http://http://a.b"}, VisitRow{"noDot", "http://localhost/", "http://http://localhost/"},
                    VisitRow{"upperScheme", "HTTP://example.com", "http://HTTP://example.com"},
                    VisitRow{"blankInside", "http://example.com/a b", "http://http://example.com/a b"},
                    VisitRow{"umlautInPath", "http://example.com/\xC3\xA4", "http://http://example.com/\xC3\xA4"},
                    VisitRow{"lineBreakBehind", "http://example.com\n", "http://http://example.com\n"},
                    VisitRow{"javascript", "javascript:alert(1)", "http://javascript:alert(1)"},
                    VisitRow{"file", "file:///etc/passwd", "http://file:///etc/passwd"},
                    VisitRow{"shell", "$(reboot);'", "http://$(reboot);'"}, VisitRow{"empty", "", "http://"}, VisitRow{"absent", nullptr, "http://"}),
    [](const auto &info) { return std::string(info.param.name); });

}   // namespace
