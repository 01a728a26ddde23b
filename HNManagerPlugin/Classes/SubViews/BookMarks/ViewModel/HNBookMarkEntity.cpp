#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/HNBookMarkEntity.h"

HN_CLASS_TABLE(HNBookMarkEntity, RVOutlineBaseNode,
               .key("isFolder", &HNBookMarkEntity::isFolder)
                   .key("isSelected", &HNBookMarkEntity::isSelected)
                   .key("position", &HNBookMarkEntity::position)
                   .key("name", &HNBookMarkEntity::name)
                   .key("url", &HNBookMarkEntity::url)
                   .key("pKey", &HNBookMarkEntity::pKey)
                   .key("parentKey", &HNBookMarkEntity::parentKey)
                   .key("parent", &HNBookMarkEntity::parent)
                   .key("icon", &HNBookMarkEntity::icon)
                   .key("expandMarkIcon", &HNBookMarkEntity::expandMarkIcon)
                   .key("childrenKey", [](NSObject &o) {
                       const auto &keys = static_cast<HNBookMarkEntity &>(o).childrenKey;
                       return Value(Value::List(keys.begin(), keys.end()));
                   }))
