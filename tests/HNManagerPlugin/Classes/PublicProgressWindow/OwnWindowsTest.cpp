#include <gtest/gtest.h>

#include <fstream>

#include "HNManagerPlugin/Classes/PublicProgressWindow/ConflictStep.h"
#include "HNManagerPlugin/Classes/PublicProgressWindow/DeviceFilePreview.h"
#include "HNManagerPlugin/Classes/PublicProgressWindow/Dialogs.h"
#include "HNManagerPlugin/Classes/PublicProgressWindow/HNPhototDiolagWindowController.h"
#include "HNManagerPlugin/Classes/PublicProgressWindow/HNXDeleteWindowController.h"
#include "HNManagerPlugin/Classes/PublicProgressWindow/ProgressWindowHost.h"
#include "tests/HNManagerPlugin/Classes/PublicProgressWindow/FlowWorld.h"
#include "toolkit/services/NSUserDefaults.h"
#include "toolkit/services/UserFolders.h"
#include "toolkit/views/NSApplication.h"

namespace {

using namespace std::chrono_literals;

// ---------------------------------------------------------------- the crossed delete buttons

TEST(CompleteDelete, goesOnWithTheDeleteButtonAlone) {
    FlowWorld here;
    AnswerScript answers(&here.log);
    answers.at("Sure?").press("FileManager_Delete");
    EXPECT_TRUE(dialogs::confirmCompleteDelete("Sure?", "Title").confirmed);
    EXPECT_EQ(here.log.take(), "asks Title|Sure? [<FileManager_DeleteMusicComplete> FileManager_Cancel FileManager_Delete]\npresses FileManager_Delete");
    answers.at("Sure?").press("FileManager_Cancel");
    EXPECT_FALSE(dialogs::confirmCompleteDelete("Sure?", "Title").confirmed);
    answers.at("Sure?").closeByTitleBar();
    EXPECT_FALSE(dialogs::confirmCompleteDelete("Sure?", "Title").confirmed);
}

TEST(CompleteDelete, remembersItsBoxForOneQuestionOnly) {
    FlowWorld here;
    AnswerScript answers;
    answers.at("Sure?").tick("FileManager_DeleteMusicComplete").press("FileManager_Delete");
    EXPECT_TRUE(dialogs::confirmCompleteDelete("Sure?", "Title").fromDeviceToo);
    EXPECT_FALSE(NSUserDefaults::standardUserDefaults().boolForKey("manage_delete_complete"));
    NSUserDefaults::standardUserDefaults().setBool_forKey(true, "manage_delete_complete");
    answers.at("Sure?").press("FileManager_Delete");
    EXPECT_FALSE(dialogs::confirmCompleteDelete("Sure?", "Title").fromDeviceToo);
}

TEST(CompleteDelete, connectsTheButtonsCrosswise) {
    FlowWorld here;
    const auto window = HNXDeleteWindowController::standardDeleteCompleteWindow_Title("Sure?", "Title");
    (void)window->window();
    EXPECT_EQ(window->DeleteBtn.lock()->action(), "onCancelButton:");
    EXPECT_EQ(window->CancelBtn.lock()->action(), "onDeleteButton:");
}

// ---------------------------------------------------------------- replace, keep both, skip

struct ChoiceRow {
    const char *name, *button;
    std::int64_t code;
};
class Choice : public testing::TestWithParam<ChoiceRow> {};

TEST_P(Choice, hasItsCode) {
    FlowWorld here;
    here.world.setTexts({{"Music_Name_Existe", "%@ is there"}});
    AnswerScript answers;
    answers.at("Song is there").press(GetParam().button);
    ConflictStep step("Import_musics");
    EXPECT_EQ(step.choiceFor("Song"), GetParam().code);
    EXPECT_FALSE(step.appliesToAll());
}

INSTANTIATE_TEST_SUITE_P(Conflict, Choice,
    testing::Values(ChoiceRow{"replace", "Replace_btn", 1}, ChoiceRow{"keepBoth", "Keep_Both_btn", 2}, ChoiceRow{"skip", "Skip_btn", 3}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(Conflict, tickedBoxAppliesTheChoiceToAllThatFollow) {
    FlowWorld here;
    AnswerScript answers;
    answers.at("Music_Name_Existe").tick("Apply_to_All_btn").press("Skip_btn");
    ConflictStep step("Import_musics");
    EXPECT_EQ(step.choiceFor("a"), 3);
    EXPECT_EQ(step.choiceFor("b"), 3);
    EXPECT_TRUE(NSUserDefaults::standardUserDefaults().boolForKey("mange_not_show_again"));
}

TEST(Conflict, boxThatIsTickedAndUntickedAsksAgain) {
    FlowWorld here;
    AnswerScript answers;
    answers.at("Music_Name_Existe").tick("Apply_to_All_btn").tick("Apply_to_All_btn").press("Replace_btn");
    answers.at("Music_Name_Existe").press("Keep_Both_btn");
    ConflictStep step("Import_musics");
    EXPECT_EQ(step.choiceFor("a"), 1);
    EXPECT_EQ(step.choiceFor("b"), 2);
}

TEST(Conflict, windowThatIsClosedWithTheBoxTickedKeepsNoChoiceForAll) {
    FlowWorld here;
    AnswerScript answers;
    answers.at("Music_Name_Existe").tick("Apply_to_All_btn").closeByTitleBar();
    ConflictStep step("Import_musics");
    EXPECT_EQ(step.choiceFor("a"), 0);
    EXPECT_EQ(step.choiceFor("b"), 0);
}

TEST(Conflict, deviceThatLeftMeanwhileEndsTheBatch) {
    FlowWorld here;
    AnswerScript answers;
    answers.at("Music_Name_Existe").run([&] { here.device.leave(); }).press("Replace_btn");
    ConflictStep step("Import_musics");
    EXPECT_EQ(step.choiceFor("a"), std::nullopt);
}

// ---------------------------------------------------------------- the dialog with a link

struct PhotoRow {
    const char *name;
    std::int64_t type;
    const char *button;
    std::int64_t code;
};
class PhotoDialog : public testing::TestWithParam<PhotoRow> {};

TEST_P(PhotoDialog, hasItsCodes) {
    FlowWorld here;
    AnswerScript answers;
    answers.at("Done").press(GetParam().button);
    const auto dialog = alloc<HNPhototDiolagWindowController>();
    dialog->initTitle_WithMessage_markImage_leftBtnTitle_rightBtnTitle_windowType("T", "Done", nullptr, "Left", "Right", GetParam().type);
    EXPECT_EQ(NSApp()->runModalForWindow(dialog->window()), GetParam().code);
}

INSTANTIATE_TEST_SUITE_P(Codes, PhotoDialog,
    testing::Values(PhotoRow{"type0Left", 0, "Left", 1}, PhotoRow{"type0Right", 0, "Right", 0}, PhotoRow{"type1Left", 1, "Left", 0},
                    PhotoRow{"type1Right", 1, "Right", 1}, PhotoRow{"type2Right", 2, "Right", 1}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(PhotoDialog, ofWhatCannotBeViewedHasOneButtonAndALink) {
    FlowWorld here;
    AnswerScript answers(&here.log);
    const auto dialog = alloc<HNPhototDiolagWindowController>();
    dialog->initShowViewPhoto();
    answers.at("View_Video_failed").closeByTitleBar();
    EXPECT_EQ(NSApp()->runModalForWindow(dialog->window()), -1000);
    EXPECT_EQ(here.log.take(), "asks View_photo|View_Video_failed|Why_failed_view_photo [FileManager_OK]\ncloses the window");
    EXPECT_EQ(dialog->linkLable.lock()->linkURL(), NSString("ExportPhotoFailedURL"));
    EXPECT_TRUE(dialog->markImage.get() != nullptr);
}

TEST(PhotoDialog, attributedTextReplacesTheMessageAndHasNoLink) {
    FlowWorld here;
    const auto dialog = alloc<HNPhototDiolagWindowController>();
    dialog->initTitle_WithAttributeString_markImage_leftBtnTitle_rightBtnTitle_windowType("T", make<NSAttributedString>("Rich"), nullptr, "L",
                                                                                          "R", 0);
    EXPECT_EQ(dialog->messageLable.lock()->attributedStringValue()->string(), NSString("Rich"));
    EXPECT_TRUE(dialog->linkLable.lock()->isHidden());
}

// ---------------------------------------------------------------- the older progress window

TEST(ProgressWindowHost, blocksUntilItsWorkerClosesTheWindow) {
    FlowWorld here;
    AnswerScript answers(&here.log);
    ProgressWindowHost host;
    dispatch::async(dispatch::global(), [&] {
        dispatch::sleepFor(1s);
        dispatch::sync(dispatch::main(), [&] {
            tell(host.pDelegate, [](HNMProgressDelegate &sink) {
                sink.setProgressDialogInfo_DownTextField_progressValue(make<NSAttributedString>("Merging 0"), nullptr, 49.9);
            });
            here.log.add(host.pProressWindow->window()->contentView()->viewWithIdentifier("progress")->describeContent());
            EXPECT_TRUE(host.pProressWindow->isStart);
            host.closeProgressWindow();
        });
    });
    host.showProgressWindow(host.progressWindowString_upText_downText("Merge", "Wait", ""));
    EXPECT_EQ(here.log.take(), "asks Merge|Wait [FileManager_Cancel]\n49%");
    EXPECT_FALSE(host.pProressWindow);
    EXPECT_EQ(NSApp()->modalDepth(), 0u);
}

TEST(ProgressWindowHost, cancelButtonAndTitleBarBothTellTheWorkerToStop) {
    for (const bool byButton : {true, false}) {
        FlowWorld here;
        AnswerScript answers;
        ProgressWindowHost host;
        if (byButton)
            answers.at("Wait").press("FileManager_Cancel");
        else
            answers.at("Wait").closeByTitleBar();
        host.showProgressWindow(host.progressWindowString_upText_downText("Merge", "Wait", ""));
        EXPECT_TRUE(host.pProressWindow->isClosed);
        EXPECT_FALSE(host.pProressWindow->window()->isVisible());
    }
}

TEST(ProgressWindowHost, hiddenCloseButtonLeavesTheCancelButton) {
    FlowWorld here;
    AnswerScript answers;
    ProgressWindowHost host;
    host.pProressWindow = make<HNMPublicProgressWindow>();
    host.pProressWindow->hiddenWndCloseBtn = true;
    answers.at("Wait").closeByTitleBar().run([&] { EXPECT_FALSE(host.pProressWindow->isClosed); }).press("FileManager_Cancel");
    host.showProgressWindow(host.progressWindowString_upText_downText("Merge", "Wait", ""));
}

TEST(ProgressWindowHost, barOfUnknownLengthCreepsTo95) {
    FlowWorld here;
    const auto window = make<HNMPublicProgressWindow>();
    (void)window->window();
    for (int i = 0; i < 200; ++i)
        window->updataProgress();
    EXPECT_EQ(window->progress.lock()->progressValue(), 95);
}

TEST(ProgressWindowHost, resultDialogGivesItsCode) {
    FlowWorld here;
    AnswerScript answers(&here.log);
    ProgressWindowHost host;
    const auto contents = make<NSMutableDictionary>(NSMutableDictionary::Entries{
        {"iconName", "icon_ok"}, {"Title", "Result"}, {"Contents", "2 exported"}, {"leftButtonTitle", "OK"}, {"rightButtonTitle", "Open"}});
    answers.at("2 exported").press("Open");
    EXPECT_EQ(host.openOperationResultWindowContents_type(contents, 1), 1);
    EXPECT_EQ(here.log.take(), "asks Result|2 exported [OK Open]\npresses Open");
}

// ---------------------------------------------------------------- preview of a device file

class Preview : public testing::Test {
protected:
    Preview() {
        UserFolders folders = before;
        folders.temporary = here.folder();
        setUserFolders(folders);
        here.world.setTexts({{"FileManager_Loading", "Loading %@"}});
        here.device.files().files = {{"/m/a.mp3", std::string(2000, 'a')}};
    }
    ~Preview() override { setUserFolders(before); }

    UserFolders before = userFolders();
    FlowWorld here;
};

TEST_F(Preview, fetchesOnceAndPlaysWhatItFetched) {
    AnswerScript answers(&here.log);
    DeviceFilePreview::open("/a.mp3", "/m/a.mp3", 2000, "Play");
    here.world.settle();
    const std::string path = here.folder() + "/TmpMusic//a.mp3";
    EXPECT_EQ(here.log.take(), "button: FileManager_Cancel 0\nasks Play [FileManager_Cancel]\nmain: Loading a.mp3\nsub: 2.0 KB / 2.0 KB\n"
                               "opens " + path);
    DeviceFilePreview::open("/a.mp3", "/m/a.mp3", 2000, "Play");
    EXPECT_EQ(here.log.take(), "opens " + path);
}

TEST_F(Preview, callsThePlayerAfterACancelToo) {
    AnswerScript answers(&here.log);
    answers.at("Loading a.mp3").press("FileManager_Cancel");
    DeviceFilePreview::open("a.mp3", "/m/a.mp3", 2000, "Play");
    here.world.settle();
    EXPECT_TRUE(here.log.take().ends_with("presses FileManager_Cancel\nopens " + here.folder() + "/TmpMusic/a.mp3"));
}

TEST_F(Preview, opensNoFileOutsideItsFolder) {
    std::ofstream(here.folder() + "/secret") << "x";
    AnswerScript answers(&here.log);
    DeviceFilePreview::open("../secret", "/m/a.mp3", 2000, "Play");
    EXPECT_EQ(here.log.take(), "");
}

}  // namespace
