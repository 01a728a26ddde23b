#include "host/services/ExportPlaces.h"

#include <gtest/gtest.h>

#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"
#include "host/services/PrivateTarget.h"
#include "tests/host/Program.h"
#include "tests/support/AnswerScript.h"
#include "tests/support/TestWorld.h"
#include "toolkit/services/SystemCommand.h"
#include "toolkit/views/NSSavePanel.h"

namespace fs = std::filesystem;
using host::ExportPlaces;
using host::PrivateTarget;
using testhost::readFile;

namespace {

class ExportPlacesTest : public testing::Test {
protected:
    ExportPlacesTest() {
        ExportPlaces::install([this](const std::string &text) { warnings_ += text + "\n"; });
        fs::create_directory(folder_.path() / "my files");
    }
    ~ExportPlacesTest() override {
        ExportPlaces::remove();
        RVProductConfig::install(nullptr);
    }
    fs::path choose(const char *type, const fs::path &path, bool replaces = false) {
        AnswerScript answers;
        answers.savePanel().choose({NSString(path.string())}, replaces);
        const auto panel = NSSavePanel::savePanel();
        panel->allowedFileTypes = {type};
        panel->runModal();
        return panel->URL().str();
    }
    [[nodiscard]] std::string names(const fs::path &folder) const {
        std::string all;
        for (const auto &entry : fs::recursive_directory_iterator(folder))
            all += entry.path().lexically_relative(folder).string() + "\n";
        return all;
    }

    TestWorld world_;
    testhost::TempFolder folder_;
    std::string warnings_;
};

TEST_F(ExportPlacesTest, othersThanMessagesAreWrittenWhereThePersonSaid) {
    for (const char *type : {"vcf", "csv", "html"}) {
        const fs::path wanted = folder_.path() / "my files" / (std::string("a.") + type);
        EXPECT_EQ(choose(type, wanted), wanted);
    }
    EXPECT_NE(choose("xls", folder_.path() / "a.xls"), folder_.path() / "a.xls");
    EXPECT_NE(choose("", folder_.path() / "page"), folder_.path() / "page");
}

TEST_F(ExportPlacesTest, aPrivatePlaceBearsThePersonsName) {
    const fs::path wanted = folder_.path() / "my files/a.xls", given = choose("xls", wanted);
    EXPECT_EQ(ExportPlaces::forPeople(NSString(given.string() + ": no room")), NSString(wanted.string() + ": no room"));
}

TEST_F(ExportPlacesTest, aTableIsMovedFromItsPrivatePlaceWithWhatLiesBesideIt) {
    const fs::path wanted = folder_.path() / "my files/a'b.xls", given = choose("xls", wanted);
    EXPECT_TRUE(SystemCommand::isPlain(NSString(given.string()))) << given;
    writeFile(wanted.parent_path() / "message attachment/1/old", "old");
    writeFile(given, "table");
    writeFile(given.parent_path() / "message attachment/1/new", "new");
    RVProductConfig::setValue_forKey(NSString(given.parent_path().string()), "MessageExportPathKey");
    ExportPlaces::remove();
    EXPECT_EQ(readFile(wanted), "table");
    EXPECT_EQ(readFile(wanted.parent_path() / "message attachment/1/old"), "old");
    EXPECT_EQ(readFile(wanted.parent_path() / "message attachment/1/new"), "new");
    EXPECT_EQ(RVProductConfig::valueForKey("MessageExportPathKey"), NSString(wanted.parent_path().string()));
    EXPECT_FALSE(fs::exists(given.parent_path())) << "the link is gone";
    EXPECT_EQ(warnings_, "");
}

TEST_F(ExportPlacesTest, theFolderThatAFlowOpensIsThePersons) {
    struct Opened : WorkspaceService {
        std::string paths;
        bool openFile(const NSString &path) override {
            paths += path.str() + "\n";
            return true;
        }
        bool openURL(const NSString &) override { return false; }
    };
    const auto opened = std::make_shared<Opened>();
    const auto opener = ExportPlaces::opener(opened);
    const fs::path wanted = folder_.path() / "it's", given = choose("", wanted);
    writeFile(given / "Messages.html", "page");
    opener->openFile(NSString(given.string()));
    EXPECT_EQ(opened->paths, wanted.string() + "\n");
    EXPECT_EQ(readFile(wanted / "Messages.html"), "page");
}

TEST_F(ExportPlacesTest, whatWasCancelledLeavesTheOldOne) {
    const fs::path wanted = folder_.path() / "my files/a.xls";
    writeFile(wanted, "old");
    writeFile(choose("xls", wanted, true), "");
    ExportPlaces::remove();
    EXPECT_EQ(readFile(wanted), "old");
    EXPECT_EQ(names(folder_.path()), "my files\nmy files/a.xls\n");
}

TEST(PrivateTargetTest, isTheTargetItselfWhereNoFolderCanBeMade) {
    PrivateTarget target("/proc/nowhere/a.xls", "Messages.xls");
    EXPECT_FALSE(target.isPrivate());
    EXPECT_EQ(target.path(), "/proc/nowhere/a.xls");
    EXPECT_EQ(target.moveIntoPlace(false), "");
}

TEST(PrivateTargetTest, replacesAFolderOnlyWhenTold) {
    const testhost::TempFolder folder;
    const fs::path wanted = folder.path() / "page";
    writeFile(wanted / "mine", "mine");
    PrivateTarget target(wanted, "Messages");
    fs::create_directory(target.path());
    EXPECT_EQ(target.moveIntoPlace(false), wanted.string() + ": exists already");
    EXPECT_TRUE(fs::exists(wanted / "mine"));
    EXPECT_EQ(target.moveIntoPlace(true), "");
    EXPECT_FALSE(fs::exists(wanted / "mine"));
}

}  // namespace
