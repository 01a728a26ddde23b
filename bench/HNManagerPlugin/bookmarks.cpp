// The bookmark tree: built from the device's list, searched, entered into its controller, written as a file.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <random>

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/HNMBookMarkViewModel.h"
#include "toolkit/dispatch/Queue.h"

namespace {

constexpr unsigned kSeed = 7;

// One folder for twenty bookmarks, half of the folders in another; in no order.
BookmarkList madeUp(std::int64_t bookmarks) {
    std::mt19937 random(kSeed);
    const std::int64_t folders = std::max<std::int64_t>(1, bookmarks / 20);
    BookmarkList list;
    for (std::int64_t i = 0; i < folders + bookmarks; ++i) {
        auto record = make<BookmarkDataInfo>();
        record->pKey = NSString(std::to_string(i + 1));
        record->isFolder = i < folders;
        const auto parent = static_cast<std::int64_t>(random() % static_cast<unsigned>(folders));
        if (!record->isFolder || (parent < i && random() % 2))
            record->parentKey = NSString(std::to_string(parent + 1));
        const std::string number = std::to_string(random());
        record->markName = NSString("A page about subject number " + number);
        record->url = record->isFolder ? NSString("") : NSString("https://www.example.com/articles/" + number + "/index.html");
        list.push_back(std::move(record));
    }
    std::shuffle(list.begin(), list.end(), random);
    return list;
}

class Device : public CBookmarkManagerImpl {
public:
    BookmarkList list;
    BookmarkList roadBookMarkData() override { return list; }
    std::int64_t isDeviceiCloudOpen(std::int64_t) override { return 0; }
    bool addBookMarkFolder(const NewFolders &) override { return false; }
    bool addBookMark(const NewBookmarks &) override { return false; }
    bool editBookMarkFolder(const std::shared_ptr<BookmarkDataInfo> &) override { return false; }
    bool editBookMark(const std::shared_ptr<BookmarkDataInfo> &) override { return false; }
    void moveBookMark_childrenKey_callBack(const NSString &, const std::vector<NSString> &, const MoveProgress &) override {}
    void deleteBookMarkFromPkeys_callBack(const Keys &, const DeleteProgress &) override {}
};

std::shared_ptr<HNMBookMarkViewModel> modelOf(std::int64_t bookmarks) {
    dispatch::adoptMainThread();
    auto device = make<Device>();
    device->list = madeUp(bookmarks);
    auto model = make<HNMBookMarkViewModel>();
    model->bookMarkImpl = device;
    model->outlineTreeController->setLeafKeyPath("isLeaf");
    return model;
}

// From the device's records to sorted contents.
void load(benchmark::State &state) {
    const auto model = modelOf(state.range(0));
    for (auto _ : state)
        model->reloadData();
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(load)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void showTree(benchmark::State &state) {
    const auto model = modelOf(state.range(0));
    model->reloadData();
    for (auto _ : state) {
        model->resetDataContents();
        model->setUpOutlineViewTreeNode();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(showTree)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

// Few hits, no hit, and every row a hit.
void search(benchmark::State &state, const char *text) {
    const auto model = modelOf(state.range(0));
    model->reloadData();
    model->setUpOutlineViewTreeNode();
    for (auto _ : state)
        benchmark::DoNotOptimize(model->searchFileByString(text));
    state.counters["hits"] = static_cast<double>(model->searchArray->count());
}
BENCHMARK_CAPTURE(search, few, "NUMBER 1234")->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(search, none, "nothing has this")->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(search, all, "SUBJECT")->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void writeFile(benchmark::State &state) {
    const auto model = modelOf(state.range(0));
    model->reloadData();
    const std::string path = (std::filesystem::temp_directory_path() / ("bench-bookmarks-" + std::to_string(getpid()) + ".html")).string();
    std::int64_t bytes = 0;
    for (auto _ : state) {
        model->exportSelectedBookMark_exportCount(path, state.range(0));
        state.PauseTiming();
        bytes += static_cast<std::int64_t>(std::filesystem::file_size(path));
        std::filesystem::remove(path);
        state.ResumeTiming();
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(writeFile)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}   // namespace
