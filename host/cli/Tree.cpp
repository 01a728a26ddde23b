#include "host/cli/Tree.h"

#include "host/cli/Commands.h"
#include "toolkit/lists/NSTreeController.h"

namespace host::cli {

namespace {

Json nodesOf(const NSTreeNodes &nodes) {
    Json list = Json::array();
    for (const auto &node : nodes) {
        const id &entry = node->representedObject();
        if (!entry)
            continue;
        list.push_back({{"fileTypeName", toJson(entry->valueForKey("fileTypeName").text())},
                        {"nibName", toJson(entry->valueForKey("nibName").text())},
                        {"children", nodesOf(node->childNodes())}});
    }
    return list;
}

Status showTree(Context &context) {
    const Json tree = categoryTree(context.plugin());
    if (context.options().json)
        context.console().document(tree);
    else
        printTree(tree, context.console(), "");
    return kDone;
}

const bool registered = registerCommands({20, [](CLI::App &root, const Chosen &chosen) {
    root.add_subcommand("tree", "The categories of the device")->callback([chosen] { chosen(showTree); });
}});

}  // namespace

Json categoryTree(PluginSession &plugin) {
    const auto controller = std::dynamic_pointer_cast<NSTreeController>(plugin.treeModel()->valueForKey("outlineTreeController").object());
    return controller ? nodesOf(controller->arrangedObjects()->childNodes()) : Json::array();
}

void printTree(const Json &tree, Console &console, const std::string &indent) {
    for (const Json &entry : tree) {
        const auto *name = entry["fileTypeName"].get_ptr<const std::string *>();
        console.line(indent + (name ? forPeople(NSString(*name)) : std::string()));
        printTree(entry["children"], console, indent + "  ");
    }
}

}  // namespace host::cli
