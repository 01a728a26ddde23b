#include "HNManagerPlugin/Classes/PublicProgressWindow/BatchFlow.h"

#include <gtest/gtest.h>

#include "HNManagerPlugin/Classes/PublicProgressWindow/Dialogs.h"
#include "tests/HNManagerPlugin/Classes/PublicProgressWindow/FlowWorld.h"

namespace {

using namespace std::chrono_literals;

// What each log begins with, what the first file adds to it, and a cancel with its question.
const std::string kStart = "button: FileManager_Cancel 5\nmain: Wait\nasks Export_musics|Wait [FileManager_Cancel]\n";
const std::string kFirstFile = "main: Exporting(1/3),  a.mp3\nsub: 1.0 KB / 4.0 KB\n";
const std::string kCancelled = "presses FileManager_Cancel\nasks |ExportPhotoToPC_Want_To_Cancel [FileManager_OK FileManager_Cancel]\n"
                               "presses FileManager_OK\n";

class BatchFlowTest : public testing::Test {
protected:
    BatchFlowTest() {
        here.world.setTexts({{"Export_music_successfullys", "%ld exported"}, {"Export_music_faileds", "%ld not exported"}});
        here.device.files().files = {{"/m/a.mp3", std::string(1000, 'a')}, {"/m/b.mp3", std::string(1000, 'b')},
                                     {"/m/c.mp3", std::string(2000, 'c')}};
    }

    // An export of three files; the third is of 2 kB.
    BatchPlan exportPlan() {
        BatchPlan plan;
        plan.windowTitle = "Export_musics";
        plan.operationTitle = "Exporting";
        plan.waitText = "Wait";
        plan.keys = results::exportMusic;
        plan.total = 3;
        plan.opensFolder = here.folder();
        plan.work = [this](const BatchRun::Ref &run) {
            std::vector<std::shared_ptr<DeviceFileInfo>> list;
            for (const char *name : {"a.mp3", "b.mp3", "c.mp3"})
                list.push_back(DeviceFileInfo::deviceFileInfoWithPath_FileName(NSString("/m/").stringByAppendingString(name), name));
            here.device.files().exportDevcieFile_toDirectory_getExportFile_progress(list, here.folder(), nullptr, run->progressBlock());
            run->onMain([this] { here.log.add("export returned"); });
        };
        plan.reload = [this] { here.log.add("reload"); };
        return plan;
    }
    // The same as an import: room on the device, no folder.
    BatchPlan importPlan(CancelForm form) {
        BatchPlan plan = exportPlan();
        plan.opensFolder = NSString();
        plan.cancelForm = form;
        plan.whileCancelling = WhileCancelling::showsCancelling;
        plan.hidesCloseButton = true;
        plan.deviceBytesNeeded = [] { return 4000; };
        return plan;
    }

