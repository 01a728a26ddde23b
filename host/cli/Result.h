// How the commands of a category end: what they print, what they tell, and the exit status. Threads: main.
#pragma once

#include <filesystem>
#include <optional>

#include "host/cli/Context.h"
#include "host/cli/Ending.h"

namespace host::cli {

// The document with --json, else the text of the result where there is one.
void printResult(Context &context, const Json &document);

// A flow that counts: succeeded, failed, text; failures and their reason on standard error, as "2 of 3 contacts could not be
// deleted". `things` may be empty.
Status endCounted(Context &context, const char *things, const char *failedVerb);

// A flow that saves one item: saved; why not on standard error, `nothingGiven` where the device was not even asked.
Status endSaved(Context &context, const char *nothingGiven);

// The answers to the flow's questions ended it: the status; absent where it went on.
[[nodiscard]] std::optional<Status> endedByAnswers(Context &context);

// Where an export goes. Throws CommandError where something stands there and --replace is not given, a folder in any case.
[[nodiscard]] std::filesystem::path exportTarget(Context &context, const std::string &file);

}  // namespace host::cli
