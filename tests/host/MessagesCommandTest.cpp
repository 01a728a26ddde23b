// messages list and export, end to end, on the sample device and on a backup folder made of it.
#include <gtest/gtest.h>

#include <csignal>
#include <set>

#include "device/backup/BackupPassword.h"
#include "device/plist/PropertyList.h"
#include "device/sqlite/Database.h"
#include "tests/host/Program.h"

using testhost::Outcome;
using testhost::pictureOf;
using testhost::Program;
using testhost::readFile;
using nlohmann::ordered_json;

namespace {

namespace fs = std::filesystem;

class MessagesCommand : public testing::Test {
protected:
    MessagesCommand() { EXPECT_EQ(program_.run({"device", "sample", "phone"}).status, 0); }
    [[nodiscard]] Outcome run(std::vector<std::string> words) const {
        words.insert(words.begin(), {"--device", "phone"});
        return program_.run(words);
    }
    [[nodiscard]] ordered_json json(std::vector<std::string> words, int status = 0) const {
        words.insert(words.begin(), {"--device", "phone"});
        return program_.json(words, status);
    }
    [[nodiscard]] fs::path at(const std::string &name) const { return program_.home() / name; }
    // Nothing of a private folder is left beside a target, nor of a link to one.
    [[nodiscard]] std::string leftOvers() const {
        std::string all;
        for (const auto &entry : fs::directory_iterator(program_.home()))
            if (entry.path().filename().string().starts_with(".hnmanager"))
                all += entry.path().filename().string() + "\n";
        for (const auto &entry : fs::recursive_directory_iterator(program_.home()))
            if (entry.path().filename().string().starts_with("hnmanager-export-"))
                all += entry.path().string() + "\n";
        return all;
    }
    void setPassword(const std::string &sealed) const {
        auto properties = device::PropertyList::read(at("phone/Device.plist"));
        properties.setFlag("WillEncrypt", true);
        if (!sealed.empty())
            properties.setData("BackupPassword", sealed);
        program_.file("phone/Device.plist", properties.bytes());
    }
    [[nodiscard]] std::string password() const {
        return device::PropertyList::read(at("phone/Device.plist")).data("BackupPassword").value_or("");
    }
    [[nodiscard]] std::string namesInHome() const {
        std::string all;
        for (const auto &entry : fs::directory_iterator(program_.home()))
            if (const std::string name = entry.path().filename().string(); !name.starts_with('.'))
                all += name + " ";
        return all;
    }
    Program program_;
};

TEST_F(MessagesCommand, listsSearchesAndFilters) {
    const ordered_json all = json({"messages", "list"});
    EXPECT_EQ(all["threads"].size(), 7U);
    EXPECT_EQ(all["found"], true);
    EXPECT_EQ(all["threads"][0]["contactName"], "Naxos in June");
    EXPECT_FALSE(all["threads"][0].contains("messageArray"));
    const ordered_json grandma = json({"messages", "list", "--search", "grandma", "--rows"});
    ASSERT_EQ(grandma["threads"].size(), 1U);
    EXPECT_EQ(grandma["threads"][0]["messageArray"].back()["content"], "yes please. bring cake");
    const ordered_json none = json({"messages", "list", "--search", "no such name"});
    EXPECT_EQ(none["found"], false);
    EXPECT_EQ(none["threads"].size(), 7U) << "what stood on show stays";
    EXPECT_EQ(json({"messages", "list", "--phone", "+0"})["threads"].size(), 0U);
}

TEST_F(MessagesCommand, exportsToTargetsThatNoCommandCanTake) {
    const fs::path folder = at("it's; $(here) \"now\"");
    fs::create_directory(folder);
    const Outcome table = run({"messages", "export", (folder / "a b'.xls").string(), "3", "4"});
    EXPECT_EQ(table.status, 0) << table.err;
    EXPECT_EQ(table.out, "2 conversations were exported.\n");
    EXPECT_TRUE(readFile(folder / "a b'.xls").starts_with("Group ID\tNumber\tName\tTime\tContent\tSmsState\tSmsType\n4\t"));
    const Outcome page = run({"messages", "export", "--html", (folder / "p'").string(), "--all"});
    EXPECT_EQ(page.status, 0) << page.err;
    EXPECT_EQ(page.err, "hnmanager: 2: IMG_0420.MOV: the backup does not hold this attachment\n");
    EXPECT_TRUE(readFile(folder / "p'" / "Messages.html").ends_with("</html>\n"));
    EXPECT_TRUE(fs::exists(folder / "p'" / "IMG_0413.HEIC.jpg"));
    EXPECT_EQ(leftOvers(), "");
    EXPECT_NE(readFile(at(".config/hnmanager/settings.json")).find("it's; $(here)"), std::string::npos) << "the person's folder is remembered";
}

TEST_F(MessagesCommand, keepsATargetThatStandsThereUnlessToldOtherwise) {
    program_.file("kept.xls", "mine");
    fs::create_directory(at("kept"));
    program_.file("kept/mine", "mine");
    EXPECT_EQ(run({"messages", "export", "kept.xls", "3"}).status, 1);
    EXPECT_EQ(run({"messages", "export", "--html", "kept", "3"}).status, 1);
    EXPECT_EQ(run({"--replace", "messages", "export", "kept", "3"}).status, 1) << "a table does not replace a folder";
    EXPECT_EQ(readFile(at("kept.xls")), "mine");
    EXPECT_EQ(readFile(at("kept/mine")), "mine");
    EXPECT_EQ(json({"--replace", "messages", "export", "kept.xls", "3"}).dump(), R"({"count":1,"text":"The conversation was exported."})");
    EXPECT_EQ(run({"--replace", "messages", "export", "--html", "kept", "3"}).status, 0);
    EXPECT_TRUE(readFile(at("kept.xls")).starts_with("Group ID"));
    EXPECT_FALSE(fs::exists(at("kept/mine")));
    EXPECT_TRUE(fs::exists(at("kept/Messages.html")));
    EXPECT_EQ(leftOvers(), "");
}

TEST_F(MessagesCommand, makesNothingForAChatThatIsNotThere) {
    program_.refused({"--device", "phone", "messages", "export", "out.xls", "3", "99"}, 1, "hnmanager: no conversation has the CHATID 99\n");
    EXPECT_EQ(run({"messages", "export", "out.xls"}).status, 2);
    EXPECT_EQ(run({"messages", "export", "nowhere/out.xls", "3"}).status, 1);
    EXPECT_FALSE(fs::exists(at("out.xls")));
    EXPECT_EQ(leftOvers(), "");
}

// ---------------------------------------------------------------- password

TEST_F(MessagesCommand, asksForThePasswordOfTheBackupsAndPutsItBack) {
    setPassword(device::backup::sealedPassword("se cret"));
    const std::vector<std::string> list = {"--device", "phone", "messages", "list", "--search", "Grandma"};
    program_.refused(list, 1, "HNMANAGER_BACKUP_PASSWORD");
    program_.refused(list, 1, "hnmanager: the password of the device's backups is wrong\n", {"env", "HNMANAGER_BACKUP_PASSWORD=secret"});
    const Outcome right = program_.run(list, {"env", "HNMANAGER_BACKUP_PASSWORD=se cret"});
    EXPECT_EQ(right.status, 0) << right.err;
    EXPECT_NE(right.out.find("bring cake"), std::string::npos);
    EXPECT_TRUE(device::backup::isPassword("se cret", password()));
}

TEST_F(MessagesCommand, asksForThePasswordOnATerminalWithoutShowingIt) {
    setPassword(device::backup::sealedPassword("se cret"));
    const std::vector<std::string> list = {"--device", "phone", "messages", "list", "--search", "Grandma"};
    const Outcome wrong = program_.runOnTerminal(list, "Password of the device's backups: ", "guess");
    EXPECT_EQ(wrong.status, 1);
    EXPECT_NE(wrong.err.find("is wrong"), std::string::npos) << wrong.err;
    EXPECT_EQ(wrong.err.find("guess"), std::string::npos) << wrong.err;
    const Outcome right = program_.runOnTerminal(list, "Password of the device's backups: ", "se cret");
    EXPECT_EQ(right.status, 0) << right.err;
    EXPECT_NE(right.out.find("bring cake"), std::string::npos);
    EXPECT_EQ(right.err.find("se cret"), std::string::npos) << right.err;
    EXPECT_TRUE(device::backup::isPassword("se cret", password()));
}

TEST_F(MessagesCommand, noPasswordOpensAnImageThatHoldsNone) {
    setPassword({});
    for (const char *word : {"", " ", "x"})
        EXPECT_EQ(program_.run({"--device", "phone", "messages", "list"}, {"env", std::string("HNMANAGER_BACKUP_PASSWORD=") + word}).status, 1) << word;
    EXPECT_TRUE(device::PropertyList::read(at("phone/Device.plist")).flag("WillEncrypt").value_or(false));
}

// ---------------------------------------------------------------- what must stay

TEST_F(MessagesCommand, leavesTheDeviceAsItWas) {
    const std::string before = pictureOf(at("phone"));
    EXPECT_EQ(run({"messages", "list"}).status, 0);
    EXPECT_EQ(run({"messages", "export", "out.xls", "--all"}).status, 0);
    EXPECT_EQ(run({"messages", "export", "--html", "page", "--all"}).status, 0);
    EXPECT_TRUE(pictureOf(at("phone")) == before);
}

// Names, bytes and times, so that not even a file that came and went is missed: its folder would be newer.
TEST_F(MessagesCommand, noCommandTouchesABackup) {
    const fs::path backup = program_.backupOf(at("phone"), "backup");
    const auto picture = [&] {
        std::string all = pictureOf(backup);
        for (const auto &entry : fs::recursive_directory_iterator(backup))
            all += entry.path().string() + " " + std::to_string(entry.last_write_time().time_since_epoch().count()) + "\n";
        return all + std::to_string(fs::last_write_time(backup).time_since_epoch().count());
    };
    const std::string before = picture(), card = program_.file("card.vcf", "BEGIN:VCARD\nVERSION:3.0\nN:New;Nora;;;\nEND:VCARD\n");
    const struct {
        std::vector<std::string> words;
        int status;
    } commands[] = {{{"device", "info"}, 0},
                    {{"contacts", "list", "--search", "a"}, 0},
                    {{"contacts", "duplicates"}, 0},
                    {{"contacts", "export", "out.vcf", "--all"}, 0},
                    {{"contacts", "export", "out.csv", "--all"}, 0},
                    {{"contacts", "import", card}, 1},
                    {{"--yes", "contacts", "delete", "1"}, 1},
                    {{"--yes", "contacts", "merge"}, 1},
                    {{"bookmarks", "list"}, 0},
                    {{"bookmarks", "export", "out.html"}, 0},
                    {{"bookmarks", "add", "x", "http://x"}, 1},
                    {{"--yes", "bookmarks", "delete", "1"}, 1},
                    {{"messages", "list", "--rows"}, 0},
                    {{"messages", "list", "--search", "grandma"}, 0},
                    {{"messages", "export", "backup.xls", "--all"}, 0},
                    {{"messages", "export", "--html", "backup-page", "--all"}, 0},
                    {{"messages", "export", "backup/inside.xls", "99"}, 1}};
    for (const auto &command : commands) {
        std::vector<std::string> words = {"--device", "backup"};
        words.insert(words.end(), command.words.begin(), command.words.end());
        const Outcome outcome = program_.run(words);
        EXPECT_EQ(outcome.status, command.status) << testing::PrintToString(command.words) << outcome.err;
        ASSERT_TRUE(picture() == before) << testing::PrintToString(command.words);
    }
    EXPECT_EQ(run({"messages", "export", "image.xls", "--all"}).status, 0);
    EXPECT_EQ(readFile(at("backup.xls")), readFile(at("image.xls")));
    EXPECT_TRUE(fs::exists(at("backup-page/IMG_0413.HEIC.jpg")));
    EXPECT_EQ(leftOvers(), "");
}

TEST_F(MessagesCommand, namesOfStrangersStayInTheFolder) {
    const std::vector<std::string> names = {"'..'", "'../../evil'", "'/etc/passwd'", "'a;touch $(pwned)'", "'it''s \"q\"'", "CAST(x'610062' AS TEXT)",
                                            "'" + std::string(300, 'x') + ".jpg'", "'same.jpg'", "'SAME.jpg'"};
    device::sqlite::Database database(at("phone/HomeDomain/Library/SMS/sms.db"), device::sqlite::Access::readWrite);
    database.exec("INSERT INTO message (ROWID, guid, text, date) VALUES (9000, 'm', 'named', 1); INSERT INTO chat_message_join (chat_id, message_id) VALUES (3, 9000)");
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string row = std::to_string(9000 + i);
        database.exec("INSERT INTO attachment (ROWID, guid, original_guid, filename, transfer_name, mime_type) VALUES (" + row + ", 'n" + row + "', 'n" + row +
                      "', '~/Library/SMS/Attachments/n/" + row + "', " + names[i] + ", 'application/pdf'); INSERT INTO message_attachment_join VALUES (9000, " + row + ")");
        program_.file("phone/MediaDomain/Library/SMS/Attachments/n/" + row, "bytes");
    }
    const std::string before = namesInHome();
    EXPECT_EQ(run({"messages", "export", "--html", "page", "3"}).status, 0);
    std::set<std::string> made;
    for (const auto &entry : fs::recursive_directory_iterator(at("page")))
        made.insert(entry.path().lexically_relative(at("page")).string());
    EXPECT_EQ(made, (std::set<std::string>{"Messages.html", "Messagesfailed.png", "SAME (1).jpg", "a;touch $(pwned)", "ab", "attachment", "evil", "it_s _q_", "passwd", "same.jpg",
                                           std::string(196, 'x') + ".jpg"}));
    fs::remove_all(at("page"));
    EXPECT_EQ(namesInHome(), before);
}

