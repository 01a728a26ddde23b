// The product's persistent settings: texts under a key. A host installs the store; without one they last as long as the
// process. Any thread.
//
// Keys of the plug-in, each the folder of the last choice: "VideoImportFileDirectoryKey", "VideoImportFolderDirectoryKey",
// "VideoExportToPcDirectoryKey", "BookImportFilePathSaveKey", "ContactImportPathKey", "ContactExportPathKey",
// "MessageExportPathKey", "BookMarkExportPathKey".
#pragma once

#include <memory>

#include "toolkit/services/NSUserDefaults.h"

class RVProductConfig {
public:
    // Absent where the key has no value.
    [[nodiscard]] static NSString valueForKey(const NSString &key);
    static void setValue_forKey(const NSString &value, const NSString &key);
    // Null goes back to a store in memory, emptied.
    static void install(std::shared_ptr<UserDefaultsStore> store);
};
