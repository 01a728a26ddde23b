// From opening the category to a filled list, and all the ways in which it ends otherwise.
#include "tests/HNManagerPlugin/Classes/SubViews/Message/MessageCategory.h"
#include "toolkit/services/NSNotificationCenter.h"
#include "toolkit/views/NSApplication.h"

using namespace std::chrono_literals;

namespace {

struct Gates : StrategyGates {
    bool hasRoom = true;
    std::string asked;
    bool actionRequestDiskSize_withPath(std::int64_t bytes, const NSString &path) override {
        asked = std::to_string(bytes) + " " + path.str();
        return hasRoom;
    }
};

class MessagePipeline : public MessageCategory {
protected:
    MessagePipeline() {
        RStrategyActionEventRouter::shareInstance().install(gates_);
        parse_->parsed = {chatOf(1, {"7"}, {{"hello"}})};
    }
    [[nodiscard]] std::string backup() const { return "shared backup " + folder_ + "/Pelorix/Message/Backup 8 0"; }

    std::shared_ptr<Gates> gates_ = std::make_shared<Gates>();
};

TEST_F(MessagePipeline, takesABackupParsesItAndBuildsTheThreads) {
    open();
    EXPECT_EQ(log_->take(), "shared encrypted? 0\nshared attach\n" + backup());
    EXPECT_EQ(gates_->asked, "1048576000 " + folder_ + "/Pelorix/Message/Backup");
    EXPECT_FALSE(manager_->loadingFinished);
    EXPECT_TRUE(manager_->multPhoneView.lock()->isHidden());
    endBackup("/backup", 0);
    EXPECT_EQ(log_->take(), "parse clear\nparse attach\nparse parse /backup\nshared detach\ncontacts free\ncontacts read");
    EXPECT_EQ(shown(), "7 2024-01-01 00:00:00");
    EXPECT_EQ(panel(), "");
    EXPECT_TRUE(manager_->loadingFinished);
    EXPECT_FALSE(manager_->multPhoneView.lock()->isHidden());
    EXPECT_EQ(conversation(), "time|hello");
    EXPECT_EQ(status(), "Bottom_item_Format");
    EXPECT_TRUE(model_->messageBR->isEmpty());
}

TEST_F(MessagePipeline, theLastBackupIsRemovedAndTheFolderIsTheUsers) {
    writeFile(folder_ + "/Pelorix/Message/Backup/ab/old", "x");
    writeFile(folder_ + "/Pelorix/Message/other", "x");
    open();
    EXPECT_FALSE(std::filesystem::exists(folder_ + "/Pelorix/Message/Backup"));
    EXPECT_TRUE(std::filesystem::exists(folder_ + "/Pelorix/Message/other"));
}

struct EndingRow {
    const char *name;
    NSString path;
    std::uint32_t result;
    const char *log, *panel;
};
class BackupEnding : public MessagePipeline, public testing::WithParamInterface<EndingRow> {};

TEST_P(BackupEnding, decidesByPathAndCode) {
    open();
    log_->take();
    endBackup(GetParam().path, GetParam().result);
    EXPECT_EQ(log_->take(), GetParam().log);
    EXPECT_EQ(panel(), GetParam().panel);
    EXPECT_TRUE(manager_->loadingFinished);
    EXPECT_TRUE(manager_->stopBackupProgress);
    advance(10s);
    EXPECT_EQ(panel(), GetParam().panel);   // the simulated progress is over
}

INSTANTIATE_TEST_SUITE_P(
    Endings, BackupEnding,
    testing::Values(EndingRow{"noPath", nullptr, 0, "", "FileManager_NoMessages"}, EndingRow{"failed", nullptr, 1, "", "FileManager_NoMessages"},
                    EndingRow{"stopped", nullptr, 111, "shared detach", "FileManager_NoMessages"},
                    EndingRow{"stoppedWithAPath", "/backup", 111, "shared detach", "FileManager_NoMessages"},
                    EndingRow{"failedWithAPath", "/backup", 1,
                              "parse clear\nparse attach\nparse parse /backup\nshared detach\ncontacts free\ncontacts read", ""}),
    [](const auto &row) { return std::string(row.param.name); });

TEST_F(MessagePipeline, aBackupThatFailsAtOnceLeavesNoLoadingPanelBehind) {
    shared_->whenStarted = [this] {
        shared_->over(nullptr, 1);
        advance();
    };
    open();
    advance(10s);
    EXPECT_EQ(panel(), "FileManager_NoMessages");
}

TEST_F(MessagePipeline, withoutRoomTheLoadIsFinishedBeforeItIsRefused) {
    gates_->hasRoom = false;
    AnswerScript answers(log_.get());
    answers.at("MessageView_NoSpaceBackup").press("FileManager_OK");
    const auto model = make<HNMMessageViewModel>();
    model->backupFinished = [this] { log_->add("finished"); };
    EXPECT_FALSE(model->startSyncBackUp());
    EXPECT_EQ(log_->take(), "asks |MessageView_NoSpaceBackup [FileManager_OK]\npresses FileManager_OK\nfinished");
}

TEST_F(MessagePipeline, withoutRoomNoBackupIsTaken) {
    gates_->hasRoom = false;
    AnswerScript answers;
    answers.at("MessageView_NoSpaceBackup").press("FileManager_OK");
    open();
    EXPECT_EQ(panel(), "FileManager_NoMessages");
    EXPECT_TRUE(manager_->loadingFinished);
    EXPECT_EQ(log_->take(), "");
}

// ---------------------------------------------------------------- encrypted backups

TEST_F(MessagePipeline, theEncryptionIsAskedForThreeTimesAndThenCountsAsNone) {
    const struct {
        std::deque<std::uint32_t> answers;
        bool isEncrypted;
        const char *log;
    } rows[] = {{{0, 1}, false, "shared encrypted? 0"},
                {{1, 0}, true, "shared encrypted? 1"},
                {{2, 9, 1}, true, "shared encrypted? 2\nshared encrypted? 9\nshared encrypted? 1"},
                {{2, 2, 2, 1}, false, "shared encrypted? 2\nshared encrypted? 2\nshared encrypted? 2"}};
    for (const auto &row : rows) {
        shared_->encrypted = row.answers;
        EXPECT_EQ(make<HNMMessageViewModel>()->isDeviceBackupEncrypted(), row.isEncrypted) << row.log;
        EXPECT_EQ(log_->take(), row.log);
    }
}

class EncryptedBackup : public MessagePipeline {
protected:
    EncryptedBackup() {
        shared_->encrypted = {1};
        shared_->password = "right";
    }
    void answer(const char *asked, const char *password) {
        answers_.at(asked).type("passwordTextField", password).press("MessageDialog_Ok");
    }
    AnswerScript answers_;
};

TEST_F(EncryptedBackup, asksUntilThePasswordIsRightAndPutsItBackAfterTheParse) {
    answer("DecryptionWindow_MainDecryption_Info", "bad");
    answer("DecryptionWindow_WrongPassword_Info", "right");
    open();
    EXPECT_EQ(log_->take(), "shared encrypted? 1\nshared remove bad\nshared remove right\nshared attach\n" + backup());
    endBackup("/backup", 0);
    EXPECT_EQ(log_->take(), "parse clear\nparse attach\nparse parse /backup\nshared detach\nshared set right\ncontacts free\ncontacts read");
    EXPECT_EQ(panel(), "");
}

TEST_F(EncryptedBackup, theStoredPasswordIsSetByEveryLaterParse) {
    answer("DecryptionWindow_MainDecryption_Info", "right");
    open();
    endBackup(nullptr, 1);
    EXPECT_EQ(log_->take().find("set right"), std::string::npos);   // without a parse it stays off
    shared_->encrypted = {0};
    for (int i = 0; i < 2; ++i) {
        manager_->refreshButtonClick(nullptr);
        endBackup("/backup", 0);
        EXPECT_NE(log_->take().find("shared set right"), std::string::npos);
    }
}

TEST_F(EncryptedBackup, aPasswordThatCannotBePutBackIsOnlyLogged) {
    EventLog lines;
    world_.logLinesTo(lines, "HNMMessageViewModel+Backup");
    shared_->setResult = 5;
    answer("DecryptionWindow_MainDecryption_Info", "right");
    open();
    endBackup("/backup", 0);
    EXPECT_NE(lines.take().find("parseAllOver],恢复备份密码失败！"), std::string::npos);
    EXPECT_EQ(shown(), "7 2024-01-01 00:00:00");
}

TEST_F(EncryptedBackup, aClosedDialogTakesNoBackup) {
    answers_.at("DecryptionWindow_MainDecryption_Info").closeByTitleBar();
    open();
    EXPECT_EQ(log_->take(), "shared encrypted? 1");
    EXPECT_EQ(panel(), "FileManager_NoMessages");
    EXPECT_TRUE(manager_->loadingFinished);
}

TEST_F(EncryptedBackup, aClosedDialogFinishesNoLoad) {
    answer("DecryptionWindow_MainDecryption_Info", "bad");
    answers_.at("DecryptionWindow_WrongPassword_Info").escape();
    const auto model = make<HNMMessageViewModel>();
    model->backupFinished = [this] { log_->add("finished"); };
    EXPECT_FALSE(model->startSyncBackUp());
    EXPECT_EQ(log_->take(), "shared encrypted? 1\nshared remove bad");
}

TEST_F(EncryptedBackup, aDialogClosedDuringTheCheckEndsNoOtherDialog) {
    shared_->secondsPerCheck = 5;
    answer("DecryptionWindow_MainDecryption_Info", "right");
    answers_.at("DecryptionWindow_Decrypting_Info").closeByTitleBar();
    open();
    const auto other = make<NSWindow>(NSRect(0, 0, 100, 100));
    dispatch::after(20s, dispatch::main(), [] { NSApp()->stopModalWithCode(42); });
    EXPECT_EQ(NSApp()->runModalForWindow(other), 42);
    other->close();
    EXPECT_EQ(log_->take(), "shared encrypted? 1\nshared remove right");
}

// ---------------------------------------------------------------- parse

TEST_F(MessagePipeline, onlyChatsThatComeWhileNoBackupRunsAreTaken) {
    open();
    const auto chat = chatOf(9, {"9"}, {{"x"}});
    model_->parseOneOver_type_progress(chat, 2, 0);   // a backup runs
    shared_->running = false;
    for (const std::uint32_t type : {1U, 3U})
        model_->parseOneOver_type_progress(chat, type, 0);
    model_->parseOneOver_type_progress(nullptr, 2, 0);
    EXPECT_TRUE(model_->messageBR->isEmpty());
    model_->parseOneOver_type_progress(chat, 2, 0);
    EXPECT_EQ(model_->messageBR->count(), 1U);
    shared_->running = true;
    log_->take();
    model_->parseAllOver();
    advance();
    EXPECT_EQ(log_->take(), "");
    EXPECT_FALSE(manager_->loadingFinished);
    EXPECT_EQ(model_->messageBR->count(), 1U);
}

// ---------------------------------------------------------------- refresh, device change

TEST_F(MessagePipeline, aRefreshDuringTheBackupBeginsAnew) {
    open();
    std::filesystem::create_directories(folder_ + "/Pelorix/Message/Backup/ab");
    log_->take();
    tell(manager_->phoneComboBox, [](NSComboBox &combo) { combo.setStringValue("+1"); });
    const auto before = model_->messageTableController;
    manager_->refreshButtonClick(nullptr);
    EXPECT_EQ(log_->take(), "shared encrypted? 0\nshared attach\n" + backup());
    EXPECT_FALSE(std::filesystem::exists(folder_ + "/Pelorix/Message/Backup"));
    EXPECT_EQ(manager_->phoneComboBox.lock()->stringValue(), "All_PhoneNumber");
    EXPECT_NE(model_->messageTableController, before);
    endBackup("/backup", 0);
    EXPECT_EQ(shown(), "7 2024-01-01 00:00:00");
    EXPECT_EQ(rows(*model_->globalArray), "7 2024-01-01 00:00:00");
}

TEST_F(MessagePipeline, aRefreshWhileThreadsAreBuiltDropsThem) {
    open();
    book_->secondsToList = 5;
    shared_->over("/backup", 0);
    advance(1s);
    book_->secondsToList = 0;
    manager_->refreshButtonClick(nullptr);
    advance(10s);   // the earlier threads are built meanwhile
    EXPECT_FALSE(manager_->loadingFinished);
    EXPECT_EQ(shown(), "");
    endBackup("/backup", 0);
    EXPECT_EQ(shown(), "7 2024-01-01 00:00:00");
    EXPECT_EQ(rows(*model_->globalArray), "7 2024-01-01 00:00:00");
    EXPECT_EQ(model_->phoneNumberModels->at<NSMutableArray>("All")->count(), 1U);
}

TEST_F(MessagePipeline, aRefreshAfterTheLoadShowsTheNewThreadsAlone) {
    openWith({chatOf(1, {"7"}, {{.content = "x", .callerID = "+1"}})});
    parse_->parsed = {chatOf(2, {"8"}, {{.content = "y", .callerID = "+2"}})};
    manager_->refreshButtonClick(nullptr);
    EXPECT_TRUE(manager_->multPhoneView.lock()->isHidden());
    EXPECT_EQ(panel(), "MessageView_messageLoad");
    endBackup("/backup", 0);
    EXPECT_EQ(rows(*model_->globalArray), "8 2024-01-01 00:00:00");
    EXPECT_EQ(model_->phoneNumbers.get(), std::vector<NSString>{"+2"});
    EXPECT_EQ(conversation(), "time|y");
}

TEST_F(MessagePipeline, anotherDeviceStopsTheBackup) {
    open();
    log_->take();
    NSNotificationCenter::defaultCenter().postNotificationName_object(NMobileDeviceDidSwitchChangeNotification, nullptr);
    EXPECT_EQ(log_->take(), "shared stop");
    endBackup(nullptr, 111);
    EXPECT_EQ(panel(), "FileManager_NoMessages");
}

TEST_F(MessagePipeline, retryLoadsOnlyOnceTheMessagesHaveLeftTheCloud) {
    open();
    endBackup(nullptr, 1);
    log_->take();
    book_->cloud = 1;
    manager_->retryCheckFindMyPhone(nullptr);
    EXPECT_EQ(log_->take(), "");
    book_->cloud = 0;
    manager_->retryCheckFindMyPhone(nullptr);
    EXPECT_EQ(log_->take(), "shared encrypted? 0\nshared attach\n" + backup());
}

TEST_F(MessagePipeline, theViewsEndDuringABackup) {
    open();
    const std::weak_ptr<HNMMessageViewManager> manager = manager_;
    const std::weak_ptr<HNMMessageViewModel> model = model_;
    window_->close();
    window_ = nullptr, controller_ = nullptr, manager_ = nullptr, model_ = nullptr;
    advance(5s);
    EXPECT_TRUE(manager.expired());
    EXPECT_TRUE(model.expired());
    endBackup("/backup", 0);
}

// ---------------------------------------------------------------- progress

// Steps of 0.099.
class SteadyManager : public HNMMessageViewManager {
protected:
    std::uint32_t randomNumber() override { return 98; }
};

class BackupProgress : public MessagePipeline {
protected:
    void openSteadily() {
        model_ = make<HNMMessageViewModel>();
        manager_ = make<SteadyManager>();
        manager_->messageViewModel = model_;
        manager_->initViewModel(model_);
        advance();
    }
    void report(double percent) {
        shared_->call([percent](RKBackupAndRestoreTaskDelegate &delegate) { delegate.backupProgress(percent); });
        advance();
    }
};

TEST_F(BackupProgress, isSimulatedUntilTheRealOnePasses) {
    openSteadily();
    EXPECT_EQ(panel(), "MessageView_messageLoad 0.10%");
    advance(2s);
    EXPECT_EQ(panel(), "MessageView_messageLoad 0.20%");
    report(0.1);
    EXPECT_EQ(panel(), "MessageView_messageLoad 0.20%");
    EXPECT_DOUBLE_EQ(manager_->realProgress, 0.1);
    advance(2s);
    EXPECT_EQ(panel(), "MessageView_messageLoad 0.30%");
    report(37.456);
    EXPECT_EQ(panel(), "MessageView_messageLoad 37.46%");
    report(0.5);   // lower than before, but not than the simulated one
    EXPECT_EQ(panel(), "MessageView_messageLoad 0.50%");
    advance(20s);
    EXPECT_EQ(panel(), "MessageView_messageLoad 0.50%");   // the simulation has ended for good
    EXPECT_NEAR(manager_->currentProgress, 0.297, 1e-9);
}

TEST_F(BackupProgress, theSimulatedOneStopsOnTheLabelBeforeFiveButNotInTheLoop) {
    openSteadily();
    advance(200s);
    EXPECT_EQ(panel(), "MessageView_messageLoad 4.95%");
    EXPECT_NEAR(manager_->currentProgress, 9.999, 1e-9);
    report(6);
    EXPECT_EQ(panel(), "MessageView_messageLoad 4.95%");
    report(10.001);
    EXPECT_EQ(panel(), "MessageView_messageLoad 10.00%");
}

}   // namespace
