#include <gtest/gtest.h>

#include <thread>

#include "tests/toolkit/lists/Item.h"
#include "toolkit/lists/NSMutableArray.h"
#include "toolkit/lists/NSMutableDictionary.h"

namespace {

TEST(MutableArray, givesNullForARowOutOfRange) {
    const auto list = make<NSMutableArray>(items({"a"}));
    EXPECT_EQ(list->objectAtIndex(1), nullptr);
    EXPECT_EQ(list->objectAtIndex(NSNotFound), nullptr);
    EXPECT_EQ(make<NSMutableArray>()->lastObject(), nullptr);
    list->removeObjectAtIndex(5);
    list->replaceObjectAtIndex_withObject(5, item("x"));
    list->addObject(nullptr);
    EXPECT_EQ(names(list->snapshot()), "a");
}

TEST(MutableArray, walksASnapshotWhileTheListChanges) {
    const auto list = make<NSMutableArray>(items({"a", "b", "c"}));
    std::string seen;
    for (const id &object : list->snapshot()) {
        seen += static_cast<Item &>(*object).name.str();
        list->removeAllObjects();
        list->addObject(item("x"));
    }
    EXPECT_EQ(seen, "abc");
    EXPECT_EQ(names(list->snapshot()), "x");
}

TEST(MutableArray, changesByIndexSets) {
    const auto list = make<NSMutableArray>(items({"a", "b", "c", "d"}));
    list->removeObjectsAtIndexes({0, 2, 3, 9});
    EXPECT_EQ(names(list->snapshot()), "b");
    list->insertObjects_atIndexes(items({"x", "y", "z"}), {0, 2, 3});
    EXPECT_EQ(names(list->snapshot()), "x b y z");
    list->insertObject_atIndex(item("end"), 99);
    EXPECT_EQ(names(list->snapshot()), "x b y z end");
}

TEST(MutableArray, removesEqualObjectsByValueAndTheVeryOnesByIdentity) {
    const auto one = item("one", 1), alsoOne = item("alsoOne", 1), two = item("two", 2);
    one->equalByNumber = alsoOne->equalByNumber = true;
    const auto list = make<NSMutableArray>(NSArray{one, alsoOne, two});
    EXPECT_EQ(list->indexOfObject(alsoOne), 0u);
    EXPECT_EQ(list->indexOfObjectIdenticalTo(alsoOne), 1u);
    const auto byIdentity = list->mutableCopy();
    byIdentity->removeObjectsIdenticalIn({alsoOne});
    EXPECT_EQ(names(byIdentity->snapshot()), "one two");
    list->removeObjectsInArray({alsoOne});
    EXPECT_EQ(names(list->snapshot()), "two");
}

TEST(MutableArray, letsAnEndingObjectComeBackToTheList) {
    class Visitor : public NSObject {
    public:
        std::weak_ptr<NSMutableArray> list;
        void dealloc() override {
            tell(list, [](NSMutableArray &l) { l.addObject(item("left by the ending one")); });
            NSObject::dealloc();
        }
    };
    const auto list = make<NSMutableArray>();
    auto visitor = make<Visitor>();
    visitor->list = list;
    list->addObject(std::move(visitor));
    list->removeAllObjects();
    EXPECT_EQ(names(list->snapshot()), "left by the ending one");
}

TEST(MutableArrayThreads, keepsWhatOthersAddWhileItIsSorted) {
    const auto list = make<NSMutableArray>();
    for (int i = 0; i < 2000; ++i)
        list->addObject(item("old", i * 7919 % 2000));
    std::thread writer([&list] {
        for (int i = 0; i < 500; ++i)
            list->addObject(item("new", -1));
    });
    for (int i = 0; i < 10; ++i) {
        list->sortUsingDescriptors({NSSortDescriptor("number", i % 2 == 0)});
        std::size_t walked = 0;
        for (const id &object : list->snapshot())
            walked += object ? 1 : 0;
        EXPECT_GE(walked, 2000u);
    }
    writer.join();
    EXPECT_EQ(list->count(), 2500u);
}

TEST(Sorting, isStableAndPutsWhatIsAbsentFirst) {
    struct Row {
        const char *name;
        NSSortDescriptors by;
        const char *order;
    };
    const auto oddFirst = [](const Value &a, const Value &b) -> std::weak_ordering { return b.integerValue() % 2 <=> a.integerValue() % 2; };
    const auto absent = item("?", 2);
    absent->name = NSString();
    for (const Row &row : {Row{"byCodePoints", {NSSortDescriptor("name")}, "- '' B a b ä"},
                           Row{"descending", {NSSortDescriptor("name", false)}, "ä b a B '' -"},
                           Row{"stable", {NSSortDescriptor("number")}, "'' b a ä B -"},
                           Row{"stableDescending", {NSSortDescriptor("number", false)}, "B - b a ä ''"},
                           Row{"twoKeys", {NSSortDescriptor("number", false), NSSortDescriptor("name")}, "- B a b ä ''"},
                           Row{"ignoringCase", {NSSortDescriptor("name", true, "caseInsensitiveCompare:")}, "- '' a b B ä"},
                           Row{"byComparator", {NSSortDescriptor("number", true, oddFirst)}, "b a ä B - ''"},
                           Row{"unknownKeyKeepsTheOrder", {NSSortDescriptor("colour")}, "b B a - ä ''"}}) {
        const auto list = make<NSMutableArray>(NSArray{item("b", 1), item("B", 2), item("a", 1), absent, item("ä", 1), item("", 0)});
        list->sortUsingDescriptors(row.by);
        EXPECT_EQ(names(list->snapshot()), row.order) << row.name;
    }
}

TEST(Sorting, readsEachKeyOnce) {
    const auto list = make<NSMutableArray>();
    for (int i = 0; i < 100; ++i)
        list->addObject(item(std::to_string(i * 37 % 100).c_str()));
    list->sortUsingDescriptors({NSSortDescriptor("name")});
    for (const id &object : list->snapshot())
        EXPECT_EQ(static_cast<Item &>(*object).timesRead, 1);
}

TEST(MutableDictionary, tellsAbsentFromEmptyAndDropsAbsentValues) {
    const auto dictionary = make<NSMutableDictionary>();
    dictionary->setObject_forKey("", "b");
    dictionary->setObject_forKey(7, "a");
    dictionary->setObject_forKey("lost", NSString());
    EXPECT_EQ(dictionary->objectForKey("b"), Value(""));
    EXPECT_TRUE(dictionary->objectForKey("c").isAbsent());
    EXPECT_EQ(dictionary->allKeys(), (std::vector<NSString>{"a", "b"}));
    EXPECT_EQ(dictionary->valueForKey("a").integerValue(), 7);
    dictionary->setObject_forKey(Value(), "a");
    EXPECT_EQ(dictionary->count(), 1u);
}

}  // namespace
