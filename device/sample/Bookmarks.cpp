#include "device/sample/Bookmarks.h"

#include <map>

#include "device/bookmarks/BookmarkWriter.h"
#include "device/sample/Sample.h"

namespace device::sample {

namespace {

using namespace device::bookmarks;

struct Entry {
    const char *folder;   // path of names; empty for the top level
    const char *name;
    const char *url;   // null for a folder
};
constexpr Entry kEntries[] = {
    {"", "Favorites", nullptr},
    {"Favorites", "Example Domain", "https://example.com/"},
    {"Favorites", "Weather in Reykjavík", "https://weather.example.com/reykjavik"},
    {"Favorites", "Train times", "https://trains.example.com/departures?from=Bern&to=Zürich"},
    {"", "Recipes", nullptr},
    {"Recipes", "Soups", nullptr},
    {"Recipes/Soups", "Onion soup", "https://recipes.example.com/onion-soup"},
    {"Recipes/Soups", "味噌汁", "https://recipes.example.com/%E5%91%B3%E5%99%8C%E6%B1%81"},
    {"Recipes", "Bread", nullptr},
    {"Recipes/Bread", "Sourdough, day by day", "https://recipes.example.com/sourdough"},
    {"Recipes", "Cakes", nullptr},
    {"Recipes", "Ten \"quick\" dinners & more", "http://recipes.example.com/quick?n=10&more=1"},
    {"", "Travel", nullptr},
    {"Travel", "Ferry to Naxos", "www.ferries.example.com/naxos"},
    {"Travel", "Museum of glass", "https://glass.museum/"},
    {"Travel", "Карта метро", "https://maps.example.com/metro"},
    {"", "Library catalogue", "https://library.example.com/search"},
    {"", "Football results", "https://results.example.com/"},
    {"", "Notes without a scheme", "notes.example.com/today"},
    {"", "Old files", "ftp://files.example.org/pub/"},
};

}  // namespace

void makeEmptyBookmarks(ImageFolder &image) {
    const WriterLock lock = image.lockForWriting();
    image.createDatabase(lock, kBookmarks, kNewBookmarks);
}

void addBookmarks(ImageFolder &image) {
    const WriterLock lock = image.lockForWriting();
    sqlite::Database database = image.openForWriting(lock, kBookmarks);
    if (database.integer("SELECT count(*) FROM bookmarks WHERE id <> 0") > 0)
        return;
    sqlite::Transaction all(database);
    constexpr std::int64_t kMade = 1'678'307'200;   // a fixed day in 2023: the same image each time
    BookmarkWriter writer(database, kMade);
    std::map<std::string, std::int64_t> folders{{"", kRoot}};
    for (const Entry &entry : kEntries) {
        const std::string path = std::string(entry.folder) + (*entry.folder ? "/" : "") + entry.name;
        const std::int64_t parent = folders.at(entry.folder);
        if (entry.url)
            writer.add(parent, Type::bookmark, entry.name, entry.url);
        else
            folders[path] = writer.add(parent, Type::folder, entry.name, "");
    }
    all.commit();
}

namespace {

const bool registered = registerKind({"Bookmarks", makeEmptyBookmarks, addBookmarks});

}  // namespace

}  // namespace device::sample
