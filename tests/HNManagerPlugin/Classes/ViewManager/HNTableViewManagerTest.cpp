#include "HNManagerPlugin/Classes/ViewManager/TableView/HNTableViewManager.h"

#include <gtest/gtest.h>

#include "HNManagerPlugin/contracts/RVViewTemplate/RVCheckBoxTableCellView.h"
#include "HNManagerPlugin/contracts/RVViewTemplate/RVTableHeaderCell.h"
#include "tests/support/ListRow.h"
#include "tests/support/PluginWorld.h"

namespace {

class TableOfRows : public testing::Test {
protected:
    void make_(const std::vector<NSString> &names) {
        model_->device = names;
        model_->reloadData();
        controller_->setContent(model_->contents);
        model_->arrayController = controller_;
        for (const char *key : {"name", "checkBoxSortValue"}) {
            auto column = make<NSTableColumn>(NSString(key));
            column->setTitle(key);
            column->setSortDescriptorPrototype(NSSortDescriptor(NSString(key)));
            table_->addTableColumn(column);
        }
        table_->bindToArrayController(controller_);
        manager_->tableView = table_;
        manager_->initViewModel(model_);
        window_->setContentView(table_);
    }
    void tick(std::int64_t row) {
        const auto cell = std::dynamic_pointer_cast<RVCheckBoxTableCellView>(table_->viewAtColumn_row_makeIfNecessary(0, row, true));
        ASSERT_TRUE(cell);
        cell->checkBox()->performClick();
    }
    int head() { return manager_->headCheckBox->state(); }
    // The selected rows and the state of the head box.
    std::string ticked() { return namesOf(controller_->selectedObjects()) + " " + std::to_string(head()); }
    std::string shown() { return namesOf(controller_->arrangedObjects()); }

    PluginWorld world_;
    std::shared_ptr<HNTableViewManager> manager_ = make<HNTableViewManager>();
    std::shared_ptr<ListModel> model_ = make<ListModel>();
    std::shared_ptr<NSArrayController> controller_ = make<NSArrayController>();
    std::shared_ptr<RUIMenuTableView> table_ = make<RUIMenuTableView>(NSRect(0, 0, 600, 400));
    std::shared_ptr<NSWindow> window_ = make<NSWindow>(NSRect(0, 0, 600, 400));
};

}  // namespace

TEST_F(TableOfRows, getsItsCheckBoxColumnHeaderAndHeights) {
    make_({"Ada", "Bob"});
    EXPECT_EQ(table_->columnAtIndex(0)->identifier(), "CheckBoxCell");
    EXPECT_EQ(table_->columnAtIndex(0)->width(), 40.0);
    EXPECT_EQ(table_->rowHeight(), 40.0);
    EXPECT_EQ(table_->headerView()->frame().size.height, 30.0);
    const auto box = std::static_pointer_cast<RVTableHeaderCell>(table_->columnAtIndex(0)->headerCell());
    const auto name = std::static_pointer_cast<RVTableHeaderCell>(table_->columnAtIndex(1)->headerCell());
    EXPECT_TRUE(box->noSortArrow());
    EXPECT_FALSE(name->noSortArrow());
    EXPECT_EQ(name->title(), "name");
    EXPECT_EQ(manager_->headCheckBox->frame().size, (NSSize{18, 18}));
    manager_->initTableView();
    EXPECT_EQ(table_->numberOfColumns(), 3);
}

TEST_F(TableOfRows, theHeadBoxFollowsRowBoxesAndClicks) {
    make_({"Ada", "Bob", "Cleo"});
    EXPECT_EQ(ticked(), " 0");
    tick(1);
    EXPECT_EQ(ticked(), "Bob -1");
    tick(0);
    tick(2);
    EXPECT_EQ(ticked(), "Ada Bob Cleo 1");
    tick(2);
    EXPECT_EQ(ticked(), "Ada Bob -1");
    table_->performClick(2);   // a person's click proposes one row
    EXPECT_EQ(ticked(), "Cleo -1");
    EXPECT_TRUE(manager_->hasSelectedRow);
    tick(2);
    EXPECT_EQ(ticked(), " 0");
    EXPECT_FALSE(manager_->hasSelectedRow);
}

