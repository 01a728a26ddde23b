#include "host/cli/BookmarkText.h"

#include <algorithm>

namespace host::cli {

namespace {

std::string written(const Json &value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace); }

// All of a node but its children's list, which stays open.
std::string opening(const id &object) {
    std::string text = "{";
    for (const char *key : {"pKey", "parentKey", "name", "url"})
        text += "\"" + std::string(key) + "\": " + written(toJson(object->valueForKey(key).text())) + ", ";
    text += std::string("\"isFolder\": ") + (object->valueForKey("isFolder").boolValue() ? "true" : "false");
    return text + ", \"position\": " + std::to_string(object->valueForKey("position").integerValue()) + ", \"children\": [";
}

}  // namespace

std::string bookmarkDocument(const std::vector<BookmarkCategory::Entry> &entries, const NSString &status, bool found) {
    std::string text = "{\"bookmarks\": [";
    std::size_t open = 0;   // nodes whose list of children stands open
    for (const BookmarkCategory::Entry &entry : entries) {
        const bool isFirst = entry.depth >= open;
        for (; open > entry.depth; --open)
            text += "]}";
        text += (isFirst ? "\n" : ",\n") + opening(entry.node->representedObject());
        open = entry.depth + 1;
    }
    for (; open > 0; --open)
        text += "]}";
    return text + "],\n\"status\": " + written(toJson(status)) + ", \"found\": " + (found ? "true" : "false") + "}";
}

void printBookmarks(const std::vector<BookmarkCategory::Entry> &entries, Console &console) {
    constexpr std::size_t kDeepest = 20;   // further down the indent stays
    std::vector<std::vector<std::string>> rows;
    for (const BookmarkCategory::Entry &entry : entries) {
        const id &object = entry.node->representedObject();
        const std::string indent(2 * std::min(entry.depth, kDeepest), ' ');
        const bool isFolder = object->valueForKey("isFolder").boolValue();
        rows.push_back({forPeople(object->valueForKey("pKey").text()),
                        indent + forPeople(object->valueForKey("name").text()) + (isFolder ? "/" : ""),
                        forPeople(object->valueForKey("url").text())});
    }
    console.table(rows);
}

}  // namespace host::cli
