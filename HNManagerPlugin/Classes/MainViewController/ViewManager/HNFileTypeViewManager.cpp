#include "HNManagerPlugin/Classes/MainViewController/ViewManager/HNFileTypeViewManager.h"

#include <array>

#include "HNManagerPlugin/Classes/MainViewController/OutlineView/HNFileTypeOutlineView.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RKBackupAndRestoreTask.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/services/NSLog.h"
#include "toolkit/services/NSNotificationCenter.h"

HN_CLASS_TABLE(HNFileTypeViewManager, HNOutlineViewManager,
               .key("dataShowContentView", &HNFileTypeViewManager::dataShowContentView)
               .selector("mobileDeviceDidSwitchNotify:", &HNFileTypeViewManager::mobileDeviceDidSwitchNotify)
               .selector("strategyWillSelectManagerItem:", &HNFileTypeViewManager::strategyWillSelectManagerItem))

namespace {

constexpr const char *kMessageNib = "HNMMessageViewController";
// Nibs whose models were meant to get the tree node for their counts.
constexpr std::array kNibsWithCount = {"HNMphotoViewController", "HNMAlbumViewController", "HNMmusicViewController",
                                       "HNMringtonesViewController"};

// External index to tree: the order of the two is not the same, hosts of all versions count so.
struct TreePlace {
    std::int64_t topLevel;
    std::int64_t child;   // -1 for none
};
constexpr TreePlace kExternalPlaces[] = {{0, 0}, {0, 1}, {1, 0}, {1, 1}, {2, -1}, {3, -1}, {7, -1}, {4, -1}, {5, -1}, {6, -1}};

std::shared_ptr<HNFileTypeObject> objectOf(const std::shared_ptr<NSTreeNode> &node) {
    return node ? node->represented<HNFileTypeObject>() : nullptr;
}

bool hasChildren(const std::shared_ptr<NSTreeNode> &node) { return node && node->childCount() > 0; }

std::shared_ptr<NSColor> colorOf(double red, double green, double blue, double alpha) {
    return NSColor::colorWithCalibratedRed_green_blue_alpha(red / 255.0, green / 255.0, blue / 255.0, alpha);
}

}  // namespace

// ---------------------------------------------------------------- start and end

void HNFileTypeViewManager::viewDidLoad() {
    HNOutlineViewManager::viewDidLoad();
    ActionRouter.managerEvent().setDelegate(selfOf(this));
    if (const auto model = viewModel.lock())
        model->reloadData();
    if (const auto outline = outlineView.lock()) {
        outline->setAllowsMultipleSelection(false);
        selectFirstLeaf(*outline);
    }
    NSNotificationCenter::defaultCenter().addObserver_selector_name_object(selfOf(this), "mobileDeviceDidSwitchNotify:",
                                                                           NMobileDeviceDidSwitchChangeNotification);
}

void HNFileTypeViewManager::selectFirstLeaf(NSOutlineView &outline) {
    const auto first = outline.itemAtRow(0);
    outline.reloadData();
    if (!hasChildren(first))
        return outline.selectRowIndexes_byExtendingSelection(NSIndexSet{0}, false);
    outline.expandItem(first);
    outline.selectRowIndexes_byExtendingSelection(NSIndexSet{1}, true);
    updateItemStatues_highlight(first->childAtIndex(0), true);
}

void HNFileTypeViewManager::dealloc() {
    controllers.clear();
    tell(contentView, [](NSView &view) { view.removeFromSuperview(); });
    NSNotificationCenter::defaultCenter().removeObserver_name(this, NMobileDeviceDidSwitchChangeNotification);
    NSLog("%s", "-[HNFileTypeViewManager dealloc]");
    HNOutlineViewManager::dealloc();
}

