#include "toolkit/lists/NSTreeController.h"

#include <gtest/gtest.h>

#include "tests/toolkit/lists/Item.h"

namespace {

class Log : public NSTreeControllerObserver {
public:
    std::string take() { return std::exchange(text_, ""); }
    void arrangedNodesDidChange(NSTreeController &, const TreeChange &change) override {
        constexpr const char *kWords[] = {"inserted", "removed", "rearranged"};
        text_ += kWords[static_cast<int>(change.kind)];
        for (const NSIndexPath &path : change.paths)
            text_ += " " + path.toString();
        text_ += "\n";
    }
    void selectionIndexPathsDidChange(NSTreeController &controller) override { text_ += "selection " + names(controller.selectedObjects()) + "\n"; }

private:
    std::string text_;
};

class TreeController : public testing::Test {
protected:
    TreeController() {
        tree->setAvoidsEmptySelection(false);
        fill({folder("f", {item("a"), folder("g", {item("b")})}), item("c")});
        tree->addObserver(log);
    }
    void fill(std::initializer_list<std::shared_ptr<Item>> top) {
        for (const auto &one : top)
            tree->content()->addObject(one);
        tree->rearrangeObjects();
    }
    std::shared_ptr<NSTreeNode> node(NSIndexPath path) { return tree->arrangedObjects()->descendantNodeAtIndexPath(path); }

