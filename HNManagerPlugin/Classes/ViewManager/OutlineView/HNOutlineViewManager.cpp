#include "HNManagerPlugin/Classes/ViewManager/OutlineView/HNOutlineViewManager.h"

#include "HNManagerPlugin/Classes/ViewManager/HeaderCells.h"

HN_CLASS_TABLE(HNOutlineViewManager, HNMbaseViewManager,
               .key("outlineView", &HNOutlineViewManager::outlineView)
               .selector("expandClicked:", &HNOutlineViewManager::expandClicked))

namespace {

constexpr const char *kTreeColumn = "HNFileTypeOutline";
constexpr const char *kUrlColumn = "URLIdentify";
constexpr const char *kRowView = "TableRowView";
constexpr double kSmallestRowHeight = 40.0, kHeaderOffset = 45.0;

}  // namespace

std::shared_ptr<NSTreeController> HNOutlineViewManager::treeController() const {
    const auto model = viewModel.lock();
    return model ? model->outlineTreeController : nullptr;
}

void HNOutlineViewManager::viewDidLoad() {
    HNMbaseViewManager::viewDidLoad();
    initOutlineView();
}

void HNOutlineViewManager::initOutlineView() {
    const auto outline = outlineView.lock();
    const auto tree = treeController();
    if (!outline || !tree)
        return;
    outline->setDelegate(selfOf(this));
    tree->setAvoidsEmptySelection(true);
    tree->setLeafKeyPath("isLeaf");
    tree->setChildrenKeyPath("children");
    outline->unbind("content");
    outline->bind_toObject_withKeyPath("content", tree, "arrangedObjects");
    outline->unbind("selectionIndexPaths");
    outline->bind_toObject_withKeyPath("selectionIndexPaths", tree, "selectionIndexPaths");
    outline->setDataSource(selfOf(this));
    outline->setRowHeight(std::max(outline->rowHeight(), kSmallestRowHeight));
    outline->setAllowsEmptySelection(true);
    outline->setAllowsMultipleSelection(true);
    setSelectsInsertedObjects(true);
    const auto table = std::dynamic_pointer_cast<HNOutlineTableView>(outline);
    if (!table)
        return;
    table->setCustomHeaderViewHeight_color(kHeaderHeight, headerGrey());
    for (const auto &column : table->tableColumns())
        column->setHeaderCell(makeHeaderCell(column->title(), column->identifier() == kUrlColumn ? 0.0 : kHeaderOffset));
}

void HNOutlineViewManager::dealloc() {
    tell(outlineView, [](NSOutlineView &outline) {
        outline.unbind("content");
        outline.unbind("selectionIndexPaths");
    });
    HNMbaseViewManager::dealloc();
}

bool HNOutlineViewManager::setSelectionIndexes(const NSIndexPath &path) {
    const auto tree = treeController();
    return tree && tree->setSelectionIndexPath(path);
}

NSArray HNOutlineViewManager::selectedObjects() const {
    const auto tree = treeController();
    return tree ? tree->selectedObjects() : NSArray();
}

std::vector<NSIndexPath> HNOutlineViewManager::selectionIndexPaths() const {
    const auto tree = treeController();
    return tree ? tree->selectionIndexPaths() : std::vector<NSIndexPath>();
}

void HNOutlineViewManager::setSelectsInsertedObjects(bool selects) {
    if (const auto tree = treeController())
        tree->setSelectsInsertedObjects(selects);
}

void HNOutlineViewManager::setRightMouseMenu(const std::shared_ptr<NSMenu> &menu) {
    if (const auto outline = std::dynamic_pointer_cast<RVBaseOutlineView>(outlineView.lock()))
        outline->setRightMouseMenu(menu);
}

// A walk with a list of its own: folders may nest deeper than a stack reaches.
void HNOutlineViewManager::recursionSetFolderMenuWith_childrenArray_menuTitleKeyPath_menuAction(const std::shared_ptr<NSMenuItem> &parent,
                                                                                                const NSTreeNodes &children,
                                                                                                const NSString &titleKeyPath,
                                                                                                const std::string &action) {
    struct Level {
        std::shared_ptr<NSMenuItem> parent;
        NSTreeNodes children;
    };
    std::vector<Level> open = {{parent, children}};
    while (!open.empty()) {
        const Level level = std::move(open.back());
        open.pop_back();
        auto menu = make<NSMenu>();
        for (const auto &node : level.children) {
            if (node->isLeaf())
                continue;
            const id object = node->representedObject();
            auto item = make<NSMenuItem>(object ? object->valueForKeyPath(titleKeyPath.view()).text() : NSString(), action, NSString(""));
            item->target = selfOf(this);
            item->representedObject = Value(node);
            menu->addItem(item);
            open.push_back({item, node->childNodes()});
        }
        if (menu->numberOfItems() > 0)
            level.parent->setSubmenu(menu);
    }
}

std::shared_ptr<NSView> HNOutlineViewManager::outlineView_viewForTableColumn_item(NSOutlineView &outline,
                                                                                  const std::shared_ptr<NSTableColumn> &column,
                                                                                  const std::shared_ptr<NSTreeNode> &item) {
    auto view = outline.makeViewWithIdentifier_owner(column->identifier(), selfOf(this));
    if (column->identifier() == kTreeColumn && view)
        if (const auto button = std::dynamic_pointer_cast<NSButton>(view->valueForKey("expandButton").object())) {
            button->connect(selfOf(this), "expandClicked:");
            button->setTag(outline.rowForItem(item));
        }
    return view;
}

std::shared_ptr<NSTableRowView> HNOutlineViewManager::outlineView_rowViewForItem(NSOutlineView &outline, const std::shared_ptr<NSTreeNode> &) {
    if (auto reused = outline.makeView<NSTableRowView>(kRowView))
        return reused;
    return makeRowView(kRowView);
}

void HNOutlineViewManager::outlineViewSelectionDidChange(NSOutlineView &) { selectedRowDidChange(); }
