#include "HNManagerPlugin/Classes/ViewModel/HNMbaseViewModel.h"

#include <gtest/gtest.h>

#include "tests/support/ListRow.h"
#include "tests/support/PluginWorld.h"

namespace {

class ListOfRows : public testing::Test {
protected:
    ListOfRows() {
        model_->device = {"Ada", "Bob", "Ben", "Cleo"};
        model_->reloadData();
        controller_->setContent(model_->contents);
        model_->arrayController = controller_;
        controller_->rearrangeObjects();
    }
    std::string shown() { return namesOf(model_->contents->snapshot()); }
    std::string selected() { return namesOf(controller_->selectedObjects()); }
    void select(const NSIndexSet &rows) {
        controller_->setSelectionIndexes(rows);
        model_->searchSelectedChanged();
    }

    PluginWorld world_;
    std::shared_ptr<ListModel> model_ = make<ListModel>();
    std::shared_ptr<NSArrayController> controller_ = make<NSArrayController>();
};

}  // namespace

TEST_F(ListOfRows, aSearchThatNarrowsKeepsTheSelectionOfHiddenRows) {
    select({0, 1});
    EXPECT_TRUE(model_->searchFileByString("b"));
    EXPECT_EQ(shown(), "Bob Ben");
    EXPECT_EQ(selected(), "Bob");
    select({0, 1});
    EXPECT_TRUE(model_->searchFileByString("EN"));
    EXPECT_EQ(shown(), "Ben");
    EXPECT_TRUE(model_->searchFileByString(""));
    EXPECT_EQ(shown(), "Ada Bob Ben Cleo");
    EXPECT_EQ(selected(), "Ada Bob Ben");
}

TEST_F(ListOfRows, aRowUntickedUnderASearchIsForgottenAtTheNextOne) {
    select({0, 1});
    EXPECT_TRUE(model_->searchFileByString("b"));
    controller_->setSelectionIndexes({});
    EXPECT_TRUE(model_->searchFileByString(""));
    EXPECT_EQ(selected(), "Ada");
}

TEST_F(ListOfRows, aSearchWithoutAHitChangesNothing) {
    select({2});
    EXPECT_FALSE(model_->searchFileByString("nobody"));
    EXPECT_EQ(shown(), "Ada Bob Ben Cleo");
    EXPECT_EQ(selected(), "Ben");
    EXPECT_TRUE(model_->searchFileByString(""));
    EXPECT_EQ(selected(), "Ben");
}

TEST_F(ListOfRows, clearingASearchThatHidNothingLeavesTheSelection) {
    model_->selectInfoDic->setObject_forKey(Value(0), "id-Cleo");
    controller_->setSelectionIndexes({0});
    EXPECT_TRUE(model_->searchFileByString(""));
    EXPECT_EQ(selected(), "Ada");
    EXPECT_EQ(model_->selectInfoDic->count(), 0U);   // a row on show that is not selected is forgotten all the same
}

TEST_F(ListOfRows, removingTakesAllIndexesOrNone) {
    model_->removeModelAtIndexes({1, 4});
    EXPECT_EQ(shown(), "Ada Bob Ben Cleo");
    model_->removeModelAtIndexes({1, 3});
    EXPECT_EQ(shown(), "Ada Ben");
    model_->removeModelAtIndex(7);
    model_->removeModelAtIndex(0);
    EXPECT_EQ(shown(), "Ben");
    const id ben = model_->modelAtIndex(0);
    EXPECT_EQ(model_->modelAtIndex(1), nullptr);
    EXPECT_EQ(model_->indexForModel(ben), 0);
    EXPECT_EQ(model_->indexForModel(make<ListRow>()), -1);
    model_->removeModels(NSArray{make<ListRow>(), ben});
    model_->removeModels(NSArray{ben});
    EXPECT_EQ(shown(), "");
}

TEST_F(ListOfRows, sortsBothListsAndRemovesFromBoth) {
    model_->sortContentsArrayWithKey_ascending("name", false);
    EXPECT_EQ(shown(), "Cleo Bob Ben Ada");
    EXPECT_EQ(namesOf(model_->globalArray->snapshot()), "Cleo Bob Ben Ada");
    model_->removeMusicFromSource(NSArray{model_->modelAtIndex(1)});
    EXPECT_EQ(shown(), "Cleo Ben Ada");
    EXPECT_EQ(namesOf(model_->globalArray->snapshot()), "Cleo Ben Ada");
}

TEST(ViewModelHelpers, readColours) {
    EXPECT_EQ(HNMbaseViewModel::getColorFromHexColor("ff102030")->description(), "#FF102030");
    EXPECT_EQ(HNMbaseViewModel::getColorFromHexColor("102030"), nullptr);
    EXPECT_EQ(HNMbaseViewModel::getColorFromHexColor(nullptr), nullptr);
    EXPECT_FLOAT_EQ(HNMbaseViewModel::getColorFromHexColor("FFzz2030")->redComponent(), 0.0F);
    EXPECT_TRUE(HNMbaseViewModel::getColorFromHexColor("80ÄÖÜ€éa"));   // eight characters, more bytes
}

TEST(ViewModelHelpers, writeTimesRightToLeft) {
    const auto model = make<HNMbaseViewModel>();
    EXPECT_EQ(model->timeFormatFromInteger(125), "05 : 02");
    EXPECT_EQ(model->timeFormatFromInteger(3599), "59 : 59");
    EXPECT_EQ(model->timeFormatFromInteger(3600), "00 : 00 : 01");
    EXPECT_EQ(model->timeFormatFromInteger_isHiddenHour(125, false), "05 : 02 : 00");
}
