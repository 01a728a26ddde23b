#include "tests/support/TempFolder.h"
#include "tests/toolkit/views/ViewsWorld.h"
#include "toolkit/views/SetAsideFile.h"

namespace fs = std::filesystem;

namespace {

class Panels : public testing::Test {
protected:
    Panels() {
        fs::create_directories(folder.path() / "sub");
        write("old.vcf", "old");
    }
    void write(const std::string &name, const std::string &text) const { writeFile(folder.path() / name, text); }
    [[nodiscard]] NSString path(const std::string &name) const { return NSString((folder.path() / name).string()); }
    [[nodiscard]] std::size_t files() const { return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.path()), {})); }
    TempFolder folder;
    ViewsWorld world;
};

TEST_F(Panels, openOnlyWhatIsWanted) {
    write("a.csv", "");
    write("b.VCF", "");
    struct Row {
        std::vector<std::string> names;
        bool many, folders, taken;
    };
    const Row rows[] = {{{"old.vcf"}, false, false, true},          {{"b.VCF"}, false, false, true},
                        {{"a.csv"}, false, false, false},           {{"old.vcf", "b.VCF"}, false, false, false},
                        {{"old.vcf", "b.VCF"}, true, false, true},  {{"sub"}, false, false, false},
                        {{"sub"}, false, true, true},               {{"missing.vcf"}, false, false, false},
                        {{}, true, true, false}};
    for (const Row &row : rows) {
        const auto panel = NSOpenPanel::openPanel();
        panel->allowedFileTypes = {"vcf"};
        panel->allowsMultipleSelection = row.many;
        panel->canChooseDirectories = row.folders;
        std::vector<NSString> paths;
        for (const std::string &name : row.names)
            paths.push_back(path(name));
        world.presenter->answers.push_back([&] {
            EXPECT_EQ(panel->choose(paths), row.taken) << "row " << &row - rows;
            panel->cancel();   // nothing any more where the choice was taken
        });
        EXPECT_EQ(panel->runModal(), row.taken ? kPanelOK : kPanelCancel);
        EXPECT_EQ(panel->URLs().size(), row.taken ? row.names.size() : 0u);
    }
}

TEST_F(Panels, aSavePanelCompletesTheNameAndAsksBeforeReplacing) {
    const auto panel = NSSavePanel::savePanel();
    panel->allowedFileTypes = {"vcf"};
    world.presenter->answers.push_back([&] {
        EXPECT_FALSE(panel->choose({path("old")}));
        EXPECT_TRUE(panel->refusal().containsString("exists already"));
        EXPECT_FALSE(panel->choose({path("nowhere/new")}));
        EXPECT_TRUE(panel->choose({path("new")}));
    });
    EXPECT_EQ(panel->runModal(), kPanelOK);
    EXPECT_EQ(panel->URL(), path("new.vcf"));
}

TEST_F(Panels, anyOtherWayOutOfAPanelIsCancel) {
    const std::function<void(NSSavePanel &)> ways[] = {
        [](NSSavePanel &panel) { panel.performClose(); }, [](NSSavePanel &panel) { panel.perform("cancel:", {Value()}); },
        [](NSSavePanel &) { NSApp()->stopModal(); }, [](NSSavePanel &) { NSApp()->stopModalWithCode(kPanelOK); },
        [](NSSavePanel &) {}};
    for (const auto &way : ways) {
        const auto panel = NSSavePanel::savePanel();
        world.presenter->answers.push_back([&] { way(*panel); });
        EXPECT_EQ(panel->runModal(), kPanelCancel);
        EXPECT_TRUE(panel->URL().isNil());
        EXPECT_FALSE(panel->isVisible());
    }
}

TEST_F(Panels, aReplacedFileComesBackUnlessAWholeNewOneStands) {
    struct Row {
        const char *name;
        bool writes, failed, whole;
        const char *left;
    };
    for (const Row &row : {Row{"whole", true, false, true, "new"}, Row{"writerFailed", true, true, true, "old"},
                           Row{"cancelled", true, false, false, "old"}, Row{"nothingWritten", false, false, true, "old"}}) {
        write("old.vcf", "old");
        const auto panel = NSSavePanel::savePanel();
        world.presenter->answers.push_back([&] { EXPECT_TRUE(panel->choose({path("old.vcf")}, true)); });
        EXPECT_EQ(panel->runModal(), kPanelOK);
        EXPECT_FALSE(fs::exists(path("old.vcf").str())) << row.name;   // moved aside before the path is given
        if (row.writes)
            write("old.vcf", "new");
        std::string heard;
        SetAsideFile::setFailureListener([&heard](const NSString &file) { heard = file.str(); });
        if (row.failed)
            SetAsideFile::failed(path("old.vcf"));
        SetAsideFile::setFailureListener({});
        EXPECT_EQ(heard, row.failed ? path("old.vcf").str() : "") << row.name;
        EXPECT_TRUE(SetAsideFile::settle(path("old.vcf"), row.whole));
        EXPECT_EQ(readFile(path("old.vcf").str()), row.left) << row.name;
        EXPECT_EQ(files(), 2u) << row.name;   // the file and the folder: nothing is left aside
    }
}

}  // namespace
