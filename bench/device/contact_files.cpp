// Cards and tables of contacts, without the file.
#include <benchmark/benchmark.h>

#include <string>

#include "device/contacts/CardText.h"
#include "device/contacts/TableText.h"

namespace {

ContactList people(std::int64_t count) {
    ContactList contacts;
    for (std::int64_t i = 0; i < count; ++i) {
        const std::string n = std::to_string(i);
        auto made = make<ZpContactDataInfo>();
        made->setCompleteName("Person" + n + " Family" + n);
        made->setFirst_name("Person" + n);
        made->setLast_name("Family" + n);
        made->setCompany_name("Company, Sons");
        made->setNotes("met in \"Bar\", twice\nin " + n);
        made->mutable_phone_numbers() = {{"Mobile", "+49 30 " + n}, {"Work", "+49 40 " + n}};
        made->mutable_emails() = {{"Work", "person" + n + "@example.org"}};
        made->mutable_addresses() = {{"Home", "Street 1, " + n, "Berlin", "", "12345", "Germany", "de"}};
        contacts.push_back(std::move(made));
    }
    return contacts;
}

void cards(benchmark::State &state) {
    const ContactList contacts = people(state.range(0));
    std::int64_t bytes = 0;
    for (auto _ : state) {
        std::string text;
        for (const auto &contact : contacts)
            device::contacts::appendCard(text, *contact);
        bytes += static_cast<std::int64_t>(text.size());
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(cards)->Arg(500)->Arg(50'000)->Unit(benchmark::kMillisecond);

void cardsWithPictures(benchmark::State &state) {
    const ContactList contacts = people(state.range(0));
    for (const auto &contact : contacts)
        contact->setImageCharData(NSData::of("\xFF\xD8\xFF" + std::string(40'000, 'x')));
    std::int64_t bytes = 0;
    for (auto _ : state) {
        std::string text;
        for (const auto &contact : contacts)
            device::contacts::appendCard(text, *contact);
        bytes += static_cast<std::int64_t>(text.size());
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(cardsWithPictures)->Arg(500)->Unit(benchmark::kMillisecond);

void table(benchmark::State &state) {
    const ContactList contacts = people(state.range(0));
    std::int64_t bytes = 0;
    for (auto _ : state) {
        const device::contacts::TableText made(contacts);
        std::string text;
        made.appendHeading(text);
        for (const auto &contact : contacts)
            made.appendRow(text, *contact);
        bytes += static_cast<std::int64_t>(text.size());
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(table)->Arg(500)->Arg(50'000)->Unit(benchmark::kMillisecond);

}   // namespace
