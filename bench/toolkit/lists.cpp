// Lists as long as people have them: sorting, rearranging, selecting. Time per element.
#include <benchmark/benchmark.h>

#include <random>

#include "toolkit/lists/NSArrayController.h"
#include "toolkit/lists/NSTreeController.h"

namespace {

class Track : public NSObject {
public:
    NSString title;
    std::shared_ptr<NSMutableArray> children = make<NSMutableArray>();
    HN_DECLARE_CLASS_TABLE
};
HN_CLASS_TABLE(Track, NSObjectTable, .key("title", &Track::title) .key("children", &Track::children))

NSArray tracks(std::int64_t count) {
    std::mt19937 random(7);
    NSArray::Items made;
    for (std::int64_t i = 0; i < count; ++i) {
        auto track = make<Track>();
        track->title = NSString("Track number " + std::to_string(random()));
        made.push_back(std::move(track));
    }
    return made;
}

void perElement(benchmark::State &state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void sortByTitle(benchmark::State &state) {
    const NSArray all = tracks(state.range(0));
    const auto list = make<NSMutableArray>();
    for (auto _ : state) {
        list->setArray(all);
        list->sortUsingDescriptors({NSSortDescriptor("title")});
    }
    perElement(state);
}
BENCHMARK(sortByTitle)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void rearrangeWithHalfSelected(benchmark::State &state) {
    const auto controller = make<NSArrayController>();
    controller->setContent(make<NSMutableArray>(tracks(state.range(0))));
    NSMutableIndexSet half;
    for (std::int64_t row = 0; row < state.range(0); row += 2)
        half.addIndex(static_cast<std::size_t>(row));
    controller->setSelectionIndexes(half);
    for (auto _ : state)
        controller->rearrangeObjects();
    perElement(state);
}
BENCHMARK(rearrangeWithHalfSelected)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void addOneByOne(benchmark::State &state) {
    const NSArray all = tracks(state.range(0));
    for (auto _ : state) {
        const auto controller = make<NSArrayController>();
        for (const id &track : all)
            controller->addObject(track);
    }
    perElement(state);
}
BENCHMARK(addOneByOne)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void rearrangeATree(benchmark::State &state) {
    const auto tree = make<NSTreeController>();
    std::shared_ptr<NSMutableArray> into = tree->content();
    std::int64_t row = 0;
    for (const id &track : tracks(state.range(0))) {
        into->addObject(track);
        if (++row % 100 == 0)
            into = static_cast<Track &>(*track).children;
    }
    for (auto _ : state)
        tree->rearrangeObjects();
    perElement(state);
}
BENCHMARK(rearrangeATree)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void removeHalfOfTheSiblings(benchmark::State &state) {
    const NSArray all = tracks(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        const auto tree = make<NSTreeController>();
        tree->content()->setArray(all);
        tree->rearrangeObjects();
        std::vector<NSIndexPath> half;
        for (std::int64_t row = 0; row < state.range(0); row += 2)
            half.push_back(NSIndexPath::indexPathWithIndex(static_cast<std::size_t>(row)));
        state.ResumeTiming();
        tree->removeObjectsAtArrangedObjectIndexPaths(half);
    }
    perElement(state);
}
BENCHMARK(removeHalfOfTheSiblings)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