void HNFileTypeViewManager::mobileDeviceDidSwitchNotify(const id &) {
    for (const auto &[nibName, controller] : controllers)
        if (controller->isViewLoaded())
            controller->view()->removeFromSuperview();
    controllers.clear();
    const auto tree = treeController();
    if (!tree)
        return;
    for (const id &group : tree->content()->snapshot())
        if (const auto node = std::dynamic_pointer_cast<HNFileTypeObject>(group))
            for (const id &child : node->children()->snapshot())
                if (const auto leaf = std::dynamic_pointer_cast<HNFileTypeObject>(child))
                    leaf->setItemCount(-1);
    if (const auto outline = outlineView.lock()) {
        updateItemStatues_highlight(outline->itemAtRow(outline->selectedRow()), false);
        for (const auto &node : tree->arrangedObjects()->childNodes())
            if (outline->isExpandable(node)) {
                outline->collapseItem(node);
                updateItemStatues_highlight(node, false);
            }
    }
    strategyWillSelectManagerItem(0);
}

// ---------------------------------------------------------------- status and selection

void HNFileTypeViewManager::updateItemStatues_highlight(const std::shared_ptr<NSTreeNode> &item, bool highlight) {
    const auto object = objectOf(item);
    if (!object || (highlight && hasChildren(item)))
        return;
    if (highlight) {
        object->textColor = HNMbaseViewModel::getColorFromHexColor(object->textHighLightColor);
        object->fileTypeImage = object->imageB;
        return;
    }
    object->textColor = HNMbaseViewModel::getColorFromHexColor(object->textNormalColor);
    object->fileTypeImage = object->imageA;
    if (!hasChildren(item))
        return;
    object->hiddenExpandBgColor = true;
    const auto outline = outlineView.lock();
    const auto row = outline ? outline->rowViewAtRow_makeIfNecessary(outline->rowForItem(item), false) : nullptr;
    if (const auto rowView = std::dynamic_pointer_cast<HNFileTypeTableRowView>(row))
        rowView->setWantsCustomColor(false);
    object->expandMarkIcon = NSImage::named("NSImageNameGoRightTemplate");
}

bool HNFileTypeViewManager::outlineView_shouldSelectItem(NSOutlineView &outline, const std::shared_ptr<NSTreeNode> &item) {
    const auto selected = outline.itemAtRow(outline.selectedRow());
    updateItemStatues_highlight(selected, false);
    if (!hasChildren(item)) {
        updateItemStatues_highlight(item, true);
        return true;
    }
    const bool wasExpanded = outline.isItemExpanded(item);
    if (!wasExpanded)
        outline.expandItem(item);
    if (selected && selected->parentNode() == item) {
        updateItemStatues_highlight(item, false);
        outline.collapseItem(item);
        return false;
    }
    const auto first = item->childAtIndex(0);
    const std::int64_t row = outline.rowForItem(first);
    if (row > 0) {
        outline.selectRowIndexes_byExtendingSelection(NSIndexSet{static_cast<std::size_t>(row)}, false);
        selectRowAtIndex(row);
        updateItemStatues_highlight(first, true);
    }
    return false;   // a group is never itself selected
}

bool HNFileTypeViewManager::outlineView_shouldExpandItem(NSOutlineView &, const std::shared_ptr<NSTreeNode> &item) {
    if (const auto object = objectOf(item))
        object->expandMarkIcon = object->expandMarkIconB;
    return true;
}

bool HNFileTypeViewManager::outlineView_shouldCollapseItem(NSOutlineView &, const std::shared_ptr<NSTreeNode> &item) {
    if (const auto object = objectOf(item))
        object->expandMarkIcon = object->expandMarkIconA;
    return true;
}

void HNFileTypeViewManager::outlineViewSelectionDidChange(NSOutlineView &outline) {
    NSLog("%s", "outlineViewSelectionDidChange:");
    NSLog(">>> OutlineView selected row:%ld", outline.selectedRow());
    selectRowAtIndex(outline.selectedRow());
}

