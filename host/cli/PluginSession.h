// The plug-in at work: loaded, its main view made, one category chosen by external selection and loaded.
// Speaks to it through what the toolkit and the contracts give: views, keys, selectors. Threads: main.
#pragma once

#include <memory>

#include "host/services/Services.h"
#include "toolkit/views/NSViewController.h"

namespace host::cli {

// A category as hosts count them, and the nib that shows it.
struct CategoryPlace {
    std::int64_t index;
    const char *nibName;
};
inline constexpr CategoryPlace kContactsPlace{5, "HNMContactViewController"};
inline constexpr CategoryPlace kMessagesPlace{6, "HNMMessageViewController"};
inline constexpr CategoryPlace kBookmarksPlace{9, "HNMBookMarkViewController"};

// The outlets of a category that is on show; none is null.
struct CategoryTriple {
    std::shared_ptr<NSViewController> controller;
    id viewManager, viewModel;
};

class PluginSession {
public:
    // Loads the plug-in and its main view, and waits until what that began is over. Throws PluginError, CommandError.
    explicit PluginSession(const Services &services);
    // The plug-in's objects end here.
    ~PluginSession();
    PluginSession(const PluginSession &) = delete;

    // Shows the category and waits until it has loaded. Throws CommandError where the plug-in shows something else.
    [[nodiscard]] CategoryTriple choose(const CategoryPlace &place);
    // The object that holds the category tree, under the key "outlineTreeController".
    [[nodiscard]] id treeModel() const { return treeModel_; }

private:
    std::shared_ptr<RVBasePluginObject> principal_;
    std::shared_ptr<NSViewController> main_;
    id treeManager_, treeModel_;
};

}  // namespace host::cli
