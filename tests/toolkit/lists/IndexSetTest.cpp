#include "toolkit/lists/NSIndexSet.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace {

TEST(IndexSet, answersNotFoundWhereThereIsNone) {
    const NSIndexSet none, some{3, 4, 9};
    EXPECT_EQ(none.firstIndex(), NSNotFound);
    EXPECT_EQ(none.lastIndex(), NSNotFound);
    EXPECT_EQ(some.indexGreaterThanIndex(9), NSNotFound);
    EXPECT_EQ(some.indexLessThanIndex(3), NSNotFound);
    EXPECT_EQ(some.indexGreaterThanIndex(4), 9u);
    EXPECT_EQ(some.indexLessThanIndex(9), 4u);
    EXPECT_EQ(some.toString(), "{3-4, 9}");
}

TEST(IndexSet, followsRowsThatComeAndGo) {
    struct Row {
        const char *name;
        NSIndexSet before, changed;
        const char *inserted, *removed;
    };
    for (const Row &row : {Row{"ahead", {1, 2}, {0}, "{2-3}", "{0-1}"}, Row{"behind", {1, 2}, {7}, "{1-2}", "{1-2}"},
                           Row{"inside", {1, 2, 3}, {2}, "{1, 3-4}", "{1-2}"}, Row{"joining", {1, 5}, {2, 3, 4}, "{1, 8}", "{1-2}"},
                           Row{"several", {1, 2}, {0, 2}, "{3-4}", "{0}"}, Row{"all", {0, 1}, {0, 1}, "{2-3}", "{}"},
                           Row{"nothingChanged", {4}, {}, "{4}", "{4}"}, Row{"nothingSelected", {}, {0, 9}, "{}", "{}"}}) {
        EXPECT_EQ(row.before.afterInserting(row.changed).toString(), row.inserted) << row.name;
        EXPECT_EQ(row.before.afterRemoving(row.changed).toString(), row.removed) << row.name;
    }
}

std::string plain(const std::set<std::size_t> &rows) {
    NSMutableIndexSet set;
    for (const std::size_t row : rows)
        set.addIndex(row);
    return set.toString();
}

TEST(IndexSet, agreesWithAPlainSetOverRandomSteps) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    NSMutableIndexSet set;
    std::set<std::size_t> model;
    for (int step = 0; step < 4000; ++step) {
        const std::size_t begin = random() % 60, length = random() % 8;
        NSMutableIndexSet others;
        for (int i = 0; i < 3; ++i)
            others.addIndex(random() % 60);
        switch (random() % 4) {
        case 0:
            set.addIndexesInRange({begin, length});
            for (std::size_t i = 0; i < length; ++i)
                model.insert(begin + i);
            break;
        case 1:
            set.removeIndexesInRange({begin, length});
            for (std::size_t i = 0; i < length; ++i)
                model.erase(begin + i);
            break;
        case 2:
            set.addIndexes(others);
            others.enumerateIndexesUsingBlock([&model](std::size_t row) { model.insert(row); });
            break;
        default:
            set.removeIndexes(others);
            others.enumerateIndexesUsingBlock([&model](std::size_t row) { model.erase(row); });
        }
        ASSERT_EQ(set.indexes(), std::vector<std::size_t>(model.begin(), model.end()));
        ASSERT_EQ(set.count(), model.size());
        ASSERT_EQ(set.toString(), plain(model)) << "ranges that touch were not joined";
        ASSERT_EQ(set.containsIndex(begin), model.contains(begin));
        ASSERT_EQ(set.countOfIndexesInRange({begin, length}),
                  static_cast<std::size_t>(std::distance(model.lower_bound(begin), model.lower_bound(begin + length))));
    }
}

}  // namespace
