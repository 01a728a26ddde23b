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

TEST(ContactsList, aSearchLeavesItsRowsOnShow) {
    const struct {
        const char *text, *names;
        bool found;
    } kSearches[] = {{"LOVE", "Ada Lovelace", true}, {"20 55", "Ada Lovelace", true}, {"@example", "Ada Lovelace", true},
                     {"  ", "Ada Lovelace, Bad\x1bName", true}, {"zzz", "Ada Lovelace, Bad\x1bName", false}};
    const Program program;
    const std::string image = program.smallImage("image");
    for (const auto &[text, names, found] : kSearches) {
        const auto list = program.json({"contacts", "list", "--search", text, "--device", image});
        EXPECT_EQ(namesIn(list), names) << text;
        EXPECT_EQ(list["found"], found) << text;
    }
}

TEST(ContactsShow, givesTheDetailPanelOfItsKey) {
    const Program program;
    const std::string image = program.smallImage("image");
    EXPECT_EQ(program.json({"contacts", "show", "1", "--device", image}).dump(),
              R"({"name":"Ada Lovelace","details":[{"type":"other","info":"+44 20 555"},{"type":"other","info":"ada@example.com"}]})");
    EXPECT_EQ(program.json({"contacts", "show", "2", "--device", image})["details"].dump(), R"([{"type":"Note","info":"tab\there"}])");
    program.refused({"contacts", "show", "3", "--device", image}, 1, "hnmanager: no contact has the KEY 3\n");
}

TEST(ContactsInTheCloud, areNotListedAndTheStepsAreTold) {
    const Program program;
    const std::string image = program.smallImage("image");
    std::string properties = testhost::readFile(image + "/Device.plist");
    const std::string off = "<key>CloudContacts</key>\n\t<false/>";
    ASSERT_NE(properties.find(off), std::string::npos) << properties;
    program.file("image/Device.plist", properties.replace(properties.find(off), off.size(), "<key>CloudContacts</key>\n\t<true/>"));
    const Outcome outcome = program.refused({"contacts", "list", "--json", "--device", image}, 1, "Turn Contacts off.");
    EXPECT_EQ(ordered_json::parse(outcome.out)["contacts"].size(), 0u);
    EXPECT_EQ(ordered_json::parse(outcome.out)["found"], true);
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
    const Outcome outcome = program.refused({"contacts", "read", HN_SAMPLES_DIR "/vcard/John_Doe_IPHONE.vcf", "--json"}, 1, "John_Doe_IPHONE.vcf:18: ");
    EXPECT_EQ(ordered_json::parse(outcome.out)["fatal"]["line"], 18);
}

TEST(ContactsRead, aFileThatIsNoTextIsEmptyAndItsLineIsTold) {
    const Program program;
    const std::string file = program.file("latin.vcf", "BEGIN:VCARD\nN:M\xFCller;;;;\nEND:VCARD\n");
    const Outcome outcome = program.refused({"contacts", "read", file, "--json"}, 0, "latin.vcf:2: ");
    EXPECT_EQ(ordered_json::parse(outcome.out).dump(), R"({"contacts":[]})");
    EXPECT_EQ(program.run({"contacts", "import", file, "--as-is"}).status, 1);
}

TEST(ContactsRead, refusesAFileAboveAGigabyteUnread) {
    const Program program;
    const std::string file = program.file("huge.vcf", "");
    ASSERT_EQ(truncate(file.c_str(), (off_t{1} << 30) + 1), 0);
    program.refused({"contacts", "read", file}, 3, "larger than 1 GiB");
}

// ---------------------------------------------------------------- import

TEST(ContactsImport, addsTheCardsOfADotVcardFileAndRemembersItsFolder) {
    const Program program;
    const std::string image = program.smallImage("image");
    const auto result = program.json({"contacts", "import", program.file("in/two.VCard", kTwoCards), "--device", image});
    EXPECT_EQ(result.dump(), R"({"succeeded":2,"failed":0,"text":"2 contacts were imported."})");
    EXPECT_EQ(namesIn(program.json({"contacts", "list", "--device", image})), "Ada Lovelace, Alan Turing, Bad\x1bName, Grace Hopper");
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
    program.refused({"contacts", "import", program.file("two.vcf", kTwoCards), "--device", backup}, 1, "backup");
    EXPECT_EQ(testhost::pictureOf(backup), before);
}

TEST(ContactsImport, refusesASecondWriter) {
    const Program program;
    const std::string image = program.smallImage("image");
    const int lock = open((image + "/.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(flock(lock, LOCK_EX | LOCK_NB), 0);
    program.refused({"contacts", "import", program.file("two.vcf", kTwoCards), "--device", image}, 3, "being written by another program");
    close(lock);
    EXPECT_EQ(namesIn(program.json({"contacts", "list", "--device", image})), "Ada Lovelace, Bad\x1bName");
}

TEST(ContactsList, anAddressBookThatIsNoneCannotBeOpened) {
    const Program program;
    const std::string image = program.smallImage("image");
    program.file("image/HomeDomain/Library/AddressBook/AddressBook.sqlitedb", std::string(4096, 'x'));
    program.refused({"contacts", "list", "--device", image}, 3, "AddressBook.sqlitedb");
}

}  // namespace
