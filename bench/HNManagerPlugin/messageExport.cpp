// Export of messages without attachments: the table and the page, per message.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "HNManagerPlugin/Classes/SubViews/Message/ViewManager/HNMMessageViewManager.h"
#include "toolkit/dispatch/MainLoop.h"

namespace {

namespace fs = std::filesystem;

HNMMessageViewModel::Threads threadsOf(std::int64_t messages) {
    constexpr std::int64_t kRowsPerThread = 1250;   // 400 conversations of 500,000 messages
    HNMMessageViewModel::Threads threads;
    for (std::int64_t row = 0; row < messages; ++row) {
        if (row % kRowsPerThread == 0) {
            threads.push_back(make<HNMessageEntity>());
            threads.back()->chatID = threads.size();
            threads.back()->contactName = "Ada Lindqvist";
            threads.back()->serviceName = {"iMessage"};
        }
        const auto message = make<HNDetailMessage>();
        message->isSend = row % 3 == 0;
        message->content = "a message of the usual length, \xE4\xBD\xA0\xE5\xA5\xBD \xF0\x9F\x98\x80 & more";
        message->personSend = "+46701740605";
        message->personName = "Ada Lindqvist";
        message->date = NSString::stringWithFormat("2024-%02ld-%02ld %02ld:%02ld:00", row / 40000 % 12 + 1, row / 1440 % 28 + 1, row / 60 % 24, row % 60);
        threads.back()->messageArray->addObject(message);
    }
    return threads;
}

template <class Export> void measure(benchmark::State &state, Export &&write) {
    const fs::path folder = fs::temp_directory_path() / ("bench-messages-" + std::to_string(::getpid()));
    const auto threads = threadsOf(state.range(0));
    const auto model = make<HNMMessageViewModel>();
    for (auto _ : state) {
        fs::remove_all(folder);
        fs::create_directories(folder);
        write(*model, threads, folder.string());
        dispatch::settle();
    }
    fs::remove_all(folder);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void table(benchmark::State &state) {
    measure(state, [](HNMMessageViewModel &model, const auto &threads, const std::string &folder) {
        const NSString path(folder + "/out.xls");
        model.exportSelectedMessages_exportMessages_callBack(path, threads, [](auto, auto, const auto &) {});
        HNMMessageViewManager::changeMessageFileCodeToGB(path);
    });
}
BENCHMARK(table)->Arg(5'000)->Arg(500'000)->Unit(benchmark::kMillisecond);

void page(benchmark::State &state) {
    measure(state, [](HNMMessageViewModel &model, const auto &threads, const std::string &folder) {
        model.exportHtml_exportMessages_Htmltitle_callBack(NSString(folder + "/page/Messages.html"), threads, "phone",
                                                           [](auto, auto, const auto &, bool) {});
    });
}
BENCHMARK(page)->Arg(5'000)->Arg(500'000)->Unit(benchmark::kMillisecond);

}  // namespace
