#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <map>

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
    const std::map<std::string, NSString (*)(const NSString &)> readers = {{"folder", folderNameOfLine}, {"url", urlOfLine}, {"name", nameOfLine}};
    for (const Case &row : casesOf("cases/bookmarkLines.txt", 3))
        EXPECT_EQ(readers.at(row.parts[0])(row.parts[1]), row.parts[2] == "-" ? NSString() : NSString(row.parts[2])) << row.name;
}

TEST(Visit, opensWhatTheBrowserCanTake) {
    for (const Case &row : casesOf("cases/visitedAddresses.txt"))
        EXPECT_EQ(addressToOpen(row.parts[0]), NSString(row.parts[1])) << row.name;
    EXPECT_EQ(addressToOpen(nullptr), NSString("http://"));
}

}   // namespace
