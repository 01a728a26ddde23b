#include "HNManagerPlugin/Classes/ViewManager/HNMbaseViewManager.h"

#include <gtest/gtest.h>

#include "tests/support/ListRow.h"
#include "tests/support/PluginWorld.h"

using namespace std::chrono_literals;

namespace {

class ManagerOfAList : public testing::Test {
protected:
    void SetUp() override {
        content_->setIdentifier("content");
        manager_->contentView = content_;
        manager_->searchField = search_;
        manager_->tableRowChangeView = notice_;
        manager_->buttomView = bottom_;
        manager_->disable_iCloudView = cloud_;
        model_->arrayController = controller_;
        controller_->setContent(model_->contents);
        manager_->initViewModel(model_);
    }
    void load() {
        manager_->hnManagerLoadData_complete("no rows here", [this] { log_.add("complete"); });
    }
    // What the panel shows: hidden, or its visible parts.
    std::string panel() {
        const auto panel = manager_->noSearchField.lock();
        if (panel->isHidden())
            return "hidden";
        std::string text;
        for (const char *part : {"NoDataPicture", "NoSearchPicture", "RemindText", "Spinner"})
            if (!panel->viewWithIdentifier(part)->isHidden())
                text += std::string(text.empty() ? "" : " ") + part;
        text += " \"" + manager_->noSearchResultViewCtrl->remindString.lock()->stringValue().str() + "\"";
        return text + (isTurning() ? " turning" : "");
    }
    bool isTurning() { return manager_->noSearchResultViewCtrl->animationImageView.lock()->layer()->animationForKey("RotationAnimation") != nullptr; }

    PluginWorld world_;
    EventLog log_;
    std::shared_ptr<HNMbaseViewManager> manager_ = make<HNMbaseViewManager>();
    std::shared_ptr<ListModel> model_ = make<ListModel>();
    std::shared_ptr<NSArrayController> controller_ = make<NSArrayController>();
    std::shared_ptr<NSView> content_ = make<NSView>(NSRect(0, 0, 800, 500));
    std::shared_ptr<NSView> notice_ = make<NSView>(), bottom_ = make<NSView>(), cloud_ = make<NSView>();
    std::shared_ptr<NSTextField> search_ = make<NSTextField>();
};

}  // namespace

TEST_F(ManagerOfAList, startsWithItsPanelsHiddenAndPinned) {
    EXPECT_EQ(panel().substr(0, 6), "hidden");
    EXPECT_TRUE(notice_->isHidden());
    EXPECT_TRUE(cloud_->isHidden());
    EXPECT_EQ(search_->placeholderString(), "FileManager_Search");
    // the top 60 points stay free
    EXPECT_EQ(manager_->noSearchField.lock()->frame(), NSRect(0, 0, 800, 440));
    EXPECT_EQ(cloud_->frame(), NSRect(0, 0, 800, 440));
    EXPECT_EQ(bottom_->layer()->borderWidth(), 1.0);
    EXPECT_EQ(bottom_->layer()->borderColor()->alphaComponent(), 240.0 / 255.0);
    manager_->layoutConstraintLeft = 50.0F;
    manager_->addNoSearchFieldToSupview();
    EXPECT_EQ(manager_->noSearchField.lock()->frame(), NSRect(50, 0, 750, 440));
    EXPECT_EQ(content_->subviews().size(), 2U);
    manager_->showDisableiCloudView(true);
    EXPECT_FALSE(cloud_->isHidden());
}

TEST_F(ManagerOfAList, loadsInTheBackgroundAndShowsTheList) {
    model_->device = {"Ada"};
    load();
    EXPECT_FALSE(manager_->loadingFinished);
    EXPECT_EQ(panel(), "RemindText Spinner \"FileManager_loadingData\"");
    EXPECT_EQ(log_.take(), "");
    world_.settle();
    EXPECT_TRUE(manager_->loadingFinished);
    EXPECT_EQ(panel(), "hidden");
    EXPECT_FALSE(isTurning());
    EXPECT_EQ(controller_->arrangedCount(), 1U);
    EXPECT_EQ(log_.take(), "complete");
}

TEST_F(ManagerOfAList, saysThatThereIsNoDataAndWithoutAModelToo) {
    for (const bool hasModel : {true, false}) {
        if (!hasModel)
            manager_->viewModel.reset();
        load();
        world_.settle();
        EXPECT_EQ(panel(), "NoDataPicture RemindText \"no rows here\"") << hasModel;
        EXPECT_EQ(log_.take(), "complete") << hasModel;
    }
}

