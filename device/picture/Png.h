// PNG pictures (ISO/IEC 15948), decoded: all colour types and depths, interlaced ones too; transparency on white.
#pragma once

#include "device/picture/Jpeg.h"

namespace device::picture {

// Nothing where the bytes are no PNG, damaged or above kMaxPixels.
[[nodiscard]] std::optional<Pixels> decodedPng(std::string_view bytes);

}  // namespace device::picture
