// The contact category: buttons and search above, the table at the left, the selected contact's details at the right, the
// status line below; a panel with three steps while the contacts are kept in the cloud.
#include <optional>

#include "HNManagerPlugin/Classes/SubItemViewController/HNMbaseViewController.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewManager/HNMContactViewManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "toolkit/views/NSImageView.h"
#include "toolkit/views/NSMenu.h"
#include "toolkit/views/NSScrollView.h"
#include "toolkit/views/NSStackView.h"
#include "toolkit/views/NibRegistry.h"

namespace {

constexpr double kWidth = 1000, kHeight = 660, kTopBar = 60, kBottomBar = 36, kDetails = 387, kPicture = 64;
constexpr double kInfoWidth = 337;

using Manager = HNMContactViewManager;

std::shared_ptr<NSTextField> label(const char *identifier, double size = NSFont::kSystemFontSize) {
    auto line = NSTextField::labelWithString("");
    line->setIdentifier(identifier);
    line->setFont(NSFont::fontWithName_size("Helvetica Neue", size));
    line->setLineBreakMode(LineBreak::truncateTail);
    return line;
}

template <class View>
std::function<void(const NSString &)> showsIn(const std::shared_ptr<View> &view, void (View::*set)(NSString)) {
    return [weak = std::weak_ptr(view), set](const NSString &text) { tell(weak, [&](View &v) { (v.*set)(text); }); };
}

// Distances from the edges of `root` and sizes of the view's own; what is absent follows from the others.
struct Placing {
    std::optional<double> left = {}, top = {}, right = {}, bottom = {}, width = {}, height = {};
};

void place(const std::shared_ptr<NSView> &root, const std::shared_ptr<NSView> &view, const Placing &placing) {
    using A = NSLayoutAttribute;
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    root->addSubview(view);
    const auto edge = [&](A attribute, const std::optional<double> &distance, double sign) {
        if (distance)
            root->addConstraint(NSLayoutConstraint::tie(view, attribute, root, attribute, sign * *distance));
    };
    const auto size = [&](A attribute, const std::optional<double> &points) {
        if (points)
            view->addConstraint(NSLayoutConstraint::tie(view, attribute, nullptr, A::notAnAttribute, *points));
    };
    edge(A::left, placing.left, 1);
    edge(A::top, placing.top, 1);
    edge(A::right, placing.right, -1);
    edge(A::bottom, placing.bottom, -1);
    size(A::width, placing.width);
    size(A::height, placing.height);
}

// ---------------------------------------------------------------- buttons

struct ButtonPlace {
    const char *identifier;
    Property<NSString> HNMbaseViewManager::*title;
    const char *selector;
};
constexpr ButtonPlace kButtons[] = {
    {"NewContactButton", &HNMbaseViewManager::addTitle, "onNewButton:"},
    {"ImportButton", &HNMbaseViewManager::importTitle, "onImportButton:"},
    {"ExportButton", &HNMbaseViewManager::exportTitle, "onExportButton:"},
    {"DuplicateButton", &HNMbaseViewManager::de_DuplicateTitle, "duplicateClick:"},
    {"DeleteButton", &HNMbaseViewManager::deleteTitle, "onDeleteButton:"},
    {"RefreshButton", &HNMbaseViewManager::refreshTitle, "refreshContactFunc"},
};

std::shared_ptr<RUIButton> button(Nib &nib, const std::shared_ptr<Manager> &manager, const ButtonPlace &place) {
    auto made = nib.make<RUIButton>(NSRect(0, 0, 110, 28));
    made->setIdentifier(place.identifier);
    made->connect(manager, place.selector);
    ((*manager).*place.title).observe([weak = std::weak_ptr(made)](const NSString &title) {
        tell(weak, [&](NSButton &b) { b.setTitle(title); });
    });
    return made;
}

std::shared_ptr<NSView> topBar(Nib &nib, const std::shared_ptr<Manager> &manager) {
    const auto bar = nib.make<NSStackView>(NSRect(0, 0, kWidth, kTopBar));
    bar->setIdentifier("ContactButtons");
    bar->setSpacing(8);
    bar->setEdgeInsets({16, 16, 16, 16});
    for (const ButtonPlace &place : kButtons)
        bar->addArrangedSubview(button(nib, manager, place));
    const auto search = nib.make<NSTextField>(NSRect(0, 0, 180, 28));
    search->setIdentifier("SearchField");
    search->setAccessibilityName(localized("FileManager_Search"));
    search->connect(manager, "searchField:");
    search->setContentHuggingPriority(200);
    bar->addArrangedSubview(search);
    manager->searchField = search;
    const auto remove = std::dynamic_pointer_cast<NSButton>(bar->viewWithIdentifier("DeleteButton"));
    manager->hasSelectedRow.observe(
        [weak = std::weak_ptr(remove)](const bool &has) { tell(weak, [has](NSButton &b) { b.setEnabled(has); }); });
    return bar;
}

// ---------------------------------------------------------------- tables

std::shared_ptr<NSTableCellView> textCell(const char *identifier,
                                          std::function<NSString(const ZpContactDataInfo &)> text, bool hasPicture) {
    auto cell = make<NSTableCellView>();
    cell->setIdentifier(identifier);
    cell->setFrame({0, 0, 200, Manager::kRowHeight});
    auto line = label("ContactText");
    line->setFrame({hasPicture ? 52.0 : 8.0, 16, hasPicture ? 140.0 : 184.0, 20});
    line->setAutoresizingMask(NSViewWidthSizable);
    cell->addSubview(line);
    cell->setTextField(line);
    if (hasPicture) {
        auto picture = make<NSImageView>(NSRect(8, 8, 36, 36));
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

void addMenu(const std::shared_ptr<RUIMenuTableView> &table, const std::shared_ptr<Manager> &manager) {
    auto menu = make<NSMenu>();
    const auto entry = [&](const char *selector, Property<NSString> &title) {
        auto item = make<NSMenuItem>(NSString(), selector);
        item->target = manager;
        title.observe(
            [weak = std::weak_ptr(item)](const NSString &text) { tell(weak, [&](NSMenuItem &i) { i.title = text; }); });
        menu->addItem(item);
        return item;
    };
    const auto edit = entry("editMenuClick:", manager->editTitle);
    entry("exportTovCardFile:", manager->toVcardTitle);
    entry("exportToCSVFile:", manager->toCSVTitle);
    manager->editEnabled.observe([weak = std::weak_ptr(edit)](const bool &enabled) {
        tell(weak, [enabled](NSMenuItem &i) { i.enabled = enabled; });
    });
    table->setRowMenu(menu);
}

std::shared_ptr<NSView> contactTable(Nib &nib, const std::shared_ptr<Manager> &manager,
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
    const auto scroll = nib.make<NSScrollView>(NSRect(0, 0, kWidth - kDetails, kHeight - kTopBar - kBottomBar));
    scroll->setDocumentView(table);
    scroll->setHasVerticalScroller(true);
    return scroll;
}

std::shared_ptr<NSTableCellView> detailCell() {
    auto cell = make<NSTableCellView>();
    cell->setIdentifier("detail");
    cell->setFrame({0, 0, kInfoWidth + 30, 60});
    auto type = label("DetailType", 12);
    type->setFrame({12, 8, kInfoWidth, 18});
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

std::shared_ptr<NSView> detailPanel(Nib &nib, const std::shared_ptr<Manager> &manager,
                                    const std::shared_ptr<HNContactEntity> &entity) {
    const auto panel = nib.make<NSView>(NSRect(0, 0, kDetails, kHeight - kTopBar - kBottomBar));
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
    const auto scroll = nib.make<NSScrollView>(NSRect(0, 0, kDetails, 100));
    scroll->setDocumentView(table);
    scroll->setHasVerticalScroller(true);
    place(panel, scroll, {.left = 0, .top = 16 + kPicture + 16, .right = 0, .bottom = 0});

    entity->name.observe(showsIn<NSControl>(name, &NSControl::setStringValue));
    entity->image.observe([weak = std::weak_ptr(picture)](const std::shared_ptr<NSImage> &image) {
        tell(weak, [&](NSImageView &view) { view.setImage(image); });
    });
    return panel;
}

// ---------------------------------------------------------------- bottom bar and cloud panel

std::shared_ptr<NSView> bottomBar(Nib &nib, const std::shared_ptr<Manager> &manager) {
    const auto bar = nib.make<NSView>(NSRect(0, 0, kWidth, kBottomBar));
    bar->setIdentifier("BottomBar");
    const auto status = label("StatusLine");
    place(bar, status, {.left = 16, .top = 8, .right = 16, .bottom = 8});
    manager->tableRowInfoString.observe(showsIn<NSControl>(status, &NSControl::setStringValue));
    manager->buttomView = bar;
    return bar;
}

std::shared_ptr<NSView> cloudPanel(Nib &nib, const std::shared_ptr<Manager> &manager) {
    const auto panel = nib.make<NSStackView>(NSRect(0, 0, kWidth, kHeight - kTopBar));
    panel->setIdentifier("CloudPanel");
    panel->setOrientation(NSUserInterfaceLayoutOrientation::vertical);
    panel->setAlignment(NSStackAlignment::center);
    panel->setSpacing(12);
    panel->setEdgeInsets({40, 40, 40, 40});
    panel->setWantsLayer(true);
    panel->layer()->setBackgroundColor(NSColor::whiteColor());
    const auto line = [&](const char *identifier, Property<NSString> &text) {
        const auto field = label(identifier);
        text.observe(showsIn<NSControl>(field, &NSControl::setStringValue));
        panel->addArrangedSubview(field);
    };
    const auto picture = [&](Property<NSString> &path) {
        const auto view = nib.make<NSImageView>(NSRect(0, 0, 220, 110));
        path.observe([weak = std::weak_ptr(view)](const NSString &file) {
            tell(weak,
                 [&](NSImageView &v) { v.setImage(file.isEmpty() ? nullptr : NSImage::withContentsOfFile(file)); });
        });
        panel->addArrangedSubview(view);
    };
    line("CloudTitle", manager->close_iCloud_title);
    line("CloudStep1", manager->close_iCloud_Step_1);
    picture(manager->disable_icloudImagePath_1);
    line("CloudStep2", manager->close_iCloud_Step_2);
    picture(manager->disable_icloudImagePath_2);
    line("CloudStep3", manager->close_iCloud_Step_3);
    picture(manager->disable_icloudImagePath_3);
    panel->addArrangedSubview(
        button(nib, manager, {"RetryButton", &HNMbaseViewManager::retryTitle, "initContactManager"}));
    manager->disable_iCloudView = panel;
    return panel;
}

// ---------------------------------------------------------------- all together

void build(Nib &nib) {
    const auto root = nib.make<NSView>(NSRect(0, 0, kWidth, kHeight));
    root->setIdentifier("ContactView");
    const auto manager = nib.make<Manager>();
    const auto model = nib.make<HNMContactViewModel>();
    const auto controller = nib.make<NSArrayController>();
    controller->setContent(model->contents);
    model->arrayController = controller;
    manager->contactViewModel = model;
    manager->contentView = root;

    place(root, topBar(nib, manager), {.left = 0, .top = 0, .right = 0, .height = kTopBar});
    place(root, contactTable(nib, manager, controller),
          {.left = 0, .top = kTopBar, .right = kDetails, .bottom = kBottomBar});
    place(root, detailPanel(nib, manager, model->selectedEntity),
          {.top = kTopBar, .right = 0, .bottom = kBottomBar, .width = kDetails});
    place(root, bottomBar(nib, manager), {.left = 0, .right = 0, .bottom = 0, .height = kBottomBar});
    cloudPanel(nib, manager);
    nib.setView(root);
    if (const auto owner = nib.owner<HNMbaseViewController>()) {
        owner->viewManager = manager;
        owner->viewModel = model;
    }
}

const NibRegistry::Entry entry("HNMContactViewController", build);

}   // namespace