TEST_F(TableOfRows, aClickOnTheHeadBoxSelectsAllUnlessItIsOn) {
    make_({"Ada", "Bob", "Cleo"});
    tick(1);
    for (const char *after : {"Ada Bob Cleo 1", " 0", "Ada Bob Cleo 1"}) {   // from mixed, from on, from off, which goes to mixed by itself
        manager_->headCheckBox->performClick();
        EXPECT_EQ(ticked(), after);
    }
}

TEST_F(TableOfRows, anEmptyTableKeepsTheHeadBoxOff) {
    make_({});
    manager_->updateHeadCheckBoxState();
    EXPECT_EQ(head(), 0);
    manager_->headCheckBoxUpdateStateWithSelectionIndexes(std::nullopt);
    EXPECT_EQ(head(), 0);
}

TEST_F(TableOfRows, headersSortTheRowsOnShowAndNotTheWholeList) {
    make_({"Bob", "Ada", "Cleo"});
    const auto press = [this](std::int64_t column) { table_->headerView()->performClickOnColumn(column); };
    press(1);
    EXPECT_EQ(shown(), "Ada Bob Cleo");
    press(1);
    EXPECT_EQ(shown(), "Cleo Bob Ada");
    press(2);   // does not sort
    EXPECT_EQ(shown(), "Cleo Bob Ada");
    press(1);   // another header was pressed in between: ascending again
    EXPECT_EQ(shown(), "Ada Bob Cleo");
    EXPECT_EQ(namesOf(model_->globalArray->snapshot()), "Bob Ada Cleo");
}

TEST_F(TableOfRows, theCheckBoxColumnStaysFirst) {
    make_({"Ada"});
    EXPECT_FALSE(manager_->tableView_shouldReorderColumn_toColumn(*table_, 0, 1));
    EXPECT_FALSE(manager_->tableView_shouldReorderColumn_toColumn(*table_, 1, 0));
    EXPECT_TRUE(manager_->tableView_shouldReorderColumn_toColumn(*table_, 1, 2));
}

TEST_F(TableOfRows, listOperationsGoThroughTheController) {
    make_({"Ada", "Bob"});
    EXPECT_TRUE(manager_->addData(ListRow::of("Cleo")));
    EXPECT_EQ(manager_->addDatas(NSArray{ListRow::of("Dan"), ListRow::of("Eve")}), 2U);
    EXPECT_EQ(shown(), "Ada Bob Cleo Dan Eve");
    controller_->setSelectionIndexes({0, 2});
    EXPECT_EQ(manager_->removeData(), 2U);
    EXPECT_EQ(shown(), "Bob Dan Eve");
    manager_->headCheckBox->setState(NSOnState);
    manager_->removeSelectRowAtIndexSet({1});
    EXPECT_EQ(namesOf(model_->contents->snapshot()), "Bob Eve");
    EXPECT_EQ(head(), 0);
    EXPECT_EQ(table_->takeRowAnimations().back().animation, 64U);
    manager_->resetDataContents();
    EXPECT_EQ(table_->numberOfRows(), 0);
}

TEST_F(TableOfRows, rightToLeftThePinnedHeadBoxStandsNearTheRightEdge) {
    world_.setTexts({{"Current_Language", "Arablic"}});
    make_({"Ada"});
    const NSRect header = table_->headerView()->bounds();
    EXPECT_EQ(manager_->headCheckBox->frame().maxX(), header.maxX() - 14);
    EXPECT_EQ(manager_->headCheckBox->frame().maxY(), header.maxY());
    EXPECT_EQ(manager_->headCheckBox->frame().size, (NSSize{18, 18}));
}
