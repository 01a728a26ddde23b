#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DuplicateCellViewController.h"

#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/ContactTableCellView.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DupFilpView.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"

static const NibRegistry::Entry entry("DuplicateCellViewController", [](Nib &nib) {
    constexpr double kWidth = 400, kName = 45, kLine = 24;
    const auto owner = nib.owner<DuplicateCellViewController>();
    const auto root = nib.make<DupFilpView>(NSRect(0, 0, kWidth, kName + kLine));
    const auto name = NSTextField::labelWithString("");
    name->setIdentifier("Name");
    name->setFont(NSFont::fontWithName_size("Helvetica Neue", 14));
    name->setLineBreakMode(LineBreak::truncateTail);
    name->setFrame({8, 12, kWidth - 16, 22});
    name->setAutoresizingMask(NSViewWidthSizable);
    const auto combo = nib.make<NSComboBox>(NSRect(8, 9, kWidth - 16, 26));
    combo->setIdentifier("Names");
    combo->setAccessibilityName(localized("ContactView_MergedName"));
    combo->setAutoresizingMask(NSViewWidthSizable);
    combo->setEditable(false);
    combo->setHidden(true);
    combo->setComboDelegate(owner);
    const auto lines = nib.make<NSTableView>(NSRect(0, kName, kWidth, kLine));
    lines->setIdentifier("Lines");
    lines->setHeaderView(nullptr);
    lines->setEnabled(false);   // its rows are for their buttons, not to be chosen
    lines->setAccessibilityName(localized("ContactView_DetailName"));
    lines->setRowHeight(kLine);
    lines->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
    const auto column = make<NSTableColumn>(NSString("line"));
    column->setWidth(kWidth);
    column->setEditable(false);
    lines->addTableColumn(column);
    lines->registerMaker_forIdentifier(
        [target = std::weak_ptr(owner)] {
            const auto cell = make<ContactTableCellView>(NSRect(0, 0, kWidth, kLine));
            cell->setIdentifier("line");
            cell->connect(target.lock());
            return cell;
        },
        "line");
    for (const std::shared_ptr<NSView> &view : NSView::List{name, combo, lines})
        root->addSubview(view);
    owner->nameLabel = name;
    owner->nameCombo = combo;
    owner->tableView = lines;
    lines->setDelegate(owner);
    lines->setDataSource(owner);
    nib.setView(root);
});
