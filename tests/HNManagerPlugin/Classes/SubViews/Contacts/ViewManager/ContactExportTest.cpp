#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"
#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ContactCategory.h"
#include "tests/support/AnswerScript.h"
#include "tests/support/TempFolder.h"

namespace {

namespace fs = std::filesystem;

class ContactExport : public ContactCategory {
protected:
    ContactExport() {
        world_.setTexts(
            {{"ContactView_successExport", "%ld exported"}, {"ContactView_successExport(s)", "%ld exported (s)"}});
    }
    [[nodiscard]] NSString path(const char *name) const { return NSString((folder_ / name).string()); }
    void export_(AnswerScript &answers, const char *entry, const char *name) {
        answers.savePanel().choose({path(name)});
        answers.menu(entry);
        press("ExportButton");
    }
    static constexpr const char *kCards = "ContactView_Menu_ToVcard", *kTable = "ContactView_Menu_ToCSV";
    const TempFolder temp_;
    const fs::path folder_ = temp_.path();
};

TEST_F(ContactExport, cardsTellTheNumberAskedForTablesTheLayers) {
    openWith({"Ann", "Bob", "Cid"});
    select({0, 2});
    AnswerScript answers;
    answers.at("2 exported (s)").press("FileManager_OK");
    export_(answers, kCards, "a.vcf");
    EXPECT_EQ(RVProductConfig::valueForKey("ContactExportPathKey"), NSString(folder_.string()));
    answers.at("1 exported").press("FileManager_OK");
    export_(answers, kTable, "a.csv");
    select({1});
    answers.at("1 exported").press("FileManager_OK");
    export_(answers, kCards, "b.VCF");   // the panel's own extension, in whatever case, stays as it is
    EXPECT_EQ(device_->log.take(), "cards 2 a.vcf\ntable 2 a.csv\ncards 1 b.VCF");
}

TEST_F(ContactExport, withoutASelectionAnEmptyFileStaysAndNoWindowComes) {
    openWith({"Ann"});
    AnswerScript answers;
    export_(answers, kCards, "a.vcf");
    export_(answers, kTable, "a.csv");
    EXPECT_EQ(fs::file_size(folder_ / "a.vcf"), 0U);
    EXPECT_EQ(fs::file_size(folder_ / "a.csv"), 0U);
    EXPECT_EQ(device_->log.take(), "");
}

TEST_F(ContactExport, asksForATimedNameInTheLastFolder) {
    openWith({"Ann"});
    EXPECT_EQ(panelAsks([&] { manager_->exportTovCardFile(nullptr); }),
              "vcf /home/ann/Documents Contacts_00000000_000000");
    RVProductConfig::setValue_forKey("/last", "ContactExportPathKey");
    EXPECT_EQ(panelAsks([&] { manager_->exportToCSVFile(nullptr); }), "csv /last Contacts_00000000_000000");
}

TEST_F(ContactExport, aPlaceThatCannotBeWrittenIsToldForCardsAlone) {
    openWith({"Ann"});
    select({0});
    const std::string tooLong(300, 'x');
    AnswerScript answers;
    answers.at("HomeView_ExportPhoto_Not_Write_Disk").press("Button_Title_OK");
    export_(answers, kCards, (tooLong + ".vcf").c_str());
    EXPECT_EQ(device_->log.take(), "");
    answers.at("0 exported").press("FileManager_OK");
    export_(answers, kTable, (tooLong + ".csv").c_str());
    EXPECT_EQ(device_->log.take(), "table 1 " + tooLong + ".csv");
}

TEST_F(ContactExport, showsTheFolderOfTheFileOnRequest) {
    EventLog log;
    logWorkspaceTo(log);
    openWith({"Ann"});
    select({0});
    AnswerScript answers;
    answers.at("1 exported").press("FileManager_OpenFolder");
    export_(answers, kCards, "a.vcf");
    EXPECT_EQ(log.take(), "opens " + folder_.string());
}

TEST_F(ContactExport, aCancelledPanelChangesNothing) {
    openWith({"Ann"});
    select({0});
    AnswerScript answers;
    answers.savePanel().cancel();
    manager_->exportTovCardFile(nullptr);
    answers.savePanel().cancel();
    manager_->exportToCSVFile(nullptr);
    world_.settle();
    EXPECT_TRUE(RVProductConfig::valueForKey("ContactExportPathKey").isNil());
    EXPECT_TRUE(fs::is_empty(folder_));
}

}   // namespace
