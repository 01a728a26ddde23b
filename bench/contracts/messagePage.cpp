// How long a page of messages takes to open in Chromium (it must be in PATH), beyond an empty page, until it is painted.
#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "HNManagerPlugin/contracts/RVMessageWriter/ppWriterMeassagerHtml.h"

namespace {

namespace fs = std::filesystem;

constexpr double kMostSeconds = 3.0;

// Nothing where the browser did not come to a good end.
std::optional<double> secondsToPaint(const fs::path &page, const fs::path &scratch) {
    const std::string profile = "--user-data-dir=" + (scratch / "profile").string(), picture = "--screenshot=" + (scratch / "page.png").string(),
                      address = "file://" + page.string();
    const char *words[] = {"chromium", "--headless=new", "--no-sandbox", "--disable-gpu", profile.c_str(), picture.c_str(), address.c_str(), nullptr};
    const auto begin = std::chrono::steady_clock::now();
    pid_t child = 0;
    int status = -1;
    if (::posix_spawnp(&child, words[0], nullptr, nullptr, const_cast<char **>(words), environ) != 0 || ::waitpid(child, &status, 0) != child || status != 0)
        return std::nullopt;
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

void writePage(const fs::path &page, std::int64_t messages) {
    const auto writer = alloc<ppWriterMeassagerHtml>();
    writer->initWithPath_Title(NSString(page.string()), "phone");
    writer->start();
    writer->sessionStart_Type("Alan", "Message");
    for (std::int64_t count = 0; count < messages; ++count) {
        writer->dateMiddle("2024-03-05 10:20:30");
        writer->messagesLeft("A message of the usual length, with an emoji \xF0\x9F\x98\x80 and \xE4\xBD\xA0\xE5\xA5\xBD");
    }
    writer->sessionEnd();
    writer->end();
}

void messagePageOpensInChromium(benchmark::State &state) {
    const fs::path folder = fs::temp_directory_path() / ("bench-page-" + std::to_string(::getpid()));
    const fs::path page = folder / "Messages.html", blank = folder / "empty.html";
    fs::create_directories(folder);
    writePage(page, state.range(0));
    std::ofstream(blank) << "<!DOCTYPE html><title>x</title>";
    (void)secondsToPaint(blank, folder);   // makes the profile
    for (auto _ : state) {
        const auto empty = secondsToPaint(blank, folder), full = secondsToPaint(page, folder);
        if (!empty || !full)
            state.SkipWithError("chromium could not show the page");
        else if (*full - *empty > kMostSeconds)
            state.SkipWithError("it takes longer than 3 s");
        else
            state.SetIterationTime(*full - *empty);
    }
    fs::remove_all(folder);
}
BENCHMARK(messagePageOpensInChromium)->Arg(100'000)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