    FlowWorld here;
    AnswerScript answers{&here.log};
};

TEST_F(BatchFlowTest, exportGoesFromWaitingToItsResultAndOpensTheFolder) {
    answers.at("3 exported").press("BackupRestore_ExportOpenFolder").press("MessageDialog_Ok");
    const auto run = BatchFlow::run(exportPlan());
    EXPECT_EQ(run->successCount, 3);
    EXPECT_EQ(here.log.take(), kStart + kFirstFile +
                               "main: Exporting(2/3),  b.mp3\n"
                               "sub: 2.0 KB / 4.0 KB\n"
                               "main: Exporting(3/3),  c.mp3\n"
                               "sub: 4.0 KB / 4.0 KB\n"
                               "button: MessageDialog_Ok 15\n"
                               "colour button: BackupRestore_ExportOpenFolder\n"
                               "main: 3 exported\n"
                               "export returned\n"
                               "presses BackupRestore_ExportOpenFolder\n"
                               "opens " + here.folder() + "\n"
                               "presses MessageDialog_Ok\n"
                               "reload");
}

TEST_F(BatchFlowTest, exportThatIsCancelledShowsWhatItHasAtOnceAndTheRestAsFailed) {
    answers.at("Exporting(1/3),  a.mp3").press("FileManager_Cancel");
    answers.at("ExportPhotoToPC_Want_To_Cancel").press("FileManager_OK");
    answers.at("Export_music_successfully\n2 not exported").press("MessageDialog_Ok");
    const auto run = BatchFlow::run(exportPlan());
    EXPECT_TRUE(run->isCancelled());
    here.world.settle();
    EXPECT_EQ(here.log.take(), kStart + kFirstFile + kCancelled +
                               "button: MessageDialog_Ok 15\n"
                               "colour button: BackupRestore_ExportOpenFolder\n"
                               "main: Export_music_successfully\n2 not exported\n"
                               "presses MessageDialog_Ok\n"
                               "reload\n"
                               "export returned");
}

TEST_F(BatchFlowTest, importThatIsCancelledSaysSoUntilTheDeviceLayerEnds) {
    answers.at("Exporting(1/3),  a.mp3").press("FileManager_Cancel");
    answers.at("ExportPhotoToPC_Want_To_Cancel").press("FileManager_OK");
    answers.at("2 exported\nExport_music_failed").press("MessageDialog_Ok");
    (void)BatchFlow::run(importPlan(CancelForm::questionThenStop));
    EXPECT_EQ(here.log.take(), kStart + kFirstFile + kCancelled +
                               "main: Import_photo_cancelling\n"
                               "button: FileManager_Cancel 5 hidden\n"
                               "button: MessageDialog_Ok 15 hidden\n"
                               "button: MessageDialog_Ok 15\n"
                               "main: 2 exported\nExport_music_failed\n"
                               "export returned\n"
                               "presses MessageDialog_Ok\n"
                               "reload");
}

// ---------------------------------------------------------------- the two forms of the question

class CancelQuestion : public BatchFlowTest, public testing::WithParamInterface<CancelForm> {};

TEST_P(CancelQuestion, answeredWithNoLetsTheBatchGoOn) {
    answers.at("Exporting(1/3),  a.mp3").closeByTitleBar();
    answers.at("ExportPhotoToPC_Want_To_Cancel").press("FileManager_Cancel");
    answers.at("Exporting(2/3),  b.mp3").press("FileManager_Cancel");
    answers.at("ExportPhotoToPC_Want_To_Cancel").closeByTitleBar();
    answers.at("3 exported").press("MessageDialog_Ok");
    BatchPlan plan = importPlan(GetParam());
    plan.hidesCloseButton = false;
    EXPECT_FALSE(BatchFlow::run(plan)->isCancelled());
}

// The file in work is finished; only the form that waits for the layer's last call still counts it.
TEST_P(CancelQuestion, letsTheBatchGoOnMeanwhile) {
    answers.at("Exporting(1/3),  a.mp3").press("FileManager_Cancel");
    answers.at("ExportPhotoToPC_Want_To_Cancel").run([] { dispatch::sleepFor(1500ms); }).press("FileManager_OK");
    const bool waits = GetParam() == CancelForm::questionThenStop;
    answers.at(waits ? "3 exported" : "2 exported\nExport_music_failed").press("MessageDialog_Ok");
    const auto run = BatchFlow::run(importPlan(GetParam()));
    EXPECT_TRUE(run->isCancelled());
    here.world.settle();
}

INSTANTIATE_TEST_SUITE_P(Both, CancelQuestion, testing::Values(CancelForm::questionThenStop, CancelForm::sessionThenFinish),
                         [](const auto &row) { return row.param == CancelForm::sessionThenFinish ? "session" : "simple"; });

TEST_F(BatchFlowTest, sessionQuestionClosesByItselfWhenTheDeviceLeaves) {
    here.noteLogLine(">>> Device Disconnected");
    answers.at("Exporting(1/3),  a.mp3").press("FileManager_Cancel");
    answers.at("ExportPhotoToPC_Want_To_Cancel").run([this] { here.device.leave(); });
    answers.at("Export_music_successfully\n2 not exported").press("MessageDialog_Ok");
    const auto run = BatchFlow::run(importPlan(CancelForm::sessionThenFinish));
    EXPECT_FALSE(run->isCancelled());
    const std::string log = here.log.take();
    EXPECT_EQ(log.find("reload"), std::string::npos) << log;
    EXPECT_TRUE(log.ends_with("presses MessageDialog_Ok\n>>> Device Disconnected")) << log;
}

TEST_F(BatchFlowTest, simpleQuestionStaysWhenTheDeviceLeaves) {
    answers.at("Exporting(1/3),  a.mp3").press("FileManager_Cancel");
    answers.at("ExportPhotoToPC_Want_To_Cancel").run([this] { here.device.leave(); }).run([] { dispatch::sleepFor(30s); }).press("FileManager_Cancel");
    answers.at("Export_music_successfully\n2 not exported").press("MessageDialog_Ok");
    EXPECT_FALSE(BatchFlow::run(importPlan(CancelForm::questionThenFinish))->isCancelled());
}

TEST_F(BatchFlowTest, aClickOnTheFinishedWindowAsksNothing) {
    answers.at("3 exported").closeByTitleBar();
    (void)BatchFlow::run(exportPlan());
    EXPECT_TRUE(here.log.take().ends_with("closes the window\nreload"));
}

TEST_F(BatchFlowTest, formWithoutAQuestionClosesAtOnce) {
    answers.at("Exporting(1/3),  a.mp3").press("FileManager_Cancel");
    BatchPlan plan = exportPlan();
    plan.cancelForm = CancelForm::closeAtOnce;
    const auto run = BatchFlow::run(plan);
    EXPECT_TRUE(run->isCancelled());
    EXPECT_TRUE(run->window()->isClosed());
    here.world.settle();   // the late updates change nothing
    EXPECT_EQ(run->window()->mainText(), NSString("Exporting(1/3),  a.mp3"));
}

TEST_F(BatchFlowTest, formThatClosesOnYesKeepsTheWindowOnNo) {
    answers.at("Exporting(1/3),  a.mp3").closeByTitleBar();
    answers.at("ExportPhotoToPC_Want_To_Cancel").press("FileManager_Cancel");
    answers.at("Exporting(2/3),  b.mp3").closeByTitleBar();
    answers.at("ExportPhotoToPC_Want_To_Cancel").press("FileManager_OK");
    BatchPlan plan = exportPlan();
    plan.cancelForm = CancelForm::questionThenClose;
    const auto run = BatchFlow::run(plan);
    EXPECT_TRUE(run->isCancelled());
    EXPECT_EQ(run->window()->mainText(), NSString("Exporting(2/3),  b.mp3"));
    here.world.settle();
}

// ---------------------------------------------------------------- before the work

TEST_F(BatchFlowTest, roomOnTheDeviceIsTestedToTheByteBeforeAnythingIsSent) {
    here.device.device().freeBytes = 3999;
    answers.at("save_to_idevice").press("OK");
    (void)BatchFlow::run(importPlan(CancelForm::questionThenStop));
    EXPECT_EQ(here.log.take(), kStart +
                               "asks Tips|save_to_idevice [OK]\n"
                               "presses OK");
    EXPECT_EQ(here.device.device().refreshes, 1);
    here.device.device().freeBytes = 4000;
    answers.at("3 exported").press("MessageDialog_Ok");
    EXPECT_EQ(BatchFlow::run(importPlan(CancelForm::questionThenStop))->successCount, 3);
}

TEST_F(BatchFlowTest, roomOnTheComputerIsTestedToTheByte) {
    here.noteLogLine("too little");
    RVSystemInfoManager::setAvailableMemoryQuery([] { return 100; });
    EXPECT_TRUE(dialogs::hasRoomOnComputer(100, "Title", "too little"));
    answers.at("save_to_pc").press("OK");
    EXPECT_FALSE(dialogs::hasRoomOnComputer(101, "Title", "too little"));
    EXPECT_EQ(here.log.take(), "too little\nasks Title|save_to_pc [OK]\npresses OK");
}

TEST_F(BatchFlowTest, targetThatCannotBeWrittenIsSaid) {
    EXPECT_TRUE(dialogs::isWritableTarget(here.folder()));
    answers.at("HomeView_ExportPhoto_Not_Write_Disk").press("Button_Title_OK");
    EXPECT_FALSE(dialogs::isWritableTarget(here.folder() + "/missing"));
    EXPECT_EQ(here.log.take(), "asks |HomeView_ExportPhoto_Not_Write_Disk [Button_Title_OK]\npresses Button_Title_OK");
}

TEST_F(BatchFlowTest, onlyTheDeleteButtonConfirmsADeletion) {
    answers.at("Sure?").press("FileManager_Delete");
    EXPECT_TRUE(dialogs::confirmDelete("Delete", "Sure?"));
    answers.at("Sure?").press("FileManager_Cancel");
    EXPECT_FALSE(dialogs::confirmDelete("Delete", "Sure?"));
    answers.at("Sure?").closeByTitleBar();
    EXPECT_FALSE(dialogs::confirmDelete("Delete", "Sure?"));
}

// ---------------------------------------------------------------- beside closed calls without progress

TEST_F(BatchFlowTest, fillerCreepsTo95AndWaits) {
    answers.at("Import_music_successfully").press("MessageDialog_Ok");
    double reached = 0;
    BatchPlan plan;
    plan.keys = results::importMusic;
    plan.total = 1;
    plan.work = [&reached](const BatchRun::Ref &run) {
        const auto filler = FillerBar::start(run->window(), 60ms);
        dispatch::sleepFor(20s);
        filler->done = true;
        dispatch::sync(dispatch::main(), [&] { reached = run->window()->progressIndicator()->doubleValue(); });
        run->successCount = 1;
        run->finishLater(500ms);
    };
    (void)BatchFlow::run(plan);
    EXPECT_EQ(reached, 95);
}

}  // namespace
