// How the commands of a category end: what they print, what they tell, and the exit status. Threads: main.
#pragma once

#include <filesystem>
#include <optional>

#include "host/cli/Context.h"
#include "host/cli/Ending.h"

namespace host::cli {

// The document with --json, else the text of the result where there is one.
void printResult(Context &context, const Json &document);

// What of an operation on several items failed, why, and what was left undone, on standard error: "2 of 3 contacts could not be
// deleted", "cancelled, 2 of 3 contacts deleted". `things` may be empty.
void tellCounts(Console &console, const OperationCounts &counts, const std::string &things, const std::string &doneVerb);
// The exit status of such an operation.
[[nodiscard]] Status statusOf(const OperationCounts &counts);
// Ends a flow that counts: succeeded, failed, text; then both of the above.
Status endCounted(Context &context, const char *things, const char *doneVerb);

// A flow that saves one item: saved; why not on standard error, `nothingGiven` where the device was not even asked.
Status endSaved(Context &context, const char *nothingGiven);

// The answers to the flow's questions ended it: the status; absent where it went on.
[[nodiscard]] std::optional<Status> endedByAnswers(Context &context);

// Where an export goes. Throws CommandError where something stands there and --replace is not given; a folder is never replaced
// by a file.
enum class Target { file, folder };
[[nodiscard]] std::filesystem::path exportTarget(Context &context, const std::string &target, Target kind = Target::file);

}  // namespace host::cli
