#include "host/cli/Commands.h"

#include <algorithm>

namespace host::cli {

namespace {

std::vector<CommandGroup> &registry() {
    static std::vector<CommandGroup> groups;
    return groups;
}

}  // namespace

bool registerCommands(CommandGroup group) {
    registry().push_back(std::move(group));
    return true;
}

std::vector<CommandGroup> commandGroups() {
    std::vector<CommandGroup> groups = registry();
    std::ranges::sort(groups, {}, &CommandGroup::place);
    return groups;
}

}  // namespace host::cli