TEST_F(ManagerOfAList, theSpinnerTurnsWhileItLoads) {
    manager_->showLoadingAnimationView_hiddenView("wait", false);
    world_.settle();
    EXPECT_EQ(panel(), "RemindText Spinner \"wait\" turning");
    const auto animation = manager_->noSearchResultViewCtrl->animationImageView.lock()->layer()->animationForKey("RotationAnimation");
    EXPECT_EQ(animation->keyPath, "transform.rotation.z");
    EXPECT_FLOAT_EQ(static_cast<float>(animation->toValue), -6.2831855F);
    EXPECT_EQ(animation->duration, 1.0);
    EXPECT_TRUE(animation->cumulative);
    EXPECT_FALSE(animation->removedOnCompletion);
    manager_->showNoDataView_hiddenView("none", true);
    EXPECT_EQ(panel(), "hidden");
    EXPECT_FALSE(isTurning());
}

namespace {

class PanelLoggingManager : public HNMbaseViewManager {
public:
    EventLog log;
    void setNoSearchResultViewHidden(bool hidden) override {
        log.add(hidden ? "panel hidden" : "panel shown");
        HNMbaseViewManager::setNoSearchResultViewHidden(hidden);
    }
    void logFlags() {
        const auto flag = [this](const char *name) {
            return [this, name](const bool &hidden) { log.add(name + std::string(hidden ? " hidden" : " shown")); };
        };
        noSearchResultViewCtrl->hiddenNoDataInfo.observe(flag("no-data"));
        noSearchResultViewCtrl->hiddenNoSearchFieldInfo.observe(flag("no-search"));
        noSearchResultViewCtrl->hiddenRemindString.observe(flag("line"));
        (void)log.take();
    }
};

}  // namespace

TEST(Panel, setsItsFlagsInOrderAndLeavesTheRestAlone) {
    PluginWorld world;
    const auto manager = make<PanelLoggingManager>();
    const auto model = make<ListModel>();
    manager->initViewModel(model);
    manager->logFlags();
    const auto spinner = manager->noSearchResultViewCtrl->animationImageView.lock();
    const auto line = [&] { return manager->noSearchResultViewCtrl->remindString.lock()->stringValue(); };
    const auto turns = [&] { return spinner->layer()->animationForKey("RotationAnimation") != nullptr; };

    manager->showLoadingAnimationView_hiddenView("wait", true);
    EXPECT_EQ(manager->log.take(), "panel hidden\nno-data hidden\nno-search hidden\nline shown");
    EXPECT_FALSE(turns());   // a block of the main queue adds it
    world.settle();
    EXPECT_TRUE(turns());
    manager->updateLoadingProgress("12%");
    EXPECT_EQ(manager->log.take(), "panel shown\nno-data hidden\nno-search hidden\nline shown");
    EXPECT_EQ(line(), "12%");
    manager->showNoSearchResultView();
    EXPECT_EQ(manager->log.take(), "panel shown\nno-data hidden\nno-search shown\nline hidden");
    EXPECT_EQ(line(), "12%");
    EXPECT_TRUE(turns());
    EXPECT_TRUE(spinner->isHidden());
    manager->showNoDataView_hiddenView("none", false);
    EXPECT_EQ(manager->log.take(), "panel shown\nno-data shown\nno-search hidden\nline shown");
    EXPECT_EQ(line(), "none");
    EXPECT_FALSE(turns());
}

namespace {

// Loads as its last deed, so that the reader's block finds it gone whichever thread is quicker.
class LeavingManager : public HNMbaseViewManager {
public:
    EventLog *log = nullptr;
    void dealloc() override {
        hnManagerLoadData_complete("no rows here", [log = log] { log->add("complete"); });
        HNMbaseViewManager::dealloc();
    }
};

}  // namespace

TEST(GoneManager, itsCompletionRunsAndNothingIsRead) {
    PluginWorld world;
    EventLog log;
    const auto model = make<ListModel>();
    auto manager = make<LeavingManager>();
    manager->log = &log;
    manager->initViewModel(model);
    manager = nullptr;
    world.settle();
    EXPECT_EQ(log.take(), "complete");
    EXPECT_EQ(model->reloads, 0);
}

TEST_F(ManagerOfAList, aReaderThatFailsEndsTheLoadingPanel) {
    class FailingModel : public ListModel {
    public:
        void reloadData() override { throw std::runtime_error("the device bit"); }
    };
    const auto failing = make<FailingModel>();
    manager_->viewModel = failing;
    load();
    world_.settle();
    EXPECT_EQ(panel(), "NoDataPicture RemindText \"no rows here\"");
    EXPECT_EQ(log_.take(), "complete");
    EXPECT_EQ(world_.world().takeFailures(), std::vector<std::string>{"reloadData: the device bit"});
}

