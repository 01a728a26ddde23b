#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/ContactSection.h"

HN_CLASS_TABLE(ContactSection, NSObjectTable, .key("selected", &ContactSection::selected)
                                             .key("mergedCellData", &ContactSection::mergedCellData)
                                             .key("mergedName", &ContactSection::mergedName))

double ContactSection::height() const {
    double height = 0;
    for (const auto &cell : cellDatas)
        height += cell->height();
    return height;
}

std::shared_ptr<ZpContactDataInfo> ContactSection::survivor() const {
    const NSString key = mergedCellData->rawInfo->pKey();
    for (const auto &cell : cellDatas) {
        const auto &contact = cell->rawInfo;
        const bool isIt = contact->completeName().isEmpty() ? contact->pKey() == key : contact->completeName() == mergedName;
        if (isIt)
            return contact;
    }
    return nullptr;
}
