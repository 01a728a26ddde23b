// Any bytes as a CSV file of contacts, for both readers: contacts or a fatal parse failure, never anything else.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/CsvFileReader.h"
#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"

namespace {

using Reader = CsvFileReader::Dictionaries (*)(std::string_view, const NSString &);

std::size_t contactsBy(Reader reader, std::string_view bytes) {
    try {
        return CsvFileReader::parseCSVContactDictionary(reader(bytes, "fuzz.csv"), "fuzz.csv").size();
    } catch (const FatalParseFailure &failure) {
        if (failure.line().value_or(0) < 1 || failure.reason().isEmpty())
            std::abort();
        return 0;
    }
}

}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    if (contactsBy(CsvFileReader::firstReader, bytes) > 1)
        std::abort();   // it reads one record at most
    (void)contactsBy(CsvFileReader::secondReader, bytes);
    return 0;
}
