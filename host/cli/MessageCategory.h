// The message category on show, as commands ask it. Threads: main.
#pragma once

#include "host/cli/Context.h"
#include "toolkit/lists/NSArray.h"

namespace host::cli {

class MessageCategory {
public:
    // Shows the category and waits until the device's messages are read. Throws CommandError where they cannot be: no room,
    // no or a wrong password, a device that cannot be read; and after a cancel.
    explicit MessageCategory(Context &context);

    [[nodiscard]] const CategoryTriple &triple() const { return triple_; }
    // The threads on show.
    [[nodiscard]] NSArray threads() const;
    [[nodiscard]] NSString status() const;
    [[nodiscard]] std::vector<NSString> phoneNumbers() const;
    // Those of one of the user's own numbers; none for an unknown one.
    void filter(const std::string &phoneNumber);
    // False where nothing matched: the rows stay as they were.
    [[nodiscard]] bool search(const std::string &text);
    // Selects the threads of these CHATIDs, or all on show. Throws CommandError where no thread has one of them.
    void select(const std::vector<std::string> &chatIDs);
    void selectAll();
    [[nodiscard]] NSArray selected() const;

private:
    void select(const NSIndexSet &rows);
    Context &context_;
    CategoryTriple triple_;
};

[[nodiscard]] std::string chatIDOf(NSObject &thread);
// The rows of a thread.
[[nodiscard]] NSArray rowsOf(NSObject &thread);
[[nodiscard]] Json threadRecord(NSObject &thread, bool withRows);

}  // namespace host::cli
