// A text field with a list of choices. The items are its own, or a data source's. Threads: main.
#pragma once

#include <vector>

#include "toolkit/views/NSTextField.h"

class NSComboBox;

class NSComboBoxDataSource {
public:
    virtual ~NSComboBoxDataSource() = default;
    [[nodiscard]] virtual std::int64_t numberOfItemsInComboBox(NSComboBox &) = 0;
    [[nodiscard]] virtual NSString comboBox_objectValueForItemAtIndex(NSComboBox &, std::int64_t index) = 0;
};

class NSComboBoxDelegate {
public:
    virtual ~NSComboBoxDelegate() = default;
    virtual void comboBoxWillPopUp(NSComboBox &) {}
    virtual void comboBoxWillDismiss(NSComboBox &) {}
    virtual void comboBoxSelectionDidChange(NSComboBox &) {}
};

class NSComboBox : public NSTextField {
public:
    [[nodiscard]] bool usesDataSource() const { return usesDataSource_; }
    void setUsesDataSource(bool uses);
    template <class T> void setDataSource(const std::shared_ptr<T> &source) {
        source_ = std::shared_ptr<NSComboBoxDataSource>(source);
        reloadData();
    }
    template <class T> void setComboDelegate(const std::shared_ptr<T> &delegate) { comboDelegate_ = std::shared_ptr<NSComboBoxDelegate>(delegate); }
    void reloadData();
    [[nodiscard]] std::int64_t numberOfItems() const;
    // Absent out of range.
    [[nodiscard]] NSString itemObjectValueAtIndex(std::int64_t index) const;
    void addItemWithObjectValue(NSString item);
    void addItemsWithObjectValues(const std::vector<NSString> &items);
    void removeAllItems();

    // -1 without a selection.
    [[nodiscard]] std::int64_t indexOfSelectedItem() const { return selected_; }
    // Selects, as a program does: shows the text and tells the delegate, sends no action. Out of range does nothing.
    void selectItemAtIndex(std::int64_t index);
    void deselectItemAtIndex(std::int64_t index);
    // A person's choice: the selection, then the action. False out of range or disabled.
    bool chooseItemAtIndex(std::int64_t index);
    // For its list, where nothing can be typed.
    [[nodiscard]] bool acceptsFirstResponder() const override { return isEnabled(); }
    [[nodiscard]] std::string describeContent() const override;
    HN_DECLARE_CLASS_TABLE

private:
    std::vector<NSString> items_;
    std::weak_ptr<NSComboBoxDataSource> source_;
    std::weak_ptr<NSComboBoxDelegate> comboDelegate_;
    std::int64_t selected_ = -1;
    bool usesDataSource_ = false;
};
