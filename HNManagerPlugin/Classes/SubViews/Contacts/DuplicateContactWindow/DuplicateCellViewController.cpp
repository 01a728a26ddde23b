#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DuplicateCellViewController.h"

#include <algorithm>

#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/ContactTableCellView.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/ContactRules.h"

HN_CLASS_TABLE(DuplicateCellViewController, NSViewController,
               .selector("deleteLine:", &DuplicateCellViewController::deleteLine))

void DuplicateCellViewController::show(const std::shared_ptr<ContactSection> &section,
                                       const std::shared_ptr<ContactCellData> &data, bool merged) {
    section_ = section;
    data_ = data;
    isMerged_ = merged;
    (void)view();   // wires the outlets
    showName();
    tell(tableView, [](NSTableView &table) { table.reloadData(); });
}

void DuplicateCellViewController::showName() {
    const bool hasChoice = data_->names.size() >= 2;
    tell(nameLabel, [&](NSTextField &label) {
        label.setStringValue(data_->names.empty() ? NSString("") : data_->names.front());
        label.setHidden(hasChoice);
    });
    tell(nameCombo, [&](NSComboBox &combo) {
        combo.setHidden(!hasChoice);
        combo.removeAllItems();
        if (!hasChoice)
            return;
        const auto chosen = std::ranges::find(data_->names, section_->mergedName);
        combo.addItemsWithObjectValues(data_->names);
        combo.selectItemAtIndex(chosen == data_->names.end() ? 0 : chosen - data_->names.begin());
    });
}

void DuplicateCellViewController::comboBoxSelectionDidChange(NSComboBox &combo) {
    const NSString name = combo.itemObjectValueAtIndex(combo.indexOfSelectedItem());
    if (isMerged_ && name)
        section_->mergedName = name;
}

NSString DuplicateCellViewController::formatPhoneNumber(const NSString &number) {
    return contactRules::deletePhoneNumberSpace(number);
}

NSString DuplicateCellViewController::lineAt(std::size_t line) const {
    const auto &phones = data_->phoneNumbers;
    if (line < phones.size())
        return NSString::stringWithFormat("phone:%@", formatPhoneNumber(phones[line].phone_number));
    return NSString::stringWithFormat("email:%@", data_->emails[line - phones.size()].email);
}

void DuplicateCellViewController::deleteLine(const id &sender) {
    const auto button = std::dynamic_pointer_cast<NSButton>(sender);
    if (!button || button->tag() < 0 || button->tag() >= static_cast<std::int64_t>(data_->lineCount()))
        return;
    data_->removeLine(static_cast<std::size_t>(button->tag()));
    tell(tableView, [](NSTableView &table) { table.reloadData(); });
}

std::int64_t DuplicateCellViewController::numberOfRowsInTableView(NSTableView &) {
    return data_ ? static_cast<std::int64_t>(data_->lineCount()) : 0;
}

std::shared_ptr<NSView> DuplicateCellViewController::tableView_viewForTableColumn_row(NSTableView &table,
                                                                                      const std::shared_ptr<NSTableColumn> &column,
                                                                                      std::int64_t row) {
    const auto cell = table.makeView<ContactTableCellView>(column->identifier());
    if (cell)
        cell->show(lineAt(static_cast<std::size_t>(row)), row, isMerged_);
    return cell;
}
