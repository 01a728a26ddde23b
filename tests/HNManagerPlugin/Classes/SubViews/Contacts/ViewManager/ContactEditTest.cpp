#include "HNManagerPlugin/Classes/SubViews/Contacts/NewContactWindow/NewContactDialogWindow.h"
#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ContactCategory.h"
#include "tests/support/AnswerScript.h"
#include "tests/support/TempFolder.h"
#include "toolkit/views/NSApplication.h"

namespace {

constexpr const char *kWindow = "ContactView_button_NewContact";
constexpr const char *kAdded = "ContactView_AddNewContactSuccess";

class ContactEdit : public ContactCategory {
protected:
    [[nodiscard]] static std::shared_ptr<NewContactDialogWindow> shown() {
        return std::dynamic_pointer_cast<NewContactDialogWindow>(NSApp()->modalWindow()->windowController());
    }
    static auto saveIs(bool on) {
        return [on] { EXPECT_EQ(shown()->saveButton.lock()->isEnabled(), on); };
    }
    void edit(std::size_t row) {
        select({row});
        manager_->editMenuClick(nullptr);
        world_.settle();
    }
};

TEST_F(ContactEdit, addsWhatWasTyped) {
    openWith({});
    EventLog log;
    AnswerScript answers(&log);
    answers.at(kWindow).type("first", "Ann").type("phone2", "55").type("email1", "a@b").type("note", "hi").press("FileManager_Save");
    answers.at(kAdded).press("FileManager_OK");
    press("NewContactButton");
    ASSERT_EQ(device_->stored.size(), 1U);
    EXPECT_EQ(described(*device_->stored[0]),
              "first_name=Ann; notes=hi; tel(Home)=~; tel(Work)=55; email(Home)=a@b; email(Work)=~");
    EXPECT_NE(log.take().find("asks ContactView_ImportWindowTitle|" + std::string(kAdded) + " [FileManager_OK]"), std::string::npos);
    EXPECT_EQ(model_->globalArray->count(), 1U);   // read anew
}

TEST_F(ContactEdit, aRefusedContactIsTold) {
    openWith({});
    device_->refused = {"Ann"};
    AnswerScript answers;
    answers.at(kWindow).type("first", "Ann").press("FileManager_Save");
    answers.at("ContactView_AddNewContactFailed").press("FileManager_OK");
    press("NewContactButton");
    EXPECT_TRUE(device_->stored.empty());
    EXPECT_EQ(device_->log.take(), "");   // not read anew
}

TEST_F(ContactEdit, saveIsOffUntilSomethingButBlanksIsTyped) {
    add("Ann", "first_name=Ann");
    openWith({});
    AnswerScript answers;
    answers.at(kWindow)
        .run(saveIs(false))
        .type("last", "  ")
        .run(saveIs(true))   // the first name of the same section holds text
        .press("FileManager_Cancel");
    edit(0);
    answers.at(kWindow)
        .type("phone2", " \t")
        .run(saveIs(false))
        .type("phone2", "1")
        .run(saveIs(true))
        .type("phone2", "")
        .run(saveIs(false))
        .closeByTitleBar();
    edit(0);
    EXPECT_EQ(device_->log.take(), "");
}

TEST_F(ContactEdit, aThirdNumberStaysUntouched) {
    add("Ann", "tel(a)=1; tel(b)=2; tel(c)=3");
    openWith({});
    AnswerScript answers;
    answers.at(kWindow)
        .run([] { EXPECT_EQ(shown()->viewModel->phoneGroup.lock()->tableView.lock()->numberOfRows(), 2); })
        .type("phone1", "9")
        .press("FileManager_Save");
    edit(0);
    EXPECT_EQ(device_->log.take(), "edit 1 groups 0\nread");
    EXPECT_EQ(described(*device_->stored[0]),
              "pKey=1; completeName=Ann; tel(a)=9; tel(b)=2; tel(c)=3; email(Home)=~; email(Home)=~");
}

TEST_F(ContactEdit, aRowThatIsDeletedTakesItsItemAndItsHeight) {
    add("Ann", "tel(a)=1; tel(b)=2; tel(c)=3");
    openWith({});
    AnswerScript answers;
    answers.at(kWindow).run([] {
        const auto model = shown()->viewModel;
        const auto phones = model->phoneGroup.lock(), emails = model->emailGroup.lock(), note = model->noteGroup.lock();
        const double height = phones->frame().size.height, below = emails->frame().origin.y, note0 = note->frame().origin.y;
        const auto button = make<NSButton>(NSRect(0, 0, 20, 20));
        const auto press = [&](std::int64_t tag) {
            button->setTag(tag);
            phones->deleteButtonClick(button);
        };
        press(3);
        press(-1);
        EXPECT_EQ(phones->itemCount(), 3u);
        press(1);
        EXPECT_EQ(phones->itemCount(), 2u);
        EXPECT_EQ(phones->tableView.lock()->numberOfRows(), 2);
        EXPECT_DOUBLE_EQ(phones->frame().size.height, height - 42);
        EXPECT_DOUBLE_EQ(emails->frame().origin.y, below - 42);
        EXPECT_DOUBLE_EQ(note->frame().origin.y, note0 - 42);
        model->onSectionButton(*phones);
        EXPECT_DOUBLE_EQ(phones->frame().size.height, height);
        EXPECT_DOUBLE_EQ(emails->frame().origin.y, below);
    }).press("FileManager_Cancel");
    edit(0);
    EXPECT_EQ(described(*device_->stored[0]),
              "pKey=1; completeName=Ann; tel(a)=1; tel(c)=3; tel(~)=xxxx; email(Home)=~; email(Home)=~");
}

TEST_F(ContactEdit, aPressOutsideClosesTheListOfGroups) {
    group("A");
    openWith({"Ann"});
    AnswerScript answers;
    answers.at(kWindow).run([] {
        const auto window = shown()->window();
        const auto press = [&](const std::shared_ptr<NSView> &view) {
            const NSRect frame = view->frame();
            const NSPoint middle = view->superview()->convertPoint_toView({frame.origin.x + frame.size.width / 2, frame.origin.y + frame.size.height / 2}, nullptr);
            for (const auto type : {NSEventType::leftMouseDown, NSEventType::leftMouseUp})
                window->sendEvent(NSEvent::mouse(type, middle));
        };
        shown()->expandGroupInfoView();
        EXPECT_DOUBLE_EQ(shown()->groupContainer.lock()->frame().size.height, 32);
        press(window->contentView()->viewWithIdentifier("Groups"));
        EXPECT_TRUE(shown()->isGroupListOpen());
        press(shown()->viewModel->phoneGroup.lock());
        EXPECT_FALSE(shown()->isGroupListOpen());
    }).press("FileManager_Cancel");
    edit(0);
}

TEST_F(ContactEdit, aCancelledEditStaysOnShow) {
    openWith({"Ann"});
    AnswerScript answers;
    answers.at(kWindow).type("note", "typed").press("FileManager_Cancel");
    edit(0);
    EXPECT_EQ(model_->contents->at<ZpContactDataInfo>(0)->notes(), "typed");
    EXPECT_EQ(device_->log.take(), "");
}

TEST_F(ContactEdit, tickedGroupsGoAlongAndAreForgotten) {
    group("A");
    group("B");
    group("C");
    openWith({});
    AnswerScript answers;
    answers.at(kWindow)
        .run([] {
            shown()->expandGroupInfoView();
            EXPECT_DOUBLE_EQ(shown()->contactGroup.lock()->frame().size.height, 3 * 32 + 30);
            const auto table = shown()->contactGroup.lock()->tableView.lock();
            for (const std::int64_t row : {0, 2})
                std::dynamic_pointer_cast<NSButton>(table->viewAtColumn_row_makeIfNecessary(0, row, true)->viewWithIdentifier("Group"))
                    ->performClick();
        })
        .type("first", "Ann")
        .run([] { EXPECT_FALSE(shown()->isGroupListOpen()); })   // typing has closed it
        .press("FileManager_Save");
    answers.at(kAdded).press("FileManager_OK");
    press("NewContactButton");
    EXPECT_EQ(device_->log.take(), "into A\ninto C\nread");
    for (const auto &group : device_->groups)
        EXPECT_FALSE(group->isSelected);
}

TEST_F(ContactEdit, aChosenPictureStandsInTheRecordWithItsPath) {
    openWith({"Ann"});
    const TempFolder folder;
    const std::string path = (folder.path() / "picture.png").string();
    writeFile(path, "x");
    AnswerScript answers;
    answers.at(kWindow).run([] { shown()->photoView.lock()->choose(); }).press("FileManager_Cancel");
    answers.openPanel().choose({path});
    edit(0);
    const auto ann = model_->contents->at<ZpContactDataInfo>(0);
    EXPECT_EQ(ann->imagePath(), path);
    EXPECT_EQ(ann->image_data()->path(), path);
}

TEST_F(ContactEdit, aCancelledPicturePanelClearsThePicture) {
    add("Ann")->setImage_data(NSImage::withData(NSData::of("x")));
    openWith({});
    AnswerScript answers;
    answers.at(kWindow).run([] { shown()->photoView.lock()->choose(); }).press("FileManager_Cancel");
    answers.openPanel().cancel();
    edit(0);
    EXPECT_FALSE(model_->contents->at<ZpContactDataInfo>(0)->image_data());
}

}   // namespace
