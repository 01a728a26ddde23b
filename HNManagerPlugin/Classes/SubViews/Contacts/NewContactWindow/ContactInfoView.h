// One section of the contact editor: up to three fields of the contact, or a table of rows; the rows of a list of numbers or
// e-mails are always two, whatever the list holds, and further items stay as they are.
//
// Typing   goes into the record at once. A text counts if something but blanks is in it.
// Threads  main.
#pragma once

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"
#include "toolkit/lists/NSMutableArray.h"
#include "toolkit/tables/NSTableView.h"

class ContactInfoView;

class ContactInfoViewDelegate {
public:
    virtual ~ContactInfoViewDelegate() = default;
    // The item behind `row` has gone; `index` is the section's.
    virtual void ContactInfoView_viewIndex_selectRow(ContactInfoView &view, std::int64_t index, std::int64_t row) = 0;
};

// Who is told of typing.
class ContactInfoViewEditing {
public:
    virtual ~ContactInfoViewEditing() = default;
    // After the section has taken the text.
    virtual void sectionTextDidChange(ContactInfoView &section) = 0;
    virtual void sectionDidBeginEditing(ContactInfoView &section) = 0;
};

class ContactInfoView : public NSView, public NSTableViewDelegate, public NSTableViewDataSource, public NSTextFieldDelegate {
public:
    HN_DECLARE_CLASS_TABLE
    enum class Rows { none, phones, emails, groups };
    static constexpr std::int64_t kRows = 2;

    std::int64_t index = 0;
    bool textFieldEdited = false;   // the section holds text, as far as somebody has typed
    Rows rows = Rows::none;
    std::shared_ptr<ZpContactDataInfo> contactEntity;
    std::shared_ptr<NSMutableArray> groups;   // of ContactGroupInfo, behind a section of groups
    std::weak_ptr<NSTableView> tableView;
    std::weak_ptr<NSTextField> textField_1, textField_2, textField_3;   // what they show is told by `bindField`
    std::weak_ptr<ContactInfoViewDelegate> delegate;
    std::weak_ptr<ContactInfoViewEditing> editing;

    using Read = const NSString &(ZpContactDataInfo::*)() const;
    using Write = void (ZpContactDataInfo::*)(NSString);
    // A field of the contact in one of the three text fields.
    void bindField(const std::shared_ptr<NSTextField> &field, Read read, Write write);
    // Shows the record anew.
    void reload();
    // Of the rows' fields, once the table has made them.
    void setRowHint(const NSString &hint);

    // Of the list behind the rows, which may have more items than the table has rows, or fewer.
    [[nodiscard]] std::size_t itemCount() const;
    // A new item with this text and no label; nothing in a section of fields or groups.
    void addItem(const NSString &text);

    void onGroupCheckBox(const id &sender);     // its tag is the row
    void deleteButtonClick(const id &sender);   // its tag is the item; one that is not there is ignored

    void controlTextDidChange(NSTextField &field) override;
    void controlTextDidBeginEditing(NSTextField &field) override;
    std::int64_t numberOfRowsInTableView(NSTableView &table) override;
    bool selectionShouldChangeInTableView(NSTableView &) override { return false; }
    std::shared_ptr<NSView> tableView_viewForTableColumn_row(NSTableView &table, const std::shared_ptr<NSTableColumn> &column,
                                                             std::int64_t row) override;
    [[nodiscard]] bool isFlipped() const override { return true; }

private:
    struct Field {
        std::weak_ptr<NSTextField> view;
        Read read;
        Write write;
    };
    [[nodiscard]] NSString rowText(std::size_t row) const;
    [[nodiscard]] NSString rowType(std::size_t row) const;
    void setRowText(std::size_t row, const NSString &text);
    void removeItem(std::size_t item);
    void showRow(NSTableCellView &cell, std::int64_t row);
    void updateEdited();

    std::vector<Field> fields_;
    NSString rowHint_;
};
