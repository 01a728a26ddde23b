#include "toolkit/tables/NSOutlineView.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>

#include "tests/toolkit/lists/Item.h"
#include "toolkit/views/NSWindow.h"

namespace {

class Delegate : public NSObject, public NSOutlineViewDelegate {
public:
    using Tree = std::shared_ptr<NSTreeNode>;
    std::string log;
    std::function<bool(NSOutlineView &, const Tree &)> shouldSelect;
    bool mayExpand = true, mayCollapse = true;

    static std::string nameOf(const Tree &item) { return item ? item->represented<::Item>()->name.str() : "none"; }
    std::string take() { return std::exchange(log, ""); }
    std::shared_ptr<NSView> outlineView_viewForTableColumn_item(NSOutlineView &outline, const std::shared_ptr<NSTableColumn> &column,
                                                                const Tree &) override {
        auto cell = outline.makeView<NSTableCellView>(column->identifier());
        if (!cell) {
            cell = make<NSTableCellView>();
            cell->setIdentifier(column->identifier());
        }
        return cell;
    }
    bool outlineView_shouldSelectItem(NSOutlineView &outline, const Tree &item) override {
        log += "select? " + nameOf(item) + "\n";
        return !shouldSelect || shouldSelect(outline, item);
    }
    bool outlineView_shouldExpandItem(NSOutlineView &, const Tree &item) override {
        log += "expand? " + nameOf(item) + "\n";
        return mayExpand;
    }
    bool outlineView_shouldCollapseItem(NSOutlineView &, const Tree &item) override {
        log += "collapse? " + nameOf(item) + "\n";
        return mayCollapse;
    }
    void outlineViewSelectionDidChange(NSOutlineView &outline) override { log += "selected " + nameOf(outline.itemAtRow(outline.selectedRow())) + "\n"; }
};

class Outline : public testing::Test {
protected:
    Outline() {
        tree->setLeafKeyPath("isLeaf");
        tree->setAvoidsEmptySelection(false);
        for (const auto &one : {folder("f", {leaf("a"), folder("g", {leaf("b")})}), folder("h", {}), leaf("c")})
            tree->content()->addObject(one);
        tree->rearrangeObjects();
        auto column = make<NSTableColumn>("name");
        column->setWidth(300);
        outline->addTableColumn(column);
        outline->setRowHeight(38);
        outline->setAllowsMultipleSelection(true);
        outline->setDelegate(delegate);
        outline->bindToTreeController(tree);
    }
    static std::shared_ptr<Item> leaf(const char *name) {
        auto made = item(name);
        made->isLeaf = true;
        return made;
    }
    std::shared_ptr<NSTreeNode> node(NSIndexPath path) { return tree->arrangedObjects()->descendantNodeAtIndexPath(path); }
    // "f a g c", each after as many dots as its level.
    std::string rows() {
        std::string text;
        for (std::int64_t row = 0; row < outline->numberOfRows(); ++row)
            text += (row ? " " : "") + std::string(static_cast<std::size_t>(outline->levelForRow(row)), '.') + Delegate::nameOf(outline->itemAtRow(row));
        return text;
    }

