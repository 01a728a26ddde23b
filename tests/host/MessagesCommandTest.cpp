// messages list and export, end to end, on the sample device and on a backup folder made of it.
#include <gtest/gtest.h>

#include "device/backup/BackupPassword.h"
#include "device/plist/PropertyList.h"
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
            if (entry.path().filename().string().starts_with("export-"))
                all += entry.path().string() + "\n";
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
    const Outcome outcome = run({"messages", "export", "out.xls", "3", "99"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "hnmanager: no conversation has the CHATID 99\n");
    EXPECT_EQ(run({"messages", "export", "out.xls"}).status, 2);
    EXPECT_EQ(run({"messages", "export", "nowhere/out.xls", "3"}).status, 1);
    EXPECT_FALSE(fs::exists(at("out.xls")));
    EXPECT_EQ(leftOvers(), "");
}

TEST_F(MessagesCommand, asksForThePasswordOfTheBackupsAndPutsItBack) {
    auto properties = device::PropertyList::read(at("phone/Device.plist"));
    properties.setFlag("WillEncrypt", true);
    properties.setData("BackupPassword", device::backup::sealedPassword("se cret"));
    program_.file("phone/Device.plist", properties.bytes());
    const Outcome none = run({"messages", "list"});
    EXPECT_EQ(none.status, 1);
    EXPECT_NE(none.err.find("HNMANAGER_BACKUP_PASSWORD"), std::string::npos) << none.err;
    const std::vector<std::string> list = {"--device", "phone", "messages", "list", "--search", "Grandma"};
    const Outcome wrong = program_.run(list, {"env", "HNMANAGER_BACKUP_PASSWORD=secret"});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_EQ(wrong.err, "hnmanager: the password of the device's backups is wrong\n");
    const Outcome right = program_.run(list, {"env", "HNMANAGER_BACKUP_PASSWORD=se cret"});
    EXPECT_EQ(right.status, 0) << right.err;
    EXPECT_NE(right.out.find("bring cake"), std::string::npos);
    EXPECT_TRUE(device::backup::isPassword("se cret", device::PropertyList::read(at("phone/Device.plist")).data("BackupPassword").value_or("")));
}

TEST_F(MessagesCommand, leavesTheDeviceAsItWas) {
    const std::string before = pictureOf(at("phone"));
    EXPECT_EQ(run({"messages", "list"}).status, 0);
    EXPECT_EQ(run({"messages", "export", "out.xls", "--all"}).status, 0);
    EXPECT_EQ(run({"messages", "export", "--html", "page", "--all"}).status, 0);
    EXPECT_TRUE(pictureOf(at("phone")) == before);
}

}  // namespace
