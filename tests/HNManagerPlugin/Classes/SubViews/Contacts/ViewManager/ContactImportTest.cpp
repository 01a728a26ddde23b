#include "HNManagerPlugin/HNManagerPrincipalClass.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RStrategyActionEventRouter.h"
#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"
#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ContactCategory.h"
#include "tests/support/AnswerScript.h"
#include "tests/support/TempFolder.h"

namespace {

constexpr const char *kSuccess = "ContactView_importSuccess";

class NoRoom : public StrategyGates {
public:
    bool actionRequestDeviceSize(std::int64_t) override { return false; }
};

class ContactImport : public ContactCategory {
protected:
    ContactImport() {
        world_.setTexts({{"ContactView_importing", "%ld of %ld"},
                         {"ContactView_importSuccess(s)", "%ld came"},
                         {"ContactView_importFailed", "%ld failed"},
                         {"ContactView_importFailed(s)", "%ld failed (s)"}});
        make<HNManagerPrincipalClass>()->installGALogHook();
        world_.logUsageTo(usage_);
    }
    // Presses the button and chooses a file with these bytes.
    void import(const std::string &name, const std::string &bytes, AnswerScript &answers) {
        writeFile(folder_.path() / name, bytes);
        answers.openPanel().choose({(folder_.path() / name).string()});
        press("ImportButton");
    }
    static std::string cards(const std::vector<std::string> &lastNames) {
        std::string text;
        for (const std::string &name : lastNames)
            text += "BEGIN:VCARD\r\nN:" + name + ";;;;\r\nEND:VCARD\r\n";
        return text;
    }

