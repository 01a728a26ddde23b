#include "HNManagerPlugin/Classes/ViewManager/OutlineView/HNOutlineViewManager.h"

#include <gtest/gtest.h>

#include "HNManagerPlugin/Classes/MainViewController/ViewModel/HNFileTypeObject.h"
#include "HNManagerPlugin/contracts/RVViewTemplate/RVTableHeaderCell.h"
#include "tests/support/PluginWorld.h"
#include "toolkit/views/NSApplication.h"

namespace {

std::shared_ptr<HNFileTypeObject> node(const char *name, bool isLeaf,
                                       const std::vector<std::shared_ptr<HNFileTypeObject>> &children = {}) {
    auto object = make<HNFileTypeObject>();
    object->fileTypeName = name;
    object->setIsLeaf(isLeaf);
    for (const auto &child : children)
        object->children()->addObject(child);
    return object;
}

// "Work[Old New]": each entry with its submenu.
std::string titles(const NSMenu &menu) {
    std::string text;
    for (const auto &item : menu.itemArray()) {
        text += (text.empty() ? "" : " ") + item->title.str();
        if (item->hasSubmenu())
            text += "[" + titles(*item->submenu()) + "]";
    }
    return text;
}

class Folders : public testing::Test {
protected:
    void show(const std::shared_ptr<NSOutlineView> &outline) {
        outline->setHeaderView(make<NSTableHeaderView>());
        for (const char *identifier : {"NameIdentify", "URLIdentify"}) {
            auto column = make<NSTableColumn>(NSString(identifier));
            column->setTitle(identifier);
            outline->addTableColumn(column);
        }
        model_->outlineTreeController->setContent(make<NSMutableArray>());
        manager_->outlineView = outline;
        manager_->initViewModel(model_);
        const auto content = model_->outlineTreeController->content();
        content->addObject(node(
            "Work", false,
            {node("Old", false, {node("page", true)}), node("page", true), node("New", false, {node("Deep", false)})}));
        content->addObject(node("page", true));
        content->addObject(node("Empty", false));
        model_->outlineTreeController->rearrangeObjects();
    }
    static std::shared_ptr<RVTableHeaderCell> headerOf(NSOutlineView &outline, std::int64_t column) {
        return std::dynamic_pointer_cast<RVTableHeaderCell>(outline.columnAtIndex(column)->headerCell());
    }

    PluginWorld world_;
    std::shared_ptr<HNOutlineViewManager> manager_ = make<HNOutlineViewManager>();
    std::shared_ptr<HNMbaseViewModel> model_ = make<HNMbaseViewModel>();
};

}   // namespace

TEST_F(Folders, theirOutlineGetsHeaderHeightsAndMarks) {
    const auto outline = make<HNOutlineTableView>(NSRect(0, 0, 400, 300));
    show(outline);
    EXPECT_EQ(outline->numberOfRows(), 3);
    EXPECT_EQ(outline->rowHeight(), 40.0);
    EXPECT_EQ(outline->headerView()->frame().size.height, 30.0);
    EXPECT_EQ(headerOf(*outline, 0)->offsetX(), 45.0);
    EXPECT_EQ(headerOf(*outline, 1)->offsetX(), 0.0);
    EXPECT_EQ(headerOf(*outline, 1)->title(), "URLIdentify");
    EXPECT_EQ(outline->frameOfOutlineCellAtRow(0).origin.x,
              outline->RVBaseOutlineView::frameOfOutlineCellAtRow(0).origin.x + 12.0);
    EXPECT_EQ(outline->headerPatchView, nullptr);
}

TEST_F(Folders, anOldToolkitGetsAPatchOverTheScroller) {
    setAppKitVersionNumber(1264.9);
    const auto outline = make<HNOutlineTableView>(NSRect(0, 0, 400, 300));
    show(outline);
    ASSERT_TRUE(outline->headerPatchView);
    EXPECT_EQ(outline->headerPatchView->frame().size, (NSSize{15, 30}));
    EXPECT_EQ(outline->headerPatchView->layer()->backgroundColor()->redComponent(), 240 / 255.0);
    setAppKitVersionNumber(1561);
}

TEST_F(Folders, aPlainOutlineKeepsItsHeader) {
    const auto outline = make<NSOutlineView>(NSRect(0, 0, 400, 300));
    const double rowHeight = 52.0;
    outline->setRowHeight(rowHeight);
    show(outline);
    EXPECT_EQ(headerOf(*outline, 0), nullptr);
    EXPECT_EQ(outline->rowHeight(), rowHeight);
}

TEST_F(Folders, theMenuShowsTheFoldersAlone) {
    show(make<HNOutlineTableView>(NSRect(0, 0, 400, 300)));
    const auto parent = make<NSMenuItem>("Move to");
    const auto nodes = model_->outlineTreeController->arrangedObjects()->childNodes();
    manager_->recursionSetFolderMenuWith_childrenArray_menuTitleKeyPath_menuAction(parent, nodes, "fileTypeName",
                                                                                   "moveTo:");
    ASSERT_TRUE(parent->hasSubmenu());
    EXPECT_EQ(titles(*parent->submenu()), "Work[Old New[Deep]] Empty");
    const auto entry = parent->submenu()->itemAtIndex(1);
    EXPECT_EQ(entry->action, "moveTo:");
    EXPECT_EQ(entry->target.lock(), manager_);
    EXPECT_EQ(entry->representedObject.object(), nodes[2]);
    EXPECT_EQ(entry->keyEquivalent, "");
    const auto leafOnly = make<NSMenuItem>("x");
    manager_->recursionSetFolderMenuWith_childrenArray_menuTitleKeyPath_menuAction(leafOnly, {nodes[1]}, "fileTypeName",
                                                                                   "moveTo:");
    EXPECT_FALSE(leafOnly->hasSubmenu());
}

TEST_F(Folders, theSelectionIsTheTreeControllers) {
    show(make<HNOutlineTableView>(NSRect(0, 0, 400, 300)));
    EXPECT_TRUE(manager_->setSelectionIndexes({0, 2}));
    EXPECT_EQ(manager_->selectionIndexPaths(), (std::vector<NSIndexPath>{{0, 2}}));
    ASSERT_EQ(manager_->selectedObjects().count(), 1U);
    EXPECT_EQ(manager_->selectedObjects().objectAtIndex(0)->valueForKey("fileTypeName").text(), "New");
}
