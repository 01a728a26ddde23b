#include <gtest/gtest.h>

#include "tests/host/Program.h"

using testhost::Outcome;
using testhost::Program;
using nlohmann::ordered_json;

namespace {

constexpr const char *kTwins = "BEGIN:VCARD\r\nN:Hopper;Grace;;;\r\nTEL;type=CELL:555 1\r\nEMAIL;type=HOME:g@example.com\r\nNOTE:a\\nb\r\nEND:VCARD\r\n"
                               "BEGIN:VCARD\r\nN:Hopper;Grace;;;\r\nTEL;type=WORK:555 2\r\nEMAIL;type=HOME:g@example.com\r\nNOTE:a\\nb\r\nEND:VCARD\r\n";

std::string imageWithTwins(const Program &program) {
    const std::string image = program.emptyImage("twins");
    EXPECT_EQ(program.run({"--device", image, "contacts", "import", program.file("twins.vcf", kTwins)}).status, 0);
    return image;
}

// What an export has to carry, one contact a line.
std::string told(const ordered_json &list) {
    std::string text;
    for (const auto &contact : list["contacts"]) {
        text += contact["first_name"].get<std::string>() + " " + contact["last_name"].get<std::string>();
        for (const auto &phone : contact["phone_numbers"])
            text += " " + phone["phone_number"].get<std::string>();
        for (const auto &email : contact["emails"])
            text += " " + email["email"].get<std::string>();
        text += "\n";
    }
    return text;
}

}  // namespace

class ContactsExport : public testing::TestWithParam<const char *> {};

TEST_P(ContactsExport, comesBackIntoAnEmptyImage) {
    const Program program;
    const std::string image = imageWithTwins(program), file = std::string("out.") + GetParam();
    EXPECT_EQ(program.json({"--device", image, "contacts", "export", file, "--all"}).dump(),
              R"({"count":2,"text":"2 contacts were exported."})");
    const std::string other = program.emptyImage("other");
    EXPECT_EQ(program.json({"--device", other, "contacts", "import", file}).dump(),
              R"({"succeeded":2,"failed":0,"text":"2 contacts were imported."})");
    EXPECT_EQ(told(program.json({"--device", other, "contacts", "list"})),
              "Grace Hopper 555 1 g@example.com\nGrace Hopper 555 2 g@example.com\n");
}

INSTANTIATE_TEST_SUITE_P(Format, ContactsExport, testing::Values("vcf", "csv"), [](const auto &row) { return std::string(row.param); });

TEST(ContactsExportTarget, thatExistsIsKeptUnlessToldOtherwise) {
    const Program program;
    const std::string image = imageWithTwins(program), file = program.file("kept.vcf", "mine");
    program.refused({"--device", image, "contacts", "export", file, "1"}, 1, "exists already");
    EXPECT_EQ(testhost::readFile(program.home() / "kept.vcf"), "mine");
    EXPECT_EQ(program.run({"--device", image, "--replace", "contacts", "export", file, "1"}).status, 0);
    EXPECT_TRUE(testhost::readFile(program.home() / "kept.vcf").starts_with("BEGIN:VCARD\r\n"));
    EXPECT_EQ(program.run({"--device", image, "contacts", "export", "new.vcf", "1", "99"}).status, 1);
    EXPECT_FALSE(std::filesystem::exists(program.home() / "new.vcf"));   // one KEY without a row: nothing is made
}

TEST_P(ContactsExport, thatFailsLeavesTheOldFileOrNone) {
    const Program program;
    EXPECT_EQ(program.run({"device", "sample", "image"}).status, 0);
    const std::vector<std::string> smallDisk{"env", "--ignore-signal=XFSZ", "prlimit", "--fsize=4096"};
    const std::string fresh = std::string("new.") + GetParam(), kept = program.file(std::string("kept.") + GetParam(), "mine");
    program.refused({"--device", "image", "contacts", "export", fresh, "--all"}, 1, "not written", smallDisk);
    EXPECT_FALSE(std::filesystem::exists(program.home() / fresh));
    EXPECT_EQ(program.run({"--device", "image", "--replace", "contacts", "export", kept, "--all"}, smallDisk).status, 1);
    EXPECT_EQ(testhost::readFile(kept), "mine");
    EXPECT_EQ(program.run({"--device", "image", "contacts", "export", "nowhere/" + fresh, "--all"}).status, 1);
}

// Each asks first.
TEST(ContactsChange, mergesTwinsAndDeletesTheRowsNamed) {
    const Program program;
    const std::string image = imageWithTwins(program);
    const auto change = [&](std::vector<std::string> words, int status = 0) {
        words.insert(words.begin(), {"--device", image, "--yes", "contacts"});
        return program.json(words, status);
    };
    const auto list = [&] { return told(program.json({"--device", image, "contacts", "list"})); };
    EXPECT_EQ(program.json({"--device", image, "contacts", "add", "--first", "Alan", "--last", "Turing"})["saved"], true);
    const std::string all = list();
    EXPECT_EQ(program.json({"--device", image, "contacts", "duplicates"})["groups"].size(), 1u);
    program.refused({"--device", image, "contacts", "merge"}, 1, "");
    program.refused({"--device", image, "contacts", "delete", "1"}, 1, "");
    (void)change({"delete", "1", "77"}, 1);
    EXPECT_EQ(list(), all);
    EXPECT_EQ(change({"merge"})["merged"].size(), 1u);
    EXPECT_EQ(list(), "Alan Turing\nGrace Hopper 555 2 555 1 g@example.com\n");
    const Outcome none = program.refused({"--device", image, "--yes", "--json", "contacts", "merge"}, 0, "hnmanager: there are no duplicate contacts\n");
    EXPECT_EQ(none.out, "{\n  \"merged\": []\n}\n");
    EXPECT_EQ(change({"delete", "2"})["succeeded"], 1);
    EXPECT_EQ(list(), "Alan Turing\n");
}

TEST(ContactsEditor, addsAndEdits) {
    const Program program;
    const std::string image = program.emptyImage("editor");
    EXPECT_EQ(program.json({"--device", image, "contacts", "add", "--first", "Neu", "--last", "Kontakt", "--phone", "1", "--phone", "2",
                            "--email", "n@example.com"})
                  .dump(),
              R"({"saved":true})");
    EXPECT_EQ(told(program.json({"--device", image, "contacts", "list"})), "Neu Kontakt 1 2 n@example.com\n");
    EXPECT_EQ(program.json({"--device", image, "contacts", "edit", "1", "--first", "Alt"})["saved"], true);
    EXPECT_EQ(told(program.json({"--device", image, "contacts", "list"})), "Alt Kontakt 1 2 n@example.com\n");
    program.refused({"--device", image, "contacts", "add"}, 1, "hnmanager: nothing was saved: no text was given\n");
    EXPECT_EQ(program.run({"--device", image, "contacts", "add", "--phone", "1", "--phone", "2", "--phone", "3"}).status, 2);
    EXPECT_EQ(program.run({"--device", image, "contacts", "add", "--first", "X", "--group", "Nobody"}).status, 1);
    EXPECT_EQ(program.json({"--device", image, "contacts", "list"})["contacts"].size(), 1u);
}
