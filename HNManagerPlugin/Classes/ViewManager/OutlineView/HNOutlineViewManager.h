// The manager of tree-shaped categories: shows the model's outlineTreeController in an outline. Main thread.
#pragma once

#include "HNManagerPlugin/Classes/ViewManager/HNMbaseViewManager.h"
#include "HNManagerPlugin/Classes/ViewManager/OutlineView/HNOutlineTableView.h"
#include "toolkit/tables/NSOutlineView.h"
#include "toolkit/views/NSMenu.h"

class HNOutlineViewManager : public HNMbaseViewManager, public NSOutlineViewDelegate, public NSOutlineViewDataSource {
public:
    HN_DECLARE_CLASS_TABLE

    // The tree of the categories is a plain outline, the browsers' ones are HNOutlineTableViews.
    std::weak_ptr<NSOutlineView> outlineView;

    void viewDidLoad() override;
    virtual void initOutlineView();
    virtual void selectedRowDidChange() {}
    virtual void expandClicked(const id &) {}
    void dealloc() override;

    bool setSelectionIndexes(const NSIndexPath &path);
    [[nodiscard]] NSArray selectedObjects() const;
    [[nodiscard]] std::vector<NSIndexPath> selectionIndexPaths() const;
    void setSelectsInsertedObjects(bool selects);
    void setRightMouseMenu(const std::shared_ptr<NSMenu> &menu);
    // Hangs a submenu of the folders among `children` below `parent`; without a folder nothing.
    void recursionSetFolderMenuWith_childrenArray_menuTitleKeyPath_menuAction(const std::shared_ptr<NSMenuItem> &parent,
                                                                             const NSTreeNodes &children, const NSString &titleKeyPath,
                                                                             const std::string &action);

    std::shared_ptr<NSView> outlineView_viewForTableColumn_item(NSOutlineView &outline, const std::shared_ptr<NSTableColumn> &column,
                                                                const std::shared_ptr<NSTreeNode> &item) override;
    std::shared_ptr<NSTableRowView> outlineView_rowViewForItem(NSOutlineView &outline, const std::shared_ptr<NSTreeNode> &item) override;
    void outlineViewSelectionDidChange(NSOutlineView &outline) override;

protected:
    [[nodiscard]] std::shared_ptr<NSTreeController> treeController() const;
};
