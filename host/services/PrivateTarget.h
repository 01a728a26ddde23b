// A private folder that an export is handed in place of the target that a person chose. The folder lies beside the target,
// so that moving never copies; its path, through a link, has no character that any command could misread.
//
//     PrivateTarget target("/home/ada/My messages.xls", "Messages.xls");
//     ... the flow writes target.path() ...
//     target.keepRememberedFolder("MessageExportPathKey");
//     if (const std::string reason = target.moveIntoPlace(replaces); !reason.empty()) ...
//
// Result   what the flow made at path() stands at the target, what it made beside that stands beside the target; folders
//          that stand there already are filled up, files in them replaced.
// Errors   where no private folder can be made, path() is the target itself and nothing is moved. A move that fails leaves
//          an older target as it was.
// Life     what was not moved is removed at the end; what a killed process left, by the next target in the same folder.
// Threads  one at a time.
#pragma once

#include <filesystem>
#include <string>

#include "toolkit/NSString.h"

namespace host {

class PrivateTarget {
public:
    // `target` is absolute; `name` is what the flow's file or folder is called in the private folder.
    PrivateTarget(std::filesystem::path target, std::string name);
    ~PrivateTarget();
    PrivateTarget(const PrivateTarget &) = delete;
    PrivateTarget &operator=(const PrivateTarget &) = delete;

    [[nodiscard]] const std::filesystem::path &path() const { return path_; }
    [[nodiscard]] const std::filesystem::path &target() const { return target_; }
    [[nodiscard]] bool isPrivate() const { return !folder_.empty(); }
    // Where a setting names the private folder it is to name the person's.
    void keepRememberedFolder(const NSString &key) const;
    // A text that names places of the private folder, with the person's in their stead.
    [[nodiscard]] std::string inPersonsPlaces(std::string text) const;
    // Empty where all went well; else why not, in English. Without `replaces` a target that stands there is an error.
    [[nodiscard]] std::string moveIntoPlace(bool replaces);

private:
    std::filesystem::path target_, name_, folder_, link_, path_;
};

}  // namespace host
