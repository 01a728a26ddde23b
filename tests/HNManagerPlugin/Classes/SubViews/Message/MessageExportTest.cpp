// Threads to a table and to a page: what is asked before, what is written, how it ends.

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"
#include "HNManagerPlugin/contracts/RVMessageWriter/PictureConverter.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIProgressWindowController.h"
#include "tests/HNManagerPlugin/Classes/SubViews/Message/MessageCategory.h"
#include "toolkit/services/SystemCommand.h"
#include "toolkit/services/UserFolders.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSSavePanel.h"

namespace {

constexpr const char *kHead = "Group ID\tNumber\tName\tTime\tContent\tSmsState\tSmsType\n";
constexpr const char *kOne = "MessageView_exportSuccess", *kSeveral = "MessageView_exportSuccess(s)";

class MessageExport : public MessageCategory {
protected:
    MessageExport() {
        UserFolders folders = userFolders();
        folders.home = "/home/ann";
        setUserFolders(folders);
        logWorkspaceTo(*log_);
    }
    ~MessageExport() override {
        SystemCommand::setFailureListener({});
        PictureConverter::install({});
    }
    [[nodiscard]] NSString target() const { return NSString(folder_.path().string()); }
    [[nodiscard]] NSString path(const char *name) const { return NSString((folder_.path() / name).string()); }
    [[nodiscard]] NSString put(const char *name, const char *bytes) const {
        writeFile(folder_.path() / name, bytes);
        return path(name);
    }
    [[nodiscard]] std::string read(const std::string &name) const { return readFile(folder_.path() / name); }
    [[nodiscard]] bool stands(const char *name) const { return std::filesystem::exists(folder_.path() / name); }
    void openWithBobAndAnn() {
        book_->add("Ann", {"7"});
        auto ann = chatOf(9, {"7"}, {{.content = "hi", .second = 60, .personSend = "7"}});
        ann->serviceName = {"SMS"};
        auto bob = chatOf(5, {"8"}, {{.content = "a\r\nb\tc", .isSend = true}});
        bob->serviceName = {"iMessage", "SMS"};
        openWith({bob, ann});
    }
    // Leaves the result, which begins with `said`, by its first button.
    void exportTable(const char *name, const char *said = nullptr) {
        answer(name, said);
        manager_->exportMessage(nullptr);
    }
    void exportPage(const char *name, const char *said = nullptr) {
        answer(name, said);
        manager_->exportMessage2HTML(nullptr);
    }
    // On the worker that exports: presses Cancel, and lets all that waits on the main queue pass.
    static void cancelMeanwhile() {
        dispatch::sync(dispatch::main(), [] {
            const auto progress = std::dynamic_pointer_cast<RUIProgressWindowController>(NSApp()->modalWindow()->windowController());
            if (progress->borderButton()->tag() == 5)
                progress->borderButton()->performClick();
        });
    }

    void answer(const char *name, const char *said) {
        answers_.savePanel().choose({path(name)});
        if (said)
            answers_.at(said).press("MessageDialog_Ok");
    }