    EventLog usage_;
    const TempFolder folder_;
};

TEST_F(ContactImport, addsTheCardsAndReadsAnew) {
    openWith({"Ann"});
    EventLog log;
    AnswerScript answers(&log);
    answers.at("2 came").press("MessageDialog_Ok");
    import("book.vcf", cards({"Bob", "Cid"}), answers);
    EXPECT_EQ(log.take(), "open panel\n"
                          "button: FileManager_Cancel 5\nmain: ContactView_waitImport\n"
                          "asks ContactView_ImportWindowTitle|ContactView_waitImport [FileManager_Cancel]\n"
                          "main: 1 of 2\nmain: 2 of 2\nbutton: MessageDialog_Ok 15\nmain: 2 came\n"
                          "presses MessageDialog_Ok");
    EXPECT_EQ(device_->log.take(), "add 2\nread");
    EXPECT_EQ(usage_.take(), "Manage/Contacts_Import\nManage/Contacts_ImportFormat:Card");
    EXPECT_EQ(model_->globalArray->count(), 3U);
    EXPECT_EQ(RVProductConfig::valueForKey("ContactImportPathKey"), NSString(folder_.path().string()));
}

TEST_F(ContactImport, aCardFileInAFolderNamedCsvIsReportedAsCsv) {
    openWith({});
    AnswerScript answers;
    answers.at(kSuccess).press("MessageDialog_Ok");
    import("csv/book.VCF", cards({"Bob"}), answers);
    EXPECT_EQ(usage_.take(), "Manage/Contacts_Import\nManage/Contacts_ImportFormat:CSV");
    EXPECT_EQ(model_->globalArray->count(), 1U);
}

TEST_F(ContactImport, startsInTheFolderOfTheLastOne) {
    openWith({});
    EXPECT_EQ(panelAsks([&] { click("ImportButton"); }), "csv vcf /home/ann/Documents");
    RVProductConfig::setValue_forKey("/last", "ContactImportPathKey");
    EXPECT_EQ(panelAsks([&] { click("ImportButton"); }), "csv vcf /last");
    EXPECT_EQ(usage_.take(), "Manage/Contacts_Import\nManage/Contacts_Import");
}

struct Result {
    std::vector<std::string> names;
    const char *text;
};

TEST_F(ContactImport, theResultTellsTheFailuresAloneWhereThereAreAny) {
    openWith({});
    device_->refused = {"x", "y"};
    const Result kResults[] = {{{"Bob"}, kSuccess},
                               {{"Bob", "Cid", "Dan"}, "3 came"},
                               {{"x"}, "1 failed"},
                               {{"Bob", "x", "Cid"}, "1 failed"},
                               {{"Bob", "x", "y"}, "2 failed (s)"}};
    for (const Result &result : kResults) {
        AnswerScript answers;
        answers.at(result.text).press("MessageDialog_Ok");
        import("book.vcf", cards(result.names), answers);
    }
}

TEST_F(ContactImport, showsNoWindowWhereThereIsNothingToImport) {
    openWith({});
    AnswerScript answers;
    import("other.vcf", "FN:nobody", answers);   // no card at all
    import("latin.vcf", cards({"M\xFCller"}), answers);
    EXPECT_EQ(device_->log.take(), "");
    EXPECT_TRUE(world_.world().takeFailures().empty());
}

TEST_F(ContactImport, aFatalFileEndsTheActionAndIsToldToTheHost) {
    openWith({"Ann"});
    AnswerScript answers;
    import("bad.vcf", cards({"Bob"}) + "BEGIN:VCARD\nORG:Acme\nEND:VCARD\n", answers);
    EXPECT_EQ(device_->log.take(), "");
    ASSERT_EQ(world_.world().takeFailures().size(), 1U);
    EXPECT_THROW(std::rethrow_exception(world_.world().lastFailure()), FatalParseFailure);
    EXPECT_EQ(rows(), "Ann");
}

TEST_F(ContactImport, theHostsRefusalEndsItBeforeThePanel) {
    openWith({});
    RStrategyActionEventRouter::shareInstance().install(std::make_shared<NoRoom>());
    AnswerScript answers;
    press("ImportButton");
    EXPECT_EQ(usage_.take(), "Manage/Contacts_Import");
}

TEST_F(ContactImport, aRepeatedContactLendsItsNumbers) {
    add("Ann", "tel(home)=5-5; tel(cell)=66");
    openWith({});
    AnswerScript answers;
    answers.at(kSuccess).press("MessageDialog_Ok");
    import("book.vcf", "BEGIN:VCARD\nN:Ann;;;;\nTEL;type=HOME:55\nEND:VCARD\n", answers);
    EXPECT_EQ(described(device_->stored),
              "pKey=1; completeName=Ann; tel(home)=5-5; tel(cell)=66\n"
              "last_name=Ann; first_name=; middle_name=; name_title=; name_suffix=; tel(HOME)=55; tel(cell)=66\n");
}

TEST_F(ContactImport, aCancelStopsAtTheNextContact) {
    openWith({});
    device_->secondsPerContact = 1;
    AnswerScript answers;
    answers.at("1 of 3").press("FileManager_Cancel");
    answers.at("ExportPhotoToPC_Want_To_Cancel").press("FileManager_OK");
    answers.at(kSuccess).press("MessageDialog_Ok");
    import("book.vcf", cards({"Bob", "Cid", "Dan"}), answers);
    EXPECT_EQ(model_->globalArray->count(), 2U);   // the second was written before its callback met the cancel
}

TEST_F(ContactImport, aNoToTheQuestionGoesOn) {
    openWith({});
    device_->secondsPerContact = 1;
    AnswerScript answers;
    answers.at("1 of 2").press("FileManager_Cancel");
    answers.at("ExportPhotoToPC_Want_To_Cancel").press("FileManager_Cancel");
    answers.at("2 came").press("MessageDialog_Ok");
    import("book.vcf", cards({"Bob", "Cid"}), answers);
    EXPECT_EQ(model_->globalArray->count(), 2U);
}

TEST_F(ContactImport, closingTheWindowCancelsWithoutAQuestion) {
    openWith({});
    device_->secondsPerContact = 1;
    AnswerScript answers;
    answers.at("1 of 3").closeByTitleBar();
    import("book.vcf", cards({"Bob", "Cid", "Dan"}), answers);
    EXPECT_EQ(rows(*model_->globalArray), "- -");   // read anew all the same
}

}   // namespace
