// A button that shows one of the entries of its menu. Threads: main.
//
// Choosing   an entry's own action, where it has one, goes before the button's. A pull-down button shows its first entry
//            always and never selects.
#pragma once

#include "toolkit/views/NSButton.h"
#include "toolkit/views/NSMenu.h"

class NSPopUpButton : public NSButton {
public:
    void initWithFrame(const NSRect &frame) override;
    [[nodiscard]] bool pullsDown() const { return pullsDown_; }
    void setPullsDown(bool pullsDown);
    [[nodiscard]] const NSMenu::Items &itemArray() const { return menu()->itemArray(); }
    [[nodiscard]] std::int64_t numberOfItems() const { return static_cast<std::int64_t>(menu()->numberOfItems()); }
    void addItemWithTitle(NSString title);
    void addItemsWithTitles(const std::vector<NSString> &titles);
    void removeAllItems();
    // -1, null and absent without a selection.
    [[nodiscard]] std::int64_t indexOfSelectedItem() const;
    [[nodiscard]] std::shared_ptr<NSMenuItem> selectedItem() const { return selected_.lock(); }
    [[nodiscard]] NSString titleOfSelectedItem() const;
    // A program's choice; -1 clears it, another index out of range does nothing.
    void selectItemAtIndex(std::int64_t index);
    void selectItemWithTitle(const NSString &title);
    void selectItemWithTag(std::int64_t tag);
    // A person's: selects and sends the action. False for what cannot be chosen.
    bool chooseItemAtIndex(std::int64_t index);
    // Shows the menu through the presenter.
    void performClick() override;
    [[nodiscard]] std::int64_t integerValue() const override { return indexOfSelectedItem(); }
    void setIntegerValue(std::int64_t number) override { selectItemAtIndex(number); }
    [[nodiscard]] std::string describeContent() const override;
    // Room for the widest title (of one that pulls down: for the first) and the arrow.
    [[nodiscard]] NSSize intrinsicContentSize() const override;
    HN_DECLARE_CLASS_TABLE

private:
    std::weak_ptr<NSMenuItem> selected_;
    bool pullsDown_ = false;
};
