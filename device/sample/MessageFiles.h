// Files that the sample's messages carry, made here: pictures, a sound, a document, an address card.
// Threads  any.
#pragma once

#include <string>

namespace device::sample {

[[nodiscard]] std::string harbourPicture();   // JPEG
[[nodiscard]] std::string sailPicture();      // HEIC
[[nodiscard]] std::string longReceipt();      // JPEG, much taller than wide
[[nodiscard]] std::string chime();            // WAV
[[nodiscard]] std::string timetable();        // PDF, one page
[[nodiscard]] std::string addressCard();      // vCard

}  // namespace device::sample
