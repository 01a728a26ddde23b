// The one function that stands for the platform's `system()`. It starts no shell and no program: it knows the few commands
// that the system gives, and does their work itself.
//
//     cp 'A' 'B'    iconv -f UTF8 -t GB18030 A > B    rm A    mv A B
//
// Words     split as a shell splits them: between single quotes every character but the quote is itself; outside quotes
//           blanks separate, and a character with a meaning to a shell, or a number of words that the form has not, refuses
//           the command. A path that begins with "-" refuses too: a program would take it for an option.
// Work      cp and mv go into a folder where the second path is one. A file stands whole at its new place or not at all.
// Recoding  needs well-formed UTF-8. A failed one leaves nothing at B, and the next `rm` of its A is refused, since A is then
//           the only copy.
// Result    0 done; 1 failed; 127 refused. To a flow the last two are the same.
// Threads   any; blocks for as long as the work takes.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "toolkit/NSString.h"

class SystemCommand {
public:
    static constexpr std::int32_t kDone = 0, kFailed = 1, kRefused = 127;

    struct Failure {
        NSString command;                 // as given
        std::vector<std::string> words;   // empty where it could not be split
        std::string reason;               // for a person, English
        bool isRefused = false;
    };
    using Listener = std::function<void(const Failure &)>;

    static std::int32_t run(const NSString &command);

    // Hears of every command that does not give 0, on the thread that ran it; flows do not look. Empty: nobody.
    static void setFailureListener(Listener listener);

    // A path that stands for itself without quotes: no blank, no quote, nothing with a meaning to a shell. Not empty.
    [[nodiscard]] static bool isPlain(const NSString &path);
    // A path that stands for itself between single quotes.
    [[nodiscard]] static bool isQuotable(const NSString &path);
};
