// The repeat check of an import: time per imported record must not grow with the contacts on the device.
#include <benchmark/benchmark.h>

#include <random>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactRepeatCheck.h"

namespace {

// Of a phone book that has mostly names and numbers; every second one has one address, which differs.
std::shared_ptr<ZpContactDataInfo> contact(std::mt19937 &random) {
    auto made = make<ZpContactDataInfo>();
    const std::string n = std::to_string(random() % 10'000'000);
    made->setCompleteName("Person " + n);
    made->mutable_phone_numbers().push_back({"home", "+49 30-" + n});
    made->mutable_emails().push_back({"home", "person" + n + "@example.org"});
    if (random() % 2) {
        ZpContactAddressDataInfo address;
        address.street = "Street " + n;
        address.country = "Germany";
        made->mutable_addresses().push_back(address);
    }
    return made;
}

void importAgainst(benchmark::State &state) {
    std::mt19937 random(7);
    ContactList contents, records;
    for (std::int64_t i = 0; i < state.range(0); ++i)
        contents.push_back(contact(random));
    for (std::size_t i = 0; i < 10'000; ++i)
        records.push_back(i % 2 ? contact(random) : contents[random() % contents.size()]->copy());
    for (auto _ : state)
        ContactRepeatCheck(contents).combineImportRepeatContacts(records);
    state.SetItemsProcessed(state.iterations() * 10'000);
}
BENCHMARK(importAgainst)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}   // namespace
