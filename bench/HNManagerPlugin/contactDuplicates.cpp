// The search for duplicates: time per contact must not grow with their number, nor with how alike they are.
#include <benchmark/benchmark.h>

#include <random>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/DuplicateSearch.h"

namespace {

std::shared_ptr<ZpContactDataInfo> contact(std::mt19937 &random, std::uint32_t people) {
    auto made = make<ZpContactDataInfo>();
    const std::string n = std::to_string(random() % people);
    made->setCompleteName("Person " + n);
    made->mutable_phone_numbers().push_back({"home", "+49 30-" + n});
    made->mutable_emails().push_back({"home", "person" + n + "@example.org"});
    if (random() % 4 == 0)
        made->setCompany_name("Company " + std::to_string(random() % 50));
    if (random() % 4 == 0) {
        ZpContactAddressDataInfo address;
        address.street = "Street " + n;
        address.country = "Germany";
        made->mutable_addresses().push_back(address);
    }
    return made;
}

// Every tenth contact repeats another one.
void phoneBook(benchmark::State &state) {
    std::mt19937 random(7);
    ContactList contacts;
    for (std::int64_t i = 0; i < state.range(0); ++i)
        contacts.push_back(contact(random, static_cast<std::uint32_t>(state.range(0) * 5)));
    for (auto _ : state)
        benchmark::DoNotOptimize(DuplicateSearch::groupsOf(contacts));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(phoneBook)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

// All of one name with the same two numbers in a chain: the pairwise rule would look at all pairs in every round.
void chain(benchmark::State &state) {
    ContactList contacts;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        auto made = make<ZpContactDataInfo>();
        made->setCompleteName(i % 2 ? "Ann" : "Person " + std::to_string(i));
        made->mutable_phone_numbers() = {{"home", std::to_string(i)}, {"home", std::to_string(i + 1)}};
        contacts.push_back(made);
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(DuplicateSearch::groupsOf(contacts));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(chain)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}   // namespace
