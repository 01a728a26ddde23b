// One contact of the merge window: its name, below it its numbers and e-mails in a table of their own. What a group becomes
// has a list of names where there are several, and a button on each line that takes the line out.
// Threads: main.
#pragma once

#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/ContactSection.h"
#include "toolkit/tables/NSTableView.h"
#include "toolkit/views/NSComboBox.h"
#include "toolkit/views/NSViewController.h"

class DuplicateCellViewController : public NSViewController,
                                    public NSTableViewDelegate,
                                    public NSTableViewDataSource,
                                    public NSComboBoxDelegate {
public:
    HN_DECLARE_CLASS_TABLE

    // nib outlets
    std::weak_ptr<NSTextField> nameLabel;
    std::weak_ptr<NSComboBox> nameCombo;
    std::weak_ptr<NSTableView> tableView;

    void show(const std::shared_ptr<ContactSection> &section, const std::shared_ptr<ContactCellData> &data, bool merged);
    [[nodiscard]] bool isMerged() const { return isMerged_; }
    // "phone:..." and "email:...", as the lines read.
    [[nodiscard]] NSString lineAt(std::size_t line) const;
    // Without "-" and U+00A0.
    [[nodiscard]] static NSString formatPhoneNumber(const NSString &number);

    void deleteLine(const id &sender);   // its tag is the line
    void comboBoxSelectionDidChange(NSComboBox &combo) override;

    std::int64_t numberOfRowsInTableView(NSTableView &table) override;
    bool selectionShouldChangeInTableView(NSTableView &) override { return false; }
    std::shared_ptr<NSView> tableView_viewForTableColumn_row(NSTableView &table, const std::shared_ptr<NSTableColumn> &column,
                                                             std::int64_t row) override;

private:
    void showName();
    std::shared_ptr<ContactSection> section_;
    std::shared_ptr<ContactCellData> data_;
    bool isMerged_ = false;
};
