#include <gtest/gtest.h>

#include <random>

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/BookmarkTree.h"

using namespace bookmarks;

namespace {

Node node(const char *key, const char *parent, const char *name, const char *url = nullptr) {
    auto made = make<HNBookMarkEntity>();
    made->pKey = key;
    made->parentKey = parent;
    made->name = name;
    made->url = url;
    made->isFolder = !url;
    made->setIsLeaf(url != nullptr);
    return made;
}

// "a(b c(d))", by names.
std::string shape(const NSArray &nodes) {
    std::string text;
    std::size_t open = 0;
    walk(nodes, [&](const Node &each, std::size_t level) {
        if (level > open)
            text += "(";
        else if (!text.empty())
            text += std::string(open - level, ')') + " ";
        open = level;
        text += each->name.str();
        return true;
    });
    return text + std::string(open, ')');
}
std::string shape(const Nodes &nodes) { return shape(NSArray::of(nodes)); }

TEST(BookmarkTree, isBuiltFromTheFlatList) {
    struct {
        const char *name;
        Nodes flat;
        const char *shape;
    } rows[] = {
        {"empty", {}, ""},
        {"keepsTheOrderOfTheList", {node("1", nullptr, "z"), node("2", nullptr, "a"), node("4", "1", "y"), node("3", "1", "b")}, "z(y b) a"},
        {"childBeforeParent", {node("3", "2", "leaf", "u"), node("2", "1", "inner"), node("1", nullptr, "outer")}, "outer(inner(leaf))"},
        {"orphanVanishes", {node("1", nullptr, "a"), node("2", "77", "orphan"), node("3", "2", "below")}, "a"},
        {"emptyParentKeyIsPresent", {node("1", nullptr, "a"), node("2", "", "lost")}, "a"},
        {"emptyParentKeyFindsAnEmptyKey", {node("", nullptr, "a"), node("2", "", "b")}, "a(b)"},
        {"folderInItself", {node("1", "1", "self"), node("2", nullptr, "b"), node("3", "1", "below")}, "b"},
        {"ring", {node("1", "2", "x"), node("2", "1", "y"), node("3", "2", "z", "u"), node("4", nullptr, "b")}, "b"},
        {"firstOfOneKeyGetsTheChildren", {node("1", nullptr, "a"), node("1", nullptr, "b"), node("2", "1", "c")}, "a(c) b"},
        {"nestedBeforeTopLevel", {node("1", nullptr, "a"), node("9", nullptr, "n"), node("1", "9", "inner"), node("3", "1", "c")}, "a n(inner(c))"},
        {"ringThroughAKeyOfTheTopLevel", {node("1", nullptr, "a"), node("1", "2", "n"), node("2", "1", "f")}, "a"},
        {"bookmarkAsParent", {node("1", nullptr, "a", "u"), node("2", "1", "b", "u")}, "a(b)"}};
    for (const auto &[name, flat, expected] : rows)
        EXPECT_EQ(shape(synthesize(flat)), expected) << name;
}

TEST(BookmarkTree, linksChildAndParent) {
    const Nodes roots = synthesize({node("1", nullptr, "a"), node("2", "1", "b", "u"), node("3", "1", "c", "u")});
    EXPECT_EQ(roots[0]->childrenKey, (std::vector<NSString>{"2", "3"}));
    EXPECT_EQ(roots[0]->children()->at<HNBookMarkEntity>(1)->parent.lock(), roots[0]);
    EXPECT_FALSE(roots[0]->parent.lock());
}

TEST(BookmarkTree, endsWithItsLastOwnerRingsToo) {
    std::vector<std::weak_ptr<HNBookMarkEntity>> all;
    {
        Nodes flat = {node("1", nullptr, "a"), node("2", "1", "b"), node("3", "4", "x"), node("4", "3", "y"), node("5", "5", "self"), node("6", "0", "lost")};
        for (const Node &each : flat)
            all.emplace_back(each);
        const Nodes roots = synthesize(flat);
    }
    for (const auto &link : all)
        EXPECT_TRUE(link.expired());
}

Node copy(const HNBookMarkEntity &from) {
    auto made = make<HNBookMarkEntity>();
    made->pKey = from.pKey, made->parentKey = from.parentKey, made->name = from.name, made->url = from.url;
    made->isFolder = from.isFolder;
    made->setIsLeaf(from.isLeaf());
    return made;
}

// ---------------------------------------------------------------- search

TEST(BookmarkSearch, twoItemsOfOneKeyGiveOneHitAndAFolderThatMatchesStandsAlone) {
    const auto found = [](const Nodes &flat, const char *text) {
        bool keysAreUnique = false;
        const Nodes tree = synthesize(flat, &keysAreUnique);
        return shape(search(NSArray::of(tree), text, keysAreUnique, copy).tree);
    };
    EXPECT_EQ(found({node("1", nullptr, "f"), node("2", "1", "x one", "u"), node("2", "1", "x two", "u")}, "x"), "f(x one)");
    EXPECT_EQ(found({node("1", nullptr, "news"), node("2", "1", "a", "u"), node("3", "1", "b", "u")}, "NEWS"), "news");
}

// ---------------------------------------------------------------- against the plain way

void plainAdd(const Node &item, const Nodes &folder, std::set<const HNBookMarkEntity *> &placed) {
    for (const Node &entry : folder)
        if (entry->pKey == item->parentKey && placed.insert(item.get()).second) {
            entry->children()->addObject(item);
            entry->childrenKey.push_back(item->pKey);
            return;
        }
}

Nodes plainTree(const Nodes &flat) {
    Nodes roots, nested;
    std::set<const HNBookMarkEntity *> placed;
    for (const Node &item : flat)
        (item->parentKey.isNil() ? roots : nested).push_back(item);
    for (const Node &item : nested)
        plainAdd(item, nested, placed);
    for (const Node &item : nested)
        plainAdd(item, roots, placed);
    return roots;
}

void plainCopy(Nodes &list, const HNBookMarkEntity &from) {
    for (const Node &have : list)
        if (have->pKey == from.pKey)
            return;
    list.push_back(copy(from));
}

void plainChildren(Nodes &list, const Node &parent, const NSString &text) {
    for (const Node &child : nodesOf(parent->children()->snapshot())) {
        if (child->name.containsIgnoringCase(text) || child->url.containsIgnoringCase(text))
            plainCopy(list, *child);
        plainChildren(list, child, text);
    }
}

Node plainFind(const Nodes &nodes, const NSString &key) {
    for (const Node &each : nodes) {
        if (each->pKey == key)
            return each;
        if (const Node below = plainFind(nodesOf(each->children()->snapshot()), key))
            return below;
    }
    return nullptr;
}

Nodes plainSearch(const Nodes &top, const NSString &text) {
    Nodes list;
    for (const Node &each : top) {
        if (each->name.containsIgnoringCase(text))
            plainCopy(list, *each);
        plainChildren(list, each, text);
    }
    for (const Node &member : Nodes(list)) {
        std::set<const HNBookMarkEntity *> seen;
        for (NSString key = member->parentKey; !key.isNil();) {
            const Node parent = plainFind(top, key);
            if (!parent || !(seen.insert(parent.get()).second))   // double keys may lead round in a ring
                break;
            plainCopy(list, *parent);
            key = parent->parentKey;
        }
    }
    return list;
}

Nodes randomFlat(std::mt19937 &random, bool hasDoubles) {
    const auto pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    const char *names[] = {"Alpha", "beta", "ÄPFEL", "alphabet", "Gamma needle", "äpfel beta"};
    Nodes flat;
    const int count = 1 + pick(40);
    for (int i = 0; i < count; ++i) {
        const std::string parent = std::to_string(pick(count + 3));
        flat.push_back(node(std::to_string(hasDoubles ? pick(count) : i).c_str(), pick(3) ? parent.c_str() : nullptr, names[pick(6)],
                            pick(2) ? nullptr : (pick(2) ? "http://ALPHA" : "http://x")));
    }
    std::shuffle(flat.begin(), flat.end(), random);
    return flat;
}

TEST(BookmarkTree, givesTheSameTreeAndHitsAsThePlainWay) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const Nodes flat = randomFlat(random, seed % 2 == 1);
        Nodes again;
        for (const Node &each : flat)
            again.push_back(copy(*each));
        bool keysAreUnique = false;
        const Nodes tree = synthesize(flat, &keysAreUnique), plain = plainTree(again);
        ASSERT_EQ(shape(tree), shape(plain));
        for (const char *text : {"alpha", "Äp", "needle", "x", "nothing"}) {
            const Hits found = search(NSArray::of(tree), text, keysAreUnique, copy);
            const Nodes &hits = found.found, plainHits = plainSearch(plain, text);
            ASSERT_EQ(hits.size(), plainHits.size()) << text;
            for (std::size_t i = 0; i < hits.size(); ++i)
                ASSERT_EQ(hits[i]->pKey, plainHits[i]->pKey) << text << " at " << i;
            ASSERT_EQ(shape(found.tree), shape(synthesize(plainHits))) << text;
        }
        for (const Node &each : again)   // its rings
            each->children()->removeAllObjects();
    }
}

}   // namespace
