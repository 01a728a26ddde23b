// The bookmark category: buttons and search above, the outline below them, the status line at the foot; a panel with three
// steps while the bookmarks are kept in the cloud.
#include <optional>

#include "HNManagerPlugin/Classes/SubItemViewController/HNMbaseViewController.h"
#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/HNMBookMarkViewManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "toolkit/views/NSImageView.h"
#include "toolkit/views/NSPopUpButton.h"
#include "toolkit/views/NSScrollView.h"
#include "toolkit/views/NSStackView.h"
#include "toolkit/views/NibRegistry.h"

namespace {

constexpr double kWidth = 1000, kHeight = 660, kTopBar = 60, kBottomBar = 36;

using Manager = HNMBookMarkViewManager;

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
constexpr ButtonPlace kExport{"ExportButton", &HNMbaseViewManager::exportTitle, "onExportButton:"};
constexpr ButtonPlace kDelete{"DeleteButton", &HNMbaseViewManager::deleteTitle, "onDeleteButton:"};
constexpr ButtonPlace kRefresh{"RefreshButton", &HNMbaseViewManager::refreshTitle, "onRefreshButton:"};
constexpr ButtonPlace kRetry{"RetryButton", &HNMbaseViewManager::retryTitle, "disableIcloudClick:"};

std::shared_ptr<RUIButton> button(Nib &nib, const std::shared_ptr<Manager> &manager, const ButtonPlace &place) {
    auto made = nib.make<RUIButton>(NSRect(0, 0, 110, 28));
    made->setIdentifier(place.identifier);
    made->connect(manager, place.selector);
    ((*manager).*place.title).observe([weak = std::weak_ptr(made)](const NSString &title) {
        tell(weak, [&](NSButton &b) { b.setTitle(title); });
    });
    return made;
}

std::shared_ptr<NSPopUpButton> addButton(Nib &nib, const std::shared_ptr<Manager> &manager) {
    auto made = nib.make<NSPopUpButton>(NSRect(0, 0, 110, 28));
    made->setIdentifier("AddButton");
    made->setPullsDown(true);
    const auto entry = [&](const char *selector, Property<NSString> &title) {
        auto item = make<NSMenuItem>(NSString(), selector);
        item->target = manager;
        made->menu()->addItem(item);
        title.observe([weakItem = std::weak_ptr(item), weak = std::weak_ptr(made)](const NSString &text) {
            tell(weakItem, [&](NSMenuItem &i) { i.title = text; });
            tell(weak, [&](NSPopUpButton &b) { b.setNeedsDisplay(true); });
        });
    };
    entry("", manager->addTitle);
    entry("addFolderMenuClick:", manager->menu_addfolder);
    entry("addBookMarkMenuClick:", manager->menu_addBookmark);
    return made;
}

void enabledBy(Property<bool> &flag, const std::shared_ptr<RUIButton> &made) {
    flag.observe([weak = std::weak_ptr(made)](const bool &on) { tell(weak, [on](RUIButton &b) { b.setEnabled(on); }); });
}

std::shared_ptr<NSView> topBar(Nib &nib, const std::shared_ptr<Manager> &manager) {
    const auto bar = nib.make<NSStackView>(NSRect(0, 0, kWidth, kTopBar));
    bar->setIdentifier("BookmarkButtons");
    bar->setSpacing(8);
    bar->setEdgeInsets({16, 16, 16, 16});
    bar->addArrangedSubview(addButton(nib, manager));
    const auto exports = button(nib, manager, kExport), removes = button(nib, manager, kDelete);
    bar->addArrangedSubview(exports);
    bar->addArrangedSubview(removes);
    bar->addArrangedSubview(button(nib, manager, kRefresh));
    enabledBy(manager->hasBookmarkExport, exports);
    enabledBy(manager->hasSelectedRow, removes);
    const auto search = nib.make<NSTextField>(NSRect(0, 0, 180, 28));
    search->setIdentifier("SearchField");
    search->setAccessibilityName(localized("FileManager_Search"));
    search->connect(manager, "searchBookMark:");
    search->setContentHuggingPriority(200);
    bar->addArrangedSubview(search);
    manager->searchField = search;
    return bar;
}

// ---------------------------------------------------------------- outline

// What the row's node stands for.
std::shared_ptr<HNBookMarkEntity> entityOf(const NSTableCellView &cell) {
    const auto node = std::dynamic_pointer_cast<NSTreeNode>(cell.objectValue().object());
    return node ? node->represented<HNBookMarkEntity>() : nullptr;
}

std::shared_ptr<NSTableCellView> nameCell(const char *identifier) {
    auto cell = make<NSTableCellView>();
    cell->setIdentifier(identifier);
    cell->setFrame({0, 0, 400, Manager::kRowHeight});
    auto picture = make<NSImageView>(NSRect(4, 10, 20, 20));
    picture->setIdentifier("BookmarkPicture");
    auto line = label("BookmarkName");
    line->setFrame({32, 10, 364, 20});
    line->setAutoresizingMask(NSViewWidthSizable);
    cell->addSubview(picture);
    cell->addSubview(line);
    cell->setImageView(picture);
    cell->setTextField(line);
    cell->objectValueDidChange = [](NSTableCellView &shown) {
        const auto entity = entityOf(shown);
        if (!entity)
            return;
        shown.textField()->setStringValue(entity->name);
        shown.imageView()->setImage(entity->icon);
    };
    return cell;
}

std::shared_ptr<NSTableCellView> urlCell(const char *identifier) {
    auto cell = make<NSTableCellView>();
    cell->setIdentifier(identifier);
    cell->setFrame({0, 0, 500, Manager::kRowHeight});
    auto line = label("BookmarkURL");
    line->setFrame({4, 10, 492, 20});
    line->setAutoresizingMask(NSViewWidthSizable);
    cell->addSubview(line);
    cell->setTextField(line);
    cell->objectValueDidChange = [](NSTableCellView &shown) {
        if (const auto entity = entityOf(shown))
            shown.textField()->setStringValue(entity->url);
    };
    return cell;
}

std::shared_ptr<NSView> bookmarkOutline(Nib &nib, const std::shared_ptr<Manager> &manager) {
    const auto outline = nib.make<HNOutlineTableView>();
    outline->setIdentifier("BookmarkOutline");
    outline->setAccessibilityName(localized("BMView_ListName"));
    outline->setRowHeight(Manager::kRowHeight);
    const auto column = [&](const char *identifier, double width, Property<NSString> &title,
                            std::shared_ptr<NSTableCellView> (*maker)(const char *)) {
        auto made = make<NSTableColumn>(NSString(identifier));
        made->setWidth(width);
        made->setEditable(false);
        title.observe(showsIn(made, &NSTableColumn::setTitle));
        outline->addTableColumn(made);
        outline->registerMaker_forIdentifier([maker, identifier] { return maker(identifier); }, identifier);
    };
    column("NameIdentify", 420, manager->headTitle_1, nameCell);
    column("URLIdentify", 520, manager->headTitle_2, urlCell);
    outline->connect(manager, "outlineRowAction:");
    manager->outlineView = outline;
    const auto scroll = nib.make<NSScrollView>(NSRect(0, 0, kWidth, kHeight - kTopBar - kBottomBar));
    scroll->setDocumentView(outline);
    scroll->setHasVerticalScroller(true);
    return scroll;
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
    panel->addArrangedSubview(button(nib, manager, kRetry));
    manager->disable_iCloudView = panel;
    return panel;
}

// ---------------------------------------------------------------- all together

void build(Nib &nib) {
    const auto root = nib.make<NSView>(NSRect(0, 0, kWidth, kHeight));
    root->setIdentifier("BookmarkView");
    const auto manager = nib.make<Manager>();
    const auto model = nib.make<HNMBookMarkViewModel>();
    manager->bookViewModel = model;
    manager->contentView = root;

    place(root, topBar(nib, manager), {.left = 0, .top = 0, .right = 0, .height = kTopBar});
    place(root, bookmarkOutline(nib, manager), {.left = 0, .top = kTopBar, .right = 0, .bottom = kBottomBar});
    place(root, bottomBar(nib, manager), {.left = 0, .right = 0, .bottom = 0, .height = kBottomBar});
    cloudPanel(nib, manager);
    nib.setView(root);
    if (const auto owner = nib.owner<HNMbaseViewController>()) {
        owner->viewManager = manager;
        owner->viewModel = model;
    }
}

const NibRegistry::Entry entry("HNMBookMarkViewController", build);

}   // namespace
