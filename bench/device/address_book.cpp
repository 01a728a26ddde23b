// Reading an address book, against SQLite stepping over the same rows and looking at every column.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <random>

#include "device/ImageFolder.h"
#include "device/contacts/AddressBookReader.h"
#include "device/contacts/AddressBookStore.h"
#include "device/contacts/AddressBookWriter.h"
#include "device/sample/Sample.h"

using namespace device;
using namespace device::contacts;

namespace {

constexpr unsigned kSeed = 20;

// Two numbers, an e-mail each; an address for every second one, notes for every fourth.
std::shared_ptr<ZpContactDataInfo> madeUp(std::mt19937 &random, int number) {
    auto contact = make<ZpContactDataInfo>();
    const std::string digits = std::to_string(random());
    contact->setFirst_name("First" + digits.substr(0, 5));
    contact->setLast_name("Lastname" + std::to_string(number));
    contact->setCompany_name(number % 3 ? NSString() : NSString("Company and Sons " + digits));
    contact->mutable_phone_numbers() = {{"Mobile", "+49 171 " + digits}, {"Home", "+49 30 " + digits}};
    contact->mutable_emails() = {{"Work", "first.lastname" + digits + "@example.com"}};
    if (number % 2)
        contact->mutable_addresses() = {{"Home", "Some Street " + digits, "Springfield", "State", "12345", "Country", nullptr}};
    if (number % 4 == 0)
        contact->setNotes("A note that somebody wrote down " + digits);
    return contact;
}

const std::filesystem::path &imageOf(std::int64_t contacts) {
    static std::map<std::int64_t, std::filesystem::path> images;
    std::filesystem::path &path = images[contacts];
    if (!path.empty())
        return path;
    std::string folder = (std::filesystem::temp_directory_path() / "hn-bench-XXXXXX").string();
    path = mkdtemp(folder.data());
    sample::createImage(path, "Bench");
    const ImageFolder image(path);
    const WriterLock lock = image.lockForWriting();
    sqlite::Database database = image.openForWriting(lock, kAddressBook);
    sqlite::Transaction all(database);
    AddressBookWriter writer(database, false, 0);
    std::mt19937 random(kSeed);
    for (int i = 0; i < contacts; ++i)
        writer.add(*madeUp(random, i));
    all.commit();
    static const struct Cleaner {
        ~Cleaner() {
            for (const auto &[count, made] : images)
                std::filesystem::remove_all(made);
        }
    } cleaner;
    return path;
}

std::size_t walk(sqlite::Database &database, const char *sql, int columns) {
    std::size_t bytes = 0;
    sqlite::Statement row = database.prepare(sql);
    while (row.step())
        for (int column = 0; column < columns; ++column)
            bytes += row.rawText(column).size();
    return bytes;
}

void perContact(benchmark::State &state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void sqliteAlone(benchmark::State &state) {
    const ImageFolder image(imageOf(state.range(0)));
    for (auto _ : state) {
        sqlite::Database database = image.openForReading(kAddressBook);
        std::size_t bytes = walk(database,
                                 "SELECT ROWID, Birthday, Prefix, First, Middle, Last, Suffix, Organization, FirstPhonetic, MiddlePhonetic, LastPhonetic, "
                                 "Nickname, Department, JobTitle, Note FROM ABPerson ORDER BY ROWID", 15);
        bytes += walk(database, "SELECT record_id, property, label, value, UID FROM ABMultiValue WHERE property IN (3, 4, 5, 12, 13, 22, 23) ORDER BY UID", 5);
        bytes += walk(database, "SELECT parent_id, key, value FROM ABMultiValueEntry", 3);
        benchmark::DoNotOptimize(bytes);
    }
    perContact(state);
}

void contactRecords(benchmark::State &state) {
    const auto image = std::make_shared<ImageFolder>(imageOf(state.range(0)));
    const auto store = AddressBookStore::open(image);
    for (auto _ : state) {
        store->getContactDataFromAddressList();
        state.PauseTiming();   // the end of the records is the caller's
        store->freeAddressBookInfo();
        state.ResumeTiming();
    }
    perContact(state);
}

void adding(benchmark::State &state) {
    std::mt19937 random(kSeed);
    ContactList contacts;
    for (int i = 0; i < state.range(0); ++i)
        contacts.push_back(madeUp(random, i));
    for (auto _ : state) {
        state.PauseTiming();
        std::string folder = (std::filesystem::temp_directory_path() / "hn-bench-XXXXXX").string();
        const std::filesystem::path path = mkdtemp(folder.data());
        sample::createImage(path, "Bench");
        state.ResumeTiming();
        AddressBookStore::open(std::make_shared<ImageFolder>(path))->addNewContacts_toGroups_progress(contacts, {}, {});
        state.PauseTiming();
        std::filesystem::remove_all(path);
        state.ResumeTiming();
    }
    perContact(state);
}

void removing(benchmark::State &state) {
    for (auto _ : state) {
        state.PauseTiming();
        const std::filesystem::path copy = imageOf(state.range(0)).string() + "-copy";
        std::filesystem::copy(imageOf(state.range(0)), copy, std::filesystem::copy_options::recursive);
        const auto store = AddressBookStore::open(std::make_shared<ImageFolder>(copy));
        store->getContactDataFromAddressList();
        const ContactList contacts = store->contactArray();
        state.ResumeTiming();
        store->deleteContactsOrGroups_callBack(contacts, {});
        state.PauseTiming();
        std::filesystem::remove_all(copy);
        state.ResumeTiming();
    }
    perContact(state);
}

BENCHMARK(sqliteAlone)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(contactRecords)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(adding)->Arg(200)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(removing)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(2);

}  // namespace
