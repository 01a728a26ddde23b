#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/ContactTableCellView.h"

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"

HN_CLASS_TABLE(ContactTableCellView, NSTableCellView)

void ContactTableCellView::connect(const std::shared_ptr<NSObject> &target) {
    constexpr double kButton = 20, kLine = 24;
    const double width = frame().size.width;
    const auto text = NSTextField::labelWithString("");
    text->setIdentifier("Line");
    text->setFrame({8, 3, width - 16 - kButton, 18});
    text->setAutoresizingMask(NSViewWidthSizable);
    text->setLineBreakMode(LineBreak::truncateTail);
    addSubview(text);
    setTextField(text);
    deleteButton = make<NSButton>(NSRect(width - kButton - 4, (kLine - kButton) / 2, kButton, kButton));
    deleteButton->setIdentifier("DeleteLine");
    deleteButton->setTitle("×");
    deleteButton->setBordered(false);
    deleteButton->setAutoresizingMask(NSViewMinXMargin);
    deleteButton->setAccessibilityName(localized("ContactView_LeaveOut"));
    deleteButton->connect(target, "deleteLine:");
    addSubview(deleteButton);
}

void ContactTableCellView::show(const NSString &line, std::int64_t row, bool canDelete) {
    textField()->setStringValue(line);
    deleteButton->setTag(row);
    deleteButton->setHidden(!canDelete);
}
