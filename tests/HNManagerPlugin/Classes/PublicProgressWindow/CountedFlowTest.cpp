#include "HNManagerPlugin/Classes/PublicProgressWindow/CountedFlow.h"

#include <gtest/gtest.h>

#include "tests/HNManagerPlugin/Classes/PublicProgressWindow/FlowWorld.h"

namespace {

using namespace std::chrono_literals;

class CountedFlowTest : public testing::Test {
protected:
    // Three items, a second each; the second one fails.
    CountedPlan plan() {
        CountedPlan plan;
        plan.windowTitle = "Title";
        plan.waitText = "Wait";
        plan.start = [this](const CountedRun::Ref &run) {
            dispatch::async(dispatch::global(), [this, run] {
                for (int i = 0; i < 3; ++i) {
                    dispatch::sleepFor(1s);
                    if (run->itemDone(i, 3, i != 1) == 1)
                        return here.log.add("layer stopped");
                }
            });
        };
        plan.itemText = [](std::int64_t done, std::int64_t total) { return NSString::stringWithFormat("Item %ld of %ld", done, total); };
        plan.resultText = [](std::int64_t ok, std::int64_t bad) { return NSString::stringWithFormat("%ld good, %ld bad", ok, bad); };
        plan.didFinish = [this](const CountedRun::Ref &) { here.log.add("refresh"); };
        return plan;
    }
    FlowWorld here;
    AnswerScript answers{&here.log};
};

TEST_F(CountedFlowTest, turnsIntoTheResultHalfASecondAfterTheLastItem) {
    answers.at("2 good, 1 bad").run([this] { EXPECT_EQ(here.world.world().elapsed(), 3500ms); }).press("MessageDialog_Ok");
    CountedFlow::run(plan());
    EXPECT_EQ(here.log.take(), "button: FileManager_Cancel 5\n"
                               "main: Wait\n"
                               "asks Title|Wait [FileManager_Cancel]\n"
                               "main: Item 1 of 3\n"
                               "main: Item 2 of 3\n"
                               "main: Item 3 of 3\n"
                               "button: MessageDialog_Ok 15\n"
                               "main: 2 good, 1 bad\n"
                               "refresh\n"
                               "presses MessageDialog_Ok");
}

TEST_F(CountedFlowTest, cancelAfterAQuestionLeavesTheNextItemUncounted) {
    answers.at("Item 1 of 3").press("FileManager_Cancel");
    answers.at("ExportPhotoToPC_Want_To_Cancel").press("FileManager_OK");
    answers.at("1 good, 0 bad").press("MessageDialog_Ok");
    CountedPlan asking = plan();
    asking.asksBeforeCancel = true;
    CountedFlow::run(asking);
    const std::string log = here.log.take();
    EXPECT_NE(log.find("layer stopped"), std::string::npos) << log;
    EXPECT_EQ(log.find("Item 2 of 3"), std::string::npos) << log;
}

TEST_F(CountedFlowTest, goesOnWhileItsQuestionIsUp) {
    answers.at("Item 1 of 3").press("FileManager_Cancel");
    answers.at("ExportPhotoToPC_Want_To_Cancel").run([] { dispatch::sleepFor(10s); }).press("FileManager_Cancel");
    answers.at("2 good, 1 bad").press("MessageDialog_Ok");
    CountedPlan asking = plan();
    asking.asksBeforeCancel = true;
    EXPECT_EQ(CountedFlow::run(asking)->cancel, 0);
}

TEST_F(CountedFlowTest, disabledButtonLeavesTheTitleBarAsTheOnlyWayOut) {
    answers.at("Item 1 of 3").closeByTitleBar();
    CountedPlan deletion = plan();
    deletion.borderButtonEnabled = false;
    deletion.countsItemAfterCancel = true;
    const auto run = CountedFlow::run(deletion);
    here.world.settle();
    EXPECT_EQ(here.log.take(), "button: FileManager_Cancel 5\n"
                               "button: (FileManager_Cancel) 5\n"
                               "main: Wait\n"
                               "asks Title|Wait [(FileManager_Cancel)]\n"
                               "main: Item 1 of 3\n"
                               "closes the window\n"
                               "layer stopped\n"
                               "refresh");
    EXPECT_EQ(run->succeeded, 1);
    EXPECT_EQ(run->failed, 1) << "the item that met the cancel was done, and failed";
}

}  // namespace
