// A contact record as JSON: every field under its own name, absent ones null; the picture on show is left out, raw picture
// bytes are base64 text.
#pragma once

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"
#include "host/cli/Console.h"

namespace host::cli {

[[nodiscard]] Json contactRecord(const ZpContactDataInfo &contact);
// RFC 4648, padded.
[[nodiscard]] std::string base64(std::string_view bytes);

}  // namespace host::cli
