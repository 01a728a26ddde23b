// Any bytes as a table of another program: refused with a line, or written so that the plug-in's readers take every contact;
// what counts as the dialect must be taken as it is.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/CsvFileReader.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/VCardFileReader.h"
#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"
#include "host/import/Rewriting.h"
#include "host/import/TableDialect.h"

namespace {

// As the plug-in reads a file; a failure ends the process.
std::size_t rowsIn(std::string_view text) {
    CsvFileReader::Dictionaries rows = CsvFileReader::firstReader(text, "fuzz.csv");
    if (rows.empty())
        rows = CsvFileReader::secondReader(text, "fuzz.csv");
    return CsvFileReader::parseCSVContactDictionary(rows, "fuzz.csv").size();
}

}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    if (host::foreign::isTableDialect(bytes) && rowsIn(bytes) == 0)
        std::abort();
    std::string out;
    host::foreign::Rewritten result;
    try {
        result = host::foreign::rewriteTable(bytes, "fuzz.csv", [&](std::string_view piece) { out.append(piece); }, [](std::int64_t, const std::string &) {});
    } catch (const FatalParseFailure &failure) {
        if (failure.line().value_or(0) < 1 || failure.reason().isEmpty())
            std::abort();
        return 0;
    }
    const std::size_t read = result.contacts == 0 ? 0 : result.isTable ? rowsIn(out) : VCardFileReader::readText(out, "fuzz.csv").size();
    if (read != static_cast<std::size_t>(result.contacts))
        std::abort();
    return 0;
}
