// Owns both sides of the main view: the tree of categories and the sub-view of the chosen one.
//
// Sub-views   one controller per nib name, kept until the device switches; returning to a category shows its old list
//             without reloading.
// Threads     main; the device layer posts the switch notice there.
#pragma once

#include <map>

#include "HNManagerPlugin/Classes/MainViewController/ViewModel/HNFileTypeViewModel.h"
#include "HNManagerPlugin/Classes/SubItemViewController/HNMbaseViewController.h"
#include "HNManagerPlugin/Classes/ViewManager/OutlineView/HNOutlineViewManager.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ActionRouter.h"

class HNFileTypeViewManager : public HNOutlineViewManager, public RStrategyManagerDelegate {
public:
    HN_DECLARE_CLASS_TABLE

    std::weak_ptr<NSView> dataShowContentView;   // the right-hand container
    std::map<NSString, std::shared_ptr<HNMbaseViewController>> controllers;   // by nib name

    void viewDidLoad() override;
    void dealloc() override;

    void mobileDeviceDidSwitchNotify(const id &notification);
    // Highlights a leaf, or takes the highlight off; a group is never highlighted.
    void updateItemStatues_highlight(const std::shared_ptr<NSTreeNode> &item, bool highlight);
    // Shows the sub-view of the row's node; below 0 nothing happens.
    void selectRowAtIndex(std::int64_t row);
    void showSubItemView_withItem_isLeaf(const NSString &nibName, const id &item, bool isLeaf);
    void addSubView(const std::shared_ptr<HNMbaseViewController> &controller);
    void strategyWillSelectManagerItem(std::int64_t index) override;

    bool outlineView_shouldSelectItem(NSOutlineView &outline, const std::shared_ptr<NSTreeNode> &item) override;
    bool outlineView_shouldExpandItem(NSOutlineView &outline, const std::shared_ptr<NSTreeNode> &item) override;
    bool outlineView_shouldCollapseItem(NSOutlineView &outline, const std::shared_ptr<NSTreeNode> &item) override;
    void outlineViewSelectionDidChange(NSOutlineView &outline) override;
    std::shared_ptr<NSTableRowView> outlineView_rowViewForItem(NSOutlineView &outline, const std::shared_ptr<NSTreeNode> &item) override;

private:
    void selectFirstLeaf(NSOutlineView &outline);
};
