// Where a device keeps its messages, and the tables of a new database.
#pragma once

#include <cstdint>

#include "device/FileTree.h"

namespace device::messages {

inline const DevicePath kMessages{"HomeDomain", "Library/SMS/sms.db"};
inline constexpr const char *kAttachmentDomain = "MediaDomain";
inline constexpr const char *kAttachmentFolder = "Library/SMS/Attachments";

// Dates count from 2001-01-01 00:00:00 UTC, in nanoseconds above this value, else in seconds.
inline constexpr std::int64_t kLargestSeconds = 100'000'000'000;
inline constexpr std::int64_t kEpoch = 978'307'200;

// The newest layout known.
extern const char *const kNewMessages;

}  // namespace device::messages
