#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DupContactWindowController.h"

#include <algorithm>

#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/ContactCheckBoxCellView.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DuplicateCellView.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/views/NSApplication.h"

HN_CLASS_TABLE(DupContactWindowController, NSWindowController,
               .key("noMergeContact", &DupContactWindowController::noMergeContact)
                   .key("mergeButtonEnabled", &DupContactWindowController::mergeButtonEnabled)
                   .key("totalSuggestMergeGroup", &DupContactWindowController::totalSuggestMergeGroup)
                   .key("title", &DupContactWindowController::title)
                   .selector("onMergeButton:", &DupContactWindowController::onMergeButton)
                   .selector("onCancelButton:", &DupContactWindowController::onCancelButton)
                   .selector("onItemCheckBox:", &DupContactWindowController::onItemCheckBox)
                   .selector("onAllCheckBox:", &DupContactWindowController::onAllCheckBox))

void DupContactWindowController::initWithDataSource(DupContactGroups groups) {
    init();
    dataSource = std::move(groups);
    for (const auto &group : dataSource)
        tagContactGroupToSection(*group);
    noMergeContact = dataSource.empty();
    mergeButtonEnabled = !dataSource.empty();
}

void DupContactWindowController::windowDidLoad() {
    NSWindowController::windowDidLoad();
    title = localized("ContactView_DuduplicateWindowTitle");
    totalSuggestMergeGroup = NSString::stringWithFormat(
        localized(sections.size() >= 2 ? "ContactView_MergeGroup(s)" : "ContactView_MergeGroup"),
        static_cast<std::int64_t>(sections.size()));
    const auto show = [](const std::weak_ptr<NSTextField> &field, const char *key) {
        tell(field, [key](NSTextField &text) { text.setStringValue(localized(key)); });
    };
    show(beforeMergeText, "ContactView_BeforeMerge");
    show(afterMergeText, "ContactView_AfterMerge");
    show(noMergeText, "ContactView_noMerge");
    tell(cancelButton, [](NSButton &button) { button.setTitle(localized("FileManager_Cancel")); });
    tell(mergeButton, [](NSButton &button) { button.setTitle(localized("ContactView_button_Merge")); });
    showAllState();
    tell(tableView, [](NSTableView &table) { table.reloadData(); });
}

// ---------------------------------------------------------------- sections

namespace {

template <class Record>
void addFull(const std::vector<Record> &from, NSString Record::*field, std::vector<Record> &own, std::vector<Record> &merged) {
    for (const Record &record : from) {
        if ((record.*field).isEmpty())
            continue;
        own.push_back(record);
        if (std::ranges::find(merged, record) == merged.end())
            merged.push_back(record);
    }
}

}   // namespace

void DupContactWindowController::tagContactGroupToSection(const DupContactGroupModel &group) {
    if (group.dupContactGroupArray.empty())
        return;
    const auto section = make<ContactSection>();
    const auto merged = make<ContactCellData>();
    for (const auto &contact : group.dupContactGroupArray) {
        const auto cell = make<ContactCellData>();
        cell->rawInfo = contact;
        if (!contact->completeName().isEmpty()) {
            cell->names.push_back(contact->completeName());
            if (std::ranges::find(merged->names, contact->completeName()) == merged->names.end())
                merged->names.push_back(contact->completeName());
        }
        addFull(contact->phone_numbers(), &ZpPhoneNumberDataInfo::phone_number, cell->phoneNumbers, merged->phoneNumbers);
        addFull(contact->emails(), &ZpEmailDataInfo::email, cell->emails, merged->emails);
        section->cellDatas.push_back(cell);
    }
    merged->rawInfo = group.dupContactGroupArray.front();
    section->mergedCellData = merged;
    if (!merged->names.empty())
        section->mergedName = merged->names.front();
    sections.push_back(section);
}

std::shared_ptr<ContactSection> DupContactWindowController::sectionAt(std::int64_t row) const {
    return row >= 0 && row < static_cast<std::int64_t>(sections.size()) ? sections[static_cast<std::size_t>(row)] : nullptr;
}

// ---------------------------------------------------------------- buttons

void DupContactWindowController::end(std::int64_t code) {
    NSApp()->stopModalWithCode(code);
    close();
}

void DupContactWindowController::onCancelButton(const id &) { end(kCancel); }

void DupContactWindowController::onMergeButton(const id &) {
    for (const auto &section : sections) {
        const auto survivor = section->selected == NSOnState ? section->survivor() : nullptr;
        if (!survivor)
            continue;
        survivor->mutable_phone_numbers() = section->mergedCellData->phoneNumbers;
        survivor->mutable_emails() = section->mergedCellData->emails;
        survivor->setCompleteName(section->mergedName);
        mergeContactsArray.push_back(survivor);
    }
    end(kMerge);
}

void DupContactWindowController::onItemCheckBox(const id &sender) {
    const auto box = std::dynamic_pointer_cast<NSButton>(sender);
    const auto section = box ? sectionAt(box->tag()) : nullptr;
    if (!section)
        return;
    section->selected = box->state();
    showAllState();
}

void DupContactWindowController::showAllState() {
    const auto ticked = std::ranges::count_if(sections, [](const auto &s) { return s->selected == NSOnState; });
    const bool isAll = ticked == static_cast<std::ptrdiff_t>(sections.size()) && ticked > 0;
    tell(allCheckBox, [&](RUICheckBox &box) { box.setState(isAll ? NSOnState : ticked > 0 ? NSMixedState : NSOffState); });
}

void DupContactWindowController::onAllCheckBox(const id &sender) {
    const auto box = std::dynamic_pointer_cast<NSButton>(sender);
    if (!box)
        return;
    if (box->state() == NSMixedState)
        box->setState(NSOnState);
    for (const auto &section : sections)
        section->selected = box->state();
    tell(tableView, [&](NSTableView &table) {
        NSMutableIndexSet all;
        for (std::size_t row = 0; row < sections.size(); ++row)
            all.addIndex(row);
        table.reloadDataForRowIndexes_columnIndexes(all, NSIndexSet::indexSetWithIndex(0));
    });
}

// ---------------------------------------------------------------- table

std::int64_t DupContactWindowController::numberOfRowsInTableView(NSTableView &) {
    return static_cast<std::int64_t>(sections.size());
}

double DupContactWindowController::tableView_heightOfRow(NSTableView &, std::int64_t row) {
    const auto section = sectionAt(row);
    return section ? section->height() : 0;
}

std::shared_ptr<NSView> DupContactWindowController::tableView_viewForTableColumn_row(NSTableView &table,
                                                                                     const std::shared_ptr<NSTableColumn> &column,
                                                                                     std::int64_t row) {
    const auto section = sectionAt(row);
    const auto view = section ? table.makeViewWithIdentifier_owner(column->identifier()) : nullptr;
    if (const auto box = std::dynamic_pointer_cast<ContactCheckBoxCellView>(view))
        box->show(*section, row);
    else if (const auto cell = std::dynamic_pointer_cast<DuplicateCellView>(view))
        cell->show(section);
    return view;
}
