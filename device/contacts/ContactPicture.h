// The picture that a record brings to the device.
#pragma once

#include <optional>
#include <string>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

namespace device::contacts {

inline constexpr std::size_t kMaxPictureBytes = 64u << 20;
// The icon that stands for a contact without a picture. It travels with records and is never stored.
inline constexpr const char *kPlaceholderName = "icon_list_user";

// The bytes of `imageCharData`, else of the file at `imagePath`, as JPEG, or as they are where they cannot be converted.
// Nothing where the record brings none, or the file cannot be read.
[[nodiscard]] std::optional<std::string> newPictureOf(const ZpContactDataInfo &contact);
// The bytes that leave the device with a contact, in the same way: those of `imageCharData`, else of `image_data`.
[[nodiscard]] std::optional<std::string> exportedPictureOf(const ZpContactDataInfo &contact);

}  // namespace device::contacts
