// Reads the bookmarks out of a bookmark database of any version.
// Order   parent, place, row. Absent: a missing column reads as NULL. Errors: AccessError where there is no bookmark table,
//         sqlite::Error. Threads: as the database.
#pragma once

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/BookmarkDataInfo.h"
#include "device/sqlite/Database.h"

namespace device::bookmarks {

// Deleted and hidden rows and the root are left out.
[[nodiscard]] BookmarkList readBookmarks(sqlite::Database &database);

}  // namespace device::bookmarks
