// The host's file panels and the user's folders. Panels are modal; main thread.
#pragma once

#include <vector>

#include "toolkit/NSString.h"

class RVMFileManager {
public:
    // Where panels start.
    [[nodiscard]] static NSString downloadPath();
    [[nodiscard]] static NSString musicPath();
    [[nodiscard]] static NSString photoPath();
    [[nodiscard]] static NSString moviesPath();

    // Extensions without dots, case does not matter; empty for all. An absent or missing folder is the person's last.
    // Empty on cancel.
    [[nodiscard]] static std::vector<NSString> openPanelWithFileType_directory_allowMutiSelect(const std::vector<NSString> &types,
                                                                                               const NSString &directory, bool several);
    // Picks a folder and lists the files of these types directly in it, by name; hidden ones left out. Empty on cancel.
    [[nodiscard]] static std::vector<NSString> openPanelEnumDirectoryFileList_dicrectory(const std::vector<NSString> &types,
                                                                                         const NSString &directory);
    // Picks a folder, new ones allowed; absent on cancel.
    [[nodiscard]] static NSString openPanelOnDirectory(const NSString &directory);
    // Picks a target file; absent on cancel. `type` without dot.
    [[nodiscard]] static NSString savePanelWithDirectory_defaultName_andFileType(const NSString &directory, const NSString &name,
                                                                                 const NSString &type);
};
