#include "HNManagerPlugin/Classes/MainViewController/ViewModel/HNFileTypeObject.h"

HN_CLASS_TABLE(HNFileTypeObject, RVOutlineBaseNode,
               .key("fileTypeName", &HNFileTypeObject::fileTypeName)
               .key("fileTypeImage", &HNFileTypeObject::fileTypeImage)
               .key("hiddenExpandBgColor", &HNFileTypeObject::hiddenExpandBgColor)
               .key("nibName", &HNFileTypeObject::nibName)
               .key("expandMarkIcon", &HNFileTypeObject::expandMarkIcon)
               .key("textColor", &HNFileTypeObject::textColor)
               .key("itemCount", [](NSObject &o) { return Value(static_cast<HNFileTypeObject &>(o).itemCount()); },
                    [](NSObject &o, const Value &v) { static_cast<HNFileTypeObject &>(o).setItemCount(v.integerValue()); })
               .key("itemCountString", &HNFileTypeObject::itemCountString))

void HNFileTypeObject::setItemCount(std::int64_t count) {
    itemCount_ = count;
    itemCountString = count < 0 ? NSString("") : NSString::stringWithFormat("(%li)", count);
}
