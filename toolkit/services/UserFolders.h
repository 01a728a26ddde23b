// The user's folders, as the host sets them once at its start. Any thread.
#pragma once

#include "toolkit/NSString.h"

struct UserFolders {
    NSString home, temporary, applicationSupport, desktop, downloads, music, pictures, movies;
};

void setUserFolders(UserFolders folders);
[[nodiscard]] UserFolders userFolders();

[[nodiscard]] inline NSString NSHomeDirectory() { return userFolders().home; }
// A private folder of the user, mode 0700, that outlives the process.
[[nodiscard]] inline NSString NSTemporaryDirectory() { return userFolders().temporary; }
