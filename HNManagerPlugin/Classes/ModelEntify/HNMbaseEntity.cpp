#include "HNManagerPlugin/Classes/ModelEntify/HNMbaseEntity.h"

HN_CLASS_TABLE(HNMbaseEntity, NSObjectTable,
               .key("islocal", &HNMbaseEntity::islocal).key("type", &HNMbaseEntity::type).key("sortKey", &HNMbaseEntity::sortKey))
