// Any bytes as an address book: reading and writing it may fail, never crash or hang.
#include <cstddef>
#include <cstdint>
#include <exception>

#include "device/contacts/AddressBookReader.h"
#include "device/contacts/AddressBookWriter.h"

using namespace device;

namespace {

void readAndWrite(sqlite::Database &database) {
    contacts::AddressBookReader reader(database);
    const ContactList contacts = reader.contacts(nullptr);
    (void)reader.groups();
    sqlite::Transaction all(database);
    contacts::AddressBookWriter writer(database, false, 0);
    auto added = make<ZpContactDataInfo>();
    added->setFirst_name("A");
    added->mutable_phone_numbers() = {{"Home", "12345"}};
    added->mutable_addresses() = {{"Home", "S", "C", nullptr, nullptr, nullptr, nullptr}};
    const std::int64_t record = writer.add(*added);
    writer.edit(record, *added);
    if (!contacts.empty())
        writer.remove(contacts.front()->pKey().integerValue());
    all.commit();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    try {
        sqlite::Database database = sqlite::Database::fromBytes({reinterpret_cast<const char *>(data), size});
        readAndWrite(database);
    } catch (const std::exception &) {
    }
    return 0;
}
