#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include "tests/host/Program.h"

using testhost::Outcome;
using testhost::Program;
using nlohmann::ordered_json;

namespace {

constexpr const char *kTwoCards = "BEGIN:VCARD\nVERSION:3.0\nN:Hopper;Grace;;;\nFN:Grace Hopper\nTEL;type=CELL:555 1\nEND:VCARD\n"
                                  "BEGIN:VCARD\nVERSION:3.0\nN:Turing;Alan;;;\nFN:Alan Turing\nEND:VCARD\n";

std::string sample(const char *name) { return std::string(HN_SAMPLES_DIR "/vcard/") + name; }

std::string namesIn(const ordered_json &list) {
    std::string names;
    for (const auto &contact : list["contacts"])
        names += (names.empty() ? "" : ", ") + contact["completeName"].get<std::string>();
    return names;
}

// ---------------------------------------------------------------- list, show, groups

TEST(ContactsList, hasEveryFieldOfARecord) {
    const Program program;
    const auto list = program.json({"contacts", "list", "--device", program.smallImage("image")});
    ASSERT_EQ(list["contacts"].size(), 2u);
    EXPECT_EQ(list["contacts"][0].dump(),
              R"({"pKey":"1","completeName":"Ada Lovelace","first_name":"Ada","last_name":"Lovelace","middle_name":null,)"
              R"("name_title":null,"name_suffix":null,"first_name_yomi":null,"last_name_yomi":null,"middle_name_yomi":null,)"
              R"("nickname":null,"company_name":null,"department":null,"job_title":null,"birthday":null,"notes":null,)"
              R"("imagePath":null,"imageCharData":null,"image_length":0,)"
              R"("phone_numbers":[{"type":"other","phone_number":"+44 20 555"}],)"
              R"("emails":[{"type":"other","email":"ada@example.com"}],"addresses":[],"urls":[],"dates":[],"relatednames":[],"ims":[]})");
    EXPECT_EQ(list["status"], "2 items");
    EXPECT_EQ(list["found"], true);
}

TEST(ContactsList, showsControlCharactersToPeopleAsReplacements) {
    const Program program;
    const Outcome outcome = program.run({"contacts", "list", "--device", program.smallImage("image")});
    EXPECT_EQ(outcome.out, "1  Ada Lovelace  +44 20 555  ada@example.com\n"
                           "2  Bad\xEF\xBF\xBDName\n");
    EXPECT_EQ(outcome.err, "hnmanager: 2 items\n");
}

struct Search {
    const char *name, *text, *names;
    bool found;
};
class ContactsSearch : public testing::TestWithParam<Search> {};

TEST_P(ContactsSearch, leavesTheseRowsOnShow) {
    const Program program;
    const auto list = program.json({"contacts", "list", "--search", GetParam().text, "--device", program.smallImage("image")});
    EXPECT_EQ(namesIn(list), GetParam().names);
    EXPECT_EQ(list["found"], GetParam().found);
}

INSTANTIATE_TEST_SUITE_P(Rows, ContactsSearch, testing::Values(
    Search{"byNameInAnyCase", "LOVE", "Ada Lovelace", true},
    Search{"byPhoneNumber", "20 55", "Ada Lovelace", true},
    Search{"byAddress", "@example", "Ada Lovelace", true},
    Search{"blanksAloneSearchNothing", "  ", "Ada Lovelace, Bad\x1bName", true},
    Search{"withoutAHitTheOldRowsStay", "zzz", "Ada Lovelace, Bad\x1bName", false}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(ContactsShow, givesTheDetailPanelOfItsKey) {
    const Program program;
    const std::string image = program.smallImage("image");
    EXPECT_EQ(program.json({"contacts", "show", "1", "--device", image}).dump(),
              R"({"name":"Ada Lovelace","details":[{"type":"other","info":"+44 20 555"},{"type":"other","info":"ada@example.com"}]})");
    EXPECT_EQ(program.json({"contacts", "show", "2", "--device", image})["details"].dump(), R"([{"type":"Note","info":"tab\there"}])");
    const Outcome unknown = program.run({"contacts", "show", "3", "--device", image});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_EQ(unknown.err, "hnmanager: no contact has the KEY 3\n");
}

TEST(ContactsInTheCloud, areNotListedAndTheStepsAreTold) {
    const Program program;
    const std::string image = program.smallImage("image");
    std::string properties = testhost::readFile(image + "/Device.plist");
    const std::string off = "<key>CloudContacts</key>\n\t<false/>";
    ASSERT_NE(properties.find(off), std::string::npos) << properties;
    program.file("image/Device.plist", properties.replace(properties.find(off), off.size(), "<key>CloudContacts</key>\n\t<true/>"));
    const Outcome outcome = program.run({"contacts", "list", "--json", "--device", image});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(ordered_json::parse(outcome.out)["contacts"].size(), 0u);
    EXPECT_EQ(ordered_json::parse(outcome.out)["found"], true);
    EXPECT_NE(outcome.err.find("Turn Contacts off."), std::string::npos) << outcome.err;
}

// ---------------------------------------------------------------- read

TEST(ContactsRead, needsNoDeviceAndGivesTheCardsInFileOrder) {
    const Program program;
    const auto read = program.json({"contacts", "read", program.file("two.vcf", kTwoCards), "--device", "nowhere"});
    ASSERT_EQ(read["contacts"].size(), 2u);
    EXPECT_EQ(read["contacts"][0]["first_name"], "Grace");
    EXPECT_EQ(read["contacts"][0]["pKey"], nullptr);
    EXPECT_EQ(read["contacts"][1]["last_name"], "Turing");
}

TEST(ContactsRead, namesTheLineThatEndsItAcrossTheModule) {
    const Program program;
    const Outcome outcome = program.run({"contacts", "read", sample("John_Doe_IPHONE.vcf"), "--json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(ordered_json::parse(outcome.out)["fatal"]["line"], 18);
    EXPECT_NE(outcome.err.find("John_Doe_IPHONE.vcf:18: "), std::string::npos) << outcome.err;
}

TEST(ContactsRead, aFileThatIsNoTextIsEmptyAndItsLineIsTold) {
    const Program program;
    const std::string file = program.file("latin.vcf", "BEGIN:VCARD\nN:M\xFCller;;;;\nEND:VCARD\n");
    const Outcome outcome = program.run({"contacts", "read", file, "--json"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(ordered_json::parse(outcome.out).dump(), R"({"contacts":[]})");
    EXPECT_NE(outcome.err.find("latin.vcf:2: "), std::string::npos) << outcome.err;
    EXPECT_EQ(program.run({"contacts", "import", file, "--as-is"}).status, 1);
}

TEST(ContactsRead, refusesAFileAboveAGigabyteUnread) {
    const Program program;
    const std::string file = program.file("huge.vcf", "");
    ASSERT_EQ(truncate(file.c_str(), (off_t{1} << 30) + 1), 0);
    const Outcome outcome = program.run({"contacts", "read", file});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_NE(outcome.err.find("larger than 1 GiB"), std::string::npos) << outcome.err;
}

// ---------------------------------------------------------------- import

TEST(ContactsImport, addsTheCardsAndTellsCountsAndText) {
    const Program program;
    const std::string image = program.smallImage("image");
    const auto result = program.json({"contacts", "import", program.file("two.vcf", kTwoCards), "--device", image});
    EXPECT_EQ(result.dump(), R"({"succeeded":2,"failed":0,"text":"2 contacts were imported."})");
    EXPECT_EQ(namesIn(program.json({"contacts", "list", "--device", image})), "Ada Lovelace, Alan Turing, Bad\x1bName, Grace Hopper");
}

TEST(ContactsImport, takesADotVcardFileAndRemembersItsOwnFolder) {
    const Program program;
    const std::string image = program.smallImage("image");
    const Outcome outcome = program.run({"contacts", "import", program.file("in/two.VCard", kTwoCards), "--device", image});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "2 contacts were imported.\n");
    const auto kept = ordered_json::parse(testhost::readFile(program.home() / ".config/hnmanager/settings.json"));
    EXPECT_EQ(kept["product"]["ContactImportPathKey"], (program.home() / "in").string());
}

TEST(ContactsImport, aFatalLineLeavesTheDeviceUntouched) {
    const Program program;
    const std::string image = program.smallImage("image"), before = testhost::pictureOf(image + "/HomeDomain");
    const auto result = program.json({"contacts", "import", program.file("empty.vcf", ""), "--device", image}, 1);
    EXPECT_EQ(result["fatal"]["line"], 1);
    EXPECT_EQ(testhost::pictureOf(image + "/HomeDomain"), before);
}

TEST(ContactsImport, refusesABackupWithTheReason) {
    const Program program;
    const std::string backup = program.smallBackup("backup"), before = testhost::pictureOf(backup);
    EXPECT_EQ(namesIn(program.json({"contacts", "list", "--device", backup})), "Ada Lovelace, Bad\x1bName");
    const Outcome outcome = program.run({"contacts", "import", program.file("two.vcf", kTwoCards), "--device", backup});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.err.find("backup"), std::string::npos) << outcome.err;
    EXPECT_EQ(testhost::pictureOf(backup), before);
}

TEST(ContactsImport, refusesASecondWriter) {
    const Program program;
    const std::string image = program.smallImage("image");
    const int lock = open((image + "/.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(flock(lock, LOCK_EX | LOCK_NB), 0);
    const Outcome outcome = program.run({"contacts", "import", program.file("two.vcf", kTwoCards), "--device", image});
    close(lock);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_NE(outcome.err.find("being written by another program"), std::string::npos) << outcome.err;
    EXPECT_EQ(namesIn(program.json({"contacts", "list", "--device", image})), "Ada Lovelace, Bad\x1bName");
}

TEST(ContactsList, anAddressBookThatIsNoneCannotBeOpened) {
    const Program program;
    const std::string image = program.smallImage("image");
    program.file("image/HomeDomain/Library/AddressBook/AddressBook.sqlitedb", std::string(4096, 'x'));
    const Outcome outcome = program.run({"contacts", "list", "--device", image});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_NE(outcome.err.find("AddressBook.sqlitedb"), std::string::npos) << outcome.err;
}

}  // namespace
