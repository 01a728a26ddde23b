// The words of the command line. Each file of this folder that has commands registers them here:
//
//     const bool registered = registerCommands({20, [](CLI::App &root, const Chosen &chosen) {
//         CLI::App *category = root.add_subcommand("notes", "...");
//         ...
//         category->add_subcommand("list", "...")->callback([=] { chosen([](Context &context) { return kDone; }); });
//     }});
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <vector>

#include "host/cli/Context.h"
#include "host/cli/Ending.h"

namespace host::cli {

// Runs once the whole command line has been read, and gives the exit status. May throw what Program.cpp turns into one.
using Command = std::function<Status(Context &)>;
// Takes the command that was chosen.
using Chosen = std::function<void(Command)>;

struct CommandGroup {
    int place;   // among the others in --help
    std::function<void(CLI::App &root, const Chosen &chosen)> add;
};

bool registerCommands(CommandGroup group);
// By place.
[[nodiscard]] std::vector<CommandGroup> commandGroups();

}  // namespace host::cli
