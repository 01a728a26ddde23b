#include "HNManagerPlugin/contracts/RVDeviceCoreManager/CFileManagerImpl.h"

HN_CLASS_TABLE(DeviceFileInfo, NSObjectTable, .key("path", &DeviceFileInfo::path).key("fileName", &DeviceFileInfo::fileName))

std::shared_ptr<DeviceFileInfo> DeviceFileInfo::deviceFileInfoWithPath_FileName(const NSString &path, const NSString &fileName) {
    auto info = make<DeviceFileInfo>();
    info->path = path;
    info->fileName = fileName;
    return info;
}
