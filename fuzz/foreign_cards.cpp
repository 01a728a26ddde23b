// Any bytes as a card file of another program: refused with a line, or written so that the plug-in's reader takes every card;
// what counts as the dialect must be taken as it is.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/VCardFileReader.h"
#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"
#include "host/import/CardDialect.h"
#include "host/import/Rewriting.h"

namespace {

// A failure of the reader ends the process: nothing that it could refuse may reach it.
std::size_t cardsIn(std::string_view text) {
    if (!unicode::isValid(text))
        std::abort();
    return VCardFileReader::readText(text, "fuzz.vcf").size();
}

}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    if (host::foreign::isCardDialect(bytes) && cardsIn(bytes) == 0)
        std::abort();
    std::string out;
    host::foreign::Rewritten result;
    try {
        result = host::foreign::rewriteCards(bytes, "fuzz.vcf", [&](std::string_view piece) { out.append(piece); }, [](std::int64_t, const std::string &) {});
    } catch (const FatalParseFailure &failure) {
        if (failure.line().value_or(0) < 1 || failure.reason().isEmpty())
            std::abort();
        return 0;
    }
    if (result.contacts > 0 && cardsIn(out) != static_cast<std::size_t>(result.contacts))
        std::abort();
    return 0;
}
