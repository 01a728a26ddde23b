// Fetches a file of the device into a scratch folder and opens it in the system's player.
//
// Once     a file that stands in the folder already is opened and never fetched again (unless `fetchesAnew`).
// Cancel   closing the window or its button stops the fetch; the player is called all the same, with the first path that was
//          written, or with none.
// Names    one with ".." among its parts is refused: the device's owner must not choose files of this computer.
// Threads  main; returns when the progress window has ended.
#pragma once

#include <cstdint>
#include <optional>

#include "toolkit/NSString.h"

class DeviceFilePreview {
public:
    struct Place {
        NSString directory;
        bool fetchesAnew = false;
        std::optional<std::int64_t> totalBytes;   // instead of what the transfer reports
    };
    // In "TmpMusic" below the user's temporary folder. `name` may begin with "/"; `title` is the window's.
    static void open(const NSString &name, const NSString &devicePath, std::int64_t sizeBytes, const NSString &title);
    static void openIn(const Place &place, const NSString &name, const NSString &devicePath, const NSString &title);
};
