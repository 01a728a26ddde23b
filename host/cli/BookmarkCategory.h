// The bookmark category on show, as commands ask it. Threads: main.
#pragma once

#include "host/cli/Context.h"
#include "toolkit/lists/NSTreeController.h"

namespace host::cli {

class BookmarkCategory {
public:
    enum class Kind { any, bookmark, folder };

    // Shows the category on the device and waits for its tree. Throws CommandError where the device's bookmarks cannot be
    // read.
    explicit BookmarkCategory(Context &context);

    [[nodiscard]] const CategoryTriple &triple() const { return triple_; }
    // The nodes on show, parents first, each with its depth (0 at the top).
    struct Entry {
        std::shared_ptr<NSTreeNode> node;
        std::size_t depth;
    };
    [[nodiscard]] std::vector<Entry> entries() const;
    [[nodiscard]] NSString status() const;
    // Types into the search box. False where nothing matched: the tree stays as it was.
    [[nodiscard]] bool search(const std::string &text);
    // The device keeps its bookmarks in the cloud: tells the panel's title and steps, true then.
    [[nodiscard]] bool tellsOfCloud() const;
    // The node of that KEY. Throws CommandError where none of that kind has it.
    [[nodiscard]] std::shared_ptr<NSTreeNode> nodeOf(const std::string &key, Kind kind) const;
    [[nodiscard]] NSTreeNodes nodesOf(const std::vector<std::string> &keys, Kind kind) const;
    // Opens all folders, so that every selected node has its row, and selects these.
    void select(const NSTreeNodes &nodes) const;
    void perform(const char *selector, const Value &argument = {});

private:
    [[nodiscard]] std::shared_ptr<NSTreeController> tree() const;
    Context &context_;
    CategoryTriple triple_;
};

}  // namespace host::cli
