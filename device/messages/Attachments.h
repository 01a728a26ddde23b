// Attachments: where a file lies on the computer, and a name for it that is fit for one folder that takes them all.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "device/FileTree.h"
#include "toolkit/NSString.h"

namespace device::messages {

// The place of an attachment on the device; `filename` as the database tells it, bytes as stored. An empty path where it
// begins with neither "~/" nor "/var/mobile/".
[[nodiscard]] DevicePath attachmentPath(std::string_view filename);

// Names given out in one parse.
//
// Rules    what stands behind the last "/"; control characters and ' " \ : * ? < > | become "_"; an empty name, "." and ".."
//          become "attachment"; at most 200 bytes, cut in the stem at a character; one that is taken, ignoring case, gets
//          " (1)", " (2)", ... before its extension (from the last ".", at most 16 bytes).
// Taken    what an earlier call gave, and the names of the files that an exported page brings along.
class AttachmentNames {
public:
    static constexpr std::size_t kMaxNameBytes = 200, kMaxExtensionBytes = 16;

    AttachmentNames();
    // `name` is a name or a path, valid UTF-8, not empty.
    [[nodiscard]] NSString take(std::string_view name);

private:
    bool isFree(const std::string &name) { return taken_.insert(NSString(name).folded().str()).second; }

    std::unordered_set<std::string> taken_;                      // folded
    std::unordered_map<std::string, std::int64_t> nextNumber_;   // by folded name: no smaller number is free
};

}  // namespace device::messages
