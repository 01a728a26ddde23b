#include "toolkit/views/NSComboBox.h"

#include "toolkit/dispatch/Guard.h"
#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSComboBox, NSTextField, .key("indexOfSelectedItem", keys::get(&NSComboBox::indexOfSelectedItem), keys::set(&NSComboBox::selectItemAtIndex))
                   .key("numberOfItems", &NSComboBox::numberOfItems))

void NSComboBox::setUsesDataSource(bool uses) {
    usesDataSource_ = uses;
    reloadData();
}

void NSComboBox::reloadData() {
    assertMain("NSComboBox reloadData");
    if (selected_ >= numberOfItems())
        selected_ = -1;
    noteChanged("items");
}

std::int64_t NSComboBox::numberOfItems() const {
    if (!usesDataSource_)
        return static_cast<std::int64_t>(items_.size());
    const auto source = source_.lock();
    return source ? source->numberOfItemsInComboBox(const_cast<NSComboBox &>(*this)) : 0;
}

NSString NSComboBox::itemObjectValueAtIndex(std::int64_t index) const {
    if (index < 0 || index >= numberOfItems())
        return {};
    if (!usesDataSource_)
        return items_[static_cast<std::size_t>(index)];
    return source_.lock()->comboBox_objectValueForItemAtIndex(const_cast<NSComboBox &>(*this), index);
}

void NSComboBox::addItemWithObjectValue(NSString item) { addItemsWithObjectValues({std::move(item)}); }

void NSComboBox::addItemsWithObjectValues(const std::vector<NSString> &items) {
    assertMain("NSComboBox addItemsWithObjectValues:");
    items_.insert(items_.end(), items.begin(), items.end());
    noteChanged("items");
}

void NSComboBox::removeAllItems() {
    assertMain("NSComboBox removeAllItems");
    items_.clear();
    selected_ = -1;
    noteChanged("items");
}

void NSComboBox::selectItemAtIndex(std::int64_t index) {
    assertMain("NSComboBox selectItemAtIndex:");
    const auto self = selfOf(this);
    const NSString text = itemObjectValueAtIndex(index);
    if (text.isNil())
        return;
    const bool isOther = std::exchange(selected_, index) != index;
    setStringValue(text);
    if (!isOther)
        return;
    noteChanged("indexOfSelectedItem");
    if (const auto delegate = comboDelegate_.lock())
        dispatch::guarded("comboBoxSelectionDidChange:", [&] { delegate->comboBoxSelectionDidChange(*this); });
}

void NSComboBox::deselectItemAtIndex(std::int64_t index) {
    if (selected_ != index)
        return;
    selected_ = -1;
    noteChanged("indexOfSelectedItem");
}

bool NSComboBox::chooseItemAtIndex(std::int64_t index) {
    if (!isEnabled() || index < 0 || index >= numberOfItems())
        return false;
    const auto self = selfOf(this);
    const auto delegate = comboDelegate_.lock();
    if (delegate)
        dispatch::guarded("comboBoxWillPopUp:", [&] { delegate->comboBoxWillPopUp(*this); });
    selectItemAtIndex(index);
    if (delegate)
        dispatch::guarded("comboBoxWillDismiss:", [&] { delegate->comboBoxWillDismiss(*this); });
    sendAction();
    return true;
}

std::string NSComboBox::describeContent() const {
    return NSTextField::describeContent() + " item " + std::to_string(selected_) + " of " + std::to_string(numberOfItems());
}
