// Real files of other programs, through the program into an empty image and out of it again.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/host/Program.h"
#include "tests/support/Cases.h"

using nlohmann::ordered_json;
using testhost::Program;

namespace {

// A file, the number of its contacts, and a pointer into their list and its text a line.
class ForeignFile : public testing::TestWithParam<Case> {};

TEST_P(ForeignFile, comesInWithWhatItSays) {
    const Program program;
    const auto &parts = GetParam().parts;
    const std::string image = program.emptyImage("image");
    program.refused({"--device", image, "contacts", "import", HN_SAMPLES_DIR "/" + parts[0]}, 0, "");
    const ordered_json contacts = program.json({"--device", image, "contacts", "list"})["contacts"];
    EXPECT_EQ(std::to_string(contacts.size()), parts[1]);
    std::istringstream fields(parts[2]);
    for (std::string place, text; fields >> place && std::getline(fields >> std::ws, text);) {
        const ordered_json::json_pointer pointer(place);
        EXPECT_EQ(contacts.contains(pointer) ? contacts.at(pointer).dump() : "not there", '"' + text + '"') << place;
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, ForeignFile, testing::ValuesIn(casesOf("cases/foreignFiles.txt", 3)), nameOfCase);

// ---------------------------------------------------------------- the way round, and what is said

constexpr const char *kForeign =
    "BEGIN:VCARD\nVERSION:4.0\nFN:Ada Lovelace\nTEL:+44 20 555\nROLE:Mathematician\nTITLE:Countess\nEND:VCARD\n";

TEST(ForeignImport, isRefusedAsItIsAndByRead) {
    const Program program;
    const std::string image = program.emptyImage("image"),
                      file = program.file("a.vcf", "BEGIN:VCARD\nORG:Acme\nEND:VCARD\n");
    EXPECT_EQ(program.json({"--device", image, "contacts", "import", file, "--as-is"}, 1)["fatal"]["line"], 2);
    EXPECT_EQ(program.json({"contacts", "read", file}, 1)["fatal"]["line"], 2);
    EXPECT_EQ(program.json({"--device", image, "contacts", "import", file})["succeeded"], 1);
}

TEST(ForeignImport, tellsWhatItLeavesBehindAndKeepsTheFilesFolder) {
    const Program program;
    const std::string image = program.emptyImage("image");
    program.refused({"--device", image, "contacts", "import", program.file("in/ada.vcf", kForeign)}, 0,
                    "ada.vcf:1: card 1 \"Ada Lovelace\" leaves behind: ROLE \"Mathematician\"\n");
    const auto kept = ordered_json::parse(testhost::readFile(program.home() / ".config/hnmanager/settings.json"));
    EXPECT_EQ(kept["product"]["ContactImportPathKey"], (program.home() / "in").string());
    for (const auto &entry : std::filesystem::recursive_directory_iterator(program.home() / ".cache"))
        EXPECT_NE(entry.path().filename(), "ada.vcf");   // no private copy is left
}

TEST(ForeignImport, tellsHowManyNewContactsRepeatOne) {
    const Program program;
    const std::string image = program.emptyImage("image"), file = program.file("ada.vcf", kForeign);
    const std::string said = "1 of the 1 new contacts repeats one that was there";
    EXPECT_EQ(program.run({"--device", image, "contacts", "import", file}).err.find(said), std::string::npos);
    program.refused({"--device", image, "contacts", "import", file}, 0, said);
}

// The bytes of a file and what is said of it.
class BrokenFile : public testing::TestWithParam<Case> {};

TEST_P(BrokenFile, isRefusedWithLineAndReasonAndChangesNothing) {
    const Program program;
    const std::string &bytes = GetParam().parts[0], &said = GetParam().parts[1];
    const std::string image = program.smallImage("image"), before = testhost::pictureOf(image + "/HomeDomain");
    program.refused({"--device", image, "contacts", "import", program.file(said.substr(0, said.find(':')), bytes)}, 1,
                    said);
    EXPECT_EQ(testhost::pictureOf(image + "/HomeDomain"), before);
}

INSTANTIATE_TEST_SUITE_P(Samples, BrokenFile, testing::ValuesIn(casesOf("cases/brokenFiles.txt")), nameOfCase);

}   // namespace
