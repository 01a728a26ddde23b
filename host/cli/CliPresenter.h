// Answers the windows of the flows from the arguments of the command, or asks the person at the terminal.
//
// Panels         an open panel takes the next of `openPaths`, a save panel the path of `saveTo`; without one they are cancelled.
// Inputs         a window with a field of `fillIn` gets its texts and is saved; cancelled where that stays off.
// Password       of the device's backups: asked for on the terminal without echo, else HNMANAGER_BACKUP_PASSWORD; without
//                one, or with a wrong one, the window is closed.
// Progress       the window's button is pressed once it stands in its end state; the main label is the text of the result.
// Information    told on standard error and answered with its OK button, never with the one that opens a folder.
// Confirmations  answered by the text key of the going-on button: with --yes, or where the person says yes; else refused.
// Cancel prompt  answered with "go on", unless Ctrl-C asked for the cancel; never by --yes.
// Unanswerable   a window that nobody can answer is closed as by its title bar, and told.
// Threads        main.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>

#include "host/cli/Console.h"
#include "host/cli/Options.h"
#include "toolkit/views/NSSavePanel.h"
#include "toolkit/views/Presenter.h"

class NSButton;
class NSTextField;
class RUIProgressWindowController;

namespace host::cli {

class CliPresenter : public Presenter {
public:
    CliPresenter(Console &console, bool yes) : console_(console), yes_(yes) {}

    // ------------------------------------------------------------ the script
    void openWith(std::vector<NSString> paths) { openPaths_.push_back(std::move(paths)); }
    // Every question is answered with no, whatever the options say: the command only looks.
    void declineAll() { declines_ = true; }
    void saveTo(NSString path, bool replaces) {
        savePath_ = std::move(path);
        replaces_ = replaces;
    }
    // Texts by the identifiers of their fields.
    void fillIn(std::map<std::string, NSString> texts) { inputs_ = std::move(texts); }

    // ------------------------------------------------------------ what came of it
    // The main label of the progress window in its end state, else the text of the last dialog; absent without either.
    [[nodiscard]] NSString text() const { return endText_.isNil() ? lastDialogText_ : endText_; }
    // A progress window reached its end state.
    [[nodiscard]] bool sawTheEnd() const { return !endText_.isNil(); }
    // A question was answered with no, or a choice was not allowed.
    [[nodiscard]] bool refused() const { return refused_; }

    // No password was given, or a wrong one.
    [[nodiscard]] bool passwordRefused() const { return passwordRefused_; }

    // ------------------------------------------------------------ for the loop
    // Answers the front window where it can; true when it did something. Called when the world is settled.
    bool act();
    // Ends the front window; true where there was one.
    bool over();
    // Ctrl-C. False where no window is open that could be cancelled.
    bool interrupt();

    void windowDidOpen(NSWindow &window, bool modal) override;

private:
    using Buttons = std::vector<std::shared_ptr<NSButton>>;
    bool answerPanel(NSSavePanel &panel);
    bool answerInput(NSWindow &window);
    bool answerFilledIn(NSWindow &window);
    bool answerPassword(NSWindow &window, NSTextField &field);
    bool answerProgress(RUIProgressWindowController &progress);
    void cancel(const std::shared_ptr<NSWindow> &window, const RUIProgressWindowController &progress);
    bool answerDialog(NSWindow &window);
    bool answerQuestion(NSWindow &window, const Buttons &buttons, const NSString &message);
    bool goesOn(const NSString &message);
    bool isStuckOn(const std::shared_ptr<NSWindow> &window);

    Console &console_;
    bool yes_;
    std::deque<std::vector<NSString>> openPaths_;
    NSString savePath_;
    bool replaces_ = false;
    std::map<std::string, NSString> inputs_;
    NSString endText_, lastDialogText_;
    bool refused_ = false, passwordRefused_ = false, declines_ = false, isInterrupted_ = false;
    std::weak_ptr<NSWindow> lastActedOn_, filledIn_, passwordGiven_;
    int timesActed_ = 0;
};

}  // namespace host::cli
