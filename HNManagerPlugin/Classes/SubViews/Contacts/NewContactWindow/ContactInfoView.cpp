#include "HNManagerPlugin/Classes/SubViews/Contacts/NewContactWindow/ContactInfoView.h"

#include <algorithm>

#include "HNManagerPlugin/contracts/RVUIKit/RUICheckBox.h"

HN_CLASS_TABLE(ContactInfoView, NSView, .key("textFieldEdited", &ContactInfoView::textFieldEdited)
                                            .selector("onGroupCheckBox:", &ContactInfoView::onGroupCheckBox)
                                            .selector("deleteButtonClick:", &ContactInfoView::deleteButtonClick))

namespace {

bool counts(const NSString &text) { return !text.stringByTrimmingCharactersInSet(CharacterSet::blanks).isEmpty(); }

}   // namespace

// ---------------------------------------------------------------- record

void ContactInfoView::bindField(const std::shared_ptr<NSTextField> &field, Read read, Write write) {
    field->setDelegate(selfOf(this));
    fields_.push_back({field, read, write});
}

void ContactInfoView::reload() {
    for (const Field &field : fields_)
        tell(field.view, [&](NSTextField &view) { view.setStringValue(((*contactEntity).*field.read)()); });
    tell(tableView, [](NSTableView &table) { table.reloadData(); });
}

// A table may ask for rows while the nib is still wired, before there is a contact.
NSString ContactInfoView::rowText(std::size_t row) const {
    if (!contactEntity)
        return {};
    if (rows == Rows::phones)
        return row < contactEntity->phone_numbers().size() ? contactEntity->phone_numbers()[row].phone_number : NSString();
    return row < contactEntity->emails().size() ? contactEntity->emails()[row].email : NSString();
}

NSString ContactInfoView::rowType(std::size_t row) const {
    if (!contactEntity)
        return {};
    if (rows == Rows::phones)
        return row < contactEntity->phone_numbers().size() ? contactEntity->phone_numbers()[row].type : NSString();
    return row < contactEntity->emails().size() ? contactEntity->emails()[row].type : NSString();
}

void ContactInfoView::setRowText(std::size_t row, const NSString &text) {
    if (rows == Rows::phones && row < contactEntity->phone_numbers().size())
        contactEntity->mutable_phone_numbers()[row].phone_number = text;
    else if (rows == Rows::emails && row < contactEntity->emails().size())
        contactEntity->mutable_emails()[row].email = text;
}

std::size_t ContactInfoView::itemCount() const {
    switch (rows) {
    case Rows::none: return 0;
    case Rows::groups: return groups ? groups->count() : 0;
    case Rows::phones: return contactEntity ? contactEntity->phone_numbers().size() : 0;
    case Rows::emails: return contactEntity ? contactEntity->emails().size() : 0;
    }
    return 0;
}

void ContactInfoView::addItem(const NSString &text) {
    if (contactEntity && rows == Rows::phones)
        contactEntity->mutable_phone_numbers().push_back({NSString(), text});
    else if (contactEntity && rows == Rows::emails)
        contactEntity->mutable_emails().push_back({NSString(), text});
    reload();
}

void ContactInfoView::removeItem(std::size_t item) {
    const auto erase = [item](auto &list) { list.erase(list.begin() + static_cast<std::ptrdiff_t>(item)); };
    if (rows == Rows::groups)
        groups->removeObjectAtIndex(item);
    else if (rows == Rows::phones)
        erase(contactEntity->mutable_phone_numbers());
    else
        erase(contactEntity->mutable_emails());
}

void ContactInfoView::deleteButtonClick(const id &sender) {
    const auto button = std::dynamic_pointer_cast<NSButton>(sender);
    if (!button || button->tag() < 0 || static_cast<std::size_t>(button->tag()) >= itemCount())
        return;
    const auto item = static_cast<std::size_t>(button->tag());
    removeItem(item);
    tell(tableView, [item](NSTableView &table) {
        table.removeRowsAtIndexes_withAnimation(NSIndexSet::indexSetWithIndex(item), NSTableViewAnimationEffectFade);
        table.reloadData();   // numbers and e-mails have their two rows all the same
    });
    tell(delegate, [&](ContactInfoViewDelegate &d) { d.ContactInfoView_viewIndex_selectRow(*this, index, button->tag()); });
}

