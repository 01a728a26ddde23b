#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/host/Program.h"

using testhost::Outcome;
using testhost::Program;
namespace fs = std::filesystem;

namespace {

constexpr const char *kCard = "BEGIN:VCARD\nVERSION:3.0\nN:Hopper;Grace;;;\nFN:Grace Hopper\nEND:VCARD\n";

class CommandLine : public testing::Test {
protected:
    const Program program;
};

// ---------------------------------------------------------------- words and statuses

TEST_F(CommandLine, wrongWordsEndWithTheirStatus) {
    struct Row {
        std::vector<std::string> words;
        int status;
        const char *told;
    };
    program.file("note.txt", "");
    for (const Row &row : {Row{{"notes", "list"}, 2, "--help"},
                           Row{{"contacts", "shout"}, 2, "--help"},
                           Row{{"contacts"}, 2, "subcommand is required"},
                           Row{{"tree", "--fast"}, 2, "--fast"},
                           Row{{"contacts", "show"}, 2, "KEY is required"},
                           Row{{"contacts", "show", "1", "2"}, 2, "2"},
                           Row{{"tree", "--conflict", "maybe"}, 2, "maybe"},
                           Row{{"device", "create", "new"}, 2, "--name is required"},
                           Row{{"contacts", "list", "--device", "nowhere"}, 3, "nowhere: there is no such folder"},
                           Row{{"--device", "/usr", "tree"}, 3, "/usr: is neither a device image"},
                           Row{{"contacts", "read", "none.vcf"}, 3, "none.vcf"},
                           Row{{"contacts", "import", "note.txt"}, 1, "none of .vcf, .vcard, .csv"}})
        EXPECT_EQ(program.refused(row.words, row.status, row.told).out, "") << row.told;
}

TEST_F(CommandLine, tellsVersionAndHelpWithoutTouchingTheHome) {
    const Outcome version = program.run({"contacts", "--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out, "0.1.0\n");
    const Outcome help = program.run({"contacts", "import", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("--as-is"), std::string::npos);
    EXPECT_TRUE(fs::is_empty(program.home()));
}

TEST_F(CommandLine, takesOptionsAnywhere) {
    const std::string image = program.smallImage("image");
    const std::string groups = program.run({"--json", "--device", image, "contacts", "groups"}).out;
    EXPECT_EQ(groups, "[\n  {\n    \"groupName\": \"Friends\",\n    \"ContactKey\": [\n      \"1\"\n    ]\n  }\n]\n");
    EXPECT_EQ(program.run({"contacts", "groups", "--device=" + image, "--json"}).out, groups);
    EXPECT_EQ(program.run({"contacts", "--json", "--device", image, "groups"}).out, groups);
}

TEST_F(CommandLine, aFullDiskForTheResultIsAFailure) {
    const std::string image = program.smallImage("image");
    // The shell only redirects; its words are this test's own.
    program.refused({"--device", image, "contacts", "list"}, 1, "could not be written", {"/bin/sh", "-c", "exec \"$0\" \"$@\" >/dev/full"});
}

// ---------------------------------------------------------------- devices

TEST_F(CommandLine, makesAnImageAndReplacesItOnlyWhenTold) {
    EXPECT_EQ(program.run({"device", "create", "one", "--name", "Zoë's Phone"}).status, 0);
    const auto info = program.json({"device", "info", "--device", "one"});
    EXPECT_EQ(info["name"], "Zoë's Phone");
    EXPECT_EQ(info["kind"], "image");
    EXPECT_EQ(info["totalBytes"], 64'000'000'000);
    EXPECT_EQ(info.size(), 6u);
    EXPECT_EQ(program.run({"device", "create", "one", "--name", "New"}).status, 1);
    EXPECT_EQ(program.json({"device", "info", "--device", "one"}), info);
    EXPECT_EQ(program.run({"device", "create", "one", "--name", "New", "--replace"}).status, 0);
    EXPECT_EQ(program.json({"device", "info", "--device", "one"})["name"], "New");

    program.file("papers/thesis.txt", "dear");
    EXPECT_EQ(program.run({"device", "sample", "papers", "--replace"}).status, 1);
    EXPECT_EQ(testhost::readFile(program.home() / "papers/thesis.txt"), "dear");
    EXPECT_EQ(std::distance(fs::directory_iterator(program.home() / "papers"), {}), 1);
}

TEST_F(CommandLine, theEmbeddedImageIsMadeOnceAndKeptAsThePersonLeftIt) {
    const auto first = program.json({"contacts", "list"});
    EXPECT_EQ(first["contacts"].size(), 26u);
    EXPECT_EQ(first["contacts"][0]["completeName"], "Ada Lindqvist");
    ASSERT_EQ(program.run({"contacts", "import", program.file("one.vcf", kCard)}).status, 0);
    EXPECT_EQ(program.json({"contacts", "list"})["contacts"].size(), 27u);
    EXPECT_TRUE(fs::exists(program.home() / ".local/share/hnmanager/device/Device.plist"));
}

TEST_F(CommandLine, theTreeHasTheCategoriesAsOnShow) {
    const auto tree = program.json({"tree"});
    ASSERT_EQ(tree.size(), 8u);
    EXPECT_EQ(tree[0].dump(), R"({"fileTypeName":"Photos","nibName":"","children":[)"
                              R"({"fileTypeName":"Camera Roll","nibName":"HNMphotoViewController","children":[]},)"
                              R"({"fileTypeName":"Albums","nibName":"HNMAlbumViewController","children":[]}]})");
    EXPECT_EQ(tree[3].dump(), R"({"fileTypeName":"Contacts","nibName":"HNMContactViewController","children":[]})");
}

TEST_F(CommandLine, showsDeviceCategoriesAndContactsWithoutACommand) {
    const Outcome outcome = program.run({"--device", program.smallImage("image")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.out.find("name      Test Phone\n"), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find("\nPhotos\n  Camera Roll\n  Albums\nMusic\n"), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find("\n1  Ada Lovelace  +44 20 555  ada@example.com\n"), std::string::npos) << outcome.out;
}

// ---------------------------------------------------------------- what the program keeps

TEST_F(CommandLine, keepsFoldersThatAreThePersonsAloneAndScratchIsGone) {
    ASSERT_EQ(program.run({"contacts", "list"}).status, 0);
    const auto modeOf = [&](const char *name) {
        struct stat status {};
        stat((program.home() / name).c_str(), &status);
        return status.st_mode & 0777;
    };
    EXPECT_EQ(modeOf(".cache/hnmanager/tmp"), 0700u);
    EXPECT_EQ(modeOf(".local/state/hnmanager/hnmanager.log"), 0600u);
    EXPECT_TRUE(fs::is_empty(program.home() / ".cache/hnmanager/scratch"));
}

TEST_F(CommandLine, damagedSettingsAreSetAsideAndTold) {
    program.file(".config/hnmanager/settings.json", "{\"product\": {\"Contact");
    program.refused({"contacts", "import", program.file("cards/one.vcf", kCard)}, 0, "settings.json.damaged");
    EXPECT_EQ(testhost::readFile(program.home() / ".config/hnmanager/settings.json.damaged"), "{\"product\": {\"Contact");
}

}  // namespace
