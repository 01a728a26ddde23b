#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/BookmarkTree.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/FoldedSearch.h"

namespace bookmarks {

namespace {

void hang(const Node &item, const Node &parent) {
    item->parent = parent;
    parent->children()->addObject(item);
    parent->childrenKey.push_back(item->pKey);
}

using Index = std::unordered_map<NSString, const Node *>;

// The first of each pKey.
Index indexOf(const Nodes &nodes) {
    Index index;
    index.reserve(nodes.size());
    for (const Node &node : nodes)
        index.emplace(node->pKey, &node);
    return index;
}

const Node *find(const Index &index, const NSString &key) {
    const auto found = index.find(key);
    return found == index.end() ? nullptr : found->second;
}

// Folders that hang in one another are out of everybody's reach and would hold one another for ever.
void dissolveRings(const Nodes &roots, const Nodes &nested, std::size_t hung) {
    std::size_t below = 0;
    walk(NSArray::of(roots), [&](const Node &, std::size_t level) {
        below += level > 0 ? 1 : 0;
        return true;
    });
    if (below == hung)
        return;
    std::unordered_set<const HNBookMarkEntity *> reached;
    walk(NSArray::of(roots), [&](const Node &node, std::size_t) { return reached.insert(node.get()).second; });
    for (const Node &item : nested)
        if (!reached.contains(item.get()))
            item->children()->removeAllObjects();
}

}   // namespace

Nodes nodesOf(const NSArray &objects) {
    Nodes nodes;
    nodes.reserve(objects.count());
    for (const id &object : objects)
        if (auto node = std::dynamic_pointer_cast<HNBookMarkEntity>(object))
            nodes.push_back(std::move(node));
    return nodes;
}

bool addLeafToFolder(const Node &item, const Nodes &folder) {
    const auto found = std::ranges::find(folder, item->parentKey, [](const Node &entry) { return entry->pKey; });
    if (found == folder.end())
        return false;
    hang(item, *found);
    return true;
}

Nodes synthesize(const Nodes &flat) {
    Nodes roots, nested;
    for (const Node &item : flat)
        (item->parentKey.isNil() ? roots : nested).push_back(item);
    const Index amongNested = indexOf(nested), amongRoots = indexOf(roots);
    std::size_t hung = 0;
    for (const Node &item : nested) {
        const Node *parent = find(amongNested, item->parentKey);
        if (!parent)
            parent = find(amongRoots, item->parentKey);
        if (!parent)
            continue;
        hang(item, *parent);
        ++hung;
    }
    dissolveRings(roots, nested, hung);
    return roots;
}

// ---------------------------------------------------------------- walks

void walk(const NSArray &top, const std::function<bool(const Node &node, std::size_t level)> &visit) {
    struct Level {
        NSArray nodes;
        std::size_t next;
    };
    std::vector<Level> open;
    open.push_back({top, 0});
    while (!open.empty()) {
        Level &level = open.back();
        if (level.next == level.nodes.count()) {
            open.pop_back();
            continue;
        }
        const id &object = level.nodes[level.next++];
        const Node node = std::static_pointer_cast<HNBookMarkEntity>(object);
        if (visit(node, open.size() - 1) && !node->children()->isEmpty())
            open.push_back({node->children()->snapshot(), 0});
    }
}

std::int64_t leavesBelow(const NSArray &children) {
    std::int64_t count = 0;
    walk(children, [&](const Node &node, std::size_t) {
        count += node->isLeaf() ? 1 : 0;
        return !node->isLeaf();
    });
    return count;
}

std::int64_t nodesBelow(const NSArray &children) {
    std::int64_t count = 0;
    walk(children, [&](const Node &, std::size_t) { return ++count > 0; });
    return count;
}

// ---------------------------------------------------------------- search

Nodes search(const NSArray &top, const NSString &text, const std::function<Node(const HNBookMarkEntity &)> &copyOf) {
    const FoldedSearch wanted(text);
    Nodes all, found;
    std::unordered_set<NSString> keys;
    const auto add = [&](const HNBookMarkEntity &node) {
        if (keys.insert(node.pKey).second)
            found.push_back(copyOf(node));
    };
    walk(top, [&](const Node &node, std::size_t level) {
        all.push_back(node);
        if (wanted.isIn(node->name) || (level > 0 && wanted.isIn(node->url)))
            add(*node);
        return true;
    });
    const bool needsParents = std::ranges::any_of(found, [](const Node &hit) { return !hit->parentKey.isNil(); });
    if (!needsParents)
        return found;
    const Index index = indexOf(all);
    std::unordered_set<const HNBookMarkEntity *> followed;
    for (std::size_t i = 0, hits = found.size(); i < hits; ++i) {
        // What lies above a folder that was followed already stands in the list; this also ends a ring.
        NSString key = found[i]->parentKey;
        while (!key.isNil()) {
            const Node *parent = find(index, key);
            if (!parent || !followed.insert(parent->get()).second)
                break;
            add(**parent);
            key = (*parent)->parentKey;
        }
    }
    return found;
}

}   // namespace bookmarks
