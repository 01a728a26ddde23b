// The person of a test: what waits for one is answered as scripted before the flow starts.
//
//     AnswerScript answers(&log);
//     answers.at("Delete 3 contacts?").press("Cancel");
//     answers.at("Exporting(2/3),  b.mp3").press("Cancel");       // a progress window, at the moment its label says so
//     answers.openPanel().choose({"/tmp/a.vcf"});
//
// At       a visible text or the title of the window in front, exactly. The first unused answer that fits is taken.
// When     only in a settled world: main queue empty, every worker idle or waiting. An answer's steps come one a turn.
// Fails    a window that nobody answers, when nothing more can happen or after 10 minutes of the test's clock: the test fails
//          with its texts and its run is ended with -1000. So does a panel (cancelled) or a menu without an answer, a button
//          that is not there or cannot be pressed, and an answer that was never asked for.
// Log      with a log: "asks TITLE|TEXTS [BUTTONS]" as a modal window opens (buttons from the left, "(..)" disabled; a check
//          box "<..>"), "presses BUTTON", and for progress windows each change of the main label, the sub-label and the
//          border button ("main: ..", "sub: ..", "button: .. 15"), and the colour button as it shows; what stays the same is
//          not told again.
// One at a time; after TestWorld or PluginWorld was made. Threads: main.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/EventLog.h"
#include "toolkit/NSString.h"

class AnswerScript {
public:
    class Answer {
    public:
        // Of a visible, enabled button with this title.
        Answer &press(std::string title);
        // Of a check box with this title; the window stays.
        Answer &tick(std::string title) { return press(std::move(title)); }
        Answer &type(std::string identifier, std::string text);
        Answer &closeByTitleBar();
        Answer &escape();
        // Whatever else happens while the window stands there.
        Answer &run(std::function<void()> step);

    private:
        friend class AnswerScript;
        std::string text_;
        std::deque<std::function<void()>> steps_;
        AnswerScript *script_ = nullptr;
    };
    class PanelAnswer {
    public:
        void choose(std::vector<NSString> paths, bool replace = false);
        void cancel();

    private:
        friend class AnswerScript;
        std::vector<NSString> paths_;
        bool replaces_ = false, saves_ = false;
    };

    explicit AnswerScript(EventLog *log = nullptr);
    ~AnswerScript();
    AnswerScript(const AnswerScript &) = delete;
    AnswerScript &operator=(const AnswerScript &) = delete;

    Answer &at(std::string text);
    PanelAnswer &openPanel();
    PanelAnswer &savePanel();
    // The next menu that pops up: the entry with this title, in a submenu too; empty chooses nothing.
    void menu(std::string title);
    // What failed so far, and no longer fails the test; for tests of the script itself.
    [[nodiscard]] std::vector<std::string> takeFailures();

private:
    class Person;
    std::shared_ptr<Person> person_;
};
