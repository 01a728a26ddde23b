#include "toolkit/lists/NSArrayController.h"

#include <gtest/gtest.h>

#include "tests/toolkit/lists/Item.h"

namespace {

// Every notice as a line.
class Log : public NSArrayControllerObserver {
public:
    std::string take() { return std::exchange(text_, ""); }
    void arrangedObjectsDidChange(NSArrayController &controller, const ListChange &change) override {
        constexpr const char *kWords[] = {"inserted", "removed", "rearranged"};
        text_ += kWords[static_cast<int>(change.kind)] + change.indexes.toString() + " of " + std::to_string(controller.arrangedCount()) + "\n";
    }
    void selectionIndexesDidChange(NSArrayController &controller) override {
        text_ += "selection" + controller.selectionIndexes().toString() + " " + names(controller.selectedObjects()) + "\n";
    }

private:
    std::string text_;
};

class ArrayController : public testing::Test {
protected:
    ArrayController() {
        list = make<NSMutableArray>(items({"b", "c", "a"}));
        controller->setContent(list);
        controller->addObserver(log);
    }
    id at(std::size_t row) { return list->objectAtIndex(row); }

    std::shared_ptr<NSArrayController> controller = make<NSArrayController>();
    std::shared_ptr<NSMutableArray> list;
    std::shared_ptr<Log> log = std::make_shared<Log>();
};

TEST_F(ArrayController, tellsRowsFirstAndCountsAsItSays) {
    controller->setSelectionIndexes({1, 2});
    controller->insertObject_atArrangedObjectIndex(item("x"), 0);
    controller->addObject(item("y"));
    controller->removeObjectsAtArrangedObjectIndexes({0, 2});
    EXPECT_EQ(log->take(), "selection{1-2} c a\n"
                           "inserted{0} of 4\nselection{2-3} c a\n"
                           "inserted{4} of 5\n"
                           "removed{0, 2} of 3\nselection{1} a\n");
    EXPECT_EQ(names(list->snapshot()), "b a y");
}

TEST_F(ArrayController, losesTheSelectionWhenTheListWasEmptiedInBetween) {
    const NSArray all = list->snapshot();
    controller->setSelectionIndex(1);
    log->take();
    list->removeAllObjects();
    EXPECT_EQ(names(controller->selectedObjects()), "c");   // until the rearrange
    controller->rearrangeObjects();
    list->addObjectsFromArray(all);
    controller->rearrangeObjects();
    EXPECT_EQ(log->take(), "rearranged{} of 0\nselection{} \nrearranged{} of 3\n");
}

TEST_F(ArrayController, showsARowTakenOutOfTheListDirectlyNoMore) {
    list->removeObjectAtIndex(0);
    EXPECT_EQ(names(controller->arrangedObjects()), "c a");
    EXPECT_EQ(controller->arrangedObjectAtIndex(2), nullptr);
    controller->setSelectionIndexes({1});
    EXPECT_EQ(names(controller->selectedObjects()), "a");
}

TEST_F(ArrayController, rearrangesInsteadOfAnExactNoticeWhenItIsBehind) {
    list->addObject(item("quiet"));
    controller->addObject(item("told"));
    EXPECT_EQ(log->take(), "rearranged{} of 5\n");
}

TEST_F(ArrayController, reportsOnlyASelectionThatDiffers) {
    EXPECT_TRUE(controller->setSelectionIndex(0));
    EXPECT_FALSE(controller->setSelectionIndex(0));
    EXPECT_TRUE(controller->setSelectionIndex(1));
    EXPECT_TRUE(controller->setSelectionIndex(0));
    EXPECT_EQ(log->take(), "selection{0} b\nselection{1} c\nselection{0} b\n");
    EXPECT_FALSE(controller->setSelectionIndexes({0, 3, 77}));
    EXPECT_EQ(controller->selectionIndexes().toString(), "{0}");
}

TEST_F(ArrayController, clearsExplicitlyButRefillsOnRemovalWhereItAvoidsAnEmptySelection) {
    controller->setAvoidsEmptySelection(true);
    controller->setSelectionIndexes({});
    EXPECT_TRUE(controller->selectionIndexes().isEmpty());
    controller->setSelectionIndexes({2});
    controller->remove();
    EXPECT_EQ(names(controller->selectedObjects()), "c");
    controller->remove();
    controller->remove();
    EXPECT_TRUE(controller->selectedObjects().isEmpty());
}

TEST_F(ArrayController, selectsInsertedObjectsWhereToldTo) {
    controller->setSelectsInsertedObjects(true);
    controller->addObjects(items({"x", "y"}));
    EXPECT_EQ(log->take(), "inserted{3-4} of 5\nselection{3-4} x y\n");
}

TEST_F(ArrayController, dropsTheSelectionOnRearrangeWhereItDoesNotPreserve) {
    controller->setPreservesSelection(false);
    controller->setSelectionIndex(2);
    controller->rearrangeObjects();
    EXPECT_TRUE(controller->selectionIndexes().isEmpty());
}

TEST_F(ArrayController, arrangesByItselfAndRemovesFromTheContent) {
    controller->setSortDescriptors({NSSortDescriptor("name")});
    controller->setFilter([](const id &object) { return static_cast<Item &>(*object).name != NSString("b"); });
    EXPECT_EQ(names(controller->arrangedObjects()), "a c");
    controller->addObject(item("0"));
    EXPECT_EQ(names(controller->arrangedObjects()), "a c 0");   // in its place only after a rearrange
    controller->removeObjectAtArrangedObjectIndex(1);
    controller->removeObject(at(0));   // hidden by the filter
    EXPECT_EQ(names(list->snapshot()), "a 0");
    controller->rearrangeObjects();
    EXPECT_EQ(names(controller->arrangedObjects()), "0 a");
}

TEST_F(ArrayController, followsAFieldThatIsGivenAnotherList) {
    std::shared_ptr<NSMutableArray> field = list;
    controller->bindContentArray([&field] { return field; });
    field = make<NSMutableArray>(items({"n"}));
    controller->rearrangeObjects();
    EXPECT_EQ(names(controller->arrangedObjects()), "n");
    field = nullptr;
    controller->rearrangeObjects();
    EXPECT_EQ(controller->arrangedCount(), 0u);
}

TEST_F(ArrayController, toleratesAnObserverThatEndsDuringANotice) {
    class Once : public NSArrayControllerObserver {
    public:
        explicit Once(std::shared_ptr<Log> &other) : other_(other) {}
        void selectionIndexesDidChange(NSArrayController &) override { other_.reset(); }
        std::shared_ptr<Log> &other_;
    };
    const auto once = std::make_shared<Once>(log);
    controller->removeObserver(log.get());
    controller->addObserver(once);
    controller->addObserver(log);
    controller->setSelectionIndex(1);
    EXPECT_EQ(log, nullptr);
}

}  // namespace
