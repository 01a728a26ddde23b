#include <gtest/gtest.h>

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

class OwnWindow : public testing::Test {
protected:
    FlowWorld here;
    AnswerScript answers{&here.log};
};
using CompleteDelete = OwnWindow;
using PhotoDialog = OwnWindow;

TEST_F(CompleteDelete, goesOnWithTheDeleteButtonAlone) {
    const auto window = HNXDeleteWindowController::standardDeleteCompleteWindow_Title("Sure?", "Title");
    (void)window->window();
    EXPECT_EQ(window->DeleteBtn.lock()->action(), "onCancelButton:");   // crosswise
    EXPECT_EQ(window->CancelBtn.lock()->action(), "onDeleteButton:");
    answers.at("Sure?").press("FileManager_Delete");
    EXPECT_TRUE(dialogs::confirmCompleteDelete("Sure?", "Title").confirmed);
    EXPECT_EQ(here.log.take(), "asks Title|Sure? [<FileManager_DeleteMusicComplete> FileManager_Cancel FileManager_Delete]\npresses FileManager_Delete");
    answers.at("Sure?").press("FileManager_Cancel");
    EXPECT_FALSE(dialogs::confirmCompleteDelete("Sure?", "Title").confirmed);
    answers.at("Sure?").closeByTitleBar();
    EXPECT_FALSE(dialogs::confirmCompleteDelete("Sure?", "Title").confirmed);
}

TEST_F(CompleteDelete, remembersItsBoxForOneQuestionOnly) {
    answers.at("Sure?").tick("FileManager_DeleteMusicComplete").press("FileManager_Delete");
    EXPECT_TRUE(dialogs::confirmCompleteDelete("Sure?", "Title").fromDeviceToo);
    EXPECT_FALSE(NSUserDefaults::standardUserDefaults().boolForKey("manage_delete_complete"));
    NSUserDefaults::standardUserDefaults().setBool_forKey(true, "manage_delete_complete");
    answers.at("Sure?").press("FileManager_Delete");
    EXPECT_FALSE(dialogs::confirmCompleteDelete("Sure?", "Title").fromDeviceToo);
}

// ---------------------------------------------------------------- replace, keep both, skip

class Conflicts : public OwnWindow {
protected:
    ConflictStep step{"Import_musics"};
};

TEST_F(Conflicts, eachButtonHasItsCode) {
    here.world.setTexts({{"Music_Name_Existe", "%@ is there"}});
    for (const auto &[button, code] : {std::pair("Replace_btn", 1), std::pair("Keep_Both_btn", 2), std::pair("Skip_btn", 3)}) {
        answers.at("Song is there").press(button);
        EXPECT_EQ(step.choiceFor("Song"), code) << button;
        EXPECT_FALSE(step.appliesToAll());
    }
}

TEST_F(Conflicts, tickedBoxAppliesTheChoiceToAllThatFollow) {
    answers.at("Music_Name_Existe").tick("Apply_to_All_btn").press("Skip_btn");
    EXPECT_EQ(step.choiceFor("a"), 3);
    EXPECT_EQ(step.choiceFor("b"), 3);
    EXPECT_TRUE(NSUserDefaults::standardUserDefaults().boolForKey("mange_not_show_again"));
}

TEST_F(Conflicts, boxThatIsTickedAndUntickedAsksAgain) {
    answers.at("Music_Name_Existe").tick("Apply_to_All_btn").tick("Apply_to_All_btn").press("Replace_btn");
    answers.at("Music_Name_Existe").press("Keep_Both_btn");
    EXPECT_EQ(step.choiceFor("a"), 1);
    EXPECT_EQ(step.choiceFor("b"), 2);
}

TEST_F(Conflicts, windowThatIsClosedWithTheBoxTickedKeepsNoChoiceForAll) {
    answers.at("Music_Name_Existe").tick("Apply_to_All_btn").closeByTitleBar();
    EXPECT_EQ(step.choiceFor("a"), 0);
    EXPECT_EQ(step.choiceFor("b"), 0);
}

TEST_F(Conflicts, deviceThatLeftMeanwhileEndsTheBatch) {
    answers.at("Music_Name_Existe").run([&] { here.device.leave(); }).press("Replace_btn");
    EXPECT_EQ(step.choiceFor("a"), std::nullopt);
}

// ---------------------------------------------------------------- the dialog with a link

TEST_F(PhotoDialog, hasItsCodes) {
    struct {
        std::int64_t type;
        const char *button;
        std::int64_t code;
    } rows[] = {{0, "Left", 1}, {0, "Right", 0}, {1, "Left", 0}, {1, "Right", 1}, {2, "Right", 1}};
    for (const auto &[type, button, code] : rows) {
        answers.at("Done").press(button);
        const auto dialog = alloc<HNPhototDiolagWindowController>();
        dialog->initTitle_WithMessage_markImage_leftBtnTitle_rightBtnTitle_windowType("T", "Done", nullptr, "Left", "Right", type);
        EXPECT_EQ(NSApp()->runModalForWindow(dialog->window()), code) << type << button;
    }
}

