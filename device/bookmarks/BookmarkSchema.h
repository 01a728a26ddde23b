// Where a device keeps its bookmarks, and the tables of a new database.
#pragma once

#include <cstdint>
#include <optional>

#include "device/FileTree.h"
#include "toolkit/NSString.h"

namespace device::bookmarks {

inline const DevicePath kBookmarks{"HomeDomain", "Library/Safari/Bookmarks.db"};
inline constexpr std::int64_t kRoot = 0;   // the row above the top level; no bookmark itself

enum class Type : std::int64_t { bookmark = 0, folder = 1 };

// The newest layout known, with its root.
extern const char *const kNewBookmarks;

// The row that a pKey names, the root for the empty text; absent for any other text.
[[nodiscard]] std::optional<std::int64_t> rowOfKey(const NSString &key);

}  // namespace device::bookmarks
