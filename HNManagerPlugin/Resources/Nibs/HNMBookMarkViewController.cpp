// The bookmark category: buttons and search above, the outline below them, the status line at the foot; a panel with three
// steps while the bookmarks are kept in the cloud.
#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/HNMBookMarkViewManager.h"
#include "HNManagerPlugin/Resources/Nibs/NibParts.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/views/NSImageView.h"
#include "toolkit/views/NSPopUpButton.h"

namespace {

using namespace nibParts;
using BookmarkManager = HNMBookMarkViewManager;

// ---------------------------------------------------------------- buttons

constexpr ButtonPlace kExport{"ExportButton", &HNMbaseViewManager::exportTitle, "onExportButton:"};
constexpr ButtonPlace kDelete{"DeleteButton", &HNMbaseViewManager::deleteTitle, "onDeleteButton:"};
constexpr ButtonPlace kRefresh{"RefreshButton", &HNMbaseViewManager::refreshTitle, "onRefreshButton:"};

// Its first entry is what it shows itself, and stands in no list.
std::shared_ptr<NSPopUpButton> addButton(Nib &nib, const std::shared_ptr<BookmarkManager> &manager) {
    auto made = nib.make<NSPopUpButton>(NSRect(0, 0, 110, 28));
    made->setIdentifier("AddButton");
    made->setPullsDown(true);
    const auto entry = [&](const char *selector, Property<NSString> &title) {
        menuEntry(made->menu(), manager, selector, title);
        title.observe([weak = std::weak_ptr(made)](const NSString &) { tell(weak, [](NSPopUpButton &shown) { shown.invalidateIntrinsicContentSize(); }); });
    };
    entry("", manager->addTitle);
    entry("addFolderMenuClick:", manager->menu_addfolder);
    entry("addBookMarkMenuClick:", manager->menu_addBookmark);
    return made;
}

std::shared_ptr<NSView> buttons(Nib &nib, const std::shared_ptr<BookmarkManager> &manager) {
    const auto bar = topBar(nib, "BookmarkButtons");
    const auto exports = button(nib, manager, kExport), removes = button(nib, manager, kDelete);
    enabledBy(manager->hasBookmarkExport, exports);
    enabledBy(manager->hasSelectedRow, removes);
    for (const std::shared_ptr<NSView> &view : NSView::List{addButton(nib, manager), exports, removes, button(nib, manager, kRefresh),
                                                            searchField(nib, manager, "searchBookMark:")})
        bar->addArrangedSubview(view);
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
    cell->setFrame({0, 0, 400, BookmarkManager::kRowHeight});
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
    cell->setFrame({0, 0, 500, BookmarkManager::kRowHeight});
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

std::shared_ptr<NSView> bookmarkOutline(Nib &nib, const std::shared_ptr<BookmarkManager> &manager) {
    const auto outline = nib.make<HNOutlineTableView>();
    outline->setIdentifier("BookmarkOutline");
    outline->setAccessibilityName(localized("BMView_ListName"));
    outline->setRowHeight(BookmarkManager::kRowHeight);
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
    return scrolling(nib, outline);
}

// ---------------------------------------------------------------- all together

void build(Nib &nib) {
    const auto root = nib.make<NSView>(NSRect(0, 0, kWidth, kHeight));
    root->setIdentifier("BookmarkView");
    const auto manager = nib.make<BookmarkManager>();
    const auto model = nib.make<HNMBookMarkViewModel>();
    manager->bookViewModel = model;

    place(root, buttons(nib, manager), {.left = 0, .top = 0, .right = 0, .height = kTopBar});
    place(root, bookmarkOutline(nib, manager), {.left = 0, .top = kTopBar, .right = 0, .bottom = kBottomBar});
    place(root, bottomBar(nib, manager), {.left = 0, .right = 0, .bottom = 0, .height = kBottomBar});
    cloudPanel(nib, manager, "disableIcloudClick:");
    setView(nib, root, manager, model);
}

const NibRegistry::Entry entry("HNMBookMarkViewController", build);

}   // namespace
