#include "toolkit/views/NSSavePanel.h"

#include <algorithm>
#include <filesystem>

#include "toolkit/views/NSApplication.h"
#include "toolkit/views/SetAsideFile.h"

namespace fs = std::filesystem;

HN_CLASS_TABLE(NSSavePanel, NSPanel, .key("prompt", &NSSavePanel::prompt).key("directoryURL", &NSSavePanel::directoryURL)
                   .key("nameFieldStringValue", &NSSavePanel::nameFieldStringValue)
                   .selector("cancel:", &NSSavePanel::cancel))
HN_CLASS_TABLE(NSOpenPanel, NSSavePanel, .key("canChooseFiles", &NSOpenPanel::canChooseFiles)
                   .key("canChooseDirectories", &NSOpenPanel::canChooseDirectories)
                   .key("allowsMultipleSelection", &NSOpenPanel::allowsMultipleSelection))

std::shared_ptr<NSSavePanel> NSSavePanel::savePanel() { return make<NSSavePanel>(); }
std::shared_ptr<NSOpenPanel> NSOpenPanel::openPanel() { return make<NSOpenPanel>(); }

std::int64_t NSSavePanel::runModal() {
    assertMain("NSSavePanel runModal");
    const auto self = selfOf(this);
    if (isRunning_)
        return kPanelCancel;
    paths_.clear();
    refusal_ = {};
    isRunning_ = true;
    const std::int64_t code = NSApplication::sharedApplication()->runModalForWindow(self);
    isRunning_ = false;
    orderOut();
    if (code == kPanelOK && !paths_.empty())
        return kPanelOK;
    paths_.clear();
    return kPanelCancel;
}

bool NSSavePanel::choose(const std::vector<NSString> &paths, bool replace) {
    assertMain("NSSavePanel choose");
    if (!isRunning_)
        return false;
    std::vector<NSString> chosen = paths;
    refusal_ = check(chosen, replace);
    if (!refusal_.isNil())
        return false;
    willGive(chosen, replace);
    paths_ = std::move(chosen);
    end(kPanelOK);
    return true;
}

void NSSavePanel::cancel(const id &) {
    assertMain("NSSavePanel cancel:");
    if (!isRunning_)
        return;
    paths_.clear();
    end(kPanelCancel);
}

void NSSavePanel::end(std::int64_t code) {
    isRunning_ = false;
    NSApplication::sharedApplication()->stopRunOf(*this, code);
}

bool NSSavePanel::allowsType(const NSString &path) const {
    const NSString extension = path.pathExtension();
    return allowedFileTypes.empty() ||
           std::ranges::any_of(allowedFileTypes, [&](const NSString &type) { return type.isEmpty() || type.isEqualIgnoringCase(extension); });
}

NSString NSSavePanel::check(std::vector<NSString> &paths, bool replace) {
    if (paths.size() != 1 || paths.front().lastPathComponent().isEmpty())
        return "one file name is wanted";
    NSString &path = paths.front();
    if (!allowsType(path) && !(allowsOtherFileTypes && !path.pathExtension().isEmpty()))
        path = path.stringByAppendingPathExtension(allowedFileTypes.front());
    std::error_code error;
    const fs::path parent = fs::path(path.str()).parent_path();
    if (!fs::is_directory(parent.empty() ? fs::path(".") : parent, error))
        return NSString::stringWithFormat("%@: its folder does not exist", path);
    if (fs::is_directory(path.str(), error))
        return NSString::stringWithFormat("%@: a folder of this name exists", path);
    if (!replace && fs::exists(fs::symlink_status(path.str(), error)))
        return NSString::stringWithFormat("%@: exists already", path);
    return {};
}

namespace {

NSSavePanel::HandOver &handOver() {
    static NSSavePanel::HandOver installed;
    return installed;
}

}  // namespace

void NSSavePanel::setHandOver(HandOver installed) { handOver() = std::move(installed); }

void NSSavePanel::willGive(std::vector<NSString> &paths, bool replace) {
    const NSString other = handOver() ? handOver()(*this, paths.front(), replace) : NSString();
    if (other.isNil())
        SetAsideFile::hold(paths.front());
    else
        paths.front() = other;
}

NSString NSOpenPanel::check(std::vector<NSString> &paths, bool) {
    if (paths.empty() || (paths.size() > 1 && !allowsMultipleSelection))
        return paths.empty() ? "nothing is chosen" : "one file is wanted";
    for (const NSString &path : paths) {
        std::error_code error;
        const fs::file_status status = fs::status(path.str(), error);
        if (!fs::exists(status))
            return NSString::stringWithFormat("%@: does not exist", path);
        if (fs::is_directory(status) ? !canChooseDirectories : !canChooseFiles)
            return NSString::stringWithFormat(fs::is_directory(status) ? "%@: is a folder" : "%@: is no folder", path);
        if (!fs::is_directory(status) && !allowsType(path))
            return NSString::stringWithFormat("%@: is not of a kind that is wanted", path);
    }
    return {};
}