// ---------------------------------------------------------------- hard ends

struct HardEnd {
    const char *name;
    std::vector<std::string> words;   // behind "messages", "export"
    const char *target;               // what they write
    int bytes;                        // less than that, more than the log of the run
};
class MessageExportEnd : public MessagesCommand, public testing::WithParamInterface<HardEnd> {
protected:
    // No file of the process may grow beyond `bytes`: a write there ends it at once, or fails where `isToldSo`.
    [[nodiscard]] Outcome exportWithin(int bytes, bool isToldSo) const {
        fs::remove_all(at(".local/state"));   // the log, which grows from run to run
        std::vector<std::string> words = {"--device", "backup", "--replace", "messages", "export"}, prefix = {"prlimit", "--core=0", "--fsize=" + std::to_string(bytes)};
        words.insert(words.end(), GetParam().words.begin(), GetParam().words.end());
        if (isToldSo)
            prefix.insert(prefix.begin(), {"env", "--ignore-signal=XFSZ"});
        return program_.run(words, prefix);
    }
};

TEST_P(MessageExportEnd, leavesTheOldTargetOrNoneAndTheNextRunTidiesUp) {
    (void)program_.backupOf(at("phone"), "backup");
    const fs::path target = at(GetParam().target);
    for (const bool stood : {false, true}) {
        if (stood)
            program_.file(std::string(GetParam().target) + (target.has_extension() ? "" : "/mine"), "mine");
        const std::string names = namesInHome();
        const Outcome killed = exportWithin(GetParam().bytes, false);
        EXPECT_EQ(killed.status, 128 + SIGXFSZ);
        EXPECT_NE(leftOvers(), "") << "it ended in the middle; " << killed.err;
        EXPECT_EQ(namesInHome(), names);
        const Outcome full = exportWithin(GetParam().bytes, true);
        EXPECT_EQ(full.status, 1);
        EXPECT_NE(full.err.find(target.string() + ": not written"), std::string::npos) << full.err;
        EXPECT_EQ(full.err.find("hnmanager-export-"), std::string::npos) << "only the person's places are named: " << full.err;
        EXPECT_EQ(leftOvers(), "");
        EXPECT_EQ(namesInHome(), names);
        EXPECT_EQ(readFile(target.has_extension() ? target : target / "mine"), stood ? "mine" : "");
    }
    EXPECT_EQ(exportWithin(100'000'000, true).status, 0);
    EXPECT_FALSE(fs::exists(target / "mine"));
    EXPECT_EQ(leftOvers(), "");
}

INSTANTIATE_TEST_SUITE_P(Shapes, MessageExportEnd,
                         testing::Values(HardEnd{"table", {"out.xls", "3", "4", "5", "6", "7"}, "out.xls", 1250}, HardEnd{"tableWithFiles", {"out.xls", "--all"}, "out.xls", 3000},
                                         HardEnd{"page", {"--html", "page", "3", "4"}, "page", 6000}, HardEnd{"pageWithFiles", {"--html", "page", "--all"}, "page", 6000}),
                         [](const auto &row) { return std::string(row.param.name); });

}  // namespace
