#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DupContactWindowController.h"

#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/ContactCheckBoxCellView.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DuplicateCellView.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindow.h"
#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"
#include "toolkit/views/NSScrollView.h"

namespace {

constexpr double kWidth = 900, kHeight = 600, kTop = 84, kBottom = 56, kMargin = 20, kBox = 40;
constexpr double kContacts = (kWidth - 2 * kMargin - kBox - 20) / 2;

void addColumn(NSTableView &table, const char *identifier, double width, ReuseQueue::Maker maker) {
    const auto column = make<NSTableColumn>(NSString(identifier));
    column->setWidth(width);
    column->setEditable(false);
    table.addTableColumn(column);
    table.registerMaker_forIdentifier(std::move(maker), identifier);
}

std::shared_ptr<NSView> contactsCell(const char *identifier, bool merged) {
    const auto cell = make<DuplicateCellView>(NSRect(0, 0, kContacts, 69));
    cell->setIdentifier(identifier);
    cell->merged = merged;
    return cell;
}

std::shared_ptr<NSTableView> groupsTable(Nib &nib, const std::shared_ptr<DupContactWindowController> &owner) {
    const auto table = nib.make<NSTableView>();
    table->setIdentifier("DuplicateGroups");
    table->setAccessibilityName(localized("ContactView_GroupsName"));
    table->setHeaderView(nullptr);
    table->setAllowsColumnReordering(false);
    addColumn(*table, "box", kBox, [target = std::weak_ptr(owner)] {
        const auto cell = make<ContactCheckBoxCellView>(NSRect(0, 0, kBox, 69));
        cell->setIdentifier("box");
        cell->connect(target.lock());
        return cell;
    });
    addColumn(*table, "before", kContacts, [] { return contactsCell("before", false); });
    addColumn(*table, "after", kContacts, [] { return contactsCell("after", true); });
    return table;
}

void build(Nib &nib) {
    const auto owner = nib.owner<DupContactWindowController>();
    const auto window = nib.make<RUIDialogWindow>(NSRect(0, 0, kWidth, kHeight));
    const auto content = window->contentView();
    const auto label = [&](const char *identifier, const NSRect &frame) {
        const auto text = NSTextField::labelWithString("");
        text->setIdentifier(identifier);
        text->setFrame(frame);
        content->addSubview(text);
        return text;
    };
    const auto total = label("Total", {kMargin, kHeight - 40, kWidth - 2 * kMargin, 22});
    owner->beforeMergeText = label("BeforeMerge", {kMargin + kBox, kHeight - 74, kContacts, 20});
    owner->afterMergeText = label("AfterMerge", {kMargin + kBox + kContacts, kHeight - 74, kContacts, 20});
    const auto none = label("NoMerge", {kMargin, kHeight / 2, kWidth - 2 * kMargin, 24});
    none->setAlignment(NSTextAlignment::center);
    owner->noMergeText = none;

    const auto all = nib.make<RUICheckBox>(NSRect(kMargin + 10, kHeight - 74, 18, 18));
    all->setIdentifier("MergeAll");
    all->setAccessibilityName(localized("ContactView_MergeAllGroups"));
    all->setImagePosition(NSCellImagePosition::imageOnly);
    all->setAllowsMixedState(true);
    all->connect(owner, "onAllCheckBox:");
    content->addSubview(all);
    owner->allCheckBox = all;

    const auto scroll = nib.make<NSScrollView>(NSRect(kMargin, kBottom, kWidth - 2 * kMargin, kHeight - kTop - kBottom));
    const auto table = groupsTable(nib, owner);
    scroll->setDocumentView(table);
    scroll->setHasVerticalScroller(true);
    content->addSubview(scroll);
    owner->tableView = table;
    table->setDelegate(owner);
    table->setDataSource(owner);

    const auto button = [&](double x, const char *identifier, const char *key, const char *action) {
        const auto made = nib.make<RUIButton>(NSRect(x, 14, 110, 28));
        made->setIdentifier(identifier);
        made->setKeyEquivalent(key);
        made->connect(owner, action);
        content->addSubview(made);
        return made;
    };
    const auto cancel = button(kWidth - kMargin - 230, "Cancel", "\x1b", "onCancelButton:");
    cancel->setBorderColor(UIThemeColor());
    owner->cancelButton = cancel;
    const auto merge = button(kWidth - kMargin - 110, "Merge", "\r", "onMergeButton:");
    owner->mergeButton = merge;

    owner->mergeButtonEnabled.observe([link = std::weak_ptr(merge)](const bool &enabled) {
        tell(link, [enabled](NSButton &b) { b.setEnabled(enabled); });
    });
    owner->noMergeContact.observe([none = std::weak_ptr(none), scroll = std::weak_ptr(scroll), all = std::weak_ptr(all)](const bool &isSo) {
        tell(none, [isSo](NSView &view) { view.setHidden(!isSo); });
        tell(scroll, [isSo](NSView &view) { view.setHidden(isSo); });
        tell(all, [isSo](NSView &view) { view.setHidden(isSo); });
    });
    owner->totalSuggestMergeGroup.observe([link = std::weak_ptr(total)](const NSString &text) {
        tell(link, [&](NSTextField &field) { field.setStringValue(text); });
    });
    owner->title.observe([link = std::weak_ptr(window)](const NSString &text) {
        tell(link, [&](NSWindow &w) { w.setTitle(text); });
    });
    window->setInitialFirstResponder(table);
    window->center();
    nib.setWindow(window);
}

const NibRegistry::Entry entry("DupContactWindowController", build);

}   // namespace
