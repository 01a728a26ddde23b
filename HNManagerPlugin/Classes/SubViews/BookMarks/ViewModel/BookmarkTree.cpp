#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/BookmarkTree.h"

#include <algorithm>
#include <bit>
#include <unordered_set>

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/FoldedSearch.h"

namespace bookmarks {

namespace {

void hang(const Node &item, const Node &parent) {
    item->parent = parent;
    parent->children()->addObject(item);
    parent->childrenKey.push_back(item->pKey);
}

constexpr std::int32_t kNowhere = -1;

// The first place of each pKey in a list. A flat table: one look-up is one or two reads near each other.
class KeyIndex {
public:
    explicit KeyIndex(const Nodes &nodes) : nodes_(nodes), slots_(std::bit_ceil(2 * nodes.size() + 2)) {
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            const std::size_t hash = std::hash<NSString>{}(nodes[i]->pKey);
            Slot &slot = slotOf(nodes[i]->pKey, hash);
            if (slot.place == kNowhere)
                slot = {hash, static_cast<std::int32_t>(i)};
            else
                isUnique_ = false;
        }
    }
    [[nodiscard]] std::int32_t find(const NSString &key) { return slotOf(key, std::hash<NSString>{}(key)).place; }
    [[nodiscard]] bool isUnique() const { return isUnique_; }

private:
    struct Slot {
        std::size_t hash = 0;
        std::int32_t place = kNowhere;
    };
    Slot &slotOf(const NSString &key, std::size_t hash) {
        for (std::size_t at = hash;; ++at) {
            Slot &slot = slots_[at & (slots_.size() - 1)];
            if (slot.place == kNowhere || (slot.hash == hash && nodes_[static_cast<std::size_t>(slot.place)]->pKey == key))
                return slot;
        }
    }
    const Nodes &nodes_;
    std::vector<Slot> slots_;
    bool isUnique_ = true;
};

// Folders that hang in one another are out of everybody's reach and would hold one another for ever. `up` is the place of
// each one's parent among them.
void dissolveRings(const Nodes &nested, const std::vector<std::int32_t> &up) {
    std::vector<std::int32_t> round(nested.size(), kNowhere);   // in which walk upward it was met
    for (std::size_t start = 0; start < nested.size(); ++start) {
        auto at = static_cast<std::int32_t>(start);
        while (at != kNowhere && round[static_cast<std::size_t>(at)] == kNowhere) {
            round[static_cast<std::size_t>(at)] = static_cast<std::int32_t>(start);
            at = up[static_cast<std::size_t>(at)];
        }
        if (at != kNowhere && round[static_cast<std::size_t>(at)] == static_cast<std::int32_t>(start))
            nested[static_cast<std::size_t>(at)]->children()->removeAllObjects();
    }
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

Nodes synthesize(const Nodes &flat, bool *keysAreUnique) {
    Nodes roots, nested;
    for (const Node &item : flat)
        (item->parentKey.isNil() ? roots : nested).push_back(item);
    KeyIndex amongNested(nested), amongRoots(roots);
    std::vector<std::int32_t> up(nested.size(), kNowhere);
    for (std::size_t i = 0; i < nested.size(); ++i) {
        const Node &item = nested[i];
        up[i] = amongNested.find(item->parentKey);
        if (up[i] != kNowhere)
            hang(item, nested[static_cast<std::size_t>(up[i])]);
        else if (const std::int32_t root = amongRoots.find(item->parentKey); root != kNowhere)
            hang(item, roots[static_cast<std::size_t>(root)]);
    }
    dissolveRings(nested, up);
    if (keysAreUnique)
        *keysAreUnique = amongNested.isUnique() && amongRoots.isUnique() &&
                         std::ranges::all_of(roots, [&](const Node &root) { return amongNested.find(root->pKey) == kNowhere; });
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
        const Node node = std::static_pointer_cast<HNBookMarkEntity>(level.nodes[level.next++]);
        __builtin_prefetch(level.nodes[level.next].get());
        // A leaf that never got a child needs no look into its list.
        if (visit(node, open.size() - 1) && !(node->isLeaf() && node->childrenKey.empty()) && !node->children()->isEmpty())
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

namespace {

// The nodes above, nearest first; `above` gives the parent or null. What lies above a folder that was followed already
// stands in the list; this also ends a ring.
template <class Above, class Add> void addParents(const Nodes &hits, Above above, Add add) {
    std::unordered_set<const HNBookMarkEntity *> followed;
    for (const Node &hit : hits)
        for (Node parent = above(hit); parent && followed.insert(parent.get()).second; parent = above(parent))
            add(parent);
}

}   // namespace

Nodes search(const NSArray &top, const NSString &text, bool keysAreUnique, const std::function<Node(const HNBookMarkEntity &)> &copyOf) {
    const FoldedSearch wanted(text);
    Nodes hits, found;
    std::unordered_set<NSString> keys;
    const auto add = [&](const Node &node) {
        const bool isNew = keys.insert(node->pKey).second;
        if (isNew)
            found.push_back(copyOf(*node));
        return isNew;
    };
    walk(top, [&](const Node &node, std::size_t level) {
        if ((wanted.isIn(node->name) || (level > 0 && wanted.isIn(node->url))) && add(node))
            hits.push_back(node);
        return true;
    });
    if (keysAreUnique) {
        addParents(hits, [](const Node &node) { return node->parent.lock(); }, add);
        return found;
    }
    Nodes all;
    walk(top, [&](const Node &node, std::size_t) {
        all.push_back(node);
        return true;
    });
    KeyIndex index(all);
    const auto byKey = [&](const Node &node) {
        const std::int32_t place = node->parentKey.isNil() ? kNowhere : index.find(node->parentKey);
        return place == kNowhere ? Node() : all[static_cast<std::size_t>(place)];
    };
    addParents(hits, byKey, add);
    return found;
}

}   // namespace bookmarks