// ---------------------------------------------------------------- typing

void ContactInfoView::updateEdited() {
    textFieldEdited = false;
    for (const Field &field : fields_)
        if (const auto view = field.view.lock())
            textFieldEdited = textFieldEdited || counts(view->stringValue());
    if (rows == Rows::phones || rows == Rows::emails)
        for (std::size_t row = 0; row < kRows; ++row)
            textFieldEdited = textFieldEdited || counts(rowText(row));
}

void ContactInfoView::controlTextDidChange(NSTextField &field) {
    const auto bound = std::ranges::find_if(fields_, [&](const Field &f) { return f.view.lock().get() == &field; });
    if (bound != fields_.end())
        ((*contactEntity).*bound->write)(field.stringValue());
    else
        setRowText(static_cast<std::size_t>(field.tag()), field.stringValue());
    updateEdited();
    tell(editing, [this](ContactInfoViewEditing &e) { e.sectionTextDidChange(*this); });
}

void ContactInfoView::controlTextDidBeginEditing(NSTextField &) {
    tell(editing, [this](ContactInfoViewEditing &e) { e.sectionDidBeginEditing(*this); });
}

// ---------------------------------------------------------------- rows

std::int64_t ContactInfoView::numberOfRowsInTableView(NSTableView &) {
    if (rows == Rows::groups)
        return groups ? static_cast<std::int64_t>(groups->count()) : 0;
    return kRows;
}

std::shared_ptr<NSView> ContactInfoView::tableView_viewForTableColumn_row(NSTableView &table,
                                                                          const std::shared_ptr<NSTableColumn> &column, std::int64_t row) {
    const auto cell = table.makeView<NSTableCellView>(column->identifier());
    if (cell)
        showRow(*cell, row);
    return cell;
}

void ContactInfoView::showRow(NSTableCellView &cell, std::int64_t row) {
    if (rows == Rows::groups) {
        const auto box = std::dynamic_pointer_cast<RUICheckBox>(cell.viewWithIdentifier("Group"));
        const auto group = groups->at<ContactGroupInfo>(static_cast<std::size_t>(row));
        box->setTag(row);
        box->setTitle(group ? group->groupName : NSString());
        box->setState(group && group->isSelected ? NSOnState : NSOffState);
        return;
    }
    const auto field = cell.textField();
    const char *name = rows == Rows::phones ? "phone" : "email";
    field->setTag(row);
    field->setIdentifier(NSString(name + std::to_string(row + 1)));
    field->setStringValue(rowText(static_cast<std::size_t>(row)));
    field->setPlaceholderString(rowHint_);
    field->setDelegate(selfOf(this));
    if (const auto type = std::dynamic_pointer_cast<NSTextField>(cell.viewWithIdentifier("Type")))
        type->setStringValue(rowType(static_cast<std::size_t>(row)));
}

void ContactInfoView::setRowHint(const NSString &hint) {
    rowHint_ = hint;
    tell(tableView, [&](NSTableView &table) {
        for (std::int64_t row = 0; row < table.numberOfRows(); ++row)
            if (const auto cell = std::dynamic_pointer_cast<NSTableCellView>(table.viewAtColumn_row_makeIfNecessary(0, row, true)))
                cell->textField()->setPlaceholderString(hint);
    });
}

void ContactInfoView::onGroupCheckBox(const id &sender) {
    const auto box = std::dynamic_pointer_cast<NSButton>(sender);
    const auto group = box && groups ? groups->at<ContactGroupInfo>(static_cast<std::size_t>(box->tag())) : nullptr;
    if (group)
        group->isSelected = box->state() == NSOnState;
}
