// The contact category: buttons and search above, the table at the left, the selected contact's details at the right, the
// status line below; a panel with three steps while the contacts are kept in the cloud.
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewManager/HNMContactViewManager.h"
#include "HNManagerPlugin/Resources/Nibs/NibParts.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/views/NSImageView.h"

namespace {

using namespace nibParts;
using ContactManager = HNMContactViewManager;

constexpr double kDetails = 387, kPicture = 64, kInfoWidth = 337;

// ---------------------------------------------------------------- buttons

constexpr ButtonPlace kButtons[] = {
    {"NewContactButton", &HNMbaseViewManager::addTitle, "onNewButton:"},
    {"ImportButton", &HNMbaseViewManager::importTitle, "onImportButton:"},
    {"ExportButton", &HNMbaseViewManager::exportTitle, "onExportButton:"},
    {"DuplicateButton", &HNMbaseViewManager::de_DuplicateTitle, "duplicateClick:"},
    {"DeleteButton", &HNMbaseViewManager::deleteTitle, "onDeleteButton:"},
    {"RefreshButton", &HNMbaseViewManager::refreshTitle, "refreshContactFunc"},
};

std::shared_ptr<NSView> buttons(Nib &nib, const std::shared_ptr<ContactManager> &manager) {
    const auto bar = topBar(nib, "ContactButtons");
    for (const ButtonPlace &place : kButtons)
        bar->addArrangedSubview(button(nib, manager, place));
    bar->addArrangedSubview(searchField(nib, manager, "searchField:"));
    enabledBy(manager->hasSelectedRow, std::dynamic_pointer_cast<NSControl>(bar->viewWithIdentifier("DeleteButton")));
    return bar;
}

// ---------------------------------------------------------------- tables

std::shared_ptr<NSTableCellView> textCell(const char *identifier,
                                          std::function<NSString(const ZpContactDataInfo &)> text, bool hasPicture) {
    constexpr double kInset = 2, kBesidePicture = 46;   // below the title of the column
    auto cell = make<NSTableCellView>();
    cell->setIdentifier(identifier);
    cell->setFrame({0, 0, 200, ContactManager::kRowHeight});
    auto line = label("ContactText");
    line->setFrame({hasPicture ? kBesidePicture : kInset, 16, 198 - (hasPicture ? kBesidePicture : kInset), 20});
    line->setAutoresizingMask(NSViewWidthSizable);
    cell->addSubview(line);
    cell->setTextField(line);
    if (hasPicture) {
        auto picture = make<NSImageView>(NSRect(kInset, 8, 36, 36));
        picture->setIdentifier("ContactPicture");
        cell->addSubview(picture);
        cell->setImageView(picture);
    }
    cell->objectValueDidChange = [text = std::move(text)](NSTableCellView &shown) {
        const auto contact = std::dynamic_pointer_cast<ZpContactDataInfo>(shown.objectValue().object());
        if (!contact)
            return;
        shown.textField()->setStringValue(text(*contact));
        if (shown.imageView())
            shown.imageView()->setImage(contact->image_data());
    };
    return cell;
}

struct ColumnPlace {
    const char *identifier;
    Property<NSString> HNMbaseViewManager::*title;
    NSString (*text)(const ZpContactDataInfo &);
    double width;
};
const ColumnPlace kColumns[] = {
    {"completeName", &HNMbaseViewManager::headTitle_1, [](const ZpContactDataInfo &c) { return c.completeName(); },
     220},
    {"phone_numbers", &HNMbaseViewManager::headTitle_2,
     [](const ZpContactDataInfo &c) {
         return c.phone_numbers().empty() ? NSString() : c.phone_numbers().front().phone_number;
     },
     150},
    {"emails", &HNMbaseViewManager::headTitle_3,
     [](const ZpContactDataInfo &c) { return c.emails().empty() ? NSString() : c.emails().front().email; }, 180},
};

void addMenu(const std::shared_ptr<RUIMenuTableView> &table, const std::shared_ptr<ContactManager> &manager) {
    auto menu = make<NSMenu>();
    const auto edit = menuEntry(menu, manager, "editMenuClick:", manager->editTitle);
    menuEntry(menu, manager, "exportTovCardFile:", manager->toVcardTitle);
    menuEntry(menu, manager, "exportToCSVFile:", manager->toCSVTitle);
    manager->editEnabled.observe([weak = std::weak_ptr(edit)](const bool &enabled) {
        tell(weak, [enabled](NSMenuItem &i) { i.enabled = enabled; });
    });
    table->setRowMenu(menu);
}

std::shared_ptr<NSView> contactTable(Nib &nib, const std::shared_ptr<ContactManager> &manager,
                                     const std::shared_ptr<NSArrayController> &controller) {
    const auto table = nib.make<RUIMenuTableView>();
    table->setIdentifier("ContactTable");
    table->setAccessibilityName(localized("ContactView_ListName"));
    for (const ColumnPlace &place : kColumns) {
        auto column = make<NSTableColumn>(NSString(place.identifier));
        column->setWidth(place.width);
        column->setEditable(false);
        const bool isName = &place == kColumns;
        if (isName)
            column->setSortDescriptorPrototype(NSSortDescriptor(place.identifier, true));
        ((*manager).*place.title).observe(showsIn(column, &NSTableColumn::setTitle));
        table->addTableColumn(column);
        table->registerMaker_forIdentifier([place, isName] { return textCell(place.identifier, place.text, isName); },
                                           place.identifier);
    }
    table->bindToArrayController(controller);
    addMenu(table, manager);
    manager->tableView = table;
    return scrolling(nib, table, kWidth - kDetails);
}

std::shared_ptr<NSTableCellView> detailCell() {
    auto cell = make<NSTableCellView>();
    cell->setIdentifier("detail");
    cell->setFrame({0, 0, kInfoWidth + 30, 60});
    auto type = label("DetailType", 12);
    type->setFrame({12, 8, kInfoWidth, 18});
    type->setTextColor(NSColor::grayColor());
    auto info = label("DetailInfo");
    info->setFrame({12, 28, kInfoWidth, 26});
    info->setAutoresizingMask(NSViewHeightSizable);
    info->setLineBreakMode(LineBreak::wrap);
    info->setSelectable(true);
    cell->addSubview(type);
    cell->addSubview(info);
    cell->setTextField(info);
    cell->objectValueDidChange = [weakType = std::weak_ptr(type)](NSTableCellView &shown) {
        const auto row = std::dynamic_pointer_cast<HNContactInfo>(shown.objectValue().object());
        if (!row)
            return;
        shown.textField()->setStringValue(row->info);
        tell(weakType, [&](NSTextField &line) { line.setStringValue(row->type); });
    };
    return cell;
}

std::shared_ptr<NSView> detailPanel(Nib &nib, const std::shared_ptr<ContactManager> &manager,
                                    const std::shared_ptr<HNContactEntity> &entity) {
    const auto panel = nib.make<NSView>(NSRect(0, 0, kDetails, kList));
    panel->setIdentifier("ContactDetails");
    const auto picture = nib.make<NSImageView>(NSRect(0, 0, kPicture, kPicture));
    picture->setIdentifier("DetailPicture");
    const auto name = label("DetailName", 18);
    constexpr double kMargin = 12;
    place(panel, picture, {.left = kMargin, .top = 16, .width = kPicture, .height = kPicture});
    place(panel, name, {.left = kMargin + kPicture + kMargin, .top = 36, .right = kMargin, .height = 26});

    const auto controller = nib.make<NSArrayController>();
    controller->setContent(entity->detailInfoArray);
    const auto table = nib.make<NSTableView>();
    table->setIdentifier("ContactDetailTable");
    table->setAccessibilityName(localized("ContactView_DetailName"));
    table->setHeaderView(nullptr);
    auto column = make<NSTableColumn>(NSString("detail"));
    column->setWidth(kInfoWidth + 30);
    column->setEditable(false);
    table->addTableColumn(column);
    table->registerMaker_forIdentifier(detailCell, "detail");
    table->bindToArrayController(controller);
    table->setDelegate(manager);
    manager->detailTableView = table;
    manager->selectArrayController = controller;
    place(panel, scrolling(nib, table, kDetails), {.left = 0, .top = 16 + kPicture + 16, .right = 0, .bottom = 0});

    entity->name.observe(showsIn<NSControl>(name, &NSControl::setStringValue));
    entity->image.observe([weak = std::weak_ptr(picture)](const std::shared_ptr<NSImage> &image) {
        tell(weak, [&](NSImageView &view) { view.setImage(image); });
    });
    return panel;
}

// ---------------------------------------------------------------- all together

void build(Nib &nib) {
    const auto root = nib.make<NSView>(NSRect(0, 0, kWidth, kHeight));
    root->setIdentifier("ContactView");
    const auto manager = nib.make<ContactManager>();
    const auto model = nib.make<HNMContactViewModel>();
    const auto controller = nib.make<NSArrayController>();
    controller->setContent(model->contents);
    model->arrayController = controller;
    manager->contactViewModel = model;

    place(root, buttons(nib, manager), {.left = 0, .top = 0, .right = 0, .height = kTopBar});
    place(root, contactTable(nib, manager, controller),
          {.left = 0, .top = kTopBar, .right = kDetails, .bottom = kBottomBar});
    place(root, detailPanel(nib, manager, model->selectedEntity),
          {.top = kTopBar, .right = 0, .bottom = kBottomBar, .width = kDetails});
    place(root, bottomBar(nib, manager), {.left = 0, .right = 0, .bottom = 0, .height = kBottomBar});
    cloudPanel(nib, manager, "initContactManager");
    setView(nib, root, manager, model);
}

const NibRegistry::Entry entry("HNMContactViewController", build);

}   // namespace