TEST_F(PhotoDialog, ofWhatCannotBeViewedHasOneButtonAndALink) {
    const auto dialog = alloc<HNPhototDiolagWindowController>();
    dialog->initShowViewPhoto();
    answers.at("View_Video_failed").closeByTitleBar();
    EXPECT_EQ(NSApp()->runModalForWindow(dialog->window()), -1000);
    EXPECT_EQ(here.log.take(), "asks View_photo|View_Video_failed|Why_failed_view_photo [FileManager_OK]\ncloses the window");
    EXPECT_EQ(dialog->linkLable.lock()->linkURL(), NSString("ExportPhotoFailedURL"));
    EXPECT_TRUE(dialog->markImage.get() != nullptr);
}

TEST_F(PhotoDialog, attributedTextReplacesTheMessageAndHasNoLink) {
    const auto dialog = alloc<HNPhototDiolagWindowController>();
    dialog->initTitle_WithAttributeString_markImage_leftBtnTitle_rightBtnTitle_windowType("T", make<NSAttributedString>("Rich"), nullptr, "L",
                                                                                          "R", 0);
    EXPECT_EQ(dialog->messageLable.lock()->attributedStringValue()->string(), NSString("Rich"));
    EXPECT_TRUE(dialog->linkLable.lock()->isHidden());
}

// ---------------------------------------------------------------- the older progress window

class ProgressHost : public OwnWindow {
protected:
    void show() { host.showProgressWindow(host.progressWindowString_upText_downText("Merge", "Wait", "")); }
    ProgressWindowHost host;
};

TEST_F(ProgressHost, blocksUntilItsWorkerClosesTheWindow) {
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
    show();
    EXPECT_EQ(here.log.take(), "asks Merge|Wait [FileManager_Cancel]\n49%");
    EXPECT_FALSE(host.pProressWindow);
    EXPECT_EQ(NSApp()->modalDepth(), 0u);
}

TEST_F(ProgressHost, cancelButtonAndTitleBarBothTellTheWorkerToStop) {
    for (const bool byButton : {true, false}) {
        byButton ? answers.at("Wait").press("FileManager_Cancel") : answers.at("Wait").closeByTitleBar();
        show();
        EXPECT_TRUE(host.pProressWindow->isClosed) << byButton;
        EXPECT_FALSE(host.pProressWindow->window()->isVisible()) << byButton;
    }
}

TEST_F(ProgressHost, hiddenCloseButtonLeavesTheCancelButton) {
    host.pProressWindow = make<HNMPublicProgressWindow>();
    host.pProressWindow->hiddenWndCloseBtn = true;
    answers.at("Wait").closeByTitleBar().run([&] { EXPECT_FALSE(host.pProressWindow->isClosed); }).press("FileManager_Cancel");
    show();
}

TEST_F(ProgressHost, barOfUnknownLengthCreepsTo95) {
    const auto window = make<HNMPublicProgressWindow>();
    (void)window->window();
    for (int i = 0; i < 200; ++i)
        window->updataProgress();
    EXPECT_EQ(window->progress.lock()->progressValue(), 95);
}

TEST_F(ProgressHost, resultDialogGivesItsCode) {
    const auto contents = make<NSMutableDictionary>(NSMutableDictionary::Entries{
        {"iconName", "icon_ok"}, {"Title", "Result"}, {"Contents", "2 exported"}, {"leftButtonTitle", "OK"}, {"rightButtonTitle", "Open"}});
    answers.at("2 exported").press("Open");
    EXPECT_EQ(host.openOperationResultWindowContents_type(contents, 1), 1);
    EXPECT_EQ(here.log.take(), "asks Result|2 exported [OK Open]\npresses Open");
}

// ---------------------------------------------------------------- preview of a device file

class Preview : public OwnWindow {
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
};

TEST_F(Preview, fetchesOnceAndPlaysWhatItFetched) {
    DeviceFilePreview::open("/a.mp3", "/m/a.mp3", 2000, "Play");
    here.world.settle();
    const std::string path = here.folder() + "/TmpMusic//a.mp3";
    EXPECT_EQ(here.log.take(), "button: FileManager_Cancel 0\nasks Play [FileManager_Cancel]\nmain: Loading a.mp3\nsub: 2.0 KB / 2.0 KB\n"
                               "opens " + path);
    DeviceFilePreview::open("/a.mp3", "/m/a.mp3", 2000, "Play");
    EXPECT_EQ(here.log.take(), "opens " + path);
}

TEST_F(Preview, callsThePlayerAfterACancelToo) {
    answers.at("Loading a.mp3").press("FileManager_Cancel");
    DeviceFilePreview::open("a.mp3", "/m/a.mp3", 2000, "Play");
    here.world.settle();
    EXPECT_TRUE(here.log.take().ends_with("presses FileManager_Cancel\nopens " + here.folder() + "/TmpMusic/a.mp3"));
}

TEST_F(Preview, opensNoFileOutsideItsFolder) {
    writeFile(here.folder() + "/secret", "x");
    DeviceFilePreview::open("../secret", "/m/a.mp3", 2000, "Play");
    EXPECT_EQ(here.log.take(), "");
}

}  // namespace
