// The card reader over files that people have: bytes per second, and the memory that a contact of the result takes.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <random>
#include <string>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/VCardFileReader.h"

namespace {

std::string photo(std::mt19937 &random) {
    static constexpr char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text = "PHOTO;ENCODING=b;TYPE=JPEG:";
    for (std::size_t i = 0, column = 0; i < 4000; ++i, ++column) {
        if (column == 74) {
            text += "\r\n ";
            column = 0;
        }
        text += kLetters[random() % 64];
    }
    return text + "\r\n";
}

// About 600 bytes a card: every field, every twentieth with a folded picture.
std::string cards(std::int64_t count) {
    std::mt19937 random(7);
    std::string text;
    for (std::int64_t i = 0; i < count; ++i) {
        const std::string n = std::to_string(random() % 1'000'000);
        text += "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Fam" + n + ";G\xC3\xBCnter" + n + ";;;\r\nFN:G\xC3\xBCnter Fam" + n +
                "\r\n";
        text += "ORG:Company " + n + ";Department\r\nTITLE:Engineer\r\n";
        text += "EMAIL;type=INTERNET;type=WORK;type=pref:person" + n + "@example.org\r\n";
        text += "TEL;type=CELL;type=VOICE;type=pref:+49 30 " + n + "\r\nTEL;type=HOME:+49 40 " + n + "\r\n";
        text += "item1.ADR;TYPE=HOME:;;Long Street " + n + ";Berlin;;10115;Germany\r\nitem1.X-ABADR:de\r\n";
        if (i % 3 == 0)
            text += "item2.URL:http://example.org/" + n + "\r\nitem2.X-ABLabel:_$!<HomePage>!$_\r\n";
        if (i % 4 == 0)
            text += "NOTE:Met in\\nBerlin\\, second line\\nthird line " + n + "\r\nBDAY;VALUE=date:1980-02-03\r\n";
        if (i % 20 == 0)
            text += photo(random);
        text += "END:VCARD\r\n";
    }
    return text;
}

void readCards(benchmark::State &state, const std::string &text, std::int64_t count) {
    for (auto _ : state)
        benchmark::DoNotOptimize(VCardFileReader::readText(text, "bench.vcf"));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    state.SetItemsProcessed(state.iterations() * count);
    const std::size_t before = mallinfo2().uordblks;
    const ContactList kept = VCardFileReader::readText(text, "bench.vcf");
    state.counters["bytesPerContact"] =
        static_cast<double>(mallinfo2().uordblks - before) / static_cast<double>(kept.size());
    state.counters["fileBytes"] = static_cast<double>(text.size());
}

void mixedCards(benchmark::State &state) { readCards(state, cards(state.range(0)), state.range(0)); }
BENCHMARK(mixedCards)->Arg(100)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void bareEnds(benchmark::State &state) {
    std::string text = "BEGIN:VCARD\n";
    for (std::int64_t i = 0; i < state.range(0); ++i)
        text += "END:VCARD\n";
    readCards(state, text, state.range(0));
}
BENCHMARK(bareEnds)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

}   // namespace
