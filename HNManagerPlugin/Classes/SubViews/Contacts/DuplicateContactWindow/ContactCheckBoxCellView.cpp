#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/ContactCheckBoxCellView.h"

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"

HN_CLASS_TABLE(ContactCheckBoxCellView, NSTableCellView)

void ContactCheckBoxCellView::connect(const std::shared_ptr<NSObject> &target) {
    checkBox = make<RUICheckBox>(NSRect(10, 14, 18, 18));
    checkBox->setIdentifier("MergeGroup");
    checkBox->setAccessibilityName(localized("ContactView_MergeThisGroup"));
    checkBox->setImagePosition(NSCellImagePosition::imageOnly);
    checkBox->connect(target, "onItemCheckBox:");
    addSubview(checkBox);
}

void ContactCheckBoxCellView::show(const ContactSection &section, std::int64_t row) {
    checkBox->setTag(row);
    checkBox->setState(section.selected);
}
