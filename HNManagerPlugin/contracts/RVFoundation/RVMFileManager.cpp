#include "HNManagerPlugin/contracts/RVFoundation/RVMFileManager.h"

#include <algorithm>

#include "toolkit/services/NSFileManager.h"
#include "toolkit/services/UserFolders.h"
#include "toolkit/views/NSSavePanel.h"

namespace {

NSString pickFolder(const NSString &start, bool mayCreate) {
    const auto panel = NSOpenPanel::openPanel();
    panel->canChooseFiles = false;
    panel->canChooseDirectories = true;
    panel->canCreateDirectories = mayCreate;
    panel->directoryURL = start;
    return panel->runModal() == kPanelOK ? panel->URL() : NSString();
}

bool isOfType(const NSString &path, const std::vector<NSString> &types) {
    return types.empty() || std::ranges::any_of(types, [extension = path.pathExtension()](const NSString &type) {
        return extension.isEqualIgnoringCase(type);
    });
}

}  // namespace

NSString RVMFileManager::downloadPath() { return userFolders().downloads; }
NSString RVMFileManager::musicPath() { return userFolders().music; }
NSString RVMFileManager::photoPath() { return userFolders().pictures; }
NSString RVMFileManager::moviesPath() { return userFolders().movies; }

std::vector<NSString> RVMFileManager::openPanelWithFileType_directory_allowMutiSelect(const std::vector<NSString> &types,
                                                                                      const NSString &directory, bool several) {
    const auto panel = NSOpenPanel::openPanel();
    panel->allowedFileTypes = types;
    panel->directoryURL = directory;
    panel->allowsMultipleSelection = several;
    if (panel->runModal() != kPanelOK)
        return {};
    return panel->URLs();
}

std::vector<NSString> RVMFileManager::openPanelEnumDirectoryFileList_dicrectory(const std::vector<NSString> &types,
                                                                                const NSString &directory) {
    const NSString folder = pickFolder(directory, false);
    std::vector<NSString> files;
    if (folder.isEmpty())
        return files;
    for (const NSString &name : NSFileManager::contentsOfDirectoryAtPath(folder)) {
        const NSString path = folder.stringByAppendingPathComponent(name);
        if (!name.hasPrefix(".") && isOfType(name, types) && !NSFileManager::isDirectoryAtPath(path))
            files.push_back(path);
    }
    return files;
}

NSString RVMFileManager::openPanelOnDirectory(const NSString &directory) {
    return pickFolder(directory, true);
}

NSString RVMFileManager::savePanelWithDirectory_defaultName_andFileType(const NSString &directory, const NSString &name,
                                                                        const NSString &type) {
    const auto panel = NSSavePanel::savePanel();
    panel->directoryURL = directory;
    panel->nameFieldStringValue = name;
    panel->allowedFileTypes = {type};
    return panel->runModal() == kPanelOK ? panel->URL() : NSString();
}
