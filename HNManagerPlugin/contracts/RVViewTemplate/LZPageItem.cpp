#include "HNManagerPlugin/contracts/RVViewTemplate/LZPageItem.h"

HN_CLASS_TABLE(LZPageItem, NSObjectTable)
