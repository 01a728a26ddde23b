// The password dialog by itself: its states, its texts, its button.
#include <gtest/gtest.h>

#include "HNManagerPlugin/Classes/SubViews/Message/BackupPasswordWindow/HNFMBackupDecryptionController.h"
#include "tests/support/AnswerScript.h"
#include "tests/support/FakeDevice.h"
#include "tests/support/PluginWorld.h"
#include "toolkit/services/NSBundle.h"

namespace {

class BackupPassword : public testing::Test {
protected:
    ~BackupPassword() override {
        dialog_ = nullptr;
        world_.settle();
    }
    void open() {
        dialog_ = make<HNFMBackupDecryptionController>(NSString("HNFMBackupDecryptionController"));
        (void)dialog_->window();
    }
    void type(const char *text) { dialog_->passwordTextField.lock()->typeText(text); }
    // What shows: "wrong", "bar", "spinner", "ok" or "ok(off)", "field" or "field(fixed)", and the main text.
    [[nodiscard]] std::string shown() const {
        std::string text;
        const auto add = [&](const NSView &view, const std::string &word) {
            if (!view.isHidden())
                text += word + " ";
        };
        add(*dialog_->wrongMessageLabel.lock(), "wrong");
        add(*dialog_->decryptProgressIndicator.lock(), "bar");
        add(*dialog_->decryptLoadingIndicator.lock(), dialog_->decryptLoadingIndicator.lock()->isAnimating() ? "spinner" : "still");
        add(*dialog_->okButton.lock(), dialog_->okButton.lock()->isEnabled() ? "ok" : "ok(off)");
        add(*dialog_->passwordTextField.lock(), dialog_->passwordTextField.lock()->isEditable() ? "field" : "field(fixed)");
        return text + dialog_->decryptMainLabel.lock()->stringValue().str();
    }

    PluginWorld world_;
    std::shared_ptr<HNFMBackupDecryptionController> dialog_;
};

constexpr const char *kMain = "DecryptionWindow_MainDecryption_Info", *kChecking = "DecryptionWindow_Decrypting_Info";

TEST_F(BackupPassword, aTextMakesTheButtonReady) {
    open();
    EXPECT_EQ(shown(), std::string("ok(off) field ") + kMain);
    type(" ");
    EXPECT_EQ(shown(), std::string("ok field ") + kMain);
    EXPECT_EQ(dialog_->getPassword(), " ");
    type("");
    EXPECT_EQ(shown(), std::string("ok(off) field ") + kMain);
    EXPECT_TRUE(dialog_->passwordTextField.lock()->isSecure());
    EXPECT_EQ(dialog_->okButton.lock()->title(), "MessageDialog_Ok");
}

TEST_F(BackupPassword, itsStatesFollowOneAnother) {
    const std::string entry = std::string("ok field ") + kMain, entryOff = std::string("ok(off) field ") + kMain,
                      check = std::string("spinner ok(off) field(fixed) ") + kChecking;
    struct State {
        std::uint32_t state;
        bool flag;
        std::string shown;
    };
    const std::pair<const char *, std::vector<State>> walks[] = {
        {"entryIsTheStateAlready", {{0, false, entry}}},
        {"checkingThenRight", {{1, true, check}, {3, true, entry}}},
        {"checkingThenWrongTwice", {{1, true, check}, {3, false, "wrong " + entry}, {3, true, "wrong " + entry}, {1, true, check}}},
        {"progress", {{2, true, std::string("bar ") + kChecking}, {3, true, entry}}},
        {"anUnknownStateIsKeptAndChangesNothing", {{7, true, entry}, {0, true, entryOff}}}};
    for (const auto &[name, steps] : walks) {
        open();
        type("x");
        for (const State &step : steps) {
            dialog_->setDecryptState_flag(step.state, step.flag);
            EXPECT_EQ(shown(), step.shown) << name << step.state;
            EXPECT_EQ(dialog_->decryptState, step.state) << name;
        }
    }
}

TEST_F(BackupPassword, typingTakesTheWrongMessageAway) {
    open();
    dialog_->setDecryptState_flag(1, true);
    dialog_->setDecryptState_flag(3, false);
    type("y");
    EXPECT_EQ(shown(), std::string("ok field ") + kMain);
}

TEST_F(BackupPassword, theBarBeginsAtNoughtAndFollows) {
    open();
    dialog_->setDecryptionProgress(40);
    EXPECT_EQ(dialog_->decryptProgressIndicator.lock()->doubleValue(), 40);
    dialog_->setDecryptState_flag(2, true);
    EXPECT_EQ(dialog_->decryptProgressIndicator.lock()->doubleValue(), 0);
}

TEST_F(BackupPassword, theButtonRunsTheBlockThatIsSet) {
    open();
    int runs = 0;
    dialog_->okButtonClick(nullptr);
    dialog_->setOkButtonClickBlock([&] { ++runs; });
    type("x");
    dialog_->okButton.lock()->performClick();
    EXPECT_EQ(runs, 1);
}

TEST_F(BackupPassword, theTipsNameTheLinkTwiceAndOpenTheHelpPage) {
    world_.setTexts({{"DecryptionWindow_Tips_Info", "Try FINDER first. "},
                     {"DecryptionWindow_Tips_Visit_Info", "Visit %@ now"},
                     {"DecryptionWindow_Tips_Keymender_Link", "Finder"}});
    EventLog log;
    FakeDevice device;
    logWorkspaceTo(log);
    open();
    const auto tips = dialog_->decryptTipsLabel.lock();
    EXPECT_EQ(tips->stringValue(), "Try FINDER first. Visit Finder now");
    std::string runs;
    for (const TextRun &run : tips->attributedStringValue()->runs()) {
        const TextAttributes &look = run.attributes;
        if (look.font || look.underline)
            runs += std::to_string(run.range.location) + "+" + std::to_string(run.range.length) + " " +
                    (look.font ? look.font->description().str() : "-") + (look.underline ? " underlined " : " ") +
                    (look.color ? look.color->description().str() : "-") + "|";
    }
    EXPECT_EQ(runs, "4+6 Helvetica Neue Medium 14 -|24+6 - underlined #FF00ADC4|");
    EXPECT_TRUE(tips->clickLink(0));
    EXPECT_EQ(log.take(), "browses PasswordHelpPageURL");
}

TEST_F(BackupPassword, aTipWithoutTheLinkWordStaysPlain) {
    world_.setTexts({{"DecryptionWindow_Tips_Visit_Info", "no link here"}});
    open();
    EXPECT_EQ(dialog_->decryptTipsLabel.lock()->stringValue(), "DecryptionWindow_Tips_Infono link here");
    EXPECT_FALSE(dialog_->decryptTipsLabel.lock()->clickLink(0));
}

TEST_F(BackupPassword, theDefaultWindowIsModalAndItsTitleBarClosesIt) {
    AnswerScript answers;
    answers.at(kMain).closeByTitleBar();
    HNFMBackupDecryptionController::showDefaultWindow();
}

}   // namespace