    std::shared_ptr<NSTreeController> tree = make<NSTreeController>();
    std::shared_ptr<Log> log = std::make_shared<Log>();
};

TEST_F(TreeController, makesANodePerObject) {
    EXPECT_EQ(tree->toString(), "(f (a g (b)) c) selection");
    EXPECT_EQ(node({0, 1, 0})->indexPath(), (NSIndexPath{0, 1, 0}));
    EXPECT_EQ(node({0, 1, 0})->parentNode(), node({0, 1}));
    EXPECT_EQ(node({0, 2}), nullptr);
    EXPECT_TRUE(tree->arrangedObjects()->indexPath().isEmpty());
    EXPECT_EQ(node({1})->parentNode(), tree->arrangedObjects());
}

TEST_F(TreeController, takesLeavesFromTheKeyPathNotFromTheChildren) {
    EXPECT_TRUE(node({1})->isLeaf());
    tree->setLeafKeyPath("isLeaf");
    node({0, 1})->represented<Item>()->isLeaf = true;
    tree->rearrangeObjects();
    EXPECT_FALSE(node({1})->isLeaf());
    EXPECT_EQ(tree->toString(), "(f (a g) c) selection");
}

TEST_F(TreeController, keepsTheNodeOfAnObjectThatStays) {
    const auto g = node({0, 1});
    tree->content()->insertObject_atIndex(item("new"), 0);
    node({0})->represented<Item>()->children->removeObjectAtIndex(0);
    tree->rearrangeObjects();
    EXPECT_EQ(node({1, 0}), g);
    EXPECT_EQ(tree->toString(), "(new f (g (b)) c) selection");
}

TEST_F(TreeController, tellsRowsBeforeTheSelection) {
    tree->insertObject_atArrangedObjectIndexPath(item("n"), {0, 1});
    EXPECT_EQ(log->take(), "inserted 0.1\nselection n\n");
    tree->setSelectionIndexPaths({{1}, {0, 2, 0}, {9}});
    tree->removeObjectsAtArrangedObjectIndexPaths({{1}, {0, 0}});
    EXPECT_EQ(log->take(), "selection b c\nremoved 0.0 1\nselection b\n");
    EXPECT_EQ(tree->toString(), "(f (n g (b))) selection 0.1.0");
    EXPECT_EQ(names(tree->content()->snapshot()), "f");
    tree->insertObject_atArrangedObjectIndexPath(item("lost"), {5, 0});
    EXPECT_EQ(log->take(), "");
}

TEST_F(TreeController, avoidsAnEmptySelectionOnlyWhenTheTreeChanges) {
    tree->setAvoidsEmptySelection(true);
    tree->rearrangeObjects();
    EXPECT_TRUE(tree->selectionIndexPath().isEmpty());   // nothing came or went
    tree->content()->addObject(item("d"));
    tree->rearrangeObjects();
    EXPECT_EQ(tree->selectionIndexPath(), (NSIndexPath{0}));
    tree->setSelectionIndexPath({});
    tree->rearrangeObjects();
    EXPECT_TRUE(tree->selectedNodes().empty());
    tree->setSelectionIndexPath({0, 1, 0});
    tree->remove();
    EXPECT_EQ(tree->selectionIndexPath(), (NSIndexPath{0, 1}));   // its parent: no sibling is left
    tree->remove();
    EXPECT_EQ(tree->selectionIndexPath(), (NSIndexPath{0, 0}));   // the sibling that is last now
}

TEST_F(TreeController, emptiesTheContentThroughTheRootsChildNodes) {
    tree->setSelectionIndexPath({1});
    tree->arrangedObjects()->mutableChildNodes().removeAllObjects();
    EXPECT_EQ(tree->content()->count(), 0u);
    EXPECT_EQ(tree->toString(), "() selection");
    fill({item("z")});
    EXPECT_EQ(tree->toString(), "(z) selection");
}

TEST_F(TreeController, movesNodesWithWhatIsBelowThemButNotUnderThemselves) {
    const auto g = node({0, 1});
    tree->setSelectedNodes({g});
    tree->moveNode_toIndexPath(g, {0});
    EXPECT_EQ(tree->toString(), "(g (b) f (a) c) selection 0");
    EXPECT_EQ(names(tree->content()->snapshot()), "g f c");
    tree->moveNode_toIndexPath(g, {0, 0, 0});
    EXPECT_EQ(tree->toString(), "(g (b) f (a) c) selection 0");
    tree->moveNodes_toIndexPath({node({2}), node({0})}, {1, 1});
    EXPECT_EQ(tree->toString(), "(f (a g (b) c)) selection 0.1");
}

TEST_F(TreeController, removesSiblingsInOneStepAndWhatIsBelowThemToo) {
    fill({item("d"), item("e"), item("f2")});
    const auto g = node({0, 1})->represented<Item>();
    const std::uint64_t before = tree->content()->version();
    log->take();
    tree->removeObjectsAtArrangedObjectIndexPaths({{3}, {0, 1}, {1}, {0, 1, 0}, {9}, {2}});
    EXPECT_EQ(tree->toString(), "(f (a) f2) selection");
    EXPECT_EQ(names(tree->content()->snapshot()), "f f2");
    EXPECT_EQ(names(g->children->snapshot()), "");
    EXPECT_EQ(tree->content()->version(), before + 1);   // one by one, thousands of siblings would take minutes
    EXPECT_EQ(log->take(), "removed 0.1 0.1.0 1 2 3\n");
    EXPECT_TRUE(tree->isConsistent());
}

TEST_F(TreeController, removesTheRightObjectsWhereTheNodesAreSorted) {
    tree->setSortDescriptors({NSSortDescriptor("name", false)});
    ASSERT_EQ(tree->toString(), "(f (g (b) a) c) selection");
    fill({item("d"), item("e")});
    tree->removeObjectsAtArrangedObjectIndexPaths({{1}, {2}});   // f e d c; in the list f c d e
    EXPECT_EQ(tree->toString(), "(f (g (b) a) c) selection");
    EXPECT_EQ(names(tree->content()->snapshot()), "f c");
}

TEST_F(TreeController, makesNodesOnlyWhereSomebodyLooks) {
    const auto deep = item("x");
    const auto h = folder("h", {folder("i", {deep})});
    fill({h});
    const std::weak_ptr<NSTreeNode> ofH = node({2});
    EXPECT_EQ(h.use_count(), 3);      // the test, the content, its node
    EXPECT_EQ(deep.use_count(), 2);   // nobody looked below h
    h->children->addObject(item("y"));
    EXPECT_EQ(ofH.lock()->childCount(), 2U);   // as the list is when first asked for
    h->children->addObject(item("z"));
    EXPECT_EQ(ofH.lock()->childCount(), 2U);   // and from then on as of the last rearranging
    tree->rearrangeObjects();
    EXPECT_EQ(tree->toString(), "(f (a g (b)) c h (i (x) y z)) selection");
    EXPECT_TRUE(tree->isConsistent());
}

TEST_F(TreeController, leavesOutAnObjectAmongItsOwnAncestors) {
    const auto f = node({0})->represented<Item>();
    node({0, 1})->represented<Item>()->children->addObject(f);
    tree->rearrangeObjects();
    EXPECT_EQ(tree->toString(), "(f (a g (b)) c) selection");
    node({0, 1})->represented<Item>()->children->removeObject(f);   // else the ring keeps itself alive

    auto below = item("40");
    const auto last = below;
    for (int level = 39; level > 0; --level)
        below = folder(std::to_string(level).c_str(), {below});
    last->children->addObject(below);
    tree->content()->setArray(NSArray::of(std::vector{below}));
    tree->rearrangeObjects();
    const std::string text = tree->toString();
    EXPECT_EQ(text.substr(0, 8), "(1 (2 (3");
    EXPECT_EQ(text.substr(text.find("39")), "39 (40" + std::string(40, ')') + " selection");
    last->children->removeAllObjects();
}

}  // namespace