TEST_F(ManagerOfAList, searchesOnlyAFinishedListWithRows) {
    const auto search = [this](const char *text) {
        search_->setStringValue(text);
        manager_->searchFieldByTextField();
        return namesOf(model_->contents->snapshot()) + (panel() == "hidden" ? "" : ", " + panel().substr(0, 15));
    };
    EXPECT_EQ(search("b"), "");
    model_->device = {"Ada", "Bob"};
    load();
    (void)search("b");   // while it loads: nothing
    world_.settle();
    EXPECT_EQ(model_->contents->count(), 2U);
    manager_->perform("searchField:", {Value(search_)});
    EXPECT_EQ(namesOf(model_->contents->snapshot()), "Bob");
    EXPECT_EQ(search("zzz"), "Bob, NoSearchPicture");
    EXPECT_EQ(search(" \t "), "Ada Bob");
    EXPECT_EQ(search("a\n"), "Ada Bob, NoSearchPicture");   // a line feed is no blank: it is searched for
}

TEST_F(ManagerOfAList, theStatusLineCounts) {
    world_.setTexts({{"Bottom_item_Format", "one %@"},
                     {"Bottom_items_Format", "%li rows"},
                     {"Bottom_item_Format_Select", "one chosen %li"},
                     {"Bottom_items_Format_Select", "%li chosen"},
                     {"Bottom_item_Size_Format", "one, %@"},
                     {"Bottom_items_Size_Format", "%li rows, %@"},
                     {"Bottom_item_Size_Format_Select", "one chosen, %@"},
                     {"Bottom_items_Size_Format_Select", "%li chosen, %@"}});
    struct {
        std::uint64_t total, selected;
        const char *plain, *sized;
    } rows[] = {
        {1, 0, "one %@", "one, 1.5 KB"},         {1, 1, "one chosen %li", "one chosen, 1.5 KB"},
        {5, 0, "5 rows", "5 rows, 1.5 KB"},      {5, 1, "one chosen %li", "one chosen, 1.5 KB"},
        {5, 2, "2 chosen", "2 chosen, 1.5 KB"},  {0, 3, "2 chosen", "2 chosen, 1.5 KB"},   // the old line stands
    };
    NSString plain, sized;
    for (const auto &row : rows) {
        manager_->tableRowInfoString = plain;
        manager_->showTotalRowInfo_withSelectedCount(row.total, row.selected);
        plain = manager_->tableRowInfoString;
        EXPECT_EQ(plain, row.plain) << row.total << "/" << row.selected;
        manager_->tableRowInfoString = sized;
        manager_->showTotalRowInfo_withSelectedCount_withSelectedFileSize(row.total, row.selected, 1500);
        sized = manager_->tableRowInfoString;
        EXPECT_EQ(sized, row.sized) << row.total << "/" << row.selected;
    }
    manager_->showTotalRowInfo_withSelectedCount_withSelectedFileSize(2, 1, 0);
    EXPECT_EQ(manager_->tableRowInfoString.get(), "one chosen, 0 KB");
    manager_->showTotalRowInfo(0);
    EXPECT_EQ(manager_->tableRowInfoString.get(), "one chosen, 0 KB");
}

TEST_F(ManagerOfAList, theFirstNoticesEndHidesTheLastOnesBar) {
    manager_->showTableRowChangeView_withFileType_operationString(3, "photos", "Deleted");
    EXPECT_EQ(manager_->tableRowChangeStr.get(), "Deleted 3 photos");
    EXPECT_FALSE(notice_->isHidden());
    bool hiddenInBetween = false;
    dispatch::after(2s, dispatch::main(), [&] { manager_->showTableRowChangeView_withFileType_operationString(1, "photo", "Deleted"); });
    dispatch::after(4s, dispatch::main(), [&] { hiddenInBetween = notice_->isHidden(); });
    world_.settle();
    EXPECT_TRUE(hiddenInBetween);
    EXPECT_TRUE(notice_->isHidden());
}

TEST_F(ManagerOfAList, swapsTheSelectedView) {
    const auto first = make<NSView>(NSRect(0, 0, 10, 10)), second = make<NSView>(NSRect(0, 0, 10, 10));
    manager_->showSelectedView(first);
    EXPECT_EQ(first->frame(), content_->bounds());
    manager_->showSelectedView(second);
    EXPECT_EQ(first->superview(), nullptr);
    EXPECT_EQ(manager_->currentView.lock(), second);
    EXPECT_EQ(second->frame(), content_->bounds());
}

TEST(FileTimes, belongToTheWeekBasedYear) {
    // Monday, 30 December 2024: its week holds 1 January 2025
    PluginWorld world;
    dispatch::reset(dispatch::makeTestClock(dispatch::Time(std::chrono::seconds(1'735'560'000))));
    EXPECT_EQ(make<HNMbaseViewManager>()->getCurrentTimes().substringToIndex(8), "20251230");
    dispatch::reset(dispatch::makeTestClock(dispatch::Time(std::chrono::seconds(1'709'634'030))));
    EXPECT_EQ(make<HNMbaseViewManager>()->getCurrentTimes().substringToIndex(8), "20240305");
}
