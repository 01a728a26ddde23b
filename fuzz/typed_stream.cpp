// Any bytes as the archive inside attributedBody: there may be no text, never a crash, a hang or bytes from outside.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "device/messages/TypedStream.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    const auto text = device::messages::textOfTypedStream(bytes);
    if (text && !text->empty() && (text->data() < bytes.data() || text->data() + text->size() > bytes.data() + bytes.size()))
        std::abort();
    return 0;
}
