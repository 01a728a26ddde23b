#include "HNManagerPlugin/HNManagerPrincipalClass.h"
#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ContactCategory.h"
#include "tests/support/AnswerScript.h"

namespace {

class ContactDelete : public ContactCategory {
protected:
    ContactDelete() {
        world_.setTexts({{"ContactView_DeleteContact", "delete %@?"},
                         {"ContactView_DeleteContacts", "delete %ld %@?"},
                         {"ContactView_deleteSuccess(s)", "%ld gone"},
                         {"ContactView_deleteFailed", "%ld stays"},
                         {"ContactView_deleteFailed(s)", "%ld stay"}});
    }
    void deleteThem(AnswerScript &answers, const char *question, const char *result) {
        answers.at(question).press("ContactView_button_Delete");
        answers.at(result).press("MessageDialog_Ok");
        press("DeleteButton");
    }
};

TEST_F(ContactDelete, takesTheSelectedRowsOutWithoutReadingAnew) {
    EventLog usage, log;
    make<HNManagerPrincipalClass>()->installGALogHook();
    world_.logUsageTo(usage);
    openWith({"Ann", "Bob", "Cid"});
    select({0, 2});
    AnswerScript answers(&log);
    deleteThem(answers, "delete 2 ContactView_Contacts?", "2 gone");
    EXPECT_EQ(log.take(),
              "asks ContactView_DeleteWindowTitle|delete 2 ContactView_Contacts? "
              "[ContactView_button_Cancel ContactView_button_Delete]\n"
              "presses ContactView_button_Delete\n"
              "button: FileManager_Cancel 5\nbutton: (FileManager_Cancel) 5\nmain: ContactView_waitDelete\n"
              "asks ContactView_DeleteWindowTitle|ContactView_waitDelete [(FileManager_Cancel)]\n"
              "main: ContactView_deleting\nbutton: FileManager_Cancel 5\nbutton: MessageDialog_Ok 15\nmain: 2 gone\n"
              "presses MessageDialog_Ok");
    EXPECT_EQ(device_->log.take(), "delete 2");
    EXPECT_EQ(rows(), "Bob");
    EXPECT_EQ(rows(*model_->globalArray), "Bob");
    EXPECT_EQ(usage.take(), "Manage/Contacts_Delete");
    EXPECT_TRUE(isTableShown());
}

struct Result {
    std::vector<std::size_t> rows;
    std::vector<NSString> refused;
    const char *question, *text, *left;
};

TEST_F(ContactDelete, theResultTellsTheSuccessesAloneWhereThereAreAny) {
    const Result kResults[] = {
        {{0}, {}, "delete Ann?", "ContactView_deleteSuccess", "Bob Cid Dan Eve"},
        {{0}, {"Bob"}, "delete Bob?", "1 stays", "Bob Cid Dan Eve"},
        {{0, 1}, {"Bob", "Cid"}, "delete 2 ContactView_Contacts?", "2 stay", "Bob Cid Dan Eve"},
        {{0, 1, 2}, {"Cid"}, "delete 3 ContactView_Contacts?", "2 gone", "Cid Eve"},
        {{0, 1}, {"Cid"}, "delete 2 ContactView_Contacts?", "ContactView_deleteSuccess", "Cid"},
    };
    openWith({"Ann", "Bob", "Cid", "Dan", "Eve"});
    for (const Result &result : kResults) {
        device_->refused = result.refused;
        select(result.rows);
        AnswerScript answers;
        deleteThem(answers, result.question, result.text);
        EXPECT_EQ(rows(), result.left);
    }
}

TEST_F(ContactDelete, aNoLeavesAllAsItWas) {
    openWith({"Ann"});
    select({0});
    AnswerScript answers;
    answers.at("delete Ann?").press("ContactView_button_Cancel");
    press("DeleteButton");
    answers.at("delete Ann?").escape();
    press("DeleteButton");
    EXPECT_EQ(device_->log.take(), "");
    EXPECT_EQ(rows(), "Ann");
}

TEST_F(ContactDelete, theDetailPanelStandsAsItWas) {
    add("Ann", "tel(home)=55");
    openWith({"Bob"});
    select({0});
    AnswerScript answers;
    deleteThem(answers, "delete Ann?", "ContactView_deleteSuccess");
    EXPECT_EQ(details(), "home: 55\n");
}

TEST_F(ContactDelete, theLastOneLeavesTheNoDataPanel) {
    openWith({"Ann"});
    select({0});
    AnswerScript answers;
    deleteThem(answers, "delete Ann?", "ContactView_deleteSuccess");
    EXPECT_FALSE(isTableShown());
    EXPECT_FALSE(manager_->noSearchField.lock()->isHidden());
    EXPECT_TRUE(manager_->noSearchResultViewCtrl->hiddenNoSearchFieldInfo);
}

TEST_F(ContactDelete, allRowsOfASearchLeaveTheNoResultPanel) {
    openWith({"Ann", "Bob"});
    EXPECT_TRUE(search("Ann"));
    select({0});
    AnswerScript answers;
    deleteThem(answers, "delete Ann?", "ContactView_deleteSuccess");
    EXPECT_EQ(rows(), "");
    EXPECT_EQ(rows(*model_->globalArray), "Bob");
    EXPECT_FALSE(manager_->noSearchField.lock()->isHidden());
    EXPECT_FALSE(manager_->noSearchResultViewCtrl->hiddenNoSearchFieldInfo);
}

TEST_F(ContactDelete, closingTheWindowStopsAfterTheContactAtWork) {
    openWith({"Ann", "Bob", "Cid"});
    device_->secondsPerContact = 1;
    select({0, 1, 2});
    AnswerScript answers;
    answers.at("delete 3 ContactView_Contacts?").press("ContactView_button_Delete");
    answers.at("ContactView_deleting").closeByTitleBar();
    press("DeleteButton");
    EXPECT_EQ(rows(), "Cid");
}

}   // namespace
