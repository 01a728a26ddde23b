// The panels that ask for a place to save and for files to open. Run through the presenter; a modal run like any other, so
// blocks of the main queue go on and may cancel it.
//
// Answers   choose(paths): a person's choice; cancel(): none, also by title bar, Escape, end of input and stopModal.
// Result    runModal gives kPanelOK (1) or kPanelCancel (0).
// Threads   main.
#pragma once

#include <functional>
#include <vector>

#include "toolkit/views/NSWindow.h"

constexpr std::int64_t kPanelOK = 1, kPanelCancel = 0;

class NSSavePanel : public NSPanel {
public:
    [[nodiscard]] static std::shared_ptr<NSSavePanel> savePanel();

    NSString message, prompt, nameFieldStringValue;
    // Folder that shows first; a path, absent for the person's last.
    NSString directoryURL;
    // Without dots, in lower or upper case alike; an empty list and an empty type allow all.
    std::vector<NSString> allowedFileTypes;
    bool canCreateDirectories = true, allowsOtherFileTypes = false, showsHiddenFiles = false;
    std::shared_ptr<NSView> accessoryView;

    // What a save panel gives in place of the chosen path; absent leaves it. A host's, for flows that cannot take every
    // path. Empty: none.
    using HandOver = std::function<NSString(const NSSavePanel &panel, const NSString &path, bool replace)>;
    static void setHandOver(HandOver handOver);

    std::int64_t runModal();
    // Paths of a person's choice; one for a save panel. What is not allowed (wrong kind, missing, too many) makes the call
    // false and leaves the panel open. A save panel adds the first allowed type where the name has none of them. `replace`
    // says that the person agreed to replace; without it a path that exists is refused.
    bool choose(const std::vector<NSString> &paths, bool replace = false);
    // cancel: with whatever sender. Nothing where the panel does not run.
    void cancel(const id &sender = nullptr);
    // What choose was refused for, in English, for a host to show; absent after a success.
    [[nodiscard]] const NSString &refusal() const { return refusal_; }

    // Absent after a cancel.
    [[nodiscard]] NSString URL() const { return paths_.empty() ? NSString() : paths_.front(); }
    [[nodiscard]] const std::vector<NSString> &URLs() const { return paths_; }
    [[nodiscard]] bool isRunning() const { return isRunning_; }
    HN_DECLARE_CLASS_TABLE

protected:
    // The reason against the paths, which it may complete; absent where there is none.
    [[nodiscard]] virtual NSString check(std::vector<NSString> &paths, bool replace);
    // Before the chosen paths, which it may change, are given to the flow.
    virtual void willGive(std::vector<NSString> &paths, bool replace);
    void closedByPerson() override { cancel(); }
    [[nodiscard]] bool allowsType(const NSString &path) const;

private:
    void end(std::int64_t code);
    std::vector<NSString> paths_;
    NSString refusal_;
    bool isRunning_ = false;
};

class NSOpenPanel : public NSSavePanel {
public:
    [[nodiscard]] static std::shared_ptr<NSOpenPanel> openPanel();
    bool canChooseFiles = true, canChooseDirectories = false, allowsMultipleSelection = false, resolvesAliases = true;
    HN_DECLARE_CLASS_TABLE

protected:
    [[nodiscard]] NSString check(std::vector<NSString> &paths, bool replace) override;
    void willGive(std::vector<NSString> &, bool) override {}
};
