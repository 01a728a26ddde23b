// Notes and calendars: categories without device access.
#include <gtest/gtest.h>

#include "HNManagerPlugin/Classes/SubViews/Calendars/ViewManager/HNMCalendarViewManager.h"
#include "HNManagerPlugin/Classes/SubViews/Calendars/ViewModel/HNMCalendarViewModel.h"
#include "HNManagerPlugin/Classes/SubViews/Notes/ViewManager/HNMNoteViewManager.h"
#include "HNManagerPlugin/Classes/SubViews/Notes/ViewModel/HNMNoteViewModel.h"
#include "tests/support/PluginWorld.h"
#include "toolkit/lists/NSArrayController.h"

namespace {

std::string titles(const HNMbaseViewModel &model) {
    std::string text;
    for (const id &row : model.contents->snapshot())
        text += (text.empty() ? "" : "|") + static_cast<SkeletonEntity &>(*row).title.str();
    return text;
}

template <class Manager, class Model> void showsTenRowsAndSearches(const char *entity, const char *first, const char *text, const char *found) {
    PluginWorld world;
    world.setTexts({{"Bottom_items_Format", "%ld all"}, {"Bottom_item_Format_Select", "1 of them"}});
    const auto manager = make<Manager>();
    const auto model = make<Model>();
    const auto rows = make<NSArrayController>();
    rows->setContent(model->contents);
    model->arrayController = rows;
    manager->initViewModel(model);
    manager->viewManagerLoadData();
    world.settle();
    ASSERT_EQ(model->contents->count(), 10u);
    EXPECT_EQ(model->globalArray->count(), 10u);
    EXPECT_EQ(model->contents->firstObject()->className(), NSString(entity));
    EXPECT_EQ(model->contents->firstObject()->valueForKey("sortKey").text(), NSString(first));
    EXPECT_EQ(manager->tableRowInfoString.get(), NSString("10 all"));
    rows->setSelectionIndex(3);
    manager->RowSelectedChange();
    EXPECT_EQ(manager->tableRowInfoString.get(), NSString("1 of them"));
    EXPECT_TRUE(model->searchFileByString(text));
    EXPECT_EQ(titles(*model), found);
    EXPECT_FALSE(model->searchFileByString("nothing"));
}

TEST(SkeletonCategories, showTenRowsAndSearchTheirTitles) {
    showsTenRowsAndSearches<HNMNoteViewManager, HNMNoteViewModel>("HNNoteEntity", "Note 1", "NOTE 1", "Note 1|Note 10");
    showsTenRowsAndSearches<HNMCalendarViewManager, HNMCalendarViewModel>("HNCalendarEntity", "Calendar 1", "dar 2", "Calendar 2");
}

}   // namespace
