#include <gtest/gtest.h>

#include "HNManagerPlugin/contracts/RVUIKit/MessageDialog.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIBreadcrumbWindowController.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindowController.h"
#include "tests/support/AnswerScript.h"
#include "tests/support/FakeDevice.h"
#include "tests/support/TestWorld.h"
#include "toolkit/views/NSApplication.h"

namespace {

class Dialogs : public testing::Test {
protected:
    TestWorld world;
    EventLog log;
    AnswerScript answers{&log};
};

std::shared_ptr<RUIDialogWindowController> question(std::int64_t type, const char *left = "Yes", const char *right = "No") {
    return RUIDialogWindowController::dialog("Title", "Really?", nullptr, left, right, type);
}

TEST_F(Dialogs, codesBelongToTheButtonAndTheType) {
    using Answer = AnswerScript::Answer;
    struct {
        const char *name;
        std::int64_t type;
        std::function<void(Answer &)> answer;
        std::int64_t code;
    } rows[] = {{"type0Left", 0, [](Answer &a) { a.press("Yes"); }, 1}, {"type0Right", 0, [](Answer &a) { a.press("No"); }, 0},
                {"type1Left", 1, [](Answer &a) { a.press("Yes"); }, 0}, {"type1Right", 1, [](Answer &a) { a.press("No"); }, 1},
                {"type2", 2, [](Answer &a) { a.press("Yes"); }, 1}, {"titleBar", 0, [](Answer &a) { a.closeByTitleBar(); }, -1000},
                {"titleBarOfType2", 2, [](Answer &a) { a.closeByTitleBar(); }, -1000}, {"escape", 1, [](Answer &a) { a.escape(); }, -1000},
                {"stopModal", 1, [](Answer &a) { a.run([] { NSApp()->stopModal(); }); }, -1000}};
    for (const auto &[name, type, answer, code] : rows) {
        answer(answers.at("Really?"));
        const auto dialog = question(type);
        EXPECT_TRUE(dialog->window()->isMemberOf<RUIDialogWindow>()) << name;
        EXPECT_EQ(NSApp()->runModalForWindow(dialog->window()), code) << name;
    }
}

TEST_F(Dialogs, ofOneButtonShowsTheLeftTitleOrElseTheRightOne) {
    answers.at("Really?").press("Yes");
    NSApp()->runModalForWindow(question(2)->window());
    answers.at("Really?").press("No");
    NSApp()->runModalForWindow(question(2, "", "No")->window());
    EXPECT_EQ(log.take(), "asks Title|Really? [Yes]\npresses Yes\nasks Title|Really? [No]\npresses No");
}

TEST_F(Dialogs, withoutCloseButtonCannotBeClosedByAPerson) {
    const auto dialog = question(0);
    std::dynamic_pointer_cast<RUIDialogWindow>(dialog->window())->setEnableCloseButton(false);
    answers.at("Really?").closeByTitleBar().run([&] { EXPECT_TRUE(dialog->window()->isVisible()); }).press("No");
    EXPECT_EQ(NSApp()->runModalForWindow(dialog->window()), 0);
}

TEST_F(Dialogs, isClosedFromAnotherThreadAsANo) {
    const auto dialog = question(0);
    dispatch::async(dispatch::global(), [&] { dialog->close(); });
    EXPECT_EQ(NSApp()->runModalForWindow(dialog->window()), -1000);
    EXPECT_FALSE(dialog->window()->isVisible());
}

TEST_F(Dialogs, linkOpensItsAddress) {
    FakeDevice device;
    logWorkspaceTo(log);
    const auto dialog = question(0);
    EXPECT_TRUE(dialog->linkLabel()->isHidden());
    dialog->linkLabel()->setLinkText_withURL("Why?", "https://why.example");
    EXPECT_FALSE(dialog->linkLabel()->isHidden());
    EXPECT_TRUE(dialog->linkLabel()->clickLink(0));
    EXPECT_EQ(log.take(), "browses https://why.example");
}

TEST_F(Dialogs, aLinkIsFoundIgnoringCaseByCharacters) {
    struct {
        const char *text, *link;
        std::vector<NSRange> ranges;
    } rows[] = {{"Für mehr: HIER", "hier", {{10, 4}}}, {"a b a", "a", {{0, 1}}}, {"nothing here", "link", {}}, {"text", "", {}}};
    for (const auto &[text, link, expected] : rows) {
        const auto field = NSTextField::labelWithString("");
        drawLinkTextFiledAttributed_LinkString_textColor_underlineColor_font_withURL(*field, text, link, nullptr, nullptr, nullptr, "https://a.example");
        std::vector<NSRange> ranges;
        for (const TextRun &run : field->attributedStringValue()->linkRuns())
            ranges.push_back(run.range);
        EXPECT_EQ(ranges, expected) << text;
        EXPECT_EQ(field->attributedStringValue()->string(), NSString(text));
    }
}

TEST_F(Dialogs, aMessageReturnsByWhateverWay) {
    answers.at("Cannot write").press("OK");
    MessageDialog::runWithString_defaultButton_icon("Cannot write", "OK", 3);
    answers.at("Cannot write").closeByTitleBar();
    MessageDialog::runWithString_defaultButton_icon("Cannot write", "OK", 3);
    EXPECT_EQ(log.take(), "asks |Cannot write [OK]\npresses OK\nasks |Cannot write [OK]\ncloses the window");
}

TEST_F(Dialogs, aBreadcrumbHoldsTheInterfaceUntilItIsClosed) {
    std::shared_ptr<RUIBreadcrumbWindowController> message;
    dispatch::async(dispatch::global(), [&] { message = RUIBreadcrumbWindowController::showWindowWithMessage_onMainQueue("Searching", true); });
    world.settle();
    ASSERT_TRUE(message);
    EXPECT_EQ(NSApp()->modalWindow(), message->window());
    dispatch::async(dispatch::global(), [&] { message->close(); });
    world.settle();
    EXPECT_EQ(NSApp()->modalDepth(), 0u);
    EXPECT_FALSE(message->window()->isVisible());
    EXPECT_EQ(log.take(), "says |Searching []");
}

TEST_F(Dialogs, aScriptFailsForAQuestionThatNobodyAnswersAndForAnAnswerThatNobodyAsksFor) {
    answers.at("Something else?").press("Yes");
    EXPECT_EQ(NSApp()->runModalForWindow(question(0)->window()), -1000);
    EXPECT_EQ(answers.takeFailures(), (std::vector<std::string>{"nobody answered Title|Really? [Yes No]", "nobody asked: Something else?"}));
}

}  // namespace
