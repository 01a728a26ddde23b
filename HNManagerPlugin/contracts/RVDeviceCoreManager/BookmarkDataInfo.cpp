#include "HNManagerPlugin/contracts/RVDeviceCoreManager/BookmarkDataInfo.h"

HN_CLASS_TABLE(BookmarkDataInfo, NSObjectTable,
               .key("pKey", &BookmarkDataInfo::pKey)
                   .key("parentKey", &BookmarkDataInfo::parentKey)
                   .key("markName", &BookmarkDataInfo::markName)
                   .key("url", &BookmarkDataInfo::url)
                   .key("isFolder", &BookmarkDataInfo::isFolder)
                   .key("position", &BookmarkDataInfo::position))