    std::shared_ptr<Delegate> delegate = make<Delegate>();
    std::shared_ptr<NSTreeController> tree = make<NSTreeController>();
    std::shared_ptr<NSOutlineView> outline = make<NSOutlineView>();
};

TEST_F(Outline, showsTheOpenPartOfTheTree) {
    EXPECT_EQ(rows(), "f h c");
    outline->expandItem(node({0}));
    EXPECT_EQ(rows(), "f .a .g h c");
    outline->expandItem(nullptr, true);
    EXPECT_EQ(rows(), "f .a .g ..b h c");
    EXPECT_TRUE(outline->isItemExpanded(node({1})));   // empty, open all the same
    EXPECT_FALSE(outline->isExpandable(node({2})));
    outline->collapseItem(node({0}));
    EXPECT_EQ(rows(), "f h c");
    outline->expandItem(node({0}));
    EXPECT_EQ(rows(), "f .a .g ..b h c");   // what was open below stays open
    outline->collapseItem(nullptr, true);
    outline->expandItem(node({0}));
    EXPECT_EQ(rows(), "f .a .g h c");
    EXPECT_EQ(delegate->take(), "expand? f\nexpand? g\nexpand? h\ncollapse? f\nexpand? f\n"
                                "collapse? h\ncollapse? g\ncollapse? f\nexpand? f\n");
    EXPECT_TRUE(outline->isConsistent());
}

TEST_F(Outline, answersForItemsAndRows) {
    outline->expandItem(nullptr, true);
    EXPECT_EQ(outline->rowForItem(node({0, 1, 0})), 3);
    EXPECT_EQ(outline->levelForItem(node({0, 1, 0})), 2);
    EXPECT_EQ(outline->parentForItem(node({0, 1, 0})), node({0, 1}));
    EXPECT_EQ(outline->parentForItem(node({0})), nullptr);
    EXPECT_EQ(outline->numberOfChildrenOfItem(nullptr), 3);
    EXPECT_EQ(outline->itemAtRow(6), nullptr);
    EXPECT_EQ(outline->itemAtRow(-1), nullptr);
    EXPECT_EQ(outline->rowForItem(nullptr), -1);
    const auto cell = std::dynamic_pointer_cast<NSTableCellView>(outline->viewAtColumn_row_makeIfNecessary(0, 3, false));
    EXPECT_EQ(cell->valueOfObject("representedObject.name").text(), NSString("b"));
}

TEST_F(Outline, indentsByLevelAndPlacesTheMark) {
    outline->expandItem(nullptr, true);
    EXPECT_EQ(outline->frameOfOutlineCellAtRow(2), NSRect(17.5, 81, 16, 38));
    EXPECT_TRUE(outline->frameOfOutlineCellAtRow(1).isEmpty());   // a leaf
    EXPECT_EQ(outline->frameOfCellAtColumn_row(0, 1), NSRect(33.5, 41, 268, 38));
    EXPECT_EQ(outline->frameOfCellAtColumn_row(0, 0), NSRect(17.5, 1, 284, 38));
}

TEST_F(Outline, keepsFoldersOpenAndTheSelectionThroughARearrange) {
    outline->expandItem(node({0}));
    outline->selectRowIndexes_byExtendingSelection({1}, false);
    delegate->take();
    tree->content()->insertObject_atIndex(leaf("new"), 0);
    tree->rearrangeObjects();
    EXPECT_EQ(rows(), "new f .a .g h c");
    EXPECT_EQ(outline->selectedRowIndexes().toString(), "{2}");
    EXPECT_EQ(delegate->take(), "selected a\n");
    EXPECT_TRUE(outline->isConsistent());
}

TEST_F(Outline, bindsTheSelectionBothWays) {
    tree->setSelectionIndexPath({2});
    EXPECT_EQ(outline->selectedRow(), 2);
    outline->selectRowIndexes_byExtendingSelection({0, 1}, false);
    EXPECT_EQ(names(tree->selectedObjects()), "f h");
    EXPECT_EQ(delegate->take(), "selected c\nselected h\n");
}

TEST_F(Outline, dropsHiddenRowsButLeavesThemToTheTreeControllerAndMovesOthersInSilence) {
    outline->expandItem(node({0}));
    outline->selectRowIndexes_byExtendingSelection({1}, false);
    delegate->take();
    outline->collapseItem(node({0}));
    EXPECT_EQ(delegate->take(), "collapse? f\nselected none\n");
    EXPECT_EQ(names(tree->selectedObjects()), "a");
    outline->expandItem(node({0}));
    EXPECT_EQ(outline->selectedRow(), -1);
    EXPECT_EQ(delegate->take(), "expand? f\n");
    outline->selectRowIndexes_byExtendingSelection({4}, false);
    delegate->take();
    outline->collapseItem(node({0}));
    EXPECT_EQ(outline->selectedRow(), 2);
    outline->expandItem(node({0}));
    EXPECT_EQ(outline->selectedRow(), 4);
    EXPECT_EQ(delegate->take(), "collapse? f\nexpand? f\n");
    EXPECT_EQ(names(tree->selectedObjects()), "c");
    EXPECT_TRUE(outline->isConsistent());
}

TEST_F(Outline, letsTheDelegateRefuseToOpenAndClose) {
    delegate->mayExpand = false;
    outline->expandItem(node({0}));
    EXPECT_EQ(rows(), "f h c");
    delegate->mayExpand = true;
    delegate->mayCollapse = false;
    outline->expandItem(node({0}));
    outline->collapseItem(node({0}));
    EXPECT_EQ(rows(), "f .a .g h c");
}

// A delegate that leads a click on a folder on to its first child.
TEST_F(Outline, selectsWhatTheDelegateChoseWhileItWasAsked) {
    delegate->shouldSelect = [](NSOutlineView &view, const std::shared_ptr<NSTreeNode> &one) {
        if (one->isLeaf())
            return true;
        view.expandItem(one);
        view.selectRowIndexes_byExtendingSelection({static_cast<std::size_t>(view.rowForItem(one->childAtIndex(0)))}, false);
        return false;
    };
    outline->performClick(0);
    EXPECT_EQ(delegate->take(), "select? f\nexpand? f\nselected a\n");
    EXPECT_EQ(outline->selectedRow(), 1);
    outline->performClick(4);
    EXPECT_EQ(delegate->take(), "select? c\nselected c\n");
}

TEST_F(Outline, findsAnAllowedItemWhereItStandsAfterwards) {
    delegate->shouldSelect = [this](NSOutlineView &view, const std::shared_ptr<NSTreeNode> &) {
        view.expandItem(node({0}));
        return true;
    };
    outline->performClick(2);
    EXPECT_EQ(Delegate::nameOf(outline->itemAtRow(outline->selectedRow())), "c");
    EXPECT_EQ(outline->selectedRow(), 4);
}

TEST_F(Outline, opensByTheMarkAndByArrowsWithoutSelecting) {
    const auto window = make<NSWindow>(NSRect(0, 0, 303, 600));
    outline->setFrame({0, 0, 303, 600});
    window->setContentView(outline);
    delegate->take();
    window->sendEvent(NSEvent::mouse(NSEventType::leftMouseDown, {8, 580}));
    window->sendEvent(NSEvent::mouse(NSEventType::leftMouseUp, {8, 580}));
    EXPECT_EQ(delegate->take(), "expand? f\n");
    EXPECT_EQ(rows(), "f .a .g h c");
    outline->selectRowIndexes_byExtendingSelection({0}, false);
    delegate->take();
    outline->keyDown(*NSEvent::key(keycode::left));
    EXPECT_EQ(rows(), "f h c");
    outline->keyDown(*NSEvent::key(keycode::right));
    EXPECT_EQ(rows(), "f .a .g h c");
    EXPECT_EQ(delegate->take(), "collapse? f\nexpand? f\n");
}

TEST_F(Outline, opensAndEndsATreeOfAHundredThousandLevels) {
    auto last = folder("deep", {});
    tree->content()->setArray({last});
    for (int depth = 1; depth < 100000; ++depth) {
        auto below = item("x");
        last->children->addObject(below);
        last = below;
    }
    const std::weak_ptr<Item> deepest = std::exchange(last, nullptr);
    outline->setDelegate(nullptr);
    tree->rearrangeObjects();
    outline->expandItem(nullptr, true);
    EXPECT_EQ(outline->numberOfRows(), 100000);
    EXPECT_LE(outline->numberOfRowViews(), 15u);
    EXPECT_TRUE(tree->isConsistent());
    tree->content()->removeAllObjects();
    tree->rearrangeObjects();
    EXPECT_EQ(outline->numberOfRows(), 0);
    EXPECT_TRUE(deepest.expired());
}

// "f (a g (b)) h c", as the objects themselves tell.
std::string plain(const NSArray &objects) {
    std::string text;
    for (const id &object : objects) {
        const auto &one = static_cast<Item &>(*object);
        text += (text.empty() ? "" : " ") + one.name.str();
        if (!one.isLeaf && !one.children->isEmpty())
            text += " (" + plain(one.children->snapshot()) + ")";
    }
    return text;
}

TEST_F(Outline, staysInStepOverRandomSequences) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int step = 0; step < 1500; ++step) {
        const std::int64_t count = outline->numberOfRows(), row = count ? static_cast<std::int64_t>(random() % static_cast<unsigned>(count)) : -1;
        const auto one = outline->itemAtRow(row);
        const NSIndexPath folder = one && !one->isLeaf() ? one->indexPath() : NSIndexPath();
        switch (random() % 10) {
        case 0:
        case 1:
            outline->expandItem(one, random() % 4 == 0);
            break;
        case 2:
            outline->collapseItem(one, random() % 2 == 0);
            break;
        case 3:
            tree->insertObject_atArrangedObjectIndexPath(random() % 2 ? leaf("l") : item("d"), folder.indexPathByAddingIndex(random() % 3));
            break;
        case 4:
            tree->remove();
            break;
        case 5:
            outline->performClick(row, 0, random() % 2 ? NSEventModifierFlagCommand : 0);
            break;
        case 6:
            if (one)
                tree->moveNode_toIndexPath(one, random() % 2 ? NSIndexPath{0, 0} : folder.indexPathByAddingIndex(random() % 3));
            break;
        case 7:   // behind the controller's back
            (folder.isEmpty() ? tree->content() : one->represented<Item>()->children)->addObject(item("q"));
            tree->rearrangeObjects();
            break;
        case 8:
            tree->setSelectionIndexPaths({folder, {0}, {1, 0}});
            break;
        default:
            outline->scrollRowToVisible(row);
        }
        ASSERT_TRUE(outline->isConsistent()) << step << " " << outline->describeContent() << " " << tree->toString();
        ASSERT_TRUE(tree->isConsistent()) << step;
        const std::string whole = tree->toString();
        ASSERT_EQ(whole.substr(0, whole.rfind(" selection")), "(" + plain(tree->content()->snapshot()) + ")") << step;
    }
}

}  // namespace
