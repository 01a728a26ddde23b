// The window in which a person looks at the groups of duplicates, trims what they become, and merges.
//
//     const auto window = make<DupContactWindowController>();
//     window->initWithDataSource(groups);
//     if (NSApp()->runModalForWindow(window->window()) == 1) ... window->mergeContactsArray ...
//
// Codes    1 merge, 0 cancel; -1000 for every other way out. Merge with nothing ticked gives 1 and an empty result.
// Result   the survivors: their numbers and e-mails are what the person kept, their name is the chosen one. The records
//          themselves are changed; nothing else of them, and nothing of the others.
// Threads  main.
#pragma once

#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/ContactSection.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/DupContactGroupModel.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUICheckBox.h"
#include "toolkit/Property.h"
#include "toolkit/tables/NSTableView.h"
#include "toolkit/views/NSWindowController.h"

class DupContactWindowController : public NSWindowController, public NSTableViewDelegate, public NSTableViewDataSource {
public:
    HN_DECLARE_CLASS_TABLE
    static constexpr std::int64_t kMerge = 1, kCancel = 0;

    DupContactGroups dataSource;
    std::vector<std::shared_ptr<ContactSection>> sections;
    ContactList mergeContactsArray;
    Property<bool> noMergeContact, mergeButtonEnabled;
    Property<NSString> totalSuggestMergeGroup, title;

    // nib outlets
    std::weak_ptr<NSTableView> tableView;
    std::weak_ptr<RUICheckBox> allCheckBox;
    std::weak_ptr<NSButton> cancelButton, mergeButton;
    std::weak_ptr<NSTextField> beforeMergeText, afterMergeText, noMergeText;

    void initWithDataSource(DupContactGroups groups);
    void windowDidLoad() override;
    // One section more. A group without contacts is ignored.
    void tagContactGroupToSection(const DupContactGroupModel &group);

    void onMergeButton(const id &sender);
    void onCancelButton(const id &sender);
    void onItemCheckBox(const id &sender);   // its tag is the row
    void onAllCheckBox(const id &sender);

    std::int64_t numberOfRowsInTableView(NSTableView &table) override;
    double tableView_heightOfRow(NSTableView &table, std::int64_t row) override;
    bool selectionShouldChangeInTableView(NSTableView &) override { return false; }
    std::shared_ptr<NSView> tableView_viewForTableColumn_row(NSTableView &table, const std::shared_ptr<NSTableColumn> &column,
                                                             std::int64_t row) override;

private:
    void end(std::int64_t code);
    void showAllState();
    [[nodiscard]] std::shared_ptr<ContactSection> sectionAt(std::int64_t row) const;
};
