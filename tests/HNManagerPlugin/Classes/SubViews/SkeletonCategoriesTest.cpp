// Notes and calendars: categories without device access.
#include <gtest/gtest.h>

#include "HNManagerPlugin/Classes/SubViews/Calendars/ViewManager/HNMCalendarViewManager.h"
#include "HNManagerPlugin/Classes/SubViews/Calendars/ViewModel/HNMCalendarViewModel.h"
#include "HNManagerPlugin/Classes/SubViews/Notes/ViewManager/HNMNoteViewManager.h"
#include "HNManagerPlugin/Classes/SubViews/Notes/ViewModel/HNMNoteViewModel.h"
#include "tests/support/PluginWorld.h"
#include "toolkit/lists/NSArrayController.h"

namespace {

struct Skeleton {
    const char *name;
    std::shared_ptr<SkeletonViewManager> (*manager)();
    std::shared_ptr<SkeletonViewModel> (*model)();
    const char *entity, *first, *text, *found;
};
class SkeletonCategory : public testing::TestWithParam<Skeleton> {};

std::string titles(const HNMbaseViewModel &model) {
    std::string text;
    for (const id &row : model.contents->snapshot())
        text += (text.empty() ? "" : "|") + static_cast<SkeletonEntity &>(*row).title.str();
    return text;
}

TEST_P(SkeletonCategory, showsTenRowsAndSearchesTheirTitles) {
    PluginWorld world;
    world.setTexts({{"Bottom_items_Format", "%ld all"}, {"Bottom_item_Format_Select", "1 of them"}});
    const auto manager = GetParam().manager();
    const auto model = GetParam().model();
    const auto rows = make<NSArrayController>();
    rows->setContent(model->contents);
    model->arrayController = rows;
    manager->initViewModel(model);
    manager->viewManagerLoadData();
    world.settle();
    ASSERT_EQ(model->contents->count(), 10u);
    EXPECT_EQ(model->globalArray->count(), 10u);
    EXPECT_EQ(model->contents->firstObject()->className(), NSString(GetParam().entity));
    EXPECT_EQ(model->contents->firstObject()->valueForKey("title").text(), NSString(GetParam().first));
    EXPECT_EQ(model->contents->firstObject()->valueForKey("sortKey").text(), NSString(GetParam().first));
    EXPECT_EQ(manager->tableRowInfoString.get(), NSString("10 all"));
    rows->setSelectionIndex(3);
    manager->RowSelectedChange();
    EXPECT_EQ(manager->tableRowInfoString.get(), NSString("1 of them"));
    EXPECT_TRUE(model->searchFileByString(GetParam().text));
    EXPECT_EQ(titles(*model), GetParam().found);
    EXPECT_FALSE(model->searchFileByString("nothing"));
}

INSTANTIATE_TEST_SUITE_P(
    Categories, SkeletonCategory,
    testing::Values(Skeleton{"notes", [] { return std::shared_ptr<SkeletonViewManager>(make<HNMNoteViewManager>()); },
                             [] { return std::shared_ptr<SkeletonViewModel>(make<HNMNoteViewModel>()); }, "HNNoteEntity", "Note 1", "NOTE 1", "Note 1|Note 10"},
                    Skeleton{"calendars", [] { return std::shared_ptr<SkeletonViewManager>(make<HNMCalendarViewManager>()); },
                             [] { return std::shared_ptr<SkeletonViewModel>(make<HNMCalendarViewModel>()); }, "HNCalendarEntity", "Calendar 1", "dar 2", "Calendar 2"}),
    [](const auto &info) { return std::string(info.param.name); });

}   // namespace
