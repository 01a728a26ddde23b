#include "host/cli/Program.h"

#include <iostream>
#include <map>

#include "device/OpenError.h"
#include "host/cli/Commands.h"
#include "host/cli/Summary.h"

namespace host::cli {

namespace {

struct Invocation {
    Options options;
    Command command = showSummary;   // without words
};

const std::map<std::string, ConflictAnswer> kConflictWords = {
    {"replace", ConflictAnswer::replace}, {"keep", ConflictAnswer::keep}, {"skip", ConflictAnswer::skip}};

void addOptions(CLI::App &app, Options &options) {
    app.set_version_flag("--version", kVersion);
    app.add_option("--device", options.device,
                   "A device image or backup folder; else $HNMANAGER_DEVICE, else the embedded image")
        ->type_name("DIR");
    app.add_flag("--json", options.json, "Print one JSON document");
    app.add_flag("--yes", options.yes, "Answer confirmations with yes");
    app.add_flag("--replace", options.replace, "Replace a target that exists");
    app.add_option_function<std::string>(
           "--conflict", [&options](const std::string &word) { options.conflict = kConflictWords.at(word); },
           "What to do with an item that is there already: replace, keep (both) or skip")
        ->type_name("HOW")
        ->check(CLI::IsMember({"replace", "keep", "skip"}));
}

// Absent where there is something to run; else the exit status of a help text, a version or a wrong use.
std::optional<int> parse(int argc, const char *const *argv, Invocation &invocation) {
    CLI::App app("Manages the data of a device: an image of it, or a backup folder.\n"
                 "Without a command: its categories and contacts.",
                 "hnmanager");
    app.fallthrough();   // inherited by all words: options stand anywhere
    app.require_subcommand(0, 1);
    app.get_formatter()->column_width(34);
    addOptions(app, invocation.options);
    const Chosen chosen = [&invocation](Command command) { invocation.command = std::move(command); };
    for (const CommandGroup &group : commandGroups())
        group.add(app, chosen);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error, std::cout, std::cerr) == 0 ? kDone : kWrongUsage;
    }
    return std::nullopt;
}

// Turns what ends a command early into a message and a status.
Status guardedRun(const Command &command, Context &context) {
    const auto told = [&](Status status, const std::string &text) {
        if (!text.empty())
            context.console().message(text);
        return status;
    };
    try {
        return command(context);
    } catch (const CommandError &error) {
        return told(error.status(), error.what());
    } catch (const device::OpenError &error) {
        return told(kNotOpened, error.what());
    } catch (const device::AccessError &error) {
        return told(statusOf(error.kind()), error.what());
    } catch (const PluginError &error) {
        return told(kNotOpened, error.what());
    } catch (const std::filesystem::filesystem_error &error) {
        return told(kNotOpened, error.what());
    } catch (const std::exception &error) {
        return told(kFailed, error.what());
    }
}

}  // namespace

int runProgram(int argc, const char *const *argv) {
    Invocation invocation;
    if (const std::optional<int> status = parse(argc, argv, invocation))
        return *status;
    Console console;
    Status status = kDone;
    {
        Context context(invocation.options, console);
        status = guardedRun(invocation.command, context);
        if (status == kDone && context.hasFailed())
            status = kFailed;
    }
    if (!console.flush()) {
        console.message("the result could not be written to standard output");
        return kFailed;
    }
    return status;
}

}  // namespace host::cli
