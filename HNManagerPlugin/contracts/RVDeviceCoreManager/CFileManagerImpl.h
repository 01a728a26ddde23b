// Files of the device: their addresses, the progress of a transfer, and the export to the computer.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "toolkit/NSObject.h"

// The address of a file on the device.
class DeviceFileInfo : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    HN_DECLARE_CLASS_TABLE
    [[nodiscard]] static std::shared_ptr<DeviceFileInfo> deviceFileInfoWithPath_FileName(const NSString &path, const NSString &fileName);

    NSString path;       // on the device
    NSString fileName;   // as shown
};

// Where a transfer stands. Handed to every progress block; read only there.
struct TransferProgress {
    NSString fileName;               // path or name of the file in work
    std::int64_t currentIndex = 0;   // its number, from 1
    std::int64_t totalCount = 0;     // files in this operation
    std::int64_t successCount = 0;   // files that succeeded so far
    std::int64_t currentSize = 0;    // bytes moved so far in the whole operation
    std::int64_t totalSize = 0;      // bytes of the whole operation
};

// Called on a thread of the layer during a blocking operation, again and again; the last call has `finished` true and
// comes before the operation returns. Returns the cancel status: 0 goes on, -1 stops after the file in work. It must not
// touch the user interface.
using ProgressBlock = std::function<std::int32_t(const TransferProgress &progress, bool finished)>;

class CFileManagerImpl : public NSObject {
public:
    // Copies files of the device into `directory`; `written` (may be null) receives the paths written, also those before
    // a stop. Blocks until the last file is done or the block has returned -1. A failed file is passed over. Any queue.
    virtual void exportDevcieFile_toDirectory_getExportFile_progress(const std::vector<std::shared_ptr<DeviceFileInfo>> &files,
                                                                     const NSString &directory, std::vector<NSString> *written,
                                                                     const ProgressBlock &progress) = 0;
    // The same for files named by their device paths alone.
    virtual void exportFile_toDirectory_getExportFile_progress(const std::vector<NSString> &paths, const NSString &directory,
                                                               std::vector<NSString> *written, const ProgressBlock &progress) = 0;
};
