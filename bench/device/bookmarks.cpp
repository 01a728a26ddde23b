// Reading, moving and deleting bookmarks of a device image.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "device/bookmarks/BookmarkStore.h"
#include "device/bookmarks/BookmarkWriter.h"
#include "device/sample/Sample.h"

using namespace device;
using namespace device::bookmarks;

namespace {

namespace fs = std::filesystem;

// A new image with folders of twenty bookmarks; removed at the end.
class Image {
public:
    explicit Image(std::int64_t count) {
        std::string pattern = (fs::temp_directory_path() / "bench-bookmarks-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        sample::createImage(folder_ / "image", "Bench");
        const auto image = std::make_shared<ImageFolder>(folder_ / "image");
        {
            const WriterLock lock = image->lockForWriting();
            sqlite::Database database = image->openForWriting(lock, kBookmarks);
            sqlite::Transaction all(database);
            BookmarkWriter writer(database, 0);
            for (std::int64_t i = 0, folder = 0; i < count; ++i) {
                if (i % 20 == 0)
                    folder = writer.add(kRoot, Type::folder, "Folder " + std::to_string(i), "");
                const std::int64_t row = writer.add(folder, Type::bookmark, "Bookmark " + std::to_string(i), "https://example.com/" + std::to_string(i));
                keys.emplace(std::to_string(row), std::to_string(row));
            }
            all.commit();
        }
        store = BookmarkStore::open(image);
    }
    ~Image() { fs::remove_all(folder_); }
    std::shared_ptr<BookmarkStore> store;
    CBookmarkManagerImpl::Keys keys;

private:
    fs::path folder_;
};

void read(benchmark::State &state) {
    const Image image(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(image.store->roadBookMarkData());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(read)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void move(benchmark::State &state) {
    for (auto _ : state) {
        state.PauseTiming();
        const Image image(state.range(0));
        std::vector<NSString> list;
        for (const auto &entry : image.keys)
            list.push_back(entry.first);
        state.ResumeTiming();
        image.store->moveBookMark_childrenKey_callBack("1", list, {});
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(move)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond)->Iterations(1);

void remove(benchmark::State &state) {
    for (auto _ : state) {
        state.PauseTiming();
        const Image image(state.range(0));
        state.ResumeTiming();
        image.store->deleteBookMarkFromPkeys_callBack(image.keys, {});
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(remove)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
