#include "host/cli/BookmarkCategory.h"

#include "host/cli/Ending.h"
#include "toolkit/tables/NSOutlineView.h"
#include "toolkit/views/NSTextField.h"

namespace host::cli {

namespace {

bool isOnShow(const Value &view) {
    const auto shown = std::dynamic_pointer_cast<NSView>(view.object());
    return shown && !shown->isHiddenOrHasHiddenAncestor();
}

constexpr const char *kKindNames[] = {"bookmark or folder", "bookmark", "folder"};

}  // namespace

BookmarkCategory::BookmarkCategory(Context &context) : context_(context) {
    PluginSession &plugin = context.plugin();
    context.run([&] { triple_ = plugin.choose(kBookmarksPlace); });
    if (const auto reason = context.counts().reason)
        throw CommandError(kNotOpened, reason->text);
    if (!triple_.viewModel || !tree())
        throw CommandError(kFailed, "");   // told by the guard
}

std::shared_ptr<NSTreeController> BookmarkCategory::tree() const {
    return std::dynamic_pointer_cast<NSTreeController>(triple_.viewModel->valueForKey("outlineTreeController").object());
}

std::vector<BookmarkCategory::Entry> BookmarkCategory::entries() const {
    std::vector<Entry> entries, open;
    const auto push = [&open](const NSTreeNodes &nodes, std::size_t depth) {
        for (auto node = nodes.rbegin(); node != nodes.rend(); ++node)
            open.push_back({*node, depth});
    };
    push(tree()->arrangedObjects()->childNodes(), 0);
    while (!open.empty()) {
        const Entry entry = open.back();
        open.pop_back();
        entries.push_back(entry);
        push(entry.node->childNodes(), entry.depth + 1);
    }
    return entries;
}

NSString BookmarkCategory::status() const { return triple_.viewManager->valueForKey("tableRowInfoString").text(); }

bool BookmarkCategory::search(const std::string &text) {
    const auto box = std::dynamic_pointer_cast<NSTextField>(triple_.viewManager->valueForKey("searchField").object());
    context_.run([&] {
        if (box)
            box->typeText(NSString(text));
        triple_.viewManager->perform("searchBookMark:", {Value(box)});
    });
    const bool panelSaysSo = !triple_.viewManager->valueForKeyPath("noSearchResultViewCtrl.hiddenNoSearchFieldInfo").boolValue();
    return !(panelSaysSo && isOnShow(triple_.viewManager->valueForKey("noSearchField")));
}

bool BookmarkCategory::tellsOfCloud() const {
    if (!isOnShow(triple_.viewManager->valueForKey("disable_iCloudView")))
        return false;
    for (const char *key : {"close_iCloud_title", "close_iCloud_Step_1", "close_iCloud_Step_2", "close_iCloud_Step_3"})
        if (const NSString text = triple_.viewManager->valueForKey(key).text(); !text.isEmpty())
            context_.console().message(text.str());
    return true;
}

NSTreeNodes BookmarkCategory::nodesOf(const std::vector<std::string> &keys, Kind kind) const {
    std::map<std::string, std::shared_ptr<NSTreeNode>> known;
    for (const Entry &entry : entries()) {
        const id &object = entry.node->representedObject();
        if (kind == Kind::any || object->valueForKey("isFolder").boolValue() == (kind == Kind::folder))
            known.emplace(object->valueForKey("pKey").text().str(), entry.node);
    }
    NSTreeNodes nodes;
    for (const std::string &key : keys) {
        const auto found = known.find(key);
        if (found == known.end())
            throw CommandError(kFailed, std::string("no ") + kKindNames[static_cast<int>(kind)] + " has the KEY " + key);
        nodes.push_back(found->second);
    }
    return nodes;
}

std::shared_ptr<NSTreeNode> BookmarkCategory::nodeOf(const std::string &key, Kind kind) const { return nodesOf({key}, kind).front(); }

void BookmarkCategory::select(const NSTreeNodes &nodes) const {
    context_.run([&] {
        if (const auto outline = std::dynamic_pointer_cast<NSOutlineView>(triple_.viewManager->valueForKey("outlineView").object()))
            outline->expandItem(nullptr, true);
        tree()->setSelectedNodes(nodes);
    });
}

void BookmarkCategory::perform(const char *selector, const Value &argument) {
    context_.run([&] { triple_.viewManager->perform(selector, {argument}); });
}

}  // namespace host::cli
