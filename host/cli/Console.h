// Standard output for results, standard error for messages, the terminal for questions.
// Threads  message: any; all else main.
#pragma once

#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/NSString.h"

namespace host::cli {

// Keys stay in the order in which they are written.
using Json = nlohmann::ordered_json;

class Console {
public:
    Console();
    // Says itself what the terminal is like; for tests.
    Console(bool canAsk, bool showsProgress) : canAsk_(canAsk), showsProgress_(showsProgress) {}

    // Results and messages come on the same screen.
    [[nodiscard]] static bool isOneScreen();

    // One line of a result for people; blanks at its end are left out.
    void line(const std::string &text);
    // Rows as columns, two blanks between them; the first column is never cut.
    void table(const std::vector<std::vector<std::string>> &rows);
    void document(const Json &document);
    // "hnmanager: text"; further lines of the text follow as they are.
    void message(const std::string &text);
    // False where the result could not be written whole.
    [[nodiscard]] bool flush();

    // A person sits there to be asked, and sees progress.
    [[nodiscard]] bool canAsk() const { return canAsk_; }
    [[nodiscard]] bool showsProgress() const { return showsProgress_; }
    // Asks and reads one line. Absent at the end of input or where a signal came.
    [[nodiscard]] std::optional<std::string> ask(const std::string &question);
    // The same; what is typed does not show.
    [[nodiscard]] std::optional<std::string> askSecret(const std::string &question);
    // Draws over the line at the bottom of the terminal; the next message begins on a line of its own.
    void progress(const std::string &text);
    void clearProgress();

private:
    void clearLine();
    std::mutex mutex_;
    bool canAsk_, showsProgress_, hasProgress_ = false;
};

// A text of a record as people may see it: U+FFFD for each control character and for each byte that is no UTF-8. Absent is
// the empty text.
[[nodiscard]] std::string forPeople(const NSString &text);
// The same for a text of several lines: line feeds stay.
[[nodiscard]] std::string linesForPeople(const NSString &text);
// null for an absent text.
[[nodiscard]] Json toJson(const NSString &text);

}  // namespace host::cli