void HNFileTypeViewManager::selectRowAtIndex(std::int64_t row) {
    NSLog("%s: %ld", "selectRowAtIndex:", row);
    const auto outline = outlineView.lock();
    if (row < 0 || !outline)
        return;
    const auto node = outline->itemAtRow(row);
    const auto object = objectOf(node);
    if (!object)
        return;
    // a message backup that runs has the device's full speed exactly while its category is on show
    const auto backup = RKBackupAndRestoreTask::sharedInstance();
    if (object->nibName == kMessageNib)
        backup->exitSpeedLimitBackup();
    else
        backup->enterSpeedLimitBackup();
    showSubItemView_withItem_isLeaf(object->nibName, object, node->isLeaf());
}

// ---------------------------------------------------------------- sub-views

void HNFileTypeViewManager::showSubItemView_withItem_isLeaf(const NSString &nibName, const id &item, bool isLeaf) {
    if (nibName.isEmpty())
        return;
    auto &controller = controllers[nibName];
    if (!controller) {
        controller = make<HNMbaseViewController>(nibName, NSBundle::bundleForClass());
        const bool wantsCount = std::ranges::any_of(kNibsWithCount, [&](const char *name) { return nibName == name; });
        // Kept: the nib is not loaded yet, so there is no model to take the node, and labels show no count.
        if (isLeaf && wantsCount)
            tell(controller->viewModel, [&](HNMbaseViewModel &model) { model.treeNoteItem = std::dynamic_pointer_cast<HNFileTypeObject>(item); });
    }
    const auto shown = controller;   // a view that loads may run blocks, and with them a device switch
    addSubView(shown);
}

void HNFileTypeViewManager::addSubView(const std::shared_ptr<HNMbaseViewController> &controller) {
    const auto view = controller->view();
    const auto old = currentView.lock();
    if (view == old)
        return;
    if (old)
        old->removeFromSuperview();
    currentView = view;
    const auto container = dataShowContentView.lock();
    if (!view || !container)
        return;
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    container->addSubview(view);
    for (const auto edge : {NSLayoutAttribute::left, NSLayoutAttribute::right, NSLayoutAttribute::bottom, NSLayoutAttribute::top})
        container->addConstraint(NSLayoutConstraint::tie(view, edge, container, edge));
}

void HNFileTypeViewManager::strategyWillSelectManagerItem(std::int64_t index) {
    const bool known = index >= 0 && index < static_cast<std::int64_t>(std::size(kExternalPlaces));
    const TreePlace place = known ? kExternalPlaces[index] : TreePlace{-1, -1};
    const auto outline = outlineView.lock();
    const auto tree = treeController();
    if (!outline || !tree || place.topLevel >= outline->numberOfRows())
        return;
    const auto topLevel = tree->arrangedObjects()->childNodes();
    if (topLevel.size() <= static_cast<std::size_t>(place.topLevel))   // -1 is the largest number here
        return;
    std::shared_ptr<NSTreeNode> node = topLevel[static_cast<std::size_t>(place.topLevel)];
    if (outline->isExpandable(node))
        outline->expandItem(node);
    if (place.child >= 0 && static_cast<std::size_t>(place.child) < node->childCount())
        node = node->childAtIndex(static_cast<std::size_t>(place.child));
    outlineView_shouldSelectItem(*outline, node);
    tree->setSelectionIndexPath(node->indexPath());
}

// ---------------------------------------------------------------- rows

std::shared_ptr<NSTableRowView> HNFileTypeViewManager::outlineView_rowViewForItem(NSOutlineView &outline, const std::shared_ptr<NSTreeNode> &item) {
    if (auto reused = std::dynamic_pointer_cast<NSTableRowView>(outline.makeViewWithIdentifier_owner("TableRowView", selfOf(this))))
        return reused;   // keeps the colours it was made with
    auto row = make<HNFileTypeTableRowView>();
    row->setIdentifier("TableRowView");
    row->setHighlightColor(colorOf(210, 236, 246, 0.5));
    if (!hasChildren(item))
        row->setSelectedColor(colorOf(10, 179, 203, 1.0));
    return row;
}