    TempFolder folder_;
    EventLog shown_;
    AnswerScript answers_{&shown_};
};

// Bytes of GB18030: U+4E2D is D6 D0, U+1F600 is 94 39 FC 36.
TEST_F(MessageExport, theTableHasARowForEachMessageAndCaptionButThoseOfTheTime) {
    book_->add("Ann", {"7"});
    const NSString file = put("IMG 1;.jpg", "picture");
    auto chat = chatOf(18446744073709551615U, {"7"},
                       {{.content = "\xE4\xB8\xAD\xF0\x9F\x98\x80", .personSend = "7"},
                        {.content = "line\none\ttab", .isSend = true, .personSend = "x"},
                        {.content = "late", .second = 7200, .isSend = true, .isFailed = true, .personSend = "x"},
                        {.content = file, .second = 7260, .isAttachment = true, .type = "image/jpeg", .fileName = "IMG 1;.jpg",
                         .personSend = "9"}});
    chat->serviceName = {"iMessage"};
    openWith({chat});
    select({0});
    exportTable("out.xls", kOne);
    const std::string id = "18446744073709551615", type = "\t(\n    iMessage\n)\n";
    EXPECT_EQ(read("out.xls"), kHead + id + "\t7\tAnn\t2024-01-01 00:00:00\t\xD6\xD0\x94\x39\xFC\x36\treceive" + type +
                                   id + "\tx\tx\t2024-01-01 00:00:00\tlineone\ttab\tsend" + type +
                                   id + "\tx\tx\t2024-01-01 02:00:00\tlate\tfailed" + type +
                                   id + "\t(null)\t(null)\t(null)\tMessageView_NotDeliver\treceive" + type +
                                   id + "\t9\t9\t2024-01-01 02:01:00\t[attachment]\treceive" + type);
    EXPECT_EQ(read("message attachment/" + id + "/IMG 1;.jpg"), "picture");
    EXPECT_FALSE(stands("pelorix_message.xls"));
    EXPECT_EQ(RVProductConfig::valueForKey("MessageExportPathKey"), target());
}

TEST_F(MessageExport, theSelectedThreadsAloneAreWrittenInTheOrderOfTheList) {
    openWithBobAndAnn();
    select({0, 1});
    exportTable("two.xls", kSeveral);
    EXPECT_EQ(read("two.xls"), std::string(kHead) + "9\t7\tAnn\t2024-01-01 00:01:00\thi\treceive\t(\n    SMS\n)\n"
                                                    "5\t\t\t2024-01-01 00:00:00\tab\tc\tsend\t(\n    iMessage,\n    SMS\n)\n");
    select({0});
    exportTable("one.xls", kOne);
    EXPECT_EQ(read("one.xls"), std::string(kHead) + "9\t7\tAnn\t2024-01-01 00:01:00\thi\treceive\t(\n    SMS\n)\n");
}

TEST_F(MessageExport, whatGB18030CannotHoldDoesNotKeepTheTableFromIt) {
    openWith({chatOf(1, {}, {{.content = "\xFF|\xEE\x9E\x8D|\xEF\xA3\xBF", .isSend = true}})});
    select({0});
    exportTable("out.xls", kOne);
    EXPECT_NE(read("out.xls").find("\x84\x31\xA4\x37|\x84\x31\xA4\x37|\x84\x30\x81\x30"), std::string::npos) << read("out.xls");
}

TEST_F(MessageExport, theWindowTellsTheThreadsAsTheyAreWritten) {
    world_.setTexts({{"MessageView_Exporting", "%ld of %ld"}});
    openWith({chatOf(1, {"7"}, {{"x", 3}}), chatOf(2, {"8"}, {{.content = "/none", .second = 2, .isAttachment = true}, {"z", 2}}), chatOf(3, {"9"}, {{"v", 1}})});
    select({0, 1, 2});
    double percent = 0;
    SystemCommand::setFailureListener([&](const SystemCommand::Failure &) {   // within the second thread
        dispatch::sync(dispatch::main(), [&] {
            percent = std::dynamic_pointer_cast<RUIProgressWindowController>(NSApp()->modalWindow()->windowController())->progressIndicator()->doubleValue();
        });
    });
    for (const bool isPage : {false, true}) {
        isPage ? exportPage("page", kSeveral) : exportTable("out.xls", kSeveral);
        const std::string log = shown_.take();
        EXPECT_EQ(log.substr(log.find("asks")), "asks MessageView_ExportTitle|MessageView_ExportWaiting [FileManager_Cancel]\n"
                                               "main: 1 of 3\nmain: 2 of 3\nmain: 3 of 3\nbutton: MessageDialog_Ok 15\n"
                                               "main: MessageView_exportSuccess(s)\ncolour button: BackupRestore_ExportOpenFolder\n"
                                               "presses MessageDialog_Ok");
        EXPECT_EQ(std::exchange(percent, 0), 33.33333587646484375) << "a third in single precision";
    }
}

TEST_F(MessageExport, withoutASelectionOnlyTheFolderIsRememberedAndTheNextPanelBeginsThere) {
    std::string asked;
    NSSavePanel::setHandOver([&](const NSSavePanel &panel, const NSString &, bool) {
        asked = panel.directoryURL.str() + " " + panel.allowedFileTypes.front().str() + " ";
        for (const char c : panel.nameFieldStringValue.str())
            asked += c >= '0' && c <= '9' ? '0' : c;
        return NSString();
    });
    openWithBobAndAnn();
    select({});
    exportTable("out.xls");
    EXPECT_EQ(asked, "/home/ann/Documents xls Messages_00000000_000000");
    EXPECT_FALSE(stands("out.xls"));
    EXPECT_EQ(RVProductConfig::valueForKey("MessageExportPathKey"), target());
    exportPage("page");
    EXPECT_EQ(asked, target().str() + "  Messages_00000000_000000");
    NSSavePanel::setHandOver({});
}

TEST_F(MessageExport, whatACommandCannotTakeStaysAsItIs) {
    std::string failed;
    SystemCommand::setFailureListener([&](const SystemCommand::Failure &failure) { failed += failure.command.str() + "\n"; });
    openWith({chatOf(1, {"7"}, {{.content = "/b/it's", .isSend = true, .isFailed = true, .isAttachment = true, .fileName = "n'"}})});
    select({0});
    exportTable("a b.xls", kOne);
    const std::string at = target().str();
    EXPECT_EQ(std::exchange(failed, {}), "cp '/b/it's' '" + at + "/message attachment/1'\n"
                                         "iconv -f UTF8 -t GB18030 " + at + "/a b.xls > " + at + "/pelorix_message.xls\n"
                                         "rm " + at + "/a b.xls\nmv " + at + "/pelorix_message.xls " + at + "/a b.xls\n");
    EXPECT_EQ(read("a b.xls"), std::string(kHead) + "1\t\t\t2024-01-01 00:00:00\t[attachment]\tfailed\t(\n)\n"
                                                   "1\t(null)\t(null)\t(null)\tMessageView_NotDeliver\treceive\t(\n)\n");
    exportPage("page", kOne);
    EXPECT_EQ(failed, "cp '/b/it's' '" + at + "/page/n''\n");
    EXPECT_TRUE(stands("page/Messagesfailed.png"));
}

TEST_F(MessageExport, aTableThatEndsWithAThreadWithoutRowsWaitsForEver) {
    openWith({chatOf(1, {"7"}, {})});
    select({0});
    exportPage("page", kOne);
    EXPECT_TRUE(stands("page/Messages.html"));
    answers_.at("MessageView_ExportWaiting").press("FileManager_Cancel").closeByTitleBar();
    world_.world().expectWaiting({"a semaphore"});
    exportTable("out.xls");
    EXPECT_EQ(read("out.xls"), kHead);
    const auto times = make<HNMessageEntity>();
    times->messageArray->addObject(make<HNDetailMessage>());
    std::static_pointer_cast<HNDetailMessage>(times->messageArray->objectAtIndex(0))->isTimeOnly = true;
    int calls = 0;
    model_->exportSelectedMessages_exportMessages_callBack(path("times.xls"), {times}, [&](auto, auto, const auto &) { ++calls; });
    advance();
    EXPECT_EQ(calls, 0) << "a time makes no call";
}

TEST_F(MessageExport, theTypeWordTellsPicturesSoundsAndVideosInThisOrder) {
    const struct {
        NSString type;
        std::int64_t kind;
        bool hasMark;
    } rows[] = {{"IMAGE/audio", 1, false}, {"application/pdf", 0, false}, {NSString(), 0, false}, {"video/Audio", 2, true}, {"video/x", 3, true}};
    for (const auto &row : rows) {
        EXPECT_EQ(HNMMessageViewModel::medioType_path(row.type, path("")), row.kind) << row.kind;
        EXPECT_EQ(stands("Icon_quickTime.png"), row.hasMark) << row.kind;
        std::filesystem::remove(folder_.path() / "Icon_quickTime.png");
    }
    (void)put("Icon_quickTime.png", "mine");
    (void)HNMMessageViewModel::medioType_path("video/x", path(""));
    EXPECT_EQ(read("Icon_quickTime.png"), "mine");
}

TEST_F(MessageExport, theTableStandsBehindWhatTheFileHolds) {
    openWithBobAndAnn();
    (void)put("old.xls", "old");
    model_->exportSelectedMessages_exportMessages_callBack(path("old.xls"), {}, [](auto, auto, const auto &) {});
    EXPECT_EQ(read("old.xls"), std::string("old") + kHead);
}

TEST_F(MessageExport, aCancelledTableIsEmptyAndReportedAsASuccess) {
    openWith({chatOf(1, {}, {{.content = "/none/1", .isAttachment = true}, {.content = "/none/2", .isAttachment = true}, {.content = "x"}})});
    select({0});
    // The first missing file presses the button; while the second one is looked for the first row's call passes it on.
    SystemCommand::setFailureListener([](const SystemCommand::Failure &failure) {
        if (failure.words.front() == "cp")
            cancelMeanwhile();
    });
    exportTable("out.xls", kOne);
    EXPECT_TRUE(stands("out.xls"));
    EXPECT_EQ(read("out.xls"), "");
}

TEST_F(MessageExport, aCancelledPageEndsWithWhatItHas) {
    const FakeMessage picture{.content = put("a.heic", "heic"), .isAttachment = true, .type = "image/heic", .fileName = "a.heic"};
    openWith({chatOf(1, {}, {picture, picture, {.content = "never"}}), chatOf(2, {}, {{.content = "nor this"}})});
    select({0, 1});
    PictureConverter::install([](const NSString &, const NSString &) {
        cancelMeanwhile();
        return false;
    });
    exportPage("page", kSeveral);
    const std::string page = read("page/Messages.html");
    EXPECT_NE(page.find("a.heic"), std::string::npos);
    EXPECT_EQ(page.find("never"), std::string::npos);
    EXPECT_EQ(page.find("nor this"), std::string::npos);
    EXPECT_TRUE(page.ends_with("</html>\n"));
}

TEST_F(MessageExport, thePageHasEachMessageWithItsTimeAndItsFiles) {
    const NSString file = put("f", "bytes");
    const auto attachment = [&](const char *type, const char *name, bool isSend, bool isFailed = false) {
        return FakeMessage{.content = file, .isSend = isSend, .isFailed = isFailed, .isAttachment = true, .type = type, .fileName = name};
    };
    EventLog lines;
    world_.logLinesTo(lines, "HNMMessageViewModel+Export");
    const auto chat = chatOf(1, {"7"}, {{.content = "left\none"},
                                {.content = "right", .second = 60, .isSend = true},
                                {.content = "lost", .second = 120, .isSend = true, .isFailed = true},
                                attachment("image/png", "p.png", false), attachment("video/mp4", "v.mp4", true),
                                attachment("audio/amr", "s.amr", true, true), attachment("application/pdf", "d.pdf", false)});
    chat->serviceName = {"iMessage"};
    openWith({chat});
    select({0});
    exportPage("page", kOne);
    const std::string page = read("page/Messages.html");
    std::size_t at = 0;
    for (const char *part : {"<h2 dir=\"auto\">7 <small>MessagesTableHeader_Message</small>", "<time>2024-01-01</time>",
                             "<div class=\"l\" dir=\"auto\">leftone<time>00:00</time>", "<div class=\"r\" dir=\"auto\">right<time>00:01</time>",
                             "<div class=\"r f\" dir=\"auto\">lost<time>00:02</time>", "src=\"Messagesfailed.png\"", "<div class=\"l m\"",
                             "src=\"p.png\"", "<div class=\"r m\"", "<video controls preload=\"none\" src=\"v.mp4\">", "MessageView_1Video",
                             "<div class=\"r f m\"", "<audio controls preload=\"none\" src=\"s.amr\">"}) {
        const std::size_t found = page.find(part, at);
        ASSERT_NE(found, std::string::npos) << part << " behind " << page.substr(at, 300);
        at = found;
    }
    EXPECT_EQ(page.find("<div class=\"l", page.find("<div class=\"l m\"") + 1), std::string::npos) << "a not-delivered caption is nobody's text";
    EXPECT_EQ(page.find("d.pdf"), std::string::npos) << "copied, but no call names it";
    EXPECT_NE(page.find("<title>" + MobileDeviceManager::defaultManager().deviceName().str() + "</title>"), std::string::npos);
    EXPECT_NE(lines.take().find("MessageType = (\n    iMessage\n)"), std::string::npos);
    for (const char *name : {"p.png", "v.mp4", "s.amr", "d.pdf"})
        EXPECT_EQ(read(std::string("page/") + name), "bytes") << name;
    EXPECT_TRUE(stands("page/Messagesfailed.png"));
    EXPECT_TRUE(stands("page/Icon_quickTime.png"));
}

TEST_F(MessageExport, theFolderButtonLeavesTheTablesWindowAndClosesThePages) {
    openWithBobAndAnn();
    select({0});
    log_->take();
    answers_.at(kOne).press("BackupRestore_ExportOpenFolder").press("MessageDialog_Ok");
    exportTable("out.xls");
    EXPECT_EQ(log_->take(), "opens " + target().str());
    answers_.at(kOne).press("BackupRestore_ExportOpenFolder");
    exportPage("page");
    EXPECT_EQ(log_->take(), "opens " + target().str() + "/page");
}

TEST_F(MessageExport, aPlaceThatCannotBeWrittenIsToldAndNotRemembered) {
    openWithBobAndAnn();
    select({0});
    answers_.at("HomeView_ExportPhoto_Not_Write_Disk").press("Button_Title_OK");
    NSSavePanel::setHandOver([this](const auto &...) { return path("none/out.xls"); });
    exportTable("out.xls");
    NSSavePanel::setHandOver({});
    EXPECT_TRUE(RVProductConfig::valueForKey("MessageExportPathKey").isNil());
}

// The attachments of all threads on show count, selected or not.
TEST_F(MessageExport, asksForRoomBeforeThePanel) {
    struct Gates : StrategyGates {
        std::string asked;
        std::int64_t most = 0;
        bool actionRequestDiskSize(std::int64_t bytes) override {
            asked += std::to_string(bytes) + " ";
            return bytes <= most;
        }
        bool actionRequestDiskSize_withPath(std::int64_t bytes, const NSString &path) override {
            asked += std::to_string(bytes) + " at " + path.str() + " ";
            return bytes <= most;
        }
    };
    const FakeMessage five{.content = put("a", "12345"), .isAttachment = true}, none{.content = "/none", .isAttachment = true};
    openWith({chatOf(1, {}, {five, none}), chatOf(2, {}, {five})});
    select({0});
    const auto gates = std::make_shared<Gates>();
    RStrategyActionEventRouter::shareInstance().install(gates);
    manager_->exportMessage(nullptr);
    EXPECT_EQ(gates->asked, "104857600 ");
    gates->asked.clear();
    gates->most = 104'857'600;
    EXPECT_TRUE(model_->couldExportMessageAttachment());
    EXPECT_EQ(gates->asked, "104857600 10 at /home/ann ");
}

}   // namespace
