// The CSV readers: the splitting and repair stages alone, and with dictionaries and contacts.
#include <benchmark/benchmark.h>

#include <string>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/CsvFileReader.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/CsvText.h"

namespace {

// A row of our own exporter: plain columns, two numbers, an address.
std::string rows(std::int64_t count) {
    std::string text;
    for (std::int64_t i = 0; i < count; ++i) {
        const std::string n = std::to_string(i);
        text += "Person" + n + ",,,,Family" + n + ",,,,,1980-01-01,\"met in \"\"Bar\"\", twice\\nin " + n +
                "\",Company,Sales,Clerk,Mobile,+49 30 " + n + ",Work,+49 40 " + n + ",Home,12345,Germany,,Berlin,\"Street 1, " + n + "\",\n";
    }
    return text;
}
constexpr const char *kHeading =
    "Given Name,Given Name Yomi,Additional Name,Additional Name Yomi,Family Name,Family Name Yomi,Nickname,Name Prefix,Name Suffix,"
    "Birthday,Notes,Organization 1 - Name,Organization 1 - Department,Organization 1 - Title,Phone 1 - Type,Phone 1 - Value,"
    "Phone 2 - Type,Phone 2 - Value,Address 1 - Type,p,c,r,t,s,End of Row\n";

void fieldStages(benchmark::State &state) {
    const std::string text = rows(state.range(0));
    for (auto _ : state) {
        const std::string marked = csvText::replaceCommaSymbol(csvText::replaceBackslashes(text));
        benchmark::DoNotOptimize(csvText::Fields(marked, marked.size()).count());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(fieldStages)->Arg(500)->Arg(5'000)->Arg(50'000)->Unit(benchmark::kMillisecond);

void dictionaries(benchmark::State &state) {
    const std::string text = kHeading + rows(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(CsvFileReader::secondReader(text, "bench.csv"));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(dictionaries)->Arg(500)->Arg(5'000)->Arg(50'000)->Unit(benchmark::kMillisecond);

void contacts(benchmark::State &state) {
    const std::string text = kHeading + rows(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(
            CsvFileReader::parseCSVContactDictionary(CsvFileReader::secondReader(text, "bench.csv"), "bench.csv"));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(contacts)->Arg(500)->Arg(5'000)->Arg(50'000)->Unit(benchmark::kMillisecond);

}   // namespace
