#include "host/cli/CliPresenter.h"

#include <gtest/gtest.h>

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindowController.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIProgressWindowController.h"
#include "host/cli/ContactRecord.h"
#include "host/cli/ProgressBar.h"
#include "tests/support/TestWorld.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/views/NSApplication.h"

using host::cli::CliPresenter;
using host::cli::Console;

namespace {

// A presenter without a terminal, in a world whose texts are the program's own.
struct PresenterWorld {
    explicit PresenterWorld(bool yes = false) : presenter(std::make_shared<CliPresenter>(console, yes)) {
        NSBundle::setMainBundle(std::make_shared<NSBundle>(NSString(HN_BINARY_DIR "/Resources")));
        Presenter::install(presenter);
        dispatch::setSettledHandlers({[this] { return presenter->act(); }, [this] { return presenter->over(); }});
    }
    ~PresenterWorld() {
        Presenter::install(nullptr);
        dispatch::setSettledHandlers({});
    }
    // The code that the dialog's run gives.
    std::int64_t ask(const char *message, const char *left, const char *right, std::int64_t type) {
        const auto dialog = RUIDialogWindowController::dialog("", NSString(message), nullptr, localized(NSString(left)),
                                                              localized(NSString(right)), type);
        return NSApp()->runModalForWindow(dialog->window());
    }
    TestWorld world;
    Console console{false, false};
    std::shared_ptr<CliPresenter> presenter;
};

// Of a dialog of type 0 the left button gives 1, of type 1 the right one, and the other 0.
TEST(Dialogs, areAnsweredByTheKeysOfTheirButtons) {
    struct {
        const char *name, *left, *right;
        std::int64_t type;
        bool yes;
        std::int64_t code;
        bool refused;
    } rows[] = {{"goingOnStandsRight", "ContactView_button_Cancel", "ContactView_button_Delete", 1, true, 1, false},
                {"goingOnStandsRightAndGivesNought", "FileManager_Cancel", "FileManager_Delete", 0, true, 0, false},
                {"goingOnStandsLeft", "FileManager_Delete", "FileManager_Cancel", 0, true, 1, false},
                {"withoutYesItRefuses", "FileManager_Cancel", "FileManager_Delete", 1, false, 0, true},
                {"information", "FileManager_OK", "FileManager_OK", 2, false, 1, false},
                {"informationWithAFolderToOpen", "BackupRestore_ExportOpenFolder", "MessageDialog_Ok", 1, true, 1, false},
                {"unknownButtonsAreClosed", "Apply_to_All_btn", "Skip_btn", 1, true, -1000, true}};
    for (const auto &[name, left, right, type, yes, code, refused] : rows) {
        PresenterWorld w(yes);
        EXPECT_EQ(w.ask("Delete it?", left, right, type), code) << name;
        EXPECT_EQ(w.presenter->refused(), refused) << name;
    }
}

TEST(CancelPrompt, isNeverAnsweredByYesButByAnInterrupt) {
    PresenterWorld w(true);
    const std::string prompt = localized("ExportPhotoToPC_Want_To_Cancel").str();
    EXPECT_EQ(w.ask(prompt.c_str(), "FileManager_OK", "FileManager_Cancel", 0), 0);
    EXPECT_FALSE(w.presenter->interrupt());   // no window is open
    EXPECT_EQ(w.ask(prompt.c_str(), "FileManager_OK", "FileManager_Cancel", 0), 1);
}

// A progress window as a flow makes it; a worker finishes it, or a cancel does.
struct Progress {
    int clicks = 0;
    std::shared_ptr<RUIProgressWindowController> window;
    void end(const char *text) const {
        window->mainLabel()->setStringValue(NSString(text));
        window->borderButton()->setEnabled(true);
        window->borderButton()->setTag(15);
    }
    void show(const std::function<void(Progress &)> &work) {
        RUIProgressWindowController::showWindow([&](const auto &made) {
            window = made;
            window->borderButton()->setTag(5);
            window->setButtonDidClickBlock([&](const auto &button) {
                ++clicks;
                if (button->tag() == 15)
                    window->close();
                else
                    end("cancelled");
            });
            work(*this);
        });
    }
};

class ProgressWindow : public testing::Test {
protected:
    PresenterWorld w;
    Progress progress;
};

TEST_F(ProgressWindow, isLeftAtItsEndWithItsMainLabelAsTheText) {
    EXPECT_TRUE(w.presenter->text().isNil());
    progress.show([](Progress &p) { dispatch::after(std::chrono::seconds(5), dispatch::main(), [&p] { p.end("3 were imported."); }); });
    EXPECT_EQ(w.presenter->text(), NSString("3 were imported."));
    EXPECT_EQ(progress.clicks, 1);   // never while the work went on
    EXPECT_FALSE(w.presenter->refused());
}

TEST_F(ProgressWindow, isCancelledByAnInterrupt) {
    progress.show([&](Progress &) { dispatch::async(dispatch::main(), [&] { EXPECT_TRUE(w.presenter->interrupt()); }); });
    EXPECT_EQ(w.presenter->text(), NSString("cancelled"));
    EXPECT_EQ(progress.clicks, 2);
}

// Ctrl-C while a flow still reads its file, and again in the moment in which it sets its window up.
TEST_F(ProgressWindow, isCancelledByAnInterruptThatCameBeforeIt) {
    EXPECT_FALSE(w.presenter->interrupt());
    progress.show([](Progress &p) {
        p.window->borderButton()->setTag(0);
        dispatch::after(std::chrono::milliseconds(20), dispatch::main(), [&p] { p.window->borderButton()->setTag(5); });
    });
    EXPECT_EQ(w.presenter->text(), NSString("cancelled"));
    EXPECT_EQ(progress.clicks, 2);
}

TEST_F(ProgressWindow, aDisabledButtonKeepsTheInterruptUntilTheEnd) {
    progress.show([&](Progress &p) {
        p.window->borderButton()->setEnabled(false);
        dispatch::async(dispatch::main(), [&] { EXPECT_TRUE(w.presenter->interrupt()); });
        dispatch::after(std::chrono::seconds(5), dispatch::main(), [&p] { p.end("all were deleted."); });
    });
    EXPECT_EQ(w.presenter->text(), NSString("all were deleted."));
    EXPECT_EQ(progress.clicks, 1);
}

TEST_F(ProgressWindow, thatNobodyFinishesIsClosed) {
    progress.show([](Progress &) {});
    EXPECT_TRUE(w.presenter->refused());
    EXPECT_TRUE(w.presenter->text().isNil());
}

TEST(OpenPanels, takeTheNextPathsAndAreCancelledWithoutAny) {
    PresenterWorld w;
    w.presenter->openWith({NSString("/etc/hosts")});
    const auto first = NSOpenPanel::openPanel(), second = NSOpenPanel::openPanel();
    EXPECT_EQ(first->runModal(), kPanelOK);
    EXPECT_EQ(first->URL(), NSString("/etc/hosts"));
    EXPECT_EQ(second->runModal(), kPanelCancel);
}

TEST(ProgressBar, fitsTheTerminalAndSurvivesOddNumbers) {
    using host::cli::ProgressBar;
    EXPECT_EQ(ProgressBar::lineOf("Importing", 50, 80), "Importing  [############------------]  50 %");
    EXPECT_EQ(ProgressBar::lineOf("Importing a long name", 100, 45), "Importing   [########################] 100 %");
    EXPECT_EQ(ProgressBar::lineOf("x\x1b[2J", 0.0 / 0.0, 80), "x\xEF\xBF\xBD[2J  [------------------------]   0 %");
    EXPECT_EQ(ProgressBar::lineOf("Importing", 300, 10), "100 %");
    EXPECT_EQ(ProgressBar::lineOf("味噌汁", 100, 39), "味噌  [########################] 100 %") << "a wide character takes two columns";
}

TEST(ContactRecord, writesPicturesAsPaddedBase64) {
    EXPECT_EQ(host::cli::base64(""), "");
    EXPECT_EQ(host::cli::base64("f"), "Zg==");
    EXPECT_EQ(host::cli::base64("fo"), "Zm8=");
    EXPECT_EQ(host::cli::base64("foo"), "Zm9v");
    EXPECT_EQ(host::cli::base64(std::string("\xFF\xD8\xFF\x00", 4)), "/9j/AA==");
}

TEST(ConsoleTest, columnsLineUpOnTheTerminalWhateverTheScript) {
    testing::internal::CaptureStdout();
    Console console(false, false);
    console.table({{"1", "味噌汁", "soup"}, {"2", "José\u0301", ""}, {"3", "Tom", "\xFF"}});
    EXPECT_TRUE(console.flush());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "1  味噌汁  soup\n2  José\u0301\n3  Tom     \xFF\n");
}

}  // namespace
