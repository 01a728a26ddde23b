// Any bytes as a bookmark database, and as lines of a bookmark file: they may fail, never crash or hang.
#include <cstddef>
#include <cstdint>
#include <exception>

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/BookmarkFile.h"
#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/BookmarkTree.h"
#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/VisitAddress.h"
#include "device/bookmarks/BookmarkReader.h"
#include "device/bookmarks/BookmarkWriter.h"

using namespace device;

namespace {

void readLines(std::string_view text) {
    const NSString line(text);
    (void)::bookmarks::folderNameOfLine(line);
    (void)::bookmarks::urlOfLine(line);
    (void)::bookmarks::nameOfLine(line);
    (void)::bookmarks::addressToOpen(line);
}

void buildTree(const BookmarkList &list) {
    ::bookmarks::Nodes nodes;
    for (const auto &record : list) {
        auto node = make<HNBookMarkEntity>();
        node->pKey = record->pKey, node->parentKey = record->parentKey;
        node->name = record->markName, node->url = record->url;
        node->isFolder = record->isFolder;
        nodes.push_back(std::move(node));
    }
    std::string html;
    std::int64_t budget = 1000;
    ::bookmarks::appendNodes(html, NSArray::of(::bookmarks::synthesize(nodes)), budget);
}

void change(sqlite::Database &database, const BookmarkList &list) {
    sqlite::Transaction all(database);
    device::bookmarks::BookmarkWriter writer(database, 0);
    const std::int64_t folder = writer.add(device::bookmarks::kRoot, device::bookmarks::Type::folder, "f", "");
    writer.add(folder, device::bookmarks::Type::bookmark, "b", "u");
    if (!list.empty()) {
        const std::int64_t row = list.front()->pKey.integerValue();
        writer.move(row, folder);
        writer.move(folder, row);
        writer.remove(row);
    }
    writer.forgetRemovedFolders();
    all.commit();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    readLines(bytes);
    try {
        sqlite::Database database = sqlite::Database::fromBytes(bytes);
        const BookmarkList list = device::bookmarks::readBookmarks(database);
        buildTree(list);
        change(database, list);
    } catch (const std::exception &) {
    }
    return 0;
}
