// Any bytes as a card file: records or a fatal parse failure, never anything else.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/VCardFileReader.h"
#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    if (!unicode::isValid(text))
        return 0;   // the reader's own gate
    try {
        for (const auto &contact : VCardFileReader::readText(text, "fuzz.vcf"))
            if (contact->imageCharData() &&
                contact->image_length() != static_cast<std::int64_t>(contact->imageCharData()->length()))
                std::abort();
    } catch (const FatalParseFailure &failure) {
        if (failure.line().value_or(0) < 1 || failure.reason().isEmpty())
            std::abort();
    }
    return 0;
}
