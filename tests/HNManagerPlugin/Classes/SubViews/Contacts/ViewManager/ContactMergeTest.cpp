#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/ContactCheckBoxCellView.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DupContactWindowController.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DupContactViewManager.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DupContactViewModel.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DuplicateCellView.h"
#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/HNDuplicateBaseView.h"
#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ContactCategory.h"
#include "tests/support/AnswerScript.h"
#include "toolkit/views/NSApplication.h"

namespace {

constexpr const char *kWindow = "ContactView_DuduplicateWindowTitle";
constexpr const char *kMerge = "ContactView_button_Merge";

class ContactMerge : public ContactCategory {
protected:
    ContactMerge() {
        world_.setTexts({{"ContactView_MergeGroup", "%ld group"},
                         {"ContactView_MergeGroup(s)", "%ld groups"},
                         {"ContactView_merging", "merging %ld of %ld"}});
    }
    // The merge window in front.
    [[nodiscard]] static std::shared_ptr<DupContactWindowController> shown() {
        return std::dynamic_pointer_cast<DupContactWindowController>(NSApp()->modalWindow()->windowController());
    }
    template <class View>
    [[nodiscard]] static std::shared_ptr<View> cell(std::int64_t column, std::int64_t row) {
        return std::dynamic_pointer_cast<View>(shown()->tableView.lock()->viewAtColumn_row_makeIfNecessary(column, row, true));
    }
    [[nodiscard]] static std::string linesOf(const DuplicateCellViewController &row) {
        std::string text;
        for (std::int64_t line = 0; line < row.tableView.lock()->numberOfRows(); ++line)
            text += (text.empty() ? "" : " ") + row.lineAt(static_cast<std::size_t>(line)).str();
        return text;
    }
    // "[on] mixed": the boxes of the rows, then the one of all.
    [[nodiscard]] static std::string boxes() {
        std::string text;
        for (std::int64_t row = 0; row < shown()->tableView.lock()->numberOfRows(); ++row)
            text += std::to_string(cell<ContactCheckBoxCellView>(0, row)->checkBox->state()) + " ";
        return text + "all " + std::to_string(shown()->allCheckBox.lock()->state());
    }
};

TEST_F(ContactMerge, mergesTheTickedGroupsAndReadsAnew) {
    add("Ann", "tel(home)=1");
    add("Bob", "tel(home)=7");
    add("ANN", "tel(home)=2; email(work)=a@b")->setNickname("stays with the other");
    add("bob", "tel(home)=7");
    group("Friends", {"9", "1"});
    group("Others", {"1"});
    openWith({});
    AnswerScript answers;
    answers.at("2 groups").press(kMerge);
    press("DuplicateButton");
    EXPECT_EQ(device_->log.take(), "merge 1 3 into 1 of Friends\nmerge 4 2 into 4\nread");
    EXPECT_EQ(described(device_->stored),
              "pKey=1; completeName=Ann; tel(home)=1; tel(home)=2; email(work)=a@b\npKey=4; completeName=bob; tel(home)=7\n");
    EXPECT_EQ(rows(), "Ann bob");
}

TEST_F(ContactMerge, showsBeforeAndAfter) {
    add("Ann", "tel(home)=1-1; tel(home)=1-1; tel(home)=; email(work)=a@b");
    add("Bob", "tel(home)=1-1; tel(home)=2\xC2\xA0" "2");
    openWith({});
    AnswerScript answers;
    answers.at("1 group").run([&] {
        const auto before = cell<DuplicateCellView>(1, 0), after = cell<DuplicateCellView>(2, 0);
        ASSERT_EQ(before->rows().size(), 2U);
        EXPECT_EQ(linesOf(*before->rows()[0]), "phone:11 phone:22");
        EXPECT_EQ(linesOf(*before->rows()[1]), "phone:11 phone:11 email:a@b");
        ASSERT_EQ(after->rows().size(), 1U);
        EXPECT_EQ(linesOf(*after->rows()[0]), "phone:11 phone:22 email:a@b");
        EXPECT_TRUE(before->rows()[0]->nameCombo.lock()->isHidden());
        EXPECT_EQ(before->rows()[0]->nameLabel.lock()->stringValue(), "Bob");
        EXPECT_EQ(after->rows()[0]->nameCombo.lock()->numberOfItems(), 2);
        EXPECT_DOUBLE_EQ(before->rows()[1]->view()->frame().origin.y, 45 + 2 * 24 + 2 * 2);
        EXPECT_DOUBLE_EQ(shown()->sections[0]->height(), 45 + 2 * 24 + 2 * 2 + 45 + 3 * 24 + 3 * 2);
    }).press("FileManager_Cancel");
    press("DuplicateButton");
    EXPECT_EQ(device_->log.take(), "");
}

TEST_F(ContactMerge, thePersonChoosesTheNameAndLeavesLinesOut) {
    add("Ann", "tel(home)=1; tel(home)=2; email(work)=a@b");
    add("Bob", "tel(home)=1; tel(home)=3");
    openWith({});
    AnswerScript answers;
    answers.at("1 group").run([&] {
        const auto result = cell<DuplicateCellView>(2, 0)->rows()[0];
        EXPECT_TRUE(result->nameCombo.lock()->chooseItemAtIndex(1));
        const auto lines = result->tableView.lock();
        const auto button = [&](std::int64_t line) {
            return std::dynamic_pointer_cast<NSButton>(
                lines->viewAtColumn_row_makeIfNecessary(0, line, true)->viewWithIdentifier("DeleteLine"));
        };
        button(1)->performClick();
        button(2)->performClick();
        EXPECT_EQ(linesOf(*result), "phone:1 phone:2");
        const auto untouchable = cell<DuplicateCellView>(1, 0)->rows()[0]->tableView.lock();
        EXPECT_TRUE(untouchable->viewAtColumn_row_makeIfNecessary(0, 0, true)->viewWithIdentifier("DeleteLine")->isHidden());
    }).press(kMerge);
    press("DuplicateButton");
    EXPECT_EQ(described(device_->stored), "pKey=1; completeName=Ann; tel(home)=1; tel(home)=2\n");
}

TEST_F(ContactMerge, aGroupWithoutAnyNameGoesToItsFirst) {
    add("", "tel(home)=1");
    add("", "tel(home)=1");
    openWith({});
    AnswerScript answers;
    answers.at("1 group").press(kMerge);
    press("DuplicateButton");
    EXPECT_EQ(described(device_->stored), "pKey=2; tel(home)=1\n");
}

TEST_F(ContactMerge, boxesFollowEachOther) {
    for (const char *name : {"Ann", "Ann", "Bob", "Bob"})
        add(name);
    openWith({});
    AnswerScript answers;
    answers.at("2 groups").run([&] {
        const auto all = shown()->allCheckBox.lock();
        EXPECT_EQ(boxes(), "1 1 all 1");
        cell<ContactCheckBoxCellView>(0, 1)->checkBox->performClick();
        EXPECT_EQ(boxes(), "1 0 all -1");
        all->performClick();
        EXPECT_EQ(boxes(), "1 1 all 1");
        all->performClick();
        EXPECT_EQ(boxes(), "0 0 all 0");
        all->performClick();
        EXPECT_EQ(boxes(), "1 1 all 1");
        cell<ContactCheckBoxCellView>(0, 0)->checkBox->performClick();
        cell<ContactCheckBoxCellView>(0, 1)->checkBox->performClick();
        EXPECT_EQ(boxes(), "0 0 all 0");
    }).press(kMerge);
    press("DuplicateButton");
    EXPECT_EQ(device_->log.take(), "");   // nothing was ticked
}

TEST_F(ContactMerge, withoutDuplicatesTheWindowSaysSo) {
    openWith({"Ann"});
    AnswerScript answers;
    answers.at("ContactView_noMerge").run([] { EXPECT_FALSE(shown()->mergeButton.lock()->isEnabled()); }).closeByTitleBar();
    press("DuplicateButton");
    EXPECT_EQ(device_->log.take(), "");
}

TEST_F(ContactMerge, tellsTheStepsAndPassesOverAFailure) {
    for (const char *name : {"Ann", "Ann", "Bob", "Bob", "Cid", "Cid"})
        add(name);
    device_->refused = {"Ann"};
    device_->secondsPerContact = 1;
    openWith({});
    AnswerScript answers;
    answers.at("3 groups").press(kMerge);
    std::int64_t bar = 0;
    answers.at("merging 1 of 3").run([&] { bar = manager_->progressWindows().pProressWindow->progress.lock()->progressValue(); });
    press("DuplicateButton");
    EXPECT_EQ(bar, 66);
    EXPECT_EQ(rows(), "Ann Ann Bob Cid");
}

TEST_F(ContactMerge, closingTheProgressWindowStopsBetweenTwoGroups) {
    for (const char *name : {"Ann", "Ann", "Bob", "Bob", "Cid", "Cid"})
        add(name);
    device_->secondsPerContact = 1;
    openWith({});
    AnswerScript answers;
    answers.at("3 groups").press(kMerge);
    answers.at("merging 0 of 3").press("FileManager_Cancel");
    press("DuplicateButton");
    EXPECT_EQ(rows(), "Ann Bob Cid Cid");   // the second was at work
}

TEST_F(ContactMerge, aDeviceThatGoesAwayEndsTheSearchQuietly) {
    openWith({"Ann", "Ann"});
    model_->deviceDisConnectNotify(nullptr);
    manager_->deviceDisConnectNotify(nullptr);
    AnswerScript answers;
    press("DuplicateButton");
    EXPECT_TRUE(manager_->dupcontactsArray.isEmpty());
}

TEST_F(ContactMerge, aListOfDuplicatesShowsItsRowsOnceItsViewIsThere) {
    const auto controller = make<NSArrayController>();
    const auto model = make<DupContactViewModel>();
    const auto view = make<HNDuplicateBaseView>(NSRect(0, 0, 100, 100));
    const auto table = make<NSTableView>(NSRect(0, 0, 100, 100));
    model->arrayController = controller;
    controller->setContent(model->contents);
    view->arrayController = controller;
    view->tableView = table;
    view->awakeFromNib();
    model->contents->addObject(add("Ann"));
    EXPECT_EQ(table->numberOfRows(), 0);
    const auto manager = make<DupContactViewManager>();
    manager->viewModel = model;
    manager->viewDidLoad();
    EXPECT_EQ(table->numberOfRows(), 1);
}

}   // namespace
