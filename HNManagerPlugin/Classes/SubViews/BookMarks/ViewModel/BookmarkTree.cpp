#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/BookmarkTree.h"

#include <algorithm>
#include <bit>
#include <unordered_set>

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/FoldedSearch.h"

namespace bookmarks {

namespace {

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

// The children of each node of a list, hung in all at once.
class Children {
public:
    explicit Children(std::size_t nodes) : below_(nodes) {}
    void add(std::int32_t parent, const Node &item) { below_[static_cast<std::size_t>(parent)].push_back(item); }
    void hangIn(const Nodes &nodes) {
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            if (below_[i].empty())
                continue;
            HNBookMarkEntity &parent = *nodes[i];
            for (const id &item : below_[i]) {
                auto &child = static_cast<HNBookMarkEntity &>(*item);
                child.parent = nodes[i];
                parent.childrenKey.push_back(child.pKey);
            }
            parent.children()->addObjectsFromArray(NSArray(std::move(below_[i])));
        }
    }

private:
    std::vector<NSArray::Items> below_;
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
    item->parent = *found;
    (*found)->children()->addObject(item);
    (*found)->childrenKey.push_back(item->pKey);
    return true;
}

Nodes synthesize(const Nodes &flat, bool *keysAreUnique) {
    Nodes roots, nested;
    for (const Node &item : flat)
        (item->parentKey.isNil() ? roots : nested).push_back(item);
    KeyIndex amongNested(nested), amongRoots(roots);
    std::vector<std::int32_t> up(nested.size(), kNowhere);
    Children ofNested(nested.size()), ofRoots(roots.size());
    for (std::size_t i = 0; i < nested.size(); ++i) {
        const Node &item = nested[i];
        up[i] = amongNested.find(item->parentKey);
        if (up[i] != kNowhere)
            ofNested.add(up[i], item);
        else if (const std::int32_t root = amongRoots.find(item->parentKey); root != kNowhere)
            ofRoots.add(root, item);
    }
    ofNested.hangIn(nested);
    ofRoots.hangIn(roots);
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
        if (visit(node, open.size() - 1) && node->hasChildren())
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

using CopyOf = std::function<Node(const HNBookMarkEntity &)>;

// The search of a tree whose keys all differ: places take the part of keys.
class SearchByPlace {
public:
    SearchByPlace(const FoldedSearch &wanted, const CopyOf &copyOf) : wanted_(wanted), copyOf_(copyOf) {}

    Hits run(const NSArray &top) {
        findHits(top);
        addFoldersAbove();
        hangAll();
        return std::move(hits_);
    }

private:
    struct Folder {   // a node with children
        const HNBookMarkEntity *node;
        NSArray children;
        std::int32_t up;          // its own folder
        Node copy = nullptr;      // where it stands among the hits
        NSArray::Items below = {};   // what hangs in the copy
        bool isFollowed = false;
    };
    struct Level {
        std::int32_t folder;
        NSArray nodes;
        std::size_t next = 0;
    };

    void addCopy(Node copy, std::int32_t up) {
        hits_.found.push_back(std::move(copy));
        ups_.push_back(up);
    }

    // A walk spends most of its time waiting for memory: a node, then its texts, are asked for a little before their turn.
    static void fetchAhead(const NSArray &nodes, std::size_t at) {
        constexpr std::size_t kNodes = 4, kTexts = 2;
        if (const NSObject *later = nodes[at + kNodes].get()) {
            __builtin_prefetch(later);
            __builtin_prefetch(&static_cast<const HNBookMarkEntity *>(later)->url);
        }
        if (const auto *soon = static_cast<const HNBookMarkEntity *>(nodes[at + kTexts].get())) {
            soon->name.prefetch();
            soon->url.prefetch();
        }
    }

    void findHits(const NSArray &top) {
        std::vector<Level> open;
        open.push_back({kNowhere, top});
        while (!open.empty()) {
            Level &level = open.back();
            if (level.next == level.nodes.count()) {
                open.pop_back();
                continue;
            }
            const auto &node = static_cast<const HNBookMarkEntity &>(*level.nodes[level.next]);
            fetchAhead(level.nodes, level.next++);
            const std::int32_t up = level.folder;
            const bool isHit = wanted_.isIn(node.name) || (up != kNowhere && wanted_.isIn(node.url));
            if (isHit)
                addCopy(copyOf_(node), up);
            if (!node.hasChildren())
                continue;
            folders_.push_back({&node, node.children()->snapshot(), up, isHit ? hits_.found.back() : nullptr});
            open.push_back({static_cast<std::int32_t>(folders_.size() - 1), folders_.back().children});
        }
    }

    void addFoldersAbove() {
        for (std::size_t hit = 0, count = hits_.found.size(); hit < count; ++hit)
            for (std::int32_t up = ups_[hit]; up != kNowhere && !folderAt(up).isFollowed; up = folderAt(up).up) {
                Folder &folder = folderAt(up);
                folder.isFollowed = true;
                if (folder.copy)
                    continue;
                folder.copy = copyOf_(*folder.node);
                addCopy(folder.copy, folder.up);
            }
    }

    void hangAll() {
        for (std::size_t i = 0; i < ups_.size(); ++i) {
            const Node &node = hits_.found[i];
            if (ups_[i] == kNowhere) {
                hits_.tree.push_back(node);
                continue;
            }
            Folder &folder = folderAt(ups_[i]);
            node->parent = folder.copy;
            folder.copy->childrenKey.push_back(node->pKey);
            folder.below.push_back(node);
        }
        for (Folder &folder : folders_)
            if (!folder.below.empty())
                folder.copy->children()->setArray(NSArray(std::move(folder.below)));
    }

    Folder &folderAt(std::int32_t place) { return folders_[static_cast<std::size_t>(place)]; }

    const FoldedSearch &wanted_;
    const CopyOf &copyOf_;
    std::vector<Folder> folders_;
    std::vector<std::int32_t> ups_;   // of each one found, the place of its folder
    Hits hits_;
};

// The nodes above, nearest first, by their keys. What lies above a folder that was followed already stands in the list; this
// also ends a ring.
template <class Add> void addParentsByKey(const NSArray &top, const Nodes &hits, Add add) {
    Nodes all;
    walk(top, [&](const Node &node, std::size_t) {
        all.push_back(node);
        return true;
    });
    KeyIndex index(all);
    const auto above = [&](const Node &node) {
        const std::int32_t place = node->parentKey.isNil() ? kNowhere : index.find(node->parentKey);
        return place == kNowhere ? Node() : all[static_cast<std::size_t>(place)];
    };
    std::unordered_set<const HNBookMarkEntity *> followed;
    for (const Node &hit : hits)
        for (Node parent = above(hit); parent && followed.insert(parent.get()).second; parent = above(parent))
            add(parent);
}

}   // namespace

Hits search(const NSArray &top, const NSString &text, bool keysAreUnique, const CopyOf &copyOf) {
    const FoldedSearch wanted(text);
    if (keysAreUnique)
        return SearchByPlace(wanted, copyOf).run(top);
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
    addParentsByKey(top, hits, add);
    Nodes tree = synthesize(found);
    return {std::move(found), std::move(tree)};
}

}   // namespace bookmarks
