// The category tree, read from what the plug-in shows.
#pragma once

#include "host/cli/Context.h"

namespace host::cli {

// [{"fileTypeName", "nibName", "children": [...]}], labels as on show.
[[nodiscard]] Json categoryTree(PluginSession &plugin);
// One line per category, children two blanks deeper.
void printTree(const Json &tree, Console &console, const std::string &indent);

}  // namespace host::cli
